/*
 * Drives the sample dialog through every kind of input the driver offers and
 * checks both what the dialog did with it and what the driver reads back.
 */
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include "SampleFixture.h"
#include "resource.h"

namespace qv::test {
namespace {

bool TextIs(const DialogView& v, int id, const wchar_t* text) { return v.Text(id).value_or(L"<none>") == text; }

TEST(SampleDialogDriving, TrackbarDragKeepsEditInStepAndClampsToRange) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.Expect("the level starts at 25 in both views",
                [](const DialogView& v) {
                  return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 25 && TextIs(v, IDC_SAMPLE_LEVEL_EDIT, L"25");
                })
      .Expect("the trackbar spans 0..100",
              [](const DialogView& v) { return v.TrackbarRange(IDC_SAMPLE_LEVEL) == std::make_pair(0, 100); })
      .Do("drag the level to 40", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 40)); })
      .Expect("the edit follows to 40",
              [](const DialogView& v) { return TextIs(v, IDC_SAMPLE_LEVEL_EDIT, L"40"); })
      .Do("drag past the end", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 250)); })
      .Expect("the level stops at 100",
              [](const DialogView& v) {
                return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 100 && TextIs(v, IDC_SAMPLE_LEVEL_EDIT, L"100");
              })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, IDOK);
  EXPECT_EQ(result.stepsDone, script.Size());
  EXPECT_EQ(params.nLevel, 100);
}

TEST(SampleDialogDriving, TypingIntoTheEditMovesTheTrackbarAndCancelKeepsValues) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  const QVSAMPLEDLGPARAMS before = params;
  Script script;
  script.Do("set the edit to 75", [](StepContext& c) { c.Require(c.View().SetEditText(IDC_SAMPLE_LEVEL_EDIT, L"75")); })
      .Expect("EN_CHANGE moved the trackbar to 75",
              [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 75; })
      .Do("clear and type 6a2 (a number-only edit drops the letter)",
          [](StepContext& c) {
            c.Require(c.View().SetEditText(IDC_SAMPLE_LEVEL_EDIT, L""));
            c.Require(c.View().TypeText(IDC_SAMPLE_LEVEL_EDIT, L"6a2"));
          })
      .Expect("the edit reads 62 and the trackbar follows",
              [](const DialogView& v) {
                return TextIs(v, IDC_SAMPLE_LEVEL_EDIT, L"62") && v.TrackbarPos(IDC_SAMPLE_LEVEL) == 62;
              })
      .Do("press Backspace in the edit",
          [](StepContext& c) { c.Require(c.View().PressKey(IDC_SAMPLE_LEVEL_EDIT, VK_BACK)); })
      .Expect("one digit is left", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 6; })
      .Do("commit the edit by leaving it",
          [](StepContext& c) {
            c.Require(c.View().CommitEdit(IDC_SAMPLE_LEVEL_EDIT));
            int focused = c.View().FocusedId();
            if (focused == IDC_SAMPLE_LEVEL_EDIT || focused == 0)
              c.Fail("the focus stayed in the edit (focused id " + std::to_string(focused) + ")");
          })
      .ClickCancel();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, IDCANCEL);
  EXPECT_TRUE(SameParams(params, before)) << "Cancel must leave the caller's values alone";
}

TEST(SampleDialogDriving, ComboPickAndCheckBoxChangeLabelAndEnabledState) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.Expect("three channels, red picked",
                [](const DialogView& v) {
                  return v.ComboCount(IDC_SAMPLE_CHANNEL) == 3 && v.ComboSelection(IDC_SAMPLE_CHANNEL) == 0 &&
                         TextIs(v, IDC_SAMPLE_CHANNEL_LABEL, L"Channel: Red");
                })
      .Do("pick Blue", [](StepContext& c) { c.Require(c.View().SelectComboText(IDC_SAMPLE_CHANNEL, L"Blue")); })
      .Expect("CBN_SELCHANGE updated the label",
              [](const DialogView& v) {
                return v.ComboSelection(IDC_SAMPLE_CHANNEL) == 2 && TextIs(v, IDC_SAMPLE_CHANNEL_LABEL, L"Channel: Blue");
              })
      .Do("a missing entry is refused with its name",
          [](StepContext& c) {
            Outcome o = c.View().SelectComboText(IDC_SAMPLE_CHANNEL, L"Purple");
            if (o || o.Message().find("Purple") == std::string::npos) c.Fail("picking Purple: '" + o.Message() + "'");
            if (c.View().ComboSelection(IDC_SAMPLE_CHANNEL) != 2) c.Fail("a refused pick changed the selection");
          })
      .Do("uncheck Apply", [](StepContext& c) { c.Require(c.View().SetCheck(IDC_SAMPLE_ENABLE, false)); })
      .Expect("the level controls are disabled",
              [](const DialogView& v) {
                return v.CheckState(IDC_SAMPLE_ENABLE) == BST_UNCHECKED && v.Enabled(IDC_SAMPLE_LEVEL) == false &&
                       v.Enabled(IDC_SAMPLE_LEVEL_EDIT) == false && v.Enabled(IDOK) == true;
              })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(params.nChannel, QV_SAMPLE_CHANNEL_BLUE);
  EXPECT_FALSE(params.bEnabled);
}

