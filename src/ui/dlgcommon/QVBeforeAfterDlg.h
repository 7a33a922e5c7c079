/*
 * CQVBeforeAfterDlg: the base of every dialog that previews its effect on a
 * private copy of the caller's bitmap, the original in the before pane
 * (21205) and the result in the after pane (21204), both created over the
 * template's placeholders and kept at the same zoom and scroll position.
 *
 * A value change (DoUpdateValues) is cheap whatever the image size: the panes
 * show a display source made once per view change (an area-averaged
 * reduction to the pane at fit zoom, the visible part at a fixed zoom); a
 * render copies that small source, lets the dialog's PrepareEffectBitmap run
 * the effect on the copy and repaints. Changes arriving faster than renders
 * are coalesced so only the newest value is drawn. The caller's bitmap is not
 * written here at all; the dialogs do that at OK. With the panes hidden (no
 * preview asked for) no display source is made at all. A render that fails
 * shows the image without the effect and says so in the after pane, rather
 * than leaving an older result there as if it were the current one. The
 * panes share what they paint, so nothing they show is freed under them.
 *
 * The texts every such dialog shares (OK, Cancel, Help, the "Before" and
 * "After" labels) are set here; a dialog names its label ids once
 * (SetPaneLabelIds) and sets only its own texts.
 *
 * The preview toolbar (buttons by index: 0 zoom 100 %, 1 zoom to fit, 2 a
 * separator, 3 split view, 4 effect on/off, 5 reset view) is made by the base
 * with glyphs drawn at run time, so the dialogs may delete buttons by index.
 */
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "QVBaseDialog.h"
#include "QVBitmap.h"

class CQVImageViewer;
class CPreviewPipeline;
class CPreviewToolbar;

class CQVBeforeAfterDlg : public CQVBaseDialog {
 public:
  static constexpr int kBeforeViewId = 21205;
  static constexpr int kAfterViewId = 21204;
  static constexpr int kToolbarId = 21206;
  static constexpr int kApplyButtonId = 26205;
  // Toolbar command ids (button indices 0, 1, 3, 4, 5).
  static constexpr int kCmdZoomNormal = 21210;
  static constexpr int kCmdZoomFit = 21211;
  static constexpr int kCmdSplitView = 21213;
  static constexpr int kCmdEffectToggle = 21214;
  static constexpr int kCmdResetView = 21215;

  // The reserved word and the last argument (always 1) are taken for the
  // exports' calling convention and mean nothing here.
  CQVBeforeAfterDlg(UINT templateId, qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned dialogId, unsigned reserved,
                    int flags);
  ~CQVBeforeAfterDlg() override;

  // 0: value changes no longer render (the after pane keeps what it shows).
  void EnableProcessing(int enable);
  int IsProcessingEnabled() const { return m_processing ? 1 : 0; }
  void SetZoomToFit(int fit);
  int GetZoomToFit() const;
  // Keyboard and mouse-wheel zoom; with both off the zoom stays as the host
  // set it, so a host that hides the zoom buttons gets its zoom back.
  void SetZoomKeyEnabled(int enable);
  int GetZoomKeyEnabled() const { return m_zoomKeys ? 1 : 0; }
  // 1: changes wait for the Apply button (26205); the after pane says that
  // it is out of date until then.
  void UseApplyButton(int use);
  int GetUseApplyButton() const { return m_useApply ? 1 : 0; }

