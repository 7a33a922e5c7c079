/*
 * WM_NOTIFY from a control to its parent.
 */
#include "ParentNotify.h"

namespace qvctl {

void NotifyParent(HWND control, NMHDR& header, UINT code) {
  HWND parent = control ? ::GetParent(control) : nullptr;
  if (!parent) return;
  header.hwndFrom = control;
  header.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(control));
  header.code = code;
  ::SendMessageW(parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

void NotifyParent(HWND control, UINT code) {
  NMHDR header{};
  NotifyParent(control, header, code);
}

}  // namespace qvctl
