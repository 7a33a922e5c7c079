/*
 * How steps follow one another: a posted click returns at once and the next
 * step waits for the modal it opens, a blocking click lets later steps run
 * inside the nested loop, checks are retried until they hold, and a step that
 * throws fails alone without taking the run down.
 */
#include <gtest/gtest.h>

#include <stdexcept>

#include "SampleFixture.h"
#include "resource.h"

namespace qv::test {
namespace {

TEST(StepFlow, PostedAndBlockingClicksBothReachTheNestedMessageBox) {
  struct Case {
    const char* name;
    bool posted;
    int answer;
    int expectedLevel;
  };
  const Case cases[] = {
      {"posted click, answered No", true, IDNO, 40},
      {"posted click, answered Yes", true, IDYES, 0},
      {"blocking click, answered No", false, IDNO, 40},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QVSAMPLEDLGPARAMS params = SampleDefaults();
    params.nLevel = 40;
    bool clickReturnedBeforeAnswer = false;
    bool answered = false;
    Script script;
    script
        .Do("click Reset",
            [&](StepContext& ctx) {
              ctx.Require(c.posted ? ctx.View().PostClick(IDC_SAMPLE_RESET) : ctx.View().Click(IDC_SAMPLE_RESET));
              clickReturnedBeforeAnswer = !answered;
            })
        .DoIn(WindowQuery::Top(), "answer the innermost window",
              [&](StepContext& ctx) {
                if (ctx.View().Caption() != L"Sample Reset") return ctx.Fail("the innermost window is not the box");
                answered = true;
                ctx.Require(ctx.View().Click(c.answer));
              })
        .WaitUntil("the box is gone and the level settled",
                   [&](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == c.expectedLevel; })
        .ClickOk();
    RunResult result = DriveSample(params, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
    EXPECT_EQ(params.nLevel, c.expectedLevel);
    EXPECT_EQ(clickReturnedBeforeAnswer, c.posted) << "a posted click returns at once, a sent one after the box";
  }
}

TEST(StepFlow, ChecksAreRetriedUntilTheyHoldAndThrowingStepsFailAlone) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  int polls = 0;
  Script script;
  script
      .WaitUntil("the third look succeeds", [&](const DialogView&) { return ++polls >= 3; })
      .Do("throw from a step", [](StepContext&) { throw std::runtime_error("broken step"); })
      .Do("drag the level to 55", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 55)); })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_EQ(polls, 3) << result.Report();
  ASSERT_EQ(result.failures.size(), 1u) << result.Report();
  EXPECT_TRUE(FailureMentions(result, {"step #2 'throw from a step'", "broken step"}));
  EXPECT_FALSE(result.watchdogFired);
  EXPECT_EQ(result.stepsDone, 4u);
  EXPECT_EQ(params.nLevel, 55) << "the steps after the throwing one still ran";
}

TEST(StepFlow, PostedKeysGoThroughTheDialogManager) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.Do("Tab out of the level edit", [](StepContext& c) { c.Require(c.View().PostKey(IDC_SAMPLE_LEVEL_EDIT, VK_TAB)); })
      .Expect("the focus moved on to the channel combo",
              [](const DialogView& v) { return v.FocusedId() == IDC_SAMPLE_CHANNEL; })
      .Do("open the note dialog", [](StepContext& c) { c.Require(c.View().PostClick(IDC_SAMPLE_NOTE)); })
      .DoIn(WindowQuery::ByCaption(L"Sample Note"), "type a note and press Enter",
            [](StepContext& c) {
              c.Require(c.View().SetEditText(IDC_NOTE_EDIT, L"typed"));
              c.Require(c.View().PostKey(IDC_NOTE_EDIT, VK_RETURN));
            })
      .WaitUntil("Enter pressed the default button",
                 [](const DialogView& v) { return v.Text(IDC_SAMPLE_NOTE_TEXT) == std::wstring(L"typed"); })
      .Do("press Escape", [](StepContext& c) { c.Require(c.View().PostKey(IDC_SAMPLE_CHANNEL, VK_ESCAPE)); });
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, IDCANCEL) << "Escape is Cancel";
  EXPECT_EQ(params.szNote[0], L'\0') << "Cancel keeps the caller's note";
}

