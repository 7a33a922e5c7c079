/*
 * CQVScrollWnd: a window that shows content larger or smaller than itself at
 * a zoom: fixed zoom levels (or always fit), scroll bars, panning by dragging
 * with the left button, zoom with the mouse wheel, and content centred while
 * it is smaller than the window. Derived views draw their content in OnDraw
 * through the geometry helpers; the base draws the background, double
 * buffers, and paints the same way for WM_PAINT and WM_PRINTCLIENT.
 *
 * Every zoom or scroll the user makes is reported to the parent as WM_NOTIFY
 * with code kNotifyViewChanged, so a parent can keep several views together;
 * changes made through the member functions are not reported.
 */
#pragma once

#include <windows.h>

#include "Wnd.h"

class CQVScrollWnd : public qvfw::CWnd {
 public:
  static constexpr UINT kNotifyViewChanged = 2;

  CQVScrollWnd();
  ~CQVScrollWnd() override;

  // A child window at `rect` (parent client coordinates) with id `id`.
  BOOL Create(DWORD style, const RECT& rect, HWND parent, UINT id);

  // Size of the content in content pixels (an image's size).
  void SetContentSize(int width, int height);
  SIZE GetContentSize() const { return m_content; }

  void SetZoomToFit(int fit);
  int GetZoomToFit() const { return m_fit ? 1 : 0; }
  // Percent; at fit zoom the effective one, rounded.
  void SetZoom(int percent);
  int GetZoom() const;
  // Window pixels per content pixel.
  double GetScale() const;
  // One level up or down the zoom ladder (leaves fit); false at its end.
  bool ZoomIn();
  bool ZoomOut();
  static int ZoomLevelCount();
  static int ZoomLevel(int index);

  // Offset of the visible part in zoomed pixels (0,0 while centred).
  POINT GetScrollPosition() const { return m_scroll; }
  void SetScrollPosition(POINT position);

  // Kept for the window-level viewer, which asks for both; neither changes
  // behaviour yet (zoom follows the ladder, scrolling moves in one step).
  void SetUseTrackZoom(int use) { m_trackZoom = use != 0; }
  int GetUseTrackZoom() const { return m_trackZoom ? 1 : 0; }
  void SetSmoothScrolling(int smooth) { m_smooth = smooth != 0; }
  int GetSmoothScrolling() const { return m_smooth ? 1 : 0; }
  void SetMouseWheelEnabled(int enabled) { m_wheel = enabled != 0; }
  void SetPanEnabled(int enabled) { m_pan = enabled != 0; }
  // Zooms one level per notch around the pointer; reports the change.
  BOOL DoMouseWheel(UINT flags, short delta, POINT screenPoint);

  // Where the content lies in client coordinates.
  RECT ContentClientRect() const;
  RECT ContentToClient(const RECT& content) const;
  POINT ClientToContent(POINT client) const;
  // The part of the content the window shows (content pixels).
  RECT VisibleContentRect() const;

  // Draws the window into `dc` (what WM_PAINT shows).
  void Paint(HDC dc, const RECT& clip);

 protected:
  // Draws the content; the background is already filled.
  virtual void OnDraw(HDC dc, const RECT& clip) {}
  // A left press at `point` that the view takes for itself (not panning).
  virtual bool OnContentMouseDown(POINT point) { return false; }
  virtual void OnContentMouseMove(POINT point) {}
  virtual void OnContentMouseUp(POINT point) {}
  virtual HCURSOR ContentCursor(POINT point) const { return nullptr; }

  void NotifyViewChanged();

  void OnPaint() override;
  BOOL OnEraseBkgnd(HDC dc) override;
  void OnPrintClient(HDC dc, UINT flags) override;
  void OnSize(UINT type, int cx, int cy) override;
  void OnHScroll(UINT code, UINT position, qvfw::CWnd* scrollBar) override;
  void OnVScroll(UINT code, UINT position, qvfw::CWnd* scrollBar) override;
  void OnLButtonDown(UINT flags, POINT point) override;
  void OnMouseMove(UINT flags, POINT point) override;
  void OnLButtonUp(UINT flags, POINT point) override;
  void OnCaptureChanged(HWND newCapture) override;
  BOOL OnMouseWheel(UINT flags, short delta, POINT point) override;
  BOOL OnSetCursor(HWND window, UINT hitTest, UINT message) override;
  void OnSetFocus(HWND previous) override;
  void OnKillFocus(HWND next) override;
  UINT OnGetDlgCode(MSG* msg) override;
  void OnKeyDown(UINT key, UINT repeat, UINT flags) override;

 private:
  SIZE ZoomedSize() const;
  void ClampScroll();
  void UpdateScrollBars();
  void ScrollTo(POINT position, bool notify);
  void ScrollBy(int dx, int dy, bool notify);
  struct ContentPoint {
    double x;
    double y;
  };
  ContentPoint CentreContentPoint() const;
  void KeepCentre(const ContentPoint& centre);

  SIZE m_content{0, 0};
  bool m_fit = true;
  int m_zoom = 100;
  POINT m_scroll{0, 0};
  bool m_trackZoom = false;
  bool m_smooth = false;
  bool m_wheel = true;
  bool m_pan = true;
  bool m_dragging = false;
  bool m_contentDrag = false;
  bool m_updatingBars = false;
  POINT m_dragStart{0, 0};
  POINT m_dragScroll{0, 0};
};