TEST(SampleDialogDriving, NestedMessageBoxAndDialogAreFoundByCaptionAndAnswered) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.Do("click Reset (opens a message box)", [](StepContext& c) { c.Require(c.View().Click(IDC_SAMPLE_RESET)); })
      .DoIn(WindowQuery::ByCaption(L"Sample Reset"), "answer Yes",
            [](StepContext& c) {
              if (c.Find(WindowQuery::Top()) != c.Target()) c.Fail("the message box is not the innermost window");
              if (IsWindowEnabled(c.Find(WindowQuery::Main()))) c.Fail("the owner dialog is not disabled");
              c.Require(c.View().Click(IDYES));
            })
      .Expect("Yes reset the level", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 0; })
      .Do("click Note (opens a nested dialog)", [](StepContext& c) { c.Require(c.View().Click(IDC_SAMPLE_NOTE)); })
      .DoIn(WindowQuery::ByCaption(L"Sample Note"), "write the note and confirm",
            [](StepContext& c) {
              c.Require(c.View().SetEditText(IDC_NOTE_EDIT, L"hello"));
              c.Require(c.View().Ok());
            })
      .Expect("the note shows in the dialog", [](const DialogView& v) { return TextIs(v, IDC_SAMPLE_NOTE_TEXT, L"hello"); })
      .Expect("the menu offers Set to full",
              [](const DialogView& v) {
                auto state = v.MenuItemState(ID_SAMPLE_LEVEL_FULL);
                return state && !(*state & (MF_GRAYED | MF_DISABLED));
              })
      .Do("choose Level > Set to full", [](StepContext& c) { c.Require(c.View().MenuCommand(ID_SAMPLE_LEVEL_FULL)); })
      .Expect("the menu command set the level", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 100; })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_FALSE(result.watchdogFired);
  EXPECT_EQ(params.nLevel, 100);
  EXPECT_STREQ(params.szNote, L"hello");
}

TEST(SampleDialogDriving, ReadsCaptionStylesVisibilityAndLayout) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script
      .Do("read the dialog's own properties",
          [](StepContext& c) {
            DialogView v = c.View();
            if (v.Caption() != L"Sample Levels") c.Fail("caption");
            if (!(v.Style() & WS_CAPTION)) c.Fail("no caption style");
            if (!(v.ExStyle() & WS_EX_CONTEXTHELP)) c.Fail("the context help button is missing from the ex-style");
            if (!(v.ControlStyle(IDC_SAMPLE_LEVEL_EDIT).value_or(0) & ES_NUMBER)) c.Fail("edit lacks ES_NUMBER");
          })
      .Do("read positions and visibility",
          [](StepContext& c) {
            DialogView v = c.View();
            auto swatch = v.RectInDialog(IDC_SAMPLE_SWATCH);
            auto ok = v.RectInDialog(IDOK);
            auto screen = v.ScreenRect(IDC_SAMPLE_SWATCH);
            if (!swatch || !ok || !screen) return c.Fail("a rectangle could not be read");
            if (swatch->left <= 0 || swatch->top <= 0) c.Fail("the swatch is not inside the client area");
            if (swatch->right - swatch->left != screen->right - screen->left) c.Fail("client and screen widths differ");
            if (ok->left <= swatch->right) c.Fail("OK is not right of the swatch");
            if (v.Visible(IDC_SAMPLE_SWATCH) != true) c.Fail("the swatch is hidden");
            if (v.Text(4242) || v.Visible(4242) || v.TrackbarPos(4242)) c.Fail("a missing control read as present");
          })
      .Do("hide the note label and read it back",
          [](StepContext& c) {
            ShowWindow(c.View().Control(IDC_SAMPLE_NOTE_TEXT), SW_HIDE);
            if (c.View().Visible(IDC_SAMPLE_NOTE_TEXT) != false) c.Fail("a hidden control reads as visible");
          })
      .ClickCancel();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(SampleDialogDriving, MouseClicksAndWheelOnTheSwatchPickLevels) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  auto clickAt = [](double fraction) {
    return [fraction](StepContext& c) {
      RECT r{};
      GetClientRect(c.View().Control(IDC_SAMPLE_SWATCH), &r);
      c.Require(c.View().MouseClick(IDC_SAMPLE_SWATCH, POINT{LONG(fraction * (r.right - 1)), r.bottom / 2}));
    };
  };
  Script script;
  script.Do("click the right edge", clickAt(1.0))
      .Expect("level 100", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 100; })
      .Do("click the left edge", clickAt(0.0))
      .Expect("level 0", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 0; })
      .Do("click the middle", clickAt(0.5))
      .Expect("level about 50",
              [](const DialogView& v) { return std::abs(v.TrackbarPos(IDC_SAMPLE_LEVEL).value_or(-99) - 50) <= 1; })
      .Do("turn the wheel two notches down",
          [](StepContext& c) { c.Require(c.View().MouseWheel(IDC_SAMPLE_SWATCH, POINT{5, 5}, -2 * WHEEL_DELTA)); })
      .Expect("the level fell by 10",
              [](const DialogView& v) { return std::abs(v.TrackbarPos(IDC_SAMPLE_LEVEL).value_or(-99) - 40) <= 1; })
      .Do("uncheck Apply, then click the right edge", [clickAt](StepContext& c) {
            c.Require(c.View().SetCheck(IDC_SAMPLE_ENABLE, false));
            clickAt(1.0)(c);
          })
      .Expect("clicks are ignored while the level does not apply",
              [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL).value_or(-99) < 60; })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(SampleDialogDriving, ToolbarButtonsAndNotificationsReachTheDialog) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  auto clickButton = [](int index) {
    return [index](StepContext& c) {
      RECT item{};
      HWND toolbar = c.View().Control(IDC_SAMPLE_TOOLBAR);
      if (!toolbar || !SendMessageW(toolbar, TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&item)))
        return c.Fail("toolbar button " + std::to_string(index) + " has no rectangle");
      POINT centre{(item.left + item.right) / 2, (item.top + item.bottom) / 2};
      c.Require(c.View().MouseClick(IDC_SAMPLE_TOOLBAR, centre));
    };
  };
  Script script;
  script.Expect("two buttons and a separator",
                [](const DialogView& v) { return v.ToolbarButtonCount(IDC_SAMPLE_TOOLBAR) == 3; })
      .Expect("a control that is not a toolbar has no toolbar count",
              [](const DialogView& v) { return !v.ToolbarButtonCount(4242); })
      .Do("click the toolbar's 100 button", clickButton(2))
      .Expect("the toolbar command set the level", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 100; })
      .Do("send the toolbar's right-click notification",
          [](StepContext& c) { c.Require(c.View().Notify(IDC_SAMPLE_TOOLBAR, static_cast<UINT>(NM_RCLICK))); })
      .Expect("NM_RCLICK set the middle level", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 50; })
      .Do("click the toolbar's 0 button", clickButton(0))
      .Expect("the level is zero", [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 0; })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(params.nLevel, 0);
}

