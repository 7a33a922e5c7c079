/*
 * The reduction export: the argument checks in their documented order, then the portable reduction. The
 * caller's descriptors are only written on success.
 */
#include "AddressCheck.h"
#include "BitmapCheck.h"
#include "ExportGuard.h"
#include "Reduction.h"

using namespace qv;

QV_EXTERN_C int Q_ReduceBitmapRegion(const BITMAPHANDLE* pSrc, const RECT* pRegion, int nWidth, int nHeight,
                                     BITMAPHANDLE* pDst, unsigned int uStructSize, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckSourceAndNewDescriptor(pSrc, pDst, uStructSize, uFlags);
    if (rc != QV_SUCCESS) return rc;
    if (pRegion && !qv::IsValidAddress(pRegion, sizeof(RECT), qv::Access::Read)) return QV_ERROR_INVALID_PARAMETER;
    const RECT region = pRegion ? *pRegion : RECT{0, 0, pSrc->nWidth, pSrc->nHeight};
    BITMAPHANDLE reduced;
    rc = ReduceBitmapRegion(*pSrc, region, nWidth, nHeight, &reduced);
    if (rc == QV_SUCCESS) *pDst = reduced;
    return rc;
  });
}
