/*
 * CQVGeneral: layout helpers of the dialogs. AutoFitControls makes a dialog
 * fit its localised texts: a label, button or check box whose text no longer
 * fits is widened, the controls to its right on the same row move by the same
 * amount, and the dialog grows when they would leave it. Nothing is ever
 * made smaller, so a template that already fits stays exactly as designed.
 */
#pragma once

#include <windows.h>

class CQVGeneral {
 public:
  // The dialogs call it as AutoFitControls(hDlg, nullptr, nullptr, 0, 1,
  // nullptr, 0, 0). With fitTexts 0 nothing changes. Returns the number of
  // controls widened, or a negative result code for a window that is not
  // there. The reserved arguments are accepted and ignored.
  static int AutoFitControls(HWND dialog, POINT* reserved1, int* reserved2, int reserved3, int fitTexts,
                             POINT* reserved4, int reserved5, int reserved6);

  // The extra width (pixels) that `control` needs for its text in `font`,
  // 0 when it fits; exposed for the tests and for dialogs with own layouts.
  static int MissingTextWidth(HWND control, HFONT font);
};