TEST(SampleDialogDriving, ActionsOnWrongControlsFailWithTheStepNamedAndTheRunGoesOn) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.Do("move a trackbar that does not exist",
            [](StepContext& c) { c.Require(c.View().SetTrackbar(9999, 10)); })
      .Do("move the edit as if it were a trackbar",
          [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL_EDIT, 10)); })
      .Do("disable Reset and click it",
          [](StepContext& c) {
            c.Require(c.View().SetCheck(IDC_SAMPLE_ENABLE, false));
            EnableWindow(c.View().Control(IDC_SAMPLE_RESET), FALSE);
            c.Require(c.View().Click(IDC_SAMPLE_RESET));
          })
      .Do("check a box that clicks do not toggle",
          [](StepContext& c) {
            SendMessageW(c.View().Control(IDC_SAMPLE_ENABLE), BM_SETSTYLE, BS_CHECKBOX, FALSE);
            c.Require(c.View().SetCheck(IDC_SAMPLE_ENABLE, true));
          })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_EQ(result.failures.size(), 4u) << result.Report();
  EXPECT_TRUE(FailureMentions(result, {"step #1 'move a trackbar that does not exist'", "no control 9999", "Sample Levels"}));
  EXPECT_TRUE(FailureMentions(result, {"step #2", "not a trackbar"}));
  EXPECT_TRUE(FailureMentions(result, {"step #3", "1007", "disabled"}));
  EXPECT_TRUE(FailureMentions(result, {"step #4", "does not reach the checked state"}));
  EXPECT_FALSE(result.watchdogFired);
  EXPECT_EQ(result.returnValue, IDOK) << "a failed step must not stop the script";
  EXPECT_EQ(result.stepsDone, 5u);
}

TEST(SampleDialogDriving, BadArgumentsShowNoDialogAndTheDriverSaysSo) {
  struct Case {
    const char* name;
    UINT size;
    bool nullParams;
    int expected;
  };
  const Case cases[] = {
      {"null structure", sizeof(QVSAMPLEDLGPARAMS), true, QV_SAMPLE_RESULT_BAD_POINTER},
      {"short structure", sizeof(QVSAMPLEDLGPARAMS) - 2, false, QV_SAMPLE_RESULT_BAD_SIZE},
      {"long structure", sizeof(QVSAMPLEDLGPARAMS) + 4, false, QV_SAMPLE_RESULT_BAD_SIZE},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QVSAMPLEDLGPARAMS params = SampleDefaults();
    params.uStructSize = c.size;
    const QVSAMPLEDLGPARAMS before = params;
    Script script;
    script.ClickOk();
    DialogDriver driver;
    RunResult result = driver.Run(
        [&] { return Q_ShowSampleDialog(nullptr, c.nullParams ? nullptr : &params); }, script);
    EXPECT_EQ(result.returnValue, c.expected);
    EXPECT_FALSE(result.dialogSeen);
    EXPECT_TRUE(FailureMentions(result, {"no window came up", "close with OK"})) << result.Report();
    EXPECT_TRUE(SameParams(params, before));
  }
}

}  // namespace
}  // namespace qv::test
