/*
 * The status callback exports: one callback per thread, so two hosts' threads running operations at once
 * each hear only about their own work.
 */
#include "AddressCheck.h"
#include "BitmapCheck.h"
#include "ExportGuard.h"
#include "Parallel.h"

using namespace qv;

QV_EXTERN_C int Q_SetStatusCallBack(pQVSTATUSCALLBACK pfnCallback, void* pUserData, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    const int rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    SetCurrentStatusCallback(StatusCallback{pfnCallback, pfnCallback ? pUserData : nullptr});
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_GetStatusCallBack(pQVSTATUSCALLBACK* ppfnCallback, void** ppUserData, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    const int rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (!IsValidAddress(ppfnCallback, sizeof *ppfnCallback, Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    if (ppUserData && !IsValidAddress(ppUserData, sizeof *ppUserData, Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    const StatusCallback cb = CurrentStatusCallback();
    *ppfnCallback = cb.fn;
    if (ppUserData) *ppUserData = cb.user;
    return QV_SUCCESS;
  });
}
