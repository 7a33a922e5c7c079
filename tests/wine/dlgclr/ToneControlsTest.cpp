/*
 * The single-value dialogs' own rules, seen through their controls: how the
 * caller's value comes in, the slider and edit box mirroring one value, the
 * commit of an out-of-range number, solarize's range on deep gray images, the
 * preview toolbar following the flags, and the title-bar help button.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>

#include "ToneFixture.h"

namespace qv::test {
namespace {

bool ShowsValue(const DialogView& v, const ToneExport& e, int value) {
  return v.TrackbarPos(e.sliderId) == value && v.Text(e.editId) == std::to_wstring(value);
}

TEST(ToneCallerValue, OutOfRangeValuesComeInAsTheRangeMinimum) {
  OwnerWindow owner;
  struct Case {
    const char* name;
    uint32_t field;
    int shown;
  };
  // The rule itself is proven natively for every member; these rows prove the dialogs apply it.
  const Case cases[] = {{"Hue", static_cast<uint32_t>(-181), -180}, {"Posterize", 65, 2}};
  for (const Case& c : cases) {
    const ToneExport& e = ToneExportNamed(c.name);
    auto params = ToneParams(0, nullptr, 0);
    std::memcpy(&params.nBrightness, &c.field, sizeof c.field);
    Script script;
    script
        .Expect("slider and box show the value taken in",
                [&](const DialogView& v) { return ShowsValue(v, e, c.shown); })
        .ClickOk();
    RunResult result = DriveTone(e, owner.Handle(), params, script);
    EXPECT_TRUE(result.Ok()) << c.name << " " << c.field << "\n" << result.Report();
    EXPECT_EQ(params.nBrightness, c.shown) << c.name << " " << c.field << ": OK writes the value taken in";
  }
}

TEST(ToneEditBox, AnOutOfRangeNumberWaitsForTheCommitWhichWritesTheLimit) {
  OwnerWindow owner;
  const ToneExport& e = ToneExportNamed("Brightness");
  auto params = ToneParams(0, nullptr, 250);
  Script script;
  script.Do("type 1200", [&](StepContext& c) { c.Require(c.View().SetEditText(e.editId, L"1200")); })
      .Expect("the box keeps 1200 and the slider stays at 250",
              [&](const DialogView& v) { return v.Text(e.editId) == L"1200" && v.TrackbarPos(e.sliderId) == 250; })
      .Do("commit the box", [&](StepContext& c) { c.Require(c.View().CommitEdit(e.editId)); })
      .Expect("the box says 1000 and the slider follows", [&](const DialogView& v) { return ShowsValue(v, e, 1000); })
      .Do("type -40", [&](StepContext& c) { c.Require(c.View().SetEditText(e.editId, L"-40")); })
      .Expect("a number in range is taken at once",
              [&](const DialogView& v) { return v.TrackbarPos(e.sliderId) == -40; })
      .ClickOk();
  RunResult result = DriveTone(e, owner.Handle(), params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(params.nBrightness, -40);

  const ToneExport& p = ToneExportNamed("Posterize");
  auto posterize = ToneParams(0, nullptr, 8);
  Script below;
  below.Do("type 1", [&](StepContext& c) { c.Require(c.View().SetEditText(p.editId, L"1")); })
      .Expect("below the range nothing is taken yet",
              [&](const DialogView& v) { return v.TrackbarPos(p.sliderId) == 8; })
      .Do("commit the box", [&](StepContext& c) { c.Require(c.View().CommitEdit(p.editId)); })
      .Expect("the minimum is written and taken", [&](const DialogView& v) { return ShowsValue(v, p, 2); })
      .Expect("the box takes three characters at most",
              [&](const DialogView& v) { return SendMessageW(v.Control(p.editId), EM_GETLIMITTEXT, 0, 0) == 3; })
      .ClickOk();
  result = DriveTone(p, owner.Handle(), posterize, below);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(posterize.nBrightness, 2);
}

TEST(ToneSolarize, DeepGrayImagesWidenTheSliderButNotTheBoxOrTheIncomingValue) {
  OwnerWindow owner;
  const ToneExport& e = ToneExportNamed("Solarize");
  TestBitmap gray;
  MakeGray16Bitmap(gray, false);
  auto params = ToneParams(QVDLG_SHOW_PREVIEW, gray.Get(), 300);
  Script script;
  script
      .Expect("the slider spans 0..65535",
              [&](const DialogView& v) { return v.TrackbarRange(e.sliderId) == std::make_pair(0, 65535); })
      .Expect("300 was judged against 0..255 and came in as 0",
              [&](const DialogView& v) { return ShowsValue(v, e, 0); })
      .Expect("the box still holds 4 characters",
              [&](const DialogView& v) { return SendMessageW(v.Control(e.editId), EM_GETLIMITTEXT, 0, 0) == 4; })
      .Do("drag to 40000", [&](StepContext& c) { c.Require(c.View().SetTrackbar(e.sliderId, 40000)); })
      .ClickOk();
  RunResult result = DriveTone(e, owner.Handle(), params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(params.nBrightness, 40000) << "the widened range lets the slider's value through";

  TestBitmap color;
  MakeStripedBitmap(color);
  auto colorParams = ToneParams(QVDLG_SHOW_PREVIEW, color.Get(), 200);
  Script narrow;
  narrow
      .Expect("a 24-bit image keeps 0..255",
              [&](const DialogView& v) {
                return v.TrackbarRange(e.sliderId) == std::make_pair(0, 255) && ShowsValue(v, e, 200);
              })
      .ClickCancel();
  result = DriveTone(e, owner.Handle(), colorParams, narrow);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(TonePreviewToolbar, FlagsDecideWhichButtonsStay) {
  OwnerWindow owner;
  // Which buttons each combination keeps is proven natively; these rows prove the toolbar follows the plan.
  const ToneExport& e = ToneExportNamed("Contrast");
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  struct Case {
    uint32_t flags;
    int buttons;
    bool visible;
  };
  const Case cases[] = {
      {QVDLG_SHOW_PREVIEW, 0, false},
      {QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL | QVDLG_SHOW_TOOL_BUTTON3 | QVDLG_SHOW_TOOL_BUTTON4 |
           QVDLG_SHOW_TOOL_BUTTON5,
       6, true},
  };
  for (const Case& c : cases) {
    auto params = ToneParams(c.flags, bitmap.Get(), 0);
    Script script;
    script
        .Do("count the toolbar's buttons",
            [&](StepContext& ctx) {
              const DialogView v = ctx.View();
              if (v.ToolbarButtonCount(kToolbarId) != c.buttons)
                ctx.Fail("buttons: " + std::to_string(v.ToolbarButtonCount(kToolbarId).value_or(-1)));
              if (v.Visible(kToolbarId) != c.visible) ctx.Fail("toolbar visibility");
              if (v.Visible(kBeforeViewId) != true || v.Visible(kAfterViewId) != true) ctx.Fail("views hidden");
              if (v.Visible(e.beforeLabelId) != true || v.Visible(e.afterLabelId) != true) ctx.Fail("labels hidden");
            })
        .ClickCancel();
    RunResult result = DriveTone(e, owner.Handle(), params, script);
    EXPECT_TRUE(result.Ok()) << "flags " << c.flags << "\n" << result.Report();
  }
}

TEST(ToneContextHelp, TheFlagAddsTheTitleBarButton) {
  OwnerWindow owner;
  const ToneExport& e = ToneExportNamed("Saturation");
  for (uint32_t flags : {0u, static_cast<unsigned>(QVDLG_SHOW_CONTEXTHELP)}) {
    auto params = ToneParams(flags, nullptr, 0);
    Script script;
    script
        .Expect("context help as asked",
                [&](const DialogView& v) { return ((v.ExStyle() & WS_EX_CONTEXTHELP) != 0) == (flags != 0); })
        .ClickCancel();
    RunResult result = DriveTone(e, owner.Handle(), params, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
  }
}

}  // namespace
}  // namespace qv::test
