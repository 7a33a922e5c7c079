/*
 * The single-value dialogs without a mouse: Tab walks the controls in the
 * template's order and wraps round, Escape cancels and leaves the caller's
 * structure exactly as it was even after the value was moved, and Enter with
 * the focus on the slider presses OK and writes the moved value. The keys are
 * posted so they pass through the modal loop's dialog manager as typed input.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "ToneFixture.h"

namespace qv::test {
namespace {

void NoHelp(unsigned, int, void*) {}

// One Tab from each control in turn must land on the next and the last wraps to
// the first. Each hop starts from a focus set by the step itself, so one wrong
// hop is reported on its own instead of shifting every later one.
void AddTabCycle(Script& script, const std::vector<int>& order) {
  for (size_t i = 0; i < order.size(); ++i) {
    const int from = order[i];
    const int to = order[(i + 1) % order.size()];
    script
        .Do("Tab from control " + std::to_string(from),
            [from](StepContext& c) { c.Require(c.View().PostKey(from, VK_TAB)); })
        .Do("focus reaches control " + std::to_string(to), [to](StepContext& c) {
          const int now = c.View().FocusedId();
          if (now != to) c.Retry("focus is on control " + std::to_string(now));
        });
  }
}

TEST(ToneKeyboard, TabWalksSliderEditOkCancelHelpAndWraps) {
  OwnerWindow owner;
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  struct Variant {
    const char* what;
    uint32_t flags;
    bool help;
  };
  // With a preview the two views take the focus too (they zoom and scroll by
  // key), in their placeholders' places between the edit box and OK, and the
  // preview toolbar follows them, before the row of buttons.
  const Variant variants[] = {
      {"help shown", 0, true},
      {"help hidden", 0, false},
      {"preview with its toolbar",
       QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL | QVDLG_SHOW_TOOL_BUTTON3 | QVDLG_SHOW_TOOL_BUTTON4 |
           QVDLG_SHOW_TOOL_BUTTON5,
       true},
  };
  for (const ToneExport& e : ToneExports()) {
    for (const Variant& variant : variants) {
      auto params = ToneParams(variant.flags, variant.flags ? bitmap.Get() : nullptr, e.minimum);
      if (variant.help) params.pfnHelpCallback = NoHelp;
      std::vector<int> order = {e.sliderId, e.editId};
      if (variant.flags) order.insert(order.end(), {kBeforeViewId, kAfterViewId, kToolbarId});
      order.insert(order.end(), {IDOK, IDCANCEL});
      if (variant.help) order.push_back(kHelpId);
      Script script;
      script.WaitUntil("the slider has the focus when the dialog opens",
                       [&](const DialogView& v) { return v.FocusedId() == e.sliderId; });
      AddTabCycle(script, order);
      script.ClickCancel();
      RunResult result = DriveTone(e, owner.Handle(), params, script);
      EXPECT_TRUE(result.Ok()) << e.name << ", " << variant.what << "\n" << result.Report();
    }
  }
}

TEST(ToneKeyboard, EscapeCancelsWithoutTouchingTheCallersStructure) {
  OwnerWindow owner;
  for (const ToneExport& e : ToneExports()) {
    auto params = ToneParams(0, nullptr, e.previewValue);
    params.pfnHelpCallback = NoHelp;
    const auto before = params;
    Script script;
    script.Do("drag to the minimum", [&](StepContext& c) { c.Require(c.View().SetTrackbar(e.sliderId, e.minimum)); })
        .Expect("the box follows", [&](const DialogView& v) { return v.Text(e.editId) == std::to_wstring(e.minimum); })
        .Do("press Escape on the slider", [&](StepContext& c) { c.Require(c.View().PostKey(e.sliderId, VK_ESCAPE)); });
    RunResult result = DriveTone(e, owner.Handle(), params, script);
    EXPECT_TRUE(result.Ok()) << e.name << "\n" << result.Report();
    EXPECT_EQ(result.returnValue, QV_DLG_CANCEL) << e.name;
    EXPECT_TRUE(SameBytes(params, before)) << e.name << ": Escape wrote to the structure";
  }
}

TEST(ToneKeyboard, EnterOnTheSliderPressesOk) {
  OwnerWindow owner;
  for (const ToneExport& e : ToneExports()) {
    auto params = ToneParams(0, nullptr, e.minimum);
    Script script;
    script
        .Do("drag to a new value", [&](StepContext& c) { c.Require(c.View().SetTrackbar(e.sliderId, e.previewValue)); })
        .Do("press Enter on the slider", [&](StepContext& c) { c.Require(c.View().PostKey(e.sliderId, VK_RETURN)); });
    RunResult result = DriveTone(e, owner.Handle(), params, script);
    EXPECT_TRUE(result.Ok()) << e.name << "\n" << result.Report();
    EXPECT_EQ(result.returnValue, QV_DLG_OK) << e.name;
    EXPECT_EQ(params.nBrightness, e.previewValue) << e.name << ": OK writes the slider's value";
  }
}

}  // namespace
}  // namespace qv::test
