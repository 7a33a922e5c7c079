/*
 * The exports of the gray conversion and colour balance dialogs, each one line over the shared entry sequence.
 */
#include "DialogEntry.h"
#include "QVBalanceColorsDlg.h"
#include "QVColoredGrayDlg.h"
#include "QVGrayScaleDlg.h"
#include "qv/qvdlgclr.h"

using qvdlg::ExportId;
using qvdlg::RunDialogExport;

extern "C" {

int Q_DlgBalanceColors(HWND hWndOwner, QVBALANCECOLORSDLGPARAMS* pParams) {
  return RunDialogExport<CQVBalanceColorsDlg>(ExportId::kBalanceColors, hWndOwner, pParams);
}
int Q_DlgGrayScale(HWND hWndOwner, QVGRAYSCALEDLGPARAMS* pParams) {
  return RunDialogExport<CQVGrayScaleDlg>(ExportId::kGrayScale, hWndOwner, pParams);
}
int Q_DlgColoredGray(HWND hWndOwner, QVCOLOREDGRAYDLGPARAMS* pParams) {
  return RunDialogExport<CQVColoredGrayDlg>(ExportId::kColoredGray, hWndOwner, pParams);
}

}  // extern "C"
