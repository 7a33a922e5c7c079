/*
 * The watchdog: every way a script can get stuck ends the dialog (and any
 * nested modal) so the call returns, and the failure names the stuck step.
 * These tests expect that report, so they pass when the watchdog works.
 */
#include <gtest/gtest.h>

#include <functional>

#include "SampleFixture.h"
#include "resource.h"

namespace qv::test {
namespace {

struct StuckCase {
  const char* name;
  std::function<void(Script&)> build;
  RunOptions options;
  std::vector<const char*> expected;  // fragments of one failure message
};

RunOptions Quick(DWORD stepWait, DWORD grace, DWORD timeout) {
  RunOptions o;
  o.stepWaitMs = stepWait;
  o.closeGraceMs = grace;
  o.timeoutMs = timeout;
  return o;
}

TEST(Watchdog, EndsStuckDialogsAndNamesTheStuckStep) {
  const StuckCase cases[] = {
      {"a script that never closes the dialog",
       [](Script& s) {
         s.Do("drag the level to 60", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 60)); });
       },
       Quick(2000, 300, 20000),
       {"outlived its script", "'Sample Levels'", "step #1 'drag the level to 60'"}},
      {"a step waiting for a window that never appears",
       [](Script& s) {
         s.Do("drag the level to 60", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 60)); })
             .WaitFor(WindowQuery::ByCaption(L"Never Shown"), "wait for the confirmation", 300)
             .ClickOk();
       },
       Quick(2000, 2000, 20000),
       {"step #2 'wait for the confirmation' is stuck", "'Never Shown' did not appear"}},
      {"a nested message box nobody answers",
       [](Script& s) {
         s.Do("click Reset", [](StepContext& c) { c.Require(c.View().Click(IDC_SAMPLE_RESET)); });
       },
       Quick(2000, 300, 20000),
       {"outlived its script", "'Sample Reset'", "step #1 'click Reset' had not returned"}},
      {"a condition that never comes true",
       [](Script& s) {
         s.WaitUntil("the level reaches 99",
                     [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 99; }, 300)
             .ClickOk();
       },
       Quick(2000, 2000, 20000),
       {"step #1 'the level reaches 99' is stuck"}},
      {"a run past its overall timeout",
       [](Script& s) {
         s.WaitUntil("the level reaches 99",
                     [](const DialogView& v) { return v.TrackbarPos(IDC_SAMPLE_LEVEL) == 99; }, 60000)
             .ClickOk();
       },
       Quick(60000, 60000, 500),
       {"500 ms timeout", "waiting at step #1 'the level reaches 99'"}},
  };
  for (const StuckCase& c : cases) {
    SCOPED_TRACE(c.name);
    QVSAMPLEDLGPARAMS params = SampleDefaults();
    const QVSAMPLEDLGPARAMS before = params;
    Script script;
    c.build(script);
    RunResult result = DriveSample(params, script, c.options);
    EXPECT_TRUE(result.watchdogFired) << result.Report();
    EXPECT_TRUE(FailureMentions(result, c.expected))
        << result.Report();
    EXPECT_EQ(result.returnValue, IDCANCEL) << "the watchdog cancels, so the caller's values stay";
    EXPECT_TRUE(SameParams(params, before));
    EXPECT_EQ(FindWindowW(nullptr, L"Sample Levels"), nullptr) << "the dialog outlived the watchdog";
    EXPECT_EQ(FindWindowW(nullptr, L"Sample Reset"), nullptr) << "the message box outlived the watchdog";
  }
}

TEST(Watchdog, OneDriverRunsAgainCleanlyAfterATeardown) {
  DialogDriver driver;
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Script stuck;
  stuck.Do("leave the dialog open", [](StepContext&) {});
  RunResult first = driver.Run([&] { return Q_ShowSampleDialog(nullptr, &params); }, stuck, Quick(1000, 200, 5000));
  ASSERT_TRUE(first.watchdogFired) << first.Report();

  // The same driver, right after a teardown, must start from a clean state.
  Script healthy;
  healthy.Do("drag the level to 70", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 70)); })
      .ClickOk();
  RunResult second = driver.Run([&] { return Q_ShowSampleDialog(nullptr, &params); }, healthy);
  EXPECT_TRUE(second.Ok()) << second.Report();
  EXPECT_FALSE(second.watchdogFired);
  EXPECT_EQ(second.returnValue, IDOK);
  EXPECT_EQ(params.nLevel, 70);

  // Once Run returns its timers are gone: after several tick periods no
  // WM_TIMER may be waiting in this thread's queue.
  Sleep(4 * RunOptions{}.tickMs);
  MSG msg;
  EXPECT_FALSE(PeekMessageW(&msg, nullptr, WM_TIMER, WM_TIMER, PM_NOREMOVE)) << "a step timer outlived its run";
}

TEST(Watchdog, EndsAWindowThatNeverBecameActive) {
  // A call that shows a window without activating it and waits in its own
  // loop: the hook never sees it, so only the thread's window list can.
  auto call = [] {
    HWND popup = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, L"STATIC", L"Never Active", WS_POPUP, 10, 10,
                                 120, 40, nullptr, nullptr, nullptr, nullptr);
    if (!popup) return -1;
    ShowWindow(popup, SW_SHOWNOACTIVATE);
    MSG msg;
    while (IsWindow(popup) && GetMessageW(&msg, nullptr, 0, 0) > 0) DispatchMessageW(&msg);
    return 7;
  };
  DialogDriver driver;
  RunResult result = driver.Run(call, Script{}, Quick(1000, 1000, 400));
  EXPECT_EQ(result.returnValue, 7) << result.Report();
  EXPECT_FALSE(result.dialogSeen);
  EXPECT_TRUE(result.watchdogFired);
  EXPECT_TRUE(FailureMentions(result, {"400 ms timeout"})) << result.Report();
  EXPECT_EQ(FindWindowW(nullptr, L"Never Active"), nullptr);
}

}  // namespace
}  // namespace qv::test
