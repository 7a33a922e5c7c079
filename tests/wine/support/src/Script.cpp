/*
 * Script building and the step context's helpers.
 */
#include "qvdriver/Script.h"

#include <utility>

namespace qv::test {

bool StepContext::Require(const Outcome& outcome) {
  if (!outcome) Fail(outcome.Message());
  return outcome.IsOk();
}

Script& Script::Do(std::string description, StepAction action, DWORD waitMs) {
  m_steps.push_back(Step{std::move(description), std::move(action), waitMs});
  return *this;
}

Script& Script::Expect(std::string description, std::function<bool(const DialogView&)> condition) {
  std::string what = description;
  return Do(std::move(description), [condition, what](StepContext& ctx) {
    if (!condition(ctx.View())) ctx.Fail("expected " + what);
  });
}

Script& Script::WaitUntil(std::string description, std::function<bool(const DialogView&)> condition, DWORD waitMs) {
  std::string what = description;
  return Do(
      std::move(description),
      [condition, what](StepContext& ctx) {
        if (!condition(ctx.View())) ctx.Retry("still waiting until " + what);
      },
      waitMs);
}

Script& Script::ClickOk() {
  return Do("close with OK", [](StepContext& ctx) { ctx.Require(ctx.View().Ok()); });
}

Script& Script::ClickCancel() {
  return Do("close with Cancel", [](StepContext& ctx) { ctx.Require(ctx.View().Cancel()); });
}

}  // namespace qv::test
