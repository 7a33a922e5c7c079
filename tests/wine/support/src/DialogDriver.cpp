/*
 * The driver's run loop: hook and timer plumbing, step dispatch, the watchdog
 * and the teardown of a stuck modal stack. Nothing here may throw into the
 * system's message dispatch, so step actions run under a catch-all that turns
 * an exception into a failure of that step.
 */
#include "qvdriver/DialogDriver.h"

#include <algorithm>
#include <exception>

#include "qvdriver/WindowText.h"

namespace qv::test {
namespace {

// The driver whose run is active on this thread; hooks and timer procedures
// have no user pointer, so they route through this.
thread_local DialogDriver* t_active = nullptr;

// Teardown rounds (one a tick) of polite closing before windows are destroyed.
constexpr int kPoliteRounds = 20;

}  // namespace

std::string RunResult::Report() const {
  std::string text = "steps done " + std::to_string(stepsDone) + " of " + std::to_string(stepsTotal) +
                     ", call returned " + std::to_string(returnValue) + (dialogSeen ? "" : ", no dialog seen") +
                     (watchdogFired ? ", ended by the watchdog" : "");
  for (const std::string& f : failures) text += "\n  failure: " + f;
  for (const std::string& t : trace) text += "\n  trace: " + t;
  return text;
}

RunResult DialogDriver::Run(const std::function<int()>& call, const Script& script, const RunOptions& options) {
  m_script = &script;
  m_options = options;
  m_result = RunResult{};
  m_result.stepsTotal = script.Size();
  m_stack = ModalStack{};
  m_next = 0;
  m_waitIndex = static_cast<size_t>(-1);
  m_scriptEnd = 0;
  m_running.clear();
  m_tearingDown = false;
  m_teardownRounds = 0;

  m_previous = t_active;
  t_active = this;
  m_hook.Reset(SetWindowsHookExW(WH_CBT, CbtProc, nullptr, GetCurrentThreadId()));
  m_tick.Reset(SetTimer(nullptr, 0, m_options.tickMs, TickProc));
  m_watchdog.Reset(SetTimer(nullptr, 0, m_options.timeoutMs, TickProc));
  if (!m_hook || !m_tick || !m_watchdog) {
    m_result.failures.push_back("could not install the CBT hook or the step timers");
    Finish(false);
    return m_result;
  }
  bool returned = false;
  try {
    m_result.returnValue = call();
    returned = true;
  } catch (const std::exception& e) {
    m_result.failures.push_back(std::string("the call threw: ") + e.what());
  } catch (...) {
    m_result.failures.push_back("the call threw an unknown exception");
  }
  Finish(returned);
  return m_result;
}

void DialogDriver::Finish(bool callReturned) {
  m_tick.Reset();
  m_watchdog.Reset();
  m_hook.Reset();
  t_active = m_previous;
  m_result.dialogSeen = m_stack.AnySeen();
  m_result.stepsDone = std::min(m_next, m_script->Size());
  if (!callReturned || m_tearingDown) return;
  if (!m_result.dialogSeen && m_script->Size() > 0)
    m_result.failures.push_back("no window came up, so " + StepName(0) + " never ran");
  else if (m_next < m_script->Size())
    m_result.failures.push_back("the dialog closed before " + StepName(m_next) + " ran");
}

LRESULT CALLBACK DialogDriver::CbtProc(int code, WPARAM wParam, LPARAM lParam) {
  if (DialogDriver* self = t_active) {
    if (code == HCBT_ACTIVATE) self->m_stack.OnActivate(reinterpret_cast<HWND>(wParam));
    if (code == HCBT_DESTROYWND) self->m_stack.OnDestroy(reinterpret_cast<HWND>(wParam));
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK DialogDriver::TickProc(HWND, UINT, UINT_PTR id, DWORD) {
  DialogDriver* self = t_active;
  if (!self) return;
  if (id == self->m_watchdog.Get()) {
    self->OnWatchdog();
  } else if (id == self->m_tick.Get()) {
    self->OnTick();
  }
}

std::string DialogDriver::StepName(size_t index) const {
  if (index >= m_script->Size()) return "the end of the script";
  return "step #" + std::to_string(index + 1) + " '" + m_script->Steps()[index].description + "'";
}

std::string DialogDriver::RunningSteps() const {
  std::string text;
  for (size_t index : m_running) text += (text.empty() ? "" : ", ") + StepName(index);
  return text;
}

bool DialogDriver::StepWaitExpired(const Step& step) const {
  DWORD wait = step.waitMs ? step.waitMs : m_options.stepWaitMs;
  return GetTickCount64() - m_waitStart > wait;
}

void DialogDriver::OnTick() {
  if (m_tearingDown) {
    ContinueTeardown();
    return;
  }
  if (!m_stack.AnySeen()) return;
  const auto& steps = m_script->Steps();
  if (m_next >= steps.size()) {
    if (!m_stack.AnyAlive()) return;
    if (m_scriptEnd == 0) m_scriptEnd = GetTickCount64();
    if (GetTickCount64() - m_scriptEnd <= m_options.closeGraceMs) return;
    std::string still = m_running.empty() ? "" : "; " + RunningSteps() + " had not returned";
    Abort("the dialog outlived its script: '" + Narrow(WindowCaption(m_stack.Innermost())) + "' was still open after " +
          StepName(steps.size() - 1) + still);
    return;
  }
  size_t index = m_next;
  if (m_waitIndex != index) {
    m_waitIndex = index;
    m_waitStart = GetTickCount64();
  }
  const Step& step = steps[index];
  HWND target = m_stack.Outermost();
  if (!target) {
    if (StepWaitExpired(step)) Abort(StepName(index) + " is stuck: the dialog did not appear");
    return;
  }
  RunStep(index, target);
}

void DialogDriver::RunStep(size_t index, HWND target) {
  const Step& step = m_script->Steps()[index];
  m_next = index + 1;
  m_running.push_back(index);
  StepContext ctx(target);
  try {
    step.action(ctx);
  } catch (const std::exception& e) {
    ctx.Fail(std::string("threw: ") + e.what());
  } catch (...) {
    ctx.Fail("threw an unknown exception");
  }
  m_running.erase(std::remove(m_running.begin(), m_running.end(), index), m_running.end());
  for (const std::string& f : ctx.Failures()) m_result.failures.push_back(StepName(index) + ": " + f);
  if (ctx.WantsRetry() && ctx.Failures().empty() && !m_tearingDown) {
    // Only a step that opened no nested loop can be retried in place; later
    // steps that already ran under it cannot be undone.
    if (m_next != index + 1) {
      m_result.failures.push_back(StepName(index) + ": " + ctx.RetryReason() +
                                  ", and later steps already ran inside it, so it cannot be retried");
    } else if (StepWaitExpired(step)) {
      Abort(StepName(index) + " is stuck: " + ctx.RetryReason());
      return;
    } else {
      m_next = index;
      return;
    }
  }
  m_result.trace.push_back(StepName(index) + (ctx.Failures().empty() && !ctx.WantsRetry() ? ": ok" : ": failed"));
}

void DialogDriver::OnWatchdog() {
  m_watchdog.Reset();
  if (m_tearingDown) return;
  std::string where = !m_running.empty() ? RunningSteps() + " had not returned" : "waiting at " + StepName(m_next);
  Abort("the run passed its " + std::to_string(m_options.timeoutMs) + " ms timeout; " + where);
}

void DialogDriver::Abort(const std::string& why) {
  m_result.failures.push_back(why);
  m_result.watchdogFired = true;
  m_tearingDown = true;
  m_result.trace.push_back("watchdog: ending " + std::to_string(m_stack.LivingInnermostFirst().size()) +
                           " window(s), innermost first");
  ContinueTeardown();
}

void DialogDriver::ContinueTeardown() {
  // Repeated every tick: a nested loop that was flagged ends only when control
  // returns to it, and its owner may bring up another window meanwhile.
  ++m_teardownRounds;
  m_stack.EndAll(m_teardownRounds > kPoliteRounds);
}

}  // namespace qv::test
