/*
 * The Windows trace sink: the debugger's output (DebugView, or the debugger a developer has attached).
 */
#include "Trace.h"

#include <windows.h>

namespace qv {

void WriteTraceLine(const char* line) noexcept {
  wchar_t wide[1024];
  const int n = MultiByteToWideChar(CP_UTF8, 0, line, -1, wide, static_cast<int>(sizeof wide / sizeof *wide));
  if (n > 0) OutputDebugStringW(wide);
}

}  // namespace qv
