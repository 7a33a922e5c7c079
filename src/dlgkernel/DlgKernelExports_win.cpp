/*
 * The Windows-only C exports of the dialog kernel: readiness, the dialog font
 * and window placement. Failures are result codes; the two queries that hand
 * back a value instead of a code answer "not ready" and "no font" when their
 * guard catches anything.
 */
#include <windows.h>

#include "AddressCheck.h"
#include "DlgKernelState_win.h"
#include "ExportGuard.h"
#include "StringStore.h"
#include "WindowPlacement_win.h"
#include "qv/qvdlgkrn.h"

namespace {

constexpr unsigned int kKnownInitFlags = QV_DLGINIT_GERMAN;

}  // namespace

QV_EXTERN_C int Q_DlgInit(unsigned int uFlags) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (uFlags & ~kKnownInitFlags) return QV_ERROR_INVALID_FLAGS;
    qv::StringStore::Instance().SetLanguage((uFlags & QV_DLGINIT_GERMAN) ? qv::Language::German
                                                                         : qv::Language::English);
    qv::DlgKernelState::Instance().Init();
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DlgFree(void) {
  return qv::Guarded(QV_ERROR_PLATFORM,
                     [] { return qv::DlgKernelState::Instance().Free() ? QV_SUCCESS : QV_ERROR_NOT_INITIALIZED; });
}

QV_EXTERN_C int Q_DlgIsReady(void) {
  const int rc = qv::Guarded(QV_ERROR_PLATFORM, [] {
    return qv::DlgKernelState::Instance().IsReady() ? QV_SUCCESS : QV_ERROR_DLG_NOT_READY;
  });
  return rc == QV_SUCCESS ? 1 : 0;
}

QV_EXTERN_C int Q_DlgSetFont(HFONT hFont) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (hFont && GetObjectType(hFont) != OBJ_FONT) return QV_ERROR_INVALID_PARAMETER;
    qv::DlgKernelState::Instance().SetHostFont(hFont);
    return QV_SUCCESS;
  });
}

QV_EXTERN_C HFONT Q_DlgGetFont(void) {
  HFONT font = nullptr;
  qv::Guarded(QV_ERROR_PLATFORM, [&] {
    font = qv::DlgKernelState::Instance().Font();
    return QV_SUCCESS;
  });
  return font;
}

QV_EXTERN_C int Q_DlgPlaceWindow(HWND hWnd, const POINT* pPoint) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!hWnd || !IsWindow(hWnd)) return QV_ERROR_INVALID_PARAMETER;
    if (pPoint && !qv::IsValidAddress(pPoint, sizeof(*pPoint), qv::Access::Read)) return QV_ERROR_INVALID_PARAMETER;
    return qv::PlaceWindow(hWnd, pPoint);
  });
}
