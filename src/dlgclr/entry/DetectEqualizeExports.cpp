/*
 * The exports of the intensity detect and local histogram equalization dialogs, each one line over the shared
 * entry sequence. Local histogram equalization shows its Apply button when the host asks with
 * QVDLG_SHOW_APPLY, before the dialog runs.
 */
#include "DialogEntry.h"
#include "QVIntensityDetectDlg.h"
#include "QVLocalHistoEqualizeDlg.h"
#include "qv/qvdlgclr.h"

using qvdlg::ExportId;
using qvdlg::RunDialogExport;

namespace {

void ShowApplyWhenAsked(CQVLocalHistoEqualizeDlg& dialog, const QVLOCALHISTOEQUALIZEDLGPARAMS& params) {
  if (params.uDlgFlags & QVDLG_SHOW_APPLY) dialog.UseApplyButton(1);
}

}  // namespace

extern "C" {

int Q_DlgIntensityDetect(HWND hWndOwner, QVINTENSITYDETECTDLGPARAMS* pParams) {
  return RunDialogExport<CQVIntensityDetectDlg>(ExportId::kIntensityDetect, hWndOwner, pParams);
}
int Q_DlgLocalHistoEqualize(HWND hWndOwner, QVLOCALHISTOEQUALIZEDLGPARAMS* pParams) {
  return RunDialogExport<CQVLocalHistoEqualizeDlg>(ExportId::kLocalHistoEqualize, hWndOwner, pParams,
                                                   ShowApplyWhenAsked);
}

}  // extern "C"
