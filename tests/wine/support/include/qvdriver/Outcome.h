/*
 * The result of one driver action: success, or a message saying what went
 * wrong ("no control 1005 in 'Brightness'"). The driver does not depend on a
 * test framework, so tests turn these into their own assertions and the demo
 * tour prints them.
 */
#pragma once

#include <string>
#include <utility>

namespace qv::test {

class Outcome {
 public:
  static Outcome Ok() { return Outcome(true, {}); }
  static Outcome Fail(std::string message) { return Outcome(false, std::move(message)); }

  explicit operator bool() const { return m_ok; }
  bool IsOk() const { return m_ok; }
  const std::string& Message() const { return m_message; }

 private:
  Outcome(bool ok, std::string message) : m_ok(ok), m_message(std::move(message)) {}
  bool m_ok;
  std::string m_message;
};

}  // namespace qv::test
