/*
 * Runs a call that shows a modal dialog and drives that dialog from inside
 * its own modal loop.
 *
 * How it works. Run() installs a CBT hook for the calling thread and two
 * thread timers (SetTimer with no window and a TIMERPROC), then makes the
 * call on the same thread. The hook records every window of the thread that
 * becomes active (the dialog, then any nested modal) in a ModalStack. Thread
 * timers are dispatched by whichever message loop runs, the dialog's modal
 * loop or a nested one (MessageBox, a nested dialog, the common colour or
 * file dialog), so each tick runs the next step of the script there.
 *
 * Re-entrancy. A step that clicks a button which opens a nested modal does not
 * return until that modal closes; meanwhile the next ticks run the next steps
 * inside the nested loop. The step index is claimed before a step's action
 * runs, so nested ticks move on.
 *
 * Watchdog. The second timer fires at the run's timeout. A step whose window
 * does not appear, or whose condition does not come true, within its wait, a
 * dialog still open a short while after the last step, and a run past its
 * timeout all record a failure naming the step (index and description). The
 * driver then ends every window of the modal stack innermost first (EndDialog
 * for dialogs, WM_CLOSE otherwise, DestroyWindow if they still refuse), so
 * the call returns and the test fails with that message instead of hanging.
 *
 * Runs may nest (a step may itself run a driven call with another driver);
 * each run restores the previous one's hook routing when it ends.
 *
 * Typical use in a test:
 *   Script script;
 *   script.Do("drag to 40", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_X, 40)); })
 *       .Expect("the edit follows", [](const DialogView& v) { return v.Text(IDC_E) == L"40"; })
 *       .ClickOk();
 *   RunResult r = DialogDriver().Run([&] { return Q_DlgSomething(hwnd, &params); }, script);
 *   EXPECT_TRUE(r.Ok()) << r.Report();
 */
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "qvdriver/ModalStack.h"
#include "qvdriver/RunResult.h"
#include "qvdriver/Script.h"
#include "qvdriver/WinHandles.h"

namespace qv::test {

struct RunOptions {
  DWORD timeoutMs = 20000;    // the whole call, steps and all
  DWORD stepWaitMs = 5000;    // default wait for a step's window or condition
  DWORD closeGraceMs = 3000;  // how long the dialog may stay after the last step
  DWORD tickMs = 25;          // step pacing
};

class DialogDriver {
 public:
  DialogDriver() = default;
  DialogDriver(const DialogDriver&) = delete;
  DialogDriver& operator=(const DialogDriver&) = delete;

  RunResult Run(const std::function<int()>& call, const Script& script, const RunOptions& options = {});

 private:
  static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
  static void CALLBACK TickProc(HWND, UINT, UINT_PTR id, DWORD);

  void OnTick();
  void OnWatchdog();
  void RunStep(size_t index, HWND target);
  bool StepWaitExpired(const Step& step) const;
  void Abort(const std::string& why);
  void ContinueTeardown();
  std::string StepName(size_t index) const;
  std::string RunningSteps() const;
  void Finish(bool callReturned);

  const Script* m_script = nullptr;
  RunOptions m_options;
  RunResult m_result;
  ModalStack m_stack;
  UniqueHook m_hook;
  UniqueThreadTimer m_tick;
  UniqueThreadTimer m_watchdog;
  size_t m_next = 0;
  size_t m_waitIndex = static_cast<size_t>(-1);
  ULONGLONG m_waitStart = 0;
  ULONGLONG m_scriptEnd = 0;
  std::vector<size_t> m_running;
  bool m_tearingDown = false;
  int m_teardownRounds = 0;
  DialogDriver* m_previous = nullptr;
};

}  // namespace qv::test