TEST(StepFlow, TheStandardColorDialogIsDrivenLikeOurOwn) {
  // The common colour dialog's red, green and blue edits.
  constexpr int kRedEdit = 706, kGreenEdit = 707, kBlueEdit = 708;
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.Do("click Color", [](StepContext& c) { c.Require(c.View().Click(IDC_SAMPLE_COLOR)); })
      .DoIn(WindowQuery::ByClass(L"#32770"), "type 10, 20, 30 and confirm",
            [](StepContext& c) {
              if (c.Target() == c.Find(WindowQuery::Main())) return c.Retry("the colour dialog is not up yet");
              c.Require(c.View().SetEditText(kRedEdit, L"10"));
              c.Require(c.View().SetEditText(kGreenEdit, L"20"));
              c.Require(c.View().SetEditText(kBlueEdit, L"30"));
              c.Require(c.View().Ok());
            })
      .Expect("the picked colour is shown",
              [](const DialogView& v) { return v.Text(IDC_SAMPLE_COLOR_TEXT) == std::wstring(L"#0A141E"); })
      .ClickCancel();
  RunResult result = DriveSample(params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(StepFlow, TheStandardSaveDialogIsFoundByCaptionAndAnswered) {
  // The explorer-style file dialog's file name box.
  constexpr int kFileNameCombo = 1148;
  wchar_t temp[MAX_PATH] = {};
  ASSERT_GT(GetTempPathW(MAX_PATH, temp), 0u);
  const std::wstring target = std::wstring(temp) + L"qv-driver-save.txt";
  DeleteFileW(target.c_str());
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.Do("click File", [](StepContext& c) { c.Require(c.View().Click(IDC_SAMPLE_FILE)); })
      .DoIn(WindowQuery::ByCaption(L"Save As"), "type a path and save",
            [&target](StepContext& c) {
              c.Require(c.View().SetEditText(kFileNameCombo, target));
              c.Require(c.View().Ok());
            })
      .Expect("the chosen path is shown",
              [&target](const DialogView& v) { return v.Text(IDC_SAMPLE_FILE_TEXT) == target; })
      .ClickCancel();
  RunOptions options;
  options.stepWaitMs = 15000;
  RunResult result = DriveSample(params, script, options);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(StepFlow, AStepAskingForARetryAfterNestedStepsRanIsReportedNotRepeated) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  int resetClicks = 0;
  Script script;
  script
      .Do("click Reset, then ask to look again",
          [&](StepContext& c) {
            ++resetClicks;
            c.Require(c.View().Click(IDC_SAMPLE_RESET));
            c.Retry("the level is not what this step hoped for");
          })
      .DoIn(WindowQuery::ByCaption(L"Sample Reset"), "answer No",
            [](StepContext& c) { c.Require(c.View().Click(IDNO)); })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  EXPECT_EQ(resetClicks, 1) << "repeating the step would open the box again";
  EXPECT_TRUE(FailureMentions(result, {"step #1", "cannot be retried"})) << result.Report();
  EXPECT_EQ(result.returnValue, IDOK);
  EXPECT_FALSE(result.watchdogFired);
}

TEST(StepFlow, ADialogClosedEarlyNamesTheFirstStepThatNeverRan) {
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script script;
  script.ClickCancel().Do("drag the level to 10",
                          [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 10)); });
  RunResult result = DriveSample(params, script);
  EXPECT_EQ(result.returnValue, IDCANCEL);
  EXPECT_EQ(result.stepsDone, 1u);
  EXPECT_TRUE(FailureMentions(result, {"closed before step #2 'drag the level to 10'"})) << result.Report();
  EXPECT_FALSE(result.watchdogFired);
}

}  // namespace
}  // namespace qv::test
