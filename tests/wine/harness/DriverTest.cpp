/*
 * The driver when a script goes wrong, driving a plain message box: every way
 * a run can get stuck ends the dialog (and a nested modal, innermost first) so
 * the call returns and the failure names the stuck step; a throwing step fails
 * alone; a dialog closed early names the first step that never ran; a driver
 * runs cleanly again after a teardown. Dialog tests rely on all of this to
 * fail instead of hanging, and never see it while their dialogs behave.
 */
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

#include "qvdriver/Capture.h"
#include "qvdriver/DialogDriver.h"
#include "qvdriver/PngFile.h"
#include "qvdriver/TestOutput.h"

namespace qv::test {
namespace {

constexpr wchar_t kCaption[] = L"Driver Test";
constexpr wchar_t kNestedCaption[] = L"Driver Test Nested";

int ShowBox() { return MessageBoxW(nullptr, L"driven", kCaption, MB_OKCANCEL); }

RunOptions Quick(DWORD stepWait, DWORD grace, DWORD timeout) {
  RunOptions o;
  o.stepWaitMs = stepWait;
  o.closeGraceMs = grace;
  o.timeoutMs = timeout;
  return o;
}

// True when one failure message contains every fragment.
bool FailureMentions(const RunResult& result, const std::vector<const char*>& fragments) {
  for (const std::string& failure : result.failures) {
    bool all = true;
    for (const char* fragment : fragments) all = all && failure.find(fragment) != std::string::npos;
    if (all) return true;
  }
  return false;
}

TEST(Driver, EndsStuckRunsNamesTheStepAndRunsAgainCleanly) {
  struct Case {
    const char* name;
    std::function<void(Script&)> build;
    RunOptions options;
    std::vector<const char*> expected;
  };
  const Case cases[] = {
      {"a script that never closes the dialog",
       [](Script& s) { s.Do("look", [](StepContext&) {}); },
       Quick(2000, 300, 20000),
       {"outlived its script", "'Driver Test'", "step #1 'look'"}},
      {"a nested modal nobody answers",
       [](Script& s) {
         s.Do("open a nested box", [](StepContext& c) { MessageBoxW(c.Target(), L"nested", kNestedCaption, MB_OK); });
       },
       Quick(2000, 300, 20000),
       {"outlived its script", "'Driver Test Nested'", "step #1 'open a nested box' had not"}},
      {"a condition that never comes true",
       [](Script& s) {
         s.WaitUntil(
              "never true", [](const DialogView&) { return false; }, 300)
             .ClickOk();
       },
       Quick(2000, 2000, 20000),
       {"step #1 'never true' is stuck"}},
      {"a run past its overall timeout",
       [](Script& s) {
         s.WaitUntil(
              "never true", [](const DialogView&) { return false; }, 60000)
             .ClickOk();
       },
       Quick(60000, 60000, 500),
       {"500 ms timeout", "waiting at step #1 'never true'"}},
  };
  DialogDriver driver;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Script script;
    c.build(script);
    RunResult result = driver.Run(ShowBox, script, c.options);
    EXPECT_TRUE(result.watchdogFired) << result.Report();
    EXPECT_TRUE(FailureMentions(result, c.expected)) << result.Report();
    EXPECT_EQ(result.returnValue, IDCANCEL) << "the watchdog cancels";
    EXPECT_EQ(FindWindowW(nullptr, kCaption), nullptr) << "the dialog outlived the watchdog";
    EXPECT_EQ(FindWindowW(nullptr, kNestedCaption), nullptr) << "the nested box outlived the watchdog";
  }
  // The same driver, right after a teardown, starts from a clean state.
  Script healthy;
  healthy.Expect("the box is up", [](const DialogView& v) { return v.Caption() == kCaption; }).ClickOk();
  RunResult result = driver.Run(ShowBox, healthy);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_FALSE(result.watchdogFired);
  EXPECT_EQ(result.returnValue, IDOK);
}

TEST(Driver, RetriesChecksAndReportsThrowingStepsAndAnEarlyClose) {
  int polls = 0;
  Script script;
  script.WaitUntil("the third look succeeds", [&](const DialogView&) { return ++polls >= 3; })
      .Do("throw from a step", [](StepContext&) { throw std::runtime_error("broken step"); })
      .ClickCancel()
      .Do("after the close", [](StepContext&) {});
  RunResult result = DialogDriver().Run(ShowBox, script);
  EXPECT_EQ(polls, 3) << result.Report();
  EXPECT_EQ(result.returnValue, IDCANCEL) << "the steps after the throwing one still ran";
  EXPECT_FALSE(result.watchdogFired);
  EXPECT_EQ(result.stepsDone, 3u);
  ASSERT_EQ(result.failures.size(), 2u) << result.Report();
  EXPECT_TRUE(FailureMentions(result, {"step #2 'throw from a step'", "broken step"})) << result.Report();
  EXPECT_TRUE(FailureMentions(result, {"closed before step #4 'after the close'"})) << result.Report();
}

TEST(Driver, EndsAWindowThatNeverBecameActive) {
  // A call that shows a window without activating it and waits in its own
  // loop: the hook never sees it, so only the thread's window list can.
  auto call = [] {
    HWND popup = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, L"STATIC", L"Never Active", WS_POPUP, 10, 10, 120,
                                 40, nullptr, nullptr, nullptr, nullptr);
    if (!popup) return -1;
    ShowWindow(popup, SW_SHOWNOACTIVATE);
    MSG msg;
    while (IsWindow(popup) && GetMessageW(&msg, nullptr, 0, 0) > 0) DispatchMessageW(&msg);
    return 7;
  };
  RunResult result = DialogDriver().Run(call, Script{}, Quick(1000, 1000, 400));
  EXPECT_EQ(result.returnValue, 7) << result.Report();
  EXPECT_FALSE(result.dialogSeen);
  EXPECT_TRUE(FailureMentions(result, {"400 ms timeout"})) << result.Report();
  EXPECT_EQ(FindWindowW(nullptr, L"Never Active"), nullptr);
}

TEST(Driver, NothingToCaptureGivesEmptyImagesAndRefusedFiles) {
  EXPECT_TRUE(CaptureWindow(nullptr).Empty());
  EXPECT_TRUE(CaptureWindow(reinterpret_cast<HWND>(static_cast<intptr_t>(0x7FFF0))).Empty());
  EXPECT_FALSE(SavePng(Image{}, TestOutputFile("Driver", L"empty.png")));
  Image tiny;
  tiny.width = 1;
  tiny.height = 1;
  tiny.pixels = {Bgra{1, 2, 3, 255}};
  EXPECT_FALSE(SavePng(tiny, L"Q:\\no\\such\\drive\\x.png")) << "an unwritable path must be reported";
  EXPECT_FALSE(SaveTestScreenshot(nullptr, "Driver", L"none.png")) << "no window, no file";
}

}  // namespace
}  // namespace qv::test
