/*
 * CQVPosterizeDlg: the posterize (2 to 64 levels) dialog. Its behaviour is the single-value family's; this class only
 * picks its row of the member table, so the dialog exists under its own name for the export and for the host's help.
 */
#pragma once

#include "QVToneDlg.h"

class CQVPosterizeDlg : public CQVToneDlg {
 public:
  CQVPosterizeDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
      : CQVToneDlg(qvdlg::ToneEffect::kPosterize, parent, bitmap, reserved) {}
};
