/*
 * Reads a window's pixels: the whole window with its frame (a dialog as the
 * user sees it, or one control), or only its client area.
 */
#pragma once

#include <windows.h>

#include "qvdriver/Image.h"

namespace qv::test {

enum class CaptureArea { WholeWindow, Client };

// An empty Image when the window is gone or has no area.
Image CaptureWindow(HWND hwnd, CaptureArea area = CaptureArea::WholeWindow);

}  // namespace qv::test
