/*
 * The exports of the seven single-value dialogs, each one line over the shared entry sequence.
 */
#include "QVBrightnessDlg.h"
#include "QVContrastDlg.h"
#include "QVHistoContrastDlg.h"
#include "QVHueDlg.h"
#include "QVPosterizeDlg.h"
#include "QVSaturationDlg.h"
#include "QVSolarizeDlg.h"
#include "DialogEntry.h"
#include "qv/qvdlgclr.h"

using qvdlg::ExportId;
using qvdlg::RunDialogExport;

extern "C" {

int Q_DlgBrightness(HWND hWndOwner, QVBRIGHTNESSDLGPARAMS* pParams) {
  return RunDialogExport<CQVBrightnessDlg>(ExportId::kBrightness, hWndOwner, pParams);
}
int Q_DlgContrast(HWND hWndOwner, QVCONTRASTDLGPARAMS* pParams) {
  return RunDialogExport<CQVContrastDlg>(ExportId::kContrast, hWndOwner, pParams);
}
int Q_DlgHue(HWND hWndOwner, QVHUEDLGPARAMS* pParams) {
  return RunDialogExport<CQVHueDlg>(ExportId::kHue, hWndOwner, pParams);
}
int Q_DlgSaturation(HWND hWndOwner, QVSATURATIONDLGPARAMS* pParams) {
  return RunDialogExport<CQVSaturationDlg>(ExportId::kSaturation, hWndOwner, pParams);
}
int Q_DlgHistoContrast(HWND hWndOwner, QVHISTOCONTRASTDLGPARAMS* pParams) {
  return RunDialogExport<CQVHistoContrastDlg>(ExportId::kHistoContrast, hWndOwner, pParams);
}
int Q_DlgPosterize(HWND hWndOwner, QVPOSTERIZEDLGPARAMS* pParams) {
  return RunDialogExport<CQVPosterizeDlg>(ExportId::kPosterize, hWndOwner, pParams);
}
int Q_DlgSolarize(HWND hWndOwner, QVSOLARIZEDLGPARAMS* pParams) {
  return RunDialogExport<CQVSolarizeDlg>(ExportId::kSolarize, hWndOwner, pParams);
}

}  // extern "C"