  // Called with 1 at the start of OK: makes a render still waiting, so
  // GetLastPreviewResult() is the newest value's. Returns 1 (0 would keep
  // the dialog open; a failing preview alone does not).
  int PreEndDialog(int ok);
  // The value changed: re-render the after pane (coalesced, asynchronous).
  void DoUpdateValues();
  // Applies the effect to `bitmap` (a copy of what the pane shows, in the
  // caller's pixel format); 0 fails. Base: leaves the copy as it is.
  virtual int PrepareEffectBitmap(CQVBitmap& bitmap);
  // Whether the effect depends on a pixel's neighbourhood (then it runs at
  // full resolution over what the view covers and is reduced afterwards).
  virtual bool IsNeighbourhoodEffect() const { return false; }
  // Base: nothing (the caller's bitmap is written by the dialogs at OK).
  virtual void UpdateUserDocBitmap(BITMAPHANDLE* bitmap);
  // Rebuilds the display source for the current view and re-renders now.
  virtual void DoUpdateViews();
  virtual void OnZoomToNormalBtnClicked();
  virtual void OnZoomToFitBtnClicked();
  virtual void OnApplyBtnClicked();

  BITMAPHANDLE* GetBitmap() const { return m_pBitmap; }
  CQVImageViewer& GetBeforeView();
  CQVImageViewer& GetAfterView();
  HWND GetPreviewToolbar() const;
  // The template ids of the "Before" and "After" labels (0: none).
  void SetPaneLabelIds(int beforeLabelId, int afterLabelId);
  int GetBeforeLabelId() const { return m_beforeLabelId; }
  int GetAfterLabelId() const { return m_afterLabelId; }

  // Preview state, for dialogs with their own layouts and for tests.
  int GetSplitView() const { return m_split ? 1 : 0; }
  int GetShowEffect() const { return m_showEffect ? 1 : 0; }
  // True while the after pane waits for Apply.
  bool IsAfterPaneStale() const { return m_stale; }
  // Number of renders of the after pane made so far (each one effect run).
  unsigned GetRenderCount() const { return m_renderCount; }
  // The bitmap the after pane shows at present (null before the first render).
  const CQVBitmap* GetAfterBitmap() const;
  // The display source both panes are made from.
  const CQVBitmap* GetDisplaySource() const;
  // The image rectangle that source holds (empty while there is none).
  RECT GetDisplaySourceRect() const;
  // Result of the last effect run on the preview (1 before the first).
  int GetLastPreviewResult() const { return m_lastPreviewResult; }
  // Why the after pane shows no effect (QV_SUCCESS while it shows one).
  int GetPreviewFailure() const { return m_failure; }

 protected:
  BOOL OnInitDialog() override;
  void SetDialogStrings() override;
  BOOL PreTranslateMessage(MSG* msg) override;

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

 private:
  void CreateViews();
  void CreateToolbar();
  void Layout();
  void UpdateViews(bool forceRender);
  bool PanesShown() const;
  void RenderNow();
  void ShowRendered();
  std::wstring AfterPaneNote() const;
  void PlaceToolbarInTabOrder();
  void SyncViews(CQVImageViewer& from);
  void ApplyViewState(bool fit, int zoomPercent);
  void SetViewsZoom(bool fit, int zoomPercent);
  void StepZoom(int direction);
  void ToggleSplit();
  void ToggleEffect();
  void ResetView();
  bool HandleZoomKey(UINT key, bool isChar);

  BITMAPHANDLE* m_pBitmap;
  int m_beforeLabelId = 0;
  int m_afterLabelId = 0;
  bool m_processing = true;
  bool m_zoomToFit = true;
  bool m_initialZoomToFit = true;
  bool m_zoomKeys = true;
  bool m_useApply = false;
  bool m_split = false;
  bool m_showEffect = true;
  bool m_stale = false;
  bool m_afterValid = false;
  bool m_renderPosted = false;
  bool m_syncing = false;
  unsigned m_renderCount = 0;
  int m_lastPreviewResult = 1;
  int m_failure = QV_SUCCESS;
  std::unique_ptr<CQVImageViewer> m_beforeView;
  std::unique_ptr<CQVImageViewer> m_afterView;
  std::unique_ptr<CPreviewPipeline> m_pipeline;
  std::unique_ptr<CPreviewToolbar> m_toolbar;
  std::shared_ptr<CQVBitmap> m_after;
  RECT m_viewArea[2]{};  // the panes' rectangles in the template
};
