/*
 * The trace a catch-all leaves. No exception may cross an export or a window procedure, so those boundaries
 * catch everything; what they catch is still a fault someone has to find, so each one writes a line to the
 * debugger (OutputDebugStringW on Windows, standard error natively) before it carries on.
 */
#pragma once

namespace qv {

// Writes "QUORVELIX: <where>: <text>" and a line break to the trace sink. Allocates nothing and never
// throws, so it is safe in a handler for std::bad_alloc; longer lines are cut.
void Trace(const char* where, const char* text) noexcept;

// Called inside a catch handler: traces the caught exception's what() (or that its type is unknown).
void TraceCaughtException(const char* where) noexcept;

// Where the line goes; one definition per platform.
void WriteTraceLine(const char* line) noexcept;

}  // namespace qv
