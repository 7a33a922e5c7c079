/*
 * The bitmap list exports: argument checks (handle, bitmap, output pointers, flags) in front of BitmapList.
 */
#include <memory>

#include "AddressCheck.h"
#include "BitmapCheck.h"
#include "BitmapList.h"
#include "ExportGuard.h"

using namespace qv;

QV_EXTERN_C int Q_CreateBitmapList(HBITMAPLIST* phList, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    if (!IsValidAddress(phList, sizeof *phList, Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    const int rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    auto list = std::make_unique<BitmapList>();
    *phList = BitmapList::Register(list.release());
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_InsertBitmapListItem(HBITMAPLIST hList, unsigned int uIndex, const BITMAPHANDLE* p,
                                       unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    BitmapList* list = BitmapList::Lookup(hList);
    if (!list) return QV_ERROR_INVALID_HANDLE;
    int rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckBitmap(p, Access::Read);
    return rc == QV_SUCCESS ? list->Insert(uIndex, *p) : rc;
  });
}

QV_EXTERN_C int Q_RemoveBitmapListItem(HBITMAPLIST hList, unsigned int uIndex, BITMAPHANDLE* pOut,
                                       unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    BitmapList* list = BitmapList::Lookup(hList);
    if (!list) return QV_ERROR_INVALID_HANDLE;
    const int rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (pOut && !IsValidAddress(pOut, sizeof *pOut, Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    return list->Remove(uIndex, pOut);
  });
}

QV_EXTERN_C int Q_GetBitmapListCount(HBITMAPLIST hList, unsigned int* puCount, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    BitmapList* list = BitmapList::Lookup(hList);
    if (!list) return QV_ERROR_INVALID_HANDLE;
    const int rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (!IsValidAddress(puCount, sizeof *puCount, Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    *puCount = list->Count();
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_GetBitmapListItem(HBITMAPLIST hList, unsigned int uIndex, BITMAPHANDLE* pOut,
                                    unsigned int uStructSize, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    BitmapList* list = BitmapList::Lookup(hList);
    if (!list) return QV_ERROR_INVALID_HANDLE;
    const int rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (!IsValidAddress(pOut, sizeof *pOut, Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    if (uStructSize != sizeof(BITMAPHANDLE)) return QV_ERROR_INVALID_STRUCT_SIZE;
    return list->Get(uIndex, pOut);
  });
}

QV_EXTERN_C int Q_DestroyBitmapList(HBITMAPLIST hList, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    const int rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    return BitmapList::Destroy(hList) ? QV_SUCCESS : QV_ERROR_INVALID_HANDLE;
  });
}
