/*
 * Window placement for the dialogs: the requested point (or the owner's
 * centre) picks the monitor, and the window is moved as little as needed to lie
 * whole in that monitor's work area, so a stale point from a monitor that is no
 * longer attached still opens the dialog where the user can reach it.
 */
#include "WindowPlacement_win.h"

#include "qv/qverror.h"

namespace qv {
namespace {

LONG FitAxis(LONG wanted, LONG size, LONG low, LONG high) {
  if (wanted + size > high) wanted = high - size;
  if (wanted < low) wanted = low;
  return wanted;
}

bool WorkAreaAt(POINT point, RECT& area) {
  HMONITOR monitor = MonitorFromPoint(point, MONITOR_DEFAULTTONEAREST);
  MONITORINFO info{};
  info.cbSize = sizeof(info);
  if (!monitor || !GetMonitorInfoW(monitor, &info)) return false;
  area = info.rcWork;
  return true;
}

// The top-left that centres the window on its owner, or on the work area of
// the window's monitor when it has no visible owner.
POINT CentredPosition(HWND hWnd, LONG width, LONG height) {
  HWND owner = GetWindow(hWnd, GW_OWNER);
  if (!owner) owner = GetParent(hWnd);
  RECT frame{};
  if (owner && IsWindowVisible(owner) && !IsIconic(owner) && GetWindowRect(owner, &frame)) {
    return POINT{frame.left + (frame.right - frame.left - width) / 2,
                 frame.top + (frame.bottom - frame.top - height) / 2};
  }
  MONITORINFO info{};
  info.cbSize = sizeof(info);
  if (GetMonitorInfoW(MonitorFromWindow(hWnd, MONITOR_DEFAULTTONEAREST), &info)) frame = info.rcWork;
  return POINT{frame.left + (frame.right - frame.left - width) / 2,
               frame.top + (frame.bottom - frame.top - height) / 2};
}

}  // namespace

POINT FitIntoArea(POINT wanted, LONG width, LONG height, const RECT& area) {
  return POINT{FitAxis(wanted.x, width, area.left, area.right), FitAxis(wanted.y, height, area.top, area.bottom)};
}

int PlaceWindow(HWND hWnd, const POINT* pPoint) {
  RECT frame{};
  if (!GetWindowRect(hWnd, &frame)) return QV_ERROR_PLATFORM;
  const LONG width = frame.right - frame.left;
  const LONG height = frame.bottom - frame.top;
  POINT wanted = pPoint ? *pPoint : CentredPosition(hWnd, width, height);
  // The monitor is chosen by the point asked for (or the centre of the window there).
  POINT probe = pPoint ? wanted : POINT{wanted.x + width / 2, wanted.y + height / 2};
  RECT area{};
  if (!WorkAreaAt(probe, area)) return QV_ERROR_PLATFORM;
  POINT position = FitIntoArea(wanted, width, height, area);
  if (GetWindowLongPtrW(hWnd, GWL_STYLE) & WS_CHILD) {
    HWND parent = GetParent(hWnd);
    if (parent) ScreenToClient(parent, &position);
  }
  if (!SetWindowPos(hWnd, nullptr, position.x, position.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE))
    return QV_ERROR_PLATFORM;
  return QV_SUCCESS;
}

}  // namespace qv
