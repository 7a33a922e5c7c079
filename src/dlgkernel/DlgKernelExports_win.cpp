/*
 * The Windows-only C exports of the dialog kernel: readiness, the dialog font
 * and window placement. Nothing here throws; failures are result codes.
 */
#include <windows.h>

#include "DlgKernelState_win.h"
#include "MemoryCheck.h"
#include "StringStore.h"
#include "WindowPlacement_win.h"
#include "qv/qvdlgkrn.h"

namespace {

constexpr unsigned int kKnownInitFlags = QV_DLGINIT_GERMAN;

}  // namespace

QV_EXTERN_C int Q_DlgInit(unsigned int uFlags) {
  if (uFlags & ~kKnownInitFlags) return QV_ERROR_INVALID_FLAGS;
  qv::StringStore::Instance().SetLanguage((uFlags & QV_DLGINIT_GERMAN) ? qv::Language::German
                                                                       : qv::Language::English);
  qv::DlgKernelState::Instance().Init();
  return QV_SUCCESS;
}

QV_EXTERN_C int Q_DlgFree(void) {
  return qv::DlgKernelState::Instance().Free() ? QV_SUCCESS : QV_ERROR_NOT_INITIALIZED;
}

QV_EXTERN_C int Q_DlgIsReady(void) { return qv::DlgKernelState::Instance().IsReady() ? 1 : 0; }

QV_EXTERN_C int Q_DlgSetFont(HFONT hFont) {
  if (hFont && GetObjectType(hFont) != OBJ_FONT) return QV_ERROR_INVALID_PARAMETER;
  qv::DlgKernelState::Instance().SetHostFont(hFont);
  return QV_SUCCESS;
}

QV_EXTERN_C HFONT Q_DlgGetFont(void) { return qv::DlgKernelState::Instance().Font(); }

QV_EXTERN_C int Q_DlgPlaceWindow(HWND hWnd, const POINT* pPoint) {
  if (!hWnd || !IsWindow(hWnd)) return QV_ERROR_INVALID_PARAMETER;
  if (pPoint && !qv::IsReadableMemory(pPoint, sizeof(*pPoint))) return QV_ERROR_INVALID_PARAMETER;
  return qv::PlaceWindow(hWnd, pPoint);
}
