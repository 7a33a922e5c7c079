/*
 * ANSI code page to UTF-16 for the Windows build, through MultiByteToWideChar
 * with invalid characters refused.
 */
#include "NarrowText.h"

#include <windows.h>

#include <climits>

namespace qv {

bool NarrowToWide(const char* psz, std::size_t length, std::wstring& out) {
  out.clear();
  if (length == 0) return true;
  if (length > static_cast<std::size_t>(INT_MAX)) return false;
  const int inLength = static_cast<int>(length);
  const int needed = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, psz, inLength, nullptr, 0);
  if (needed <= 0) return false;
  out.resize(static_cast<std::size_t>(needed));
  return MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, psz, inLength, &out[0], needed) == needed;
}

}  // namespace qv
