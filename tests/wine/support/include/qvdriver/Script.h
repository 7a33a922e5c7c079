/*
 * A script: the ordered steps a driver runs inside a dialog's modal loop.
 * Each step names its window (WindowQuery), waits until that window is up and
 * then runs its action once with a StepContext. An action records failures
 * through the context; a check whose condition is not met yet asks to be
 * retried, and is run again on the next tick until the step's wait ends.
 */
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "qvdriver/DialogView.h"
#include "qvdriver/Outcome.h"
#include "qvdriver/WindowQuery.h"

namespace qv::test {

class ModalStack;

class StepContext {
 public:
  StepContext(HWND target, const ModalStack& stack) : m_target(target), m_stack(stack) {}

  HWND Target() const { return m_target; }
  DialogView View() const { return DialogView(m_target); }
  // Another window of the call, for a step that looks beyond its own.
  HWND Find(const WindowQuery& query) const;

  void Fail(std::string message) { m_failures.push_back(std::move(message)); }
  // Records the outcome's message when it failed; answers whether it succeeded.
  bool Require(const Outcome& outcome);
  // The step's condition does not hold yet: run it again on the next tick.
  void Retry(std::string why) {
    m_retry = true;
    m_retryReason = std::move(why);
  }

  const std::vector<std::string>& Failures() const { return m_failures; }
  bool WantsRetry() const { return m_retry; }
  const std::string& RetryReason() const { return m_retryReason; }

 private:
  HWND m_target;
  const ModalStack& m_stack;
  std::vector<std::string> m_failures;
  bool m_retry = false;
  std::string m_retryReason;
};

using StepAction = std::function<void(StepContext&)>;

struct Step {
  std::string description;
  WindowQuery target;
  StepAction action;
  DWORD waitMs = 0;  // 0: the run's default step wait
};

class Script {
 public:
  // A step on the main dialog.
  Script& Do(std::string description, StepAction action);
  // A step on another window, run once that window is up.
  Script& DoIn(WindowQuery target, std::string description, StepAction action, DWORD waitMs = 0);
  // A check on the main dialog that must hold when the step runs.
  Script& Expect(std::string description, std::function<bool(const DialogView&)> condition);
  // A check polled until it holds (or the step's wait runs out).
  Script& WaitUntil(std::string description, std::function<bool(const DialogView&)> condition, DWORD waitMs = 0);
  // Waits for a window to appear without acting on it.
  Script& WaitFor(WindowQuery target, std::string description, DWORD waitMs = 0);
  // The usual closing steps.
  Script& ClickOk();
  Script& ClickCancel();

  const std::vector<Step>& Steps() const { return m_steps; }
  size_t Size() const { return m_steps.size(); }

 private:
  std::vector<Step> m_steps;
};

}  // namespace qv::test
