/*
 * Builds a trace line in a fixed buffer (a trace is often written because memory ran out) and hands it to the
 * platform's sink.
 */
#include "Trace.h"

#include <exception>

namespace qv {
namespace {

constexpr int kLineChars = 512;

// Appends text to the line at *used, stopping one short of the end for the terminator.
void Append(char (&line)[kLineChars], int* used, const char* text) {
  for (const char* c = text; c && *c && *used < kLineChars - 2; ++c) line[(*used)++] = *c;
}

// The what() of the exception being handled; the pointer stays valid while the caller's handler runs.
const char* CaughtText() noexcept {
  if (!std::current_exception()) return "no exception is being handled";
  try {
    throw;
  } catch (const std::exception& e) {
    return e.what();
  } catch (...) {
    return "an exception of unknown type";
  }
}

}  // namespace

void Trace(const char* where, const char* text) noexcept {
  char line[kLineChars];
  int used = 0;
  Append(line, &used, "QUORVELIX: ");
  Append(line, &used, where);
  Append(line, &used, ": ");
  Append(line, &used, text);
  line[used++] = '\n';
  line[used] = '\0';
  WriteTraceLine(line);
}

void TraceCaughtException(const char* where) noexcept { Trace(where, CaughtText()); }

}  // namespace qv
