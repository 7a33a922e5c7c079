/*
 * The layout plan of a before/after dialog from its flags (see PreviewFlagPlan.h). Deletions go by index from
 * the highest down so the lower indices stay valid; index 2 may be named twice (once because neither button 3
 * nor 4 stays, once because the zoom pair goes), and the second deletion then finds nothing there, which is
 * why RemainingButtons ignores an index beyond the current count.
 */
#include "PreviewFlagPlan.h"

#include "qv/qvdlgclr.h"

namespace qvdlg {

PreviewFlagPlan PlanPreviewFlags(uint32_t flags, const ToolbarBits& bits, bool hasHelpCallback) {
  PreviewFlagPlan plan;
  plan.contextHelp = (flags & QVDLG_SHOW_CONTEXTHELP) != 0;
  plan.showHelpButton = hasHelpCallback;
  if ((flags & QVDLG_SHOW_PREVIEW) == 0) {
    plan.hideToolbar = true;
    return plan;
  }
  plan.showPreview = true;
  const bool keep3 = (flags & bits.button3) != 0;
  const bool keep4 = (flags & bits.button4) != 0;
  const bool keep5 = (flags & bits.button5) != 0;
  bool toolbarEmpty = true;
  if (!(keep5 && (keep3 || keep4))) plan.deleteButtons.push_back(5);
  if (keep4)
    toolbarEmpty = false;
  else
    plan.deleteButtons.push_back(4);
  if (keep3)
    toolbarEmpty = false;
  else
    plan.deleteButtons.push_back(3);
  if (!keep3 && !keep4) plan.deleteButtons.push_back(2);
  if (flags & QVDLG_SHOW_TOOL_ZOOMLEVEL) {
    toolbarEmpty = false;
    plan.zoomKeys = true;
  } else {
    plan.deleteButtons.insert(plan.deleteButtons.end(), {2, 1, 0});
  }
  plan.hideToolbar = toolbarEmpty;
  return plan;
}

std::vector<int> RemainingButtons(const std::vector<int>& deletions, int initialCount) {
  std::vector<int> buttons;
  for (int i = 0; i < initialCount; ++i) buttons.push_back(i);
  for (int index : deletions) {
    if (index >= 0 && index < static_cast<int>(buttons.size())) buttons.erase(buttons.begin() + index);
  }
  return buttons;
}

}  // namespace qvdlg
