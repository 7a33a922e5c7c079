/*
 * How a before/after dialog turns its flag word into its visible layout: which preview toolbar buttons go,
 * whether the toolbar stays, whether the zoom keys work and whether live processing runs. Every before/after
 * dialog uses this with the positions of its own three toolbar bits (most use 0x10, 0x20 and 0x40; the gamma
 * and color resolution dialogs keep them higher). Portable, so the deletion order is tested natively.
 */
#pragma once

#include <cstdint>
#include <vector>

namespace qvdlg {

struct ToolbarBits {
  uint32_t button3;
  uint32_t button4;
  uint32_t button5;
};

constexpr ToolbarBits kStandardToolbarBits{0x0010u, 0x0020u, 0x0040u};

struct PreviewFlagPlan {
  bool showPreview = false;        // views and their labels shown, processing on
  std::vector<int> deleteButtons;  // TB_DELETEBUTTON indices, in the order to send them
  bool hideToolbar = false;
  bool zoomKeys = false;
  bool contextHelp = false;  // WS_EX_CONTEXTHELP on the dialog
  bool showHelpButton = false;
};

PreviewFlagPlan PlanPreviewFlags(uint32_t flags, const ToolbarBits& bits, bool hasHelpCallback);

// The toolbar's buttons that remain after the deletions, as original indices (0..5), for a toolbar that
// starts with six; tests and the layout check use it to name what is left.
std::vector<int> RemainingButtons(const std::vector<int>& deletions, int initialCount = 6);

}  // namespace qvdlg
