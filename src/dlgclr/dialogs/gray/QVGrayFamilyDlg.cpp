/*
 * The shared part of the gray conversion and colour balance dialogs (see QVGrayFamilyDlg.h).
 */
#include "QVGrayFamilyDlg.h"

#include "PreviewFlags.h"
#include "QVGeneral.h"
#include "qv/qvdlgclr.h"

CQVGrayFamilyDlg::CQVGrayFamilyDlg(const Face& face, qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
    : CQVBeforeAfterDlg(face.templateId, parent, bitmap, face.dialogId, reserved, 1), m_face(face) {
  SetPaneLabelIds(face.beforeLabelId, face.afterLabelId);
}

void CQVGrayFamilyDlg::TakeCommonFields(int32_t zoomToFit, uint32_t flags) {
  SetZoomToFit(zoomToFit);
  m_uFlags = flags;
}

BOOL CQVGrayFamilyDlg::OnInitDialog() {
  CQVBeforeAfterDlg::OnInitDialog();
  qvdlg::ApplyPreviewFlags(*this, m_uFlags, qvdlg::kStandardToolbarBits);
  CQVGeneral::AutoFitControls(m_hWnd, nullptr, nullptr, 0, 1, nullptr, 0, 0);
  if (!GetHelpCallback()) ShiftOkCancelBtns(0);
  return TRUE;
}

void CQVGrayFamilyDlg::SetDialogStrings() {
  // OK, Cancel, Help, Before and After come from the base.
  CQVBeforeAfterDlg::SetDialogStrings();
  SetTitleString(m_face.titleString);
}

void CQVGrayFamilyDlg::OnOK() {
  if (!PreEndDialog(1)) return;
  // The dialog closes even when the run fails; the export then reports the run's result.
  if (m_uFlags & QVDLG_AUTO_PROCESS) m_nProcessResult = ApplyToCallersBitmap(GetBitmap());
  CQVBeforeAfterDlg::OnOK();
}
