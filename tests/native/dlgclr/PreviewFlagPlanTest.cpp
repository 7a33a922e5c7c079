/*
 * The preview layout of a before/after dialog from its flags: which toolbar buttons survive the deletions
 * (by index, highest first, some indices named twice), whether the toolbar hides, and the zoom keys. The
 * gamma dialog's higher toolbar bits are covered too, since every before/after dialog shares this plan.
 */
#include <gtest/gtest.h>

#include <tuple>

#include "PreviewFlagPlan.h"
#include "qv/qvdlgclr.h"

namespace qvdlg {
namespace {

using Buttons = std::vector<int>;

TEST(PreviewFlags, ToolbarButtonsThatSurviveEachCombination) {
  struct Case {
    uint32_t flags;
    Buttons remaining;
    bool hidden;
    bool zoomKeys;
  };
  const uint32_t P = QVDLG_SHOW_PREVIEW, Z = QVDLG_SHOW_TOOL_ZOOMLEVEL, B3 = QVDLG_SHOW_TOOL_BUTTON3,
                 B4 = QVDLG_SHOW_TOOL_BUTTON4, B5 = QVDLG_SHOW_TOOL_BUTTON5;
  const Case cases[] = {
      {P, {}, true, false},
      {P | Z, {0, 1}, false, true},
      {P | Z | B3, {0, 1, 2, 3}, false, true},
      {P | Z | B4 | B5, {0, 1, 2, 4, 5}, false, true},
      {P | Z | B3 | B4 | B5, {0, 1, 2, 3, 4, 5}, false, true},
      {P | Z | B5, {0, 1}, false, true},
      {P | B3, {3}, false, false},
      {P | B4, {4}, false, false},
      {P | B3 | B5, {3, 5}, false, false},
      {P | B5, {}, true, false},
  };
  for (const Case& c : cases) {
    const PreviewFlagPlan plan = PlanPreviewFlags(c.flags, kStandardToolbarBits, false);
    EXPECT_EQ(std::make_tuple(plan.showPreview, RemainingButtons(plan.deleteButtons), plan.hideToolbar, plan.zoomKeys),
              std::make_tuple(true, c.remaining, c.hidden, c.zoomKeys))
        << "flags " << c.flags;
  }
}

TEST(PreviewFlags, DeletionsRunFromTheHighestIndexDown) {
  const PreviewFlagPlan plan = PlanPreviewFlags(QVDLG_SHOW_PREVIEW, kStandardToolbarBits, false);
  EXPECT_EQ(plan.deleteButtons, (Buttons{5, 4, 3, 2, 2, 1, 0}));
}

TEST(PreviewFlags, WithoutPreviewEverythingGoesAndProcessingStops) {
  const PreviewFlagPlan plan = PlanPreviewFlags(QVDLG_SHOW_TOOL_ZOOMLEVEL | 0x70u, kStandardToolbarBits, true);
  EXPECT_EQ(std::make_tuple(plan.showPreview, plan.hideToolbar, plan.zoomKeys, plan.deleteButtons.size(),
                            plan.showHelpButton),
            std::make_tuple(false, true, false, size_t{0}, true));
  EXPECT_FALSE(PlanPreviewFlags(0, kStandardToolbarBits, false).showHelpButton);
  EXPECT_TRUE(PlanPreviewFlags(QVDLG_SHOW_CONTEXTHELP, kStandardToolbarBits, false).contextHelp);
}

TEST(PreviewFlags, HigherToolbarBitsLeaveTheLowOneToTheDialog) {
  const ToolbarBits gamma{QVGAMMADLG_SHOW_TOOL_BUTTON3, QVGAMMADLG_SHOW_TOOL_BUTTON4, QVGAMMADLG_SHOW_TOOL_BUTTON5};
  const uint32_t flags = QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL | QVGAMMADLG_SINGLE_GAMMA;
  EXPECT_EQ(RemainingButtons(PlanPreviewFlags(flags, gamma, false).deleteButtons), (Buttons{0, 1}))
      << "0x10 is the gamma dialog's own bit, not button 3";
  EXPECT_EQ(RemainingButtons(PlanPreviewFlags(flags | QVGAMMADLG_SHOW_TOOL_BUTTON3, gamma, false).deleteButtons),
            (Buttons{0, 1, 2, 3}));
}

}  // namespace
}  // namespace qvdlg
