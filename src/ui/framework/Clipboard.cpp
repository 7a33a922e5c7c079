/*
 * Reads the clipboard's Unicode text; the clipboard is opened and closed
 * around the copy so no other program is kept waiting.
 */
#include "Clipboard.h"

namespace qvfw {

std::wstring ReadClipboardText(HWND owner) {
  std::wstring text;
  if (!::OpenClipboard(owner)) return text;
  if (HANDLE data = ::GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* chars = static_cast<const wchar_t*>(::GlobalLock(data))) {
      text = chars;
      ::GlobalUnlock(data);
    }
  }
  ::CloseClipboard();
  return text;
}

}  // namespace qvfw
