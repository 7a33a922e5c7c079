/*
 * Placeholder take-over: read the stand-in before creating, replace it after.
 */
#include "Placeholder.h"

namespace qvctl {

bool FindPlaceholder(HWND parent, UINT id, Placeholder& placeholder) {
  placeholder.window = parent ? ::GetDlgItem(parent, static_cast<int>(id)) : nullptr;
  if (!placeholder.window) return false;
  ::GetWindowRect(placeholder.window, &placeholder.rect);
  ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&placeholder.rect), 2);
  const LONG_PTR style = ::GetWindowLongPtrW(placeholder.window, GWL_STYLE);
  placeholder.visibleAndDisabled = static_cast<DWORD>(style) & (WS_VISIBLE | WS_DISABLED);
  // A track bar keeps no font; the dialog's is the one it stood in.
  placeholder.font = reinterpret_cast<HFONT>(::SendMessageW(placeholder.window, WM_GETFONT, 0, 0));
  if (!placeholder.font) placeholder.font = reinterpret_cast<HFONT>(::SendMessageW(parent, WM_GETFONT, 0, 0));
  return true;
}

void ReplacePlaceholder(const Placeholder& placeholder, HWND control) {
  // Right after the placeholder in z-order is its place in the tab order.
  ::SetWindowPos(control, placeholder.window, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  if (placeholder.font) ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(placeholder.font), FALSE);
  ::DestroyWindow(placeholder.window);
}

}  // namespace qvctl
