/*
 * Where a dialog opens: at a requested top-left point or centred on its owner,
 * always whole inside the work area of one monitor.
 */
#pragma once

#include <windows.h>

namespace qv {

// Moves the window; QV_SUCCESS or an error code.
int PlaceWindow(HWND hWnd, const POINT* pPoint);

// The top-left that keeps a width x height rectangle wanted at `wanted` whole
// inside `area` (the area's top-left wins when the window is larger).
POINT FitIntoArea(POINT wanted, LONG width, LONG height, const RECT& area);

}  // namespace qv
