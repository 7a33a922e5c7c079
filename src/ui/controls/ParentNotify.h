/*
 * The controls tell their parent of a change the user made with WM_NOTIFY:
 * a header naming the control and a code, possibly at the head of a larger
 * structure with the details.
 */
#pragma once

#include <windows.h>

namespace qvctl {

// Fills `header` from `control` and sends it to the control's parent;
// nothing is sent when the control has no parent.
void NotifyParent(HWND control, NMHDR& header, UINT code);
void NotifyParent(HWND control, UINT code);

}  // namespace qvctl
