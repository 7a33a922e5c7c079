/*
 * CQVImageViewer: a CQVScrollWnd that paints bitmaps through Q_PaintBitmap.
 * The content is an image of a given size; what is painted is a display
 * bitmap standing for a rectangle of that image (the whole image, a reduced
 * copy, or a region of it), so a view of a huge image paints only a small
 * bitmap. In split mode the part left of a draggable divider shows a second
 * bitmap (the before image beside the after image). A note can be drawn
 * over the image (for example that the preview is out of date).
 */
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

#include "QVScrollWnd.h"
#include "qv/qvkrn.h"

// Region display settings of a viewer: uMode bit 0 draws the outline of the
// shown bitmap's region (when it has one); the other fields are kept for
// callers that pass them and have no effect.
struct QVVIEWREGIONSETTINGS {
  uint32_t uMode;
  int32_t nParam1;
  int32_t nParam2;
  int32_t nParam3;
};

class CQVImageViewer : public CQVScrollWnd {
 public:
  static constexpr UINT kNotifySplitMoved = 3;

  CQVImageViewer();
  ~CQVImageViewer() override;

  // What the viewer paints. It shares ownership, so a bitmap its owner
  // replaces or frees while a repaint is still due stays alive until the
  // viewer lets go of it.
  using Display = std::shared_ptr<const BITMAPHANDLE>;

  // Shows the whole of `bitmap` (content size = bitmap size); null clears.
  // The viewer keeps the pointer: the bitmap must outlive its display.
  void SetBitmap(const BITMAPHANDLE* bitmap);
  // Shows `display` standing for `imageRect` of the content (content size
  // must already be set).
  void SetDisplay(Display display, const RECT& imageRect);
  // Split mode: `left` (for the same rectangle) is shown left of the
  // divider; null ends split mode.
  void SetSplitDisplay(Display left, const RECT& imageRect);
  bool IsSplit() const { return m_left != nullptr; }
  // Divider position, client x.
  int GetSplitPos() const;
  void SetSplitPos(int x);

  void SetNote(const std::wstring& note);
  const std::wstring& GetNote() const { return m_note; }

  void SetViewRegionSettings(const QVVIEWREGIONSETTINGS& settings) {
    m_region = settings;
    Invalidate(FALSE);
  }
  const QVVIEWREGIONSETTINGS& GetViewRegionSettings() const { return m_region; }
  // Palette images are realised as a background palette (the dialog must
  // not take the system palette from the host).
  void SetForceBkgndPal(int force) { m_forceBackground = force != 0; }
  int GetForceBkgndPal() const { return m_forceBackground ? 1 : 0; }

  // Number of times the image was painted (tests and timings).
  unsigned GetPaintCount() const { return m_paintCount; }

 protected:
  void OnDraw(HDC dc, const RECT& clip) override;
  bool OnContentMouseDown(POINT point) override;
  void OnContentMouseMove(POINT point) override;
  void OnContentMouseUp(POINT point) override;
  HCURSOR ContentCursor(POINT point) const override;

 private:
  void PaintLayer(HDC dc, const BITMAPHANDLE* layer, const RECT& clip);
  bool NearDivider(POINT point) const;

  Display m_display;
  Display m_left;
  RECT m_imageRect{};
  double m_splitShare = 0.5;  // divider as a share of the shown content width
  bool m_draggingDivider = false;
  std::wstring m_note;
  QVVIEWREGIONSETTINGS m_region{};
  bool m_forceBackground = false;
  unsigned m_paintCount = 0;
};
