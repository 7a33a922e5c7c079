/*
 * Running the test dialog under the dialog driver, and reading what its
 * panes show.
 */
#pragma once

#include <windows.h>

#include "PreviewTestDialog.h"
#include "QVImageViewer.h"
#include "qvdriver/Capture.h"
#include "qvdriver/DialogDriver.h"

namespace dlgtest {

// Runs the dialog modally and drives it with `script`.
qv::test::RunResult Drive(CPreviewTestDialog& dialog, const qv::test::Script& script);

// The BGR color the view shows at display pixel (x, y) of the bitmap it
// paints at fit zoom (one display pixel per pane pixel).
qv::test::Bgra ShownAt(CQVImageViewer& view, const RECT& imageRect, int x, int y);

// The color of a 24-bit bitmap's pixel as the capture reports it.
qv::test::Bgra ColorOf(const BITMAPHANDLE& b, int x, int y);

}  // namespace dlgtest
