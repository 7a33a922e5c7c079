/*
 * The flag word turned into the preview layout (see PreviewFlags.h); the decisions are PlanPreviewFlags', this
 * file only carries them out on the windows.
 */
#include "PreviewFlags.h"

#include <commctrl.h>

namespace qvdlg {
namespace {

// Id 0 names no control (a dialog without pane labels).
void Show(HWND dialog, int id, bool show) {
  if (id == 0) return;
  if (HWND control = ::GetDlgItem(dialog, id)) ::ShowWindow(control, show ? SW_SHOW : SW_HIDE);
}

}  // namespace

void ApplyPreviewFlags(CQVBeforeAfterDlg& dialog, uint32_t flags, const ToolbarBits& bits) {
  const int beforeLabelId = dialog.GetBeforeLabelId();
  const int afterLabelId = dialog.GetAfterLabelId();
  const HWND window = dialog.GetSafeHwnd();
  const PreviewFlagPlan plan = PlanPreviewFlags(flags, bits, dialog.GetHelpCallback() != nullptr);
  const HWND toolbar = dialog.GetPreviewToolbar();
  if (plan.showPreview) {
    for (int id : {CQVBeforeAfterDlg::kAfterViewId, CQVBeforeAfterDlg::kBeforeViewId, afterLabelId, beforeLabelId})
      Show(window, id, true);
    for (int index : plan.deleteButtons) {
      if (toolbar) ::SendMessageW(toolbar, TB_DELETEBUTTON, static_cast<WPARAM>(index), 0);
    }
    dialog.SetZoomKeyEnabled(plan.zoomKeys ? 1 : 0);
    if (plan.hideToolbar && toolbar) ::ShowWindow(toolbar, SW_HIDE);
  } else {
    dialog.EnableProcessing(0);
    if (toolbar) ::ShowWindow(toolbar, SW_HIDE);
    Show(window, CQVBeforeAfterDlg::kBeforeViewId, false);
    Show(window, CQVBeforeAfterDlg::kAfterViewId, false);
    dialog.SetZoomKeyEnabled(0);
  }
  if (plan.contextHelp) dialog.ModifyStyleEx(0, WS_EX_CONTEXTHELP, SWP_FRAMECHANGED);
  Show(window, CQVBaseDialog::kHelpButtonId, plan.showHelpButton);
}

}  // namespace qvdlg
