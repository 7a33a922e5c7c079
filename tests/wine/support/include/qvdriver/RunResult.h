/*
 * What a driven call produced: the call's return value, how far the script
 * got, the failures (each naming its step) and a trace of every step. Tests
 * assert on Ok() and print Report(); the demo tour prints the same report.
 */
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qv::test {

struct RunResult {
  int returnValue = 0;
  bool dialogSeen = false;
  size_t stepsTotal = 0;
  size_t stepsDone = 0;
  bool watchdogFired = false;
  std::vector<std::string> failures;
  std::vector<std::string> trace;

  bool Ok() const { return failures.empty(); }
  std::string Report() const;
};

}  // namespace qv::test
