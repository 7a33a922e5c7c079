/*
 * CQVContrastDlg: the contrast dialog. Its behaviour is the single-value family's; this class only picks its
 * row of the member table, so the dialog exists under its own name for the export and for the host's help.
 */
#pragma once

#include "QVToneDlg.h"

class CQVContrastDlg : public CQVToneDlg {
 public:
  CQVContrastDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
      : CQVToneDlg(qvdlg::ToneEffect::kContrast, parent, bitmap, reserved) {}
};
