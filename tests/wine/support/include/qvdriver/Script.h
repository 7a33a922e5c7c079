/*
 * A script: the ordered steps a driver runs inside a dialog's modal loop.
 * Each step waits until the dialog is up and then runs its action once with a
 * StepContext. An action records failures
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

namespace qv::test {

class StepContext {
 public:
  explicit StepContext(HWND target) : m_target(target) {}

  HWND Target() const { return m_target; }
  DialogView View() const { return DialogView(m_target); }

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
  std::vector<std::string> m_failures;
  bool m_retry = false;
  std::string m_retryReason;
};

using StepAction = std::function<void(StepContext&)>;

struct Step {
  std::string description;
  StepAction action;
  DWORD waitMs = 0;  // 0: the run's default step wait
};

class Script {
 public:
  Script& Do(std::string description, StepAction action, DWORD waitMs = 0);
  // A check that must hold when the step runs.
  Script& Expect(std::string description, std::function<bool(const DialogView&)> condition);
  // A check polled until it holds (or the step's wait runs out).
  Script& WaitUntil(std::string description, std::function<bool(const DialogView&)> condition, DWORD waitMs = 0);
  // The usual closing steps.
  Script& ClickOk();
  Script& ClickCancel();

  const std::vector<Step>& Steps() const { return m_steps; }
  size_t Size() const { return m_steps.size(); }

 private:
  std::vector<Step> m_steps;
};

}  // namespace qv::test
