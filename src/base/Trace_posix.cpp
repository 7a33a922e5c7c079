/*
 * The native trace sink: standard error, where a developer running the native tests sees it.
 */
#include "Trace.h"

#include <cstdio>

namespace qv {

void WriteTraceLine(const char* line) noexcept { std::fputs(line, stderr); }

}  // namespace qv
