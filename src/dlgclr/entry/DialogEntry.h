/*
 * The entry sequence every dialog export runs, written once. An export is one line: its row of the export
 * table, its dialog class and its structure. The sequence: switch the module state (a scope object, restored
 * on every way out), the argument checks in their fixed order (readiness, structure, size, demanded bitmap),
 * the owner's window object, the dialog on this stack with the caller's bitmap, the help callback, its user
 * data and the position point, the copy-in, the export's own preparation (local histogram equalization shows
 * its Apply button there), the modal run, and on OK the copy-out. Cancel writes nothing.
 *
 * A dialog class offers: a constructor (parent, bitmap, reserved word), CopyIn(const Params&) and
 * CopyOut(Params&) returning QV_SUCCESS or a code passed through unchanged, and the base dialog's help and
 * position setters. No exception leaves an export: running out of memory gives QV_ERROR_NO_MEMORY, anything
 * else QV_ERROR_DLG_FAILED.
 */
#pragma once

#include <windows.h>

#include "AddressCheck.h"
#include "ArgumentChecks.h"
#include "ExportGuard.h"
#include "ExportInfo.h"
#include "ModuleStateScope.h"
#include "QVBaseDialog.h"
#include "Wnd.h"
#include "qv/qvdlgkrn.h"
#include "qv/qverror.h"

namespace qvdlg {

// The bitmap the dialog gets. When no flag demanded a bitmap its pointer was never checked; one that cannot
// be read is handed on as null, so a stray pointer in an unused field cannot crash the preview.
inline BITMAPHANDLE* BitmapForDialog(BITMAPHANDLE* bitmap) {
  return qv::IsValidAddress(bitmap, sizeof(BITMAPHANDLE), qv::Access::Read) ? bitmap : nullptr;
}

// What an export does to its dialog between the copy-in and the modal run; most do nothing.
struct NoPreparation {
  template <class Dialog, class Params>
  void operator()(Dialog&, const Params&) const {}
};

template <class Dialog, class Params, class Prepare>
int RunDialogSteps(const ExportInfo& info, HWND owner, Params* params, const Prepare& prepare) {
  const int checked = CheckExportArguments(info, Q_DlgIsReady(), params);
  if (checked != QV_SUCCESS) return checked;

  qvfw::CWnd* parent = qvfw::CWnd::FromHandle(owner);
  if (!parent) return QV_ERROR_DLG_FAILED;

  Dialog dialog(parent, BitmapForDialog(params->pBitmap), 0);
  dialog.SetHelpCallback(params->pfnHelpCallback);
  dialog.SetHelpCallBackUserData(params->pHelpCallBackUserData);
  CQVBaseDialog::SetPositionPoint(params->pPositionPoint);

  const int copiedIn = dialog.CopyIn(*params);
  if (copiedIn != QV_SUCCESS) return copiedIn;
  prepare(dialog, *params);

  const INT_PTR modal = dialog.DoModal();
  if (modal == IDCANCEL) return QV_DLG_CANCEL;
  if (modal != IDOK) return QV_ERROR_DLG_FAILED;

  const int copiedOut = dialog.CopyOut(*params);
  return copiedOut == QV_SUCCESS ? QV_DLG_OK : copiedOut;
}

template <class Dialog, class Params, class Prepare = NoPreparation>
int RunDialogExport(ExportId id, HWND owner, Params* params, const Prepare& prepare = {}) noexcept {
  return qv::Guarded(QV_ERROR_DLG_FAILED, [&] {
    const ExportInfo& info = ExportInfoOf(id);
    CModuleStateScope moduleState(info.name);
    return RunDialogSteps<Dialog>(info, owner, params, prepare);
  });
}

}  // namespace qvdlg
