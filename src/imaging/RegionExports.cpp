/*
 * The region exports. A region is a rectangle inside the bitmap, optionally narrowed by a per-pixel mask;
 * the mask is copied into a kernel block so the caller's buffer may go away, and replacing or removing a
 * region releases the previous mask.
 */
#include <cstring>

#include "AddressCheck.h"
#include "Bitmap.h"
#include "BitmapCheck.h"
#include "ExportGuard.h"

using namespace qv;

namespace {

int CheckRectInside(const BITMAPHANDLE& b, const RECT* r) {
  if (!IsValidAddress(r, sizeof(RECT), Access::Read)) return QV_ERROR_INVALID_PARAMETER;
  if (r->left < 0 || r->top < 0 || r->right > b.nWidth || r->bottom > b.nHeight || r->left >= r->right ||
      r->top >= r->bottom)
    return QV_ERROR_BAD_REGION;
  return QV_SUCCESS;
}

void DropRegion(BITMAPHANDLE* p) {
  FreePixels(p->pRgnMask);
  p->pRgnMask = nullptr;
  p->nRgnMaskStride = 0;
  p->uRgnFlags = 0;
  p->rcRgn = RECT{0, 0, 0, 0};
}

}  // namespace

QV_EXTERN_C int Q_SetBitmapRgnRect(BITMAPHANDLE* p, const RECT* pRect, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Write);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckRectInside(*p, pRect);
    if (rc != QV_SUCCESS) return rc;
    const RECT r = *pRect;
    DropRegion(p);
    p->rcRgn = r;
    p->uRgnFlags = QV_RGN_SET;
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_SetBitmapRgnMask(BITMAPHANDLE* p, const RECT* pBounds, const uint8_t* pMask, int nMaskStride,
                                   unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Write);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckRectInside(*p, pBounds);
    if (rc != QV_SUCCESS) return rc;
    const RECT r = *pBounds;
    const int w = r.right - r.left, h = r.bottom - r.top;
    if (nMaskStride < w) return QV_ERROR_INVALID_PARAMETER;
    const size_t srcBytes = static_cast<size_t>(nMaskStride) * (h - 1) + w;
    if (!IsValidAddress(pMask, srcBytes, Access::Read)) return QV_ERROR_INVALID_PARAMETER;
    bool any = false;
    for (int y = 0; y < h && !any; ++y) {
      const uint8_t* row = pMask + static_cast<size_t>(y) * nMaskStride;
      for (int x = 0; x < w; ++x) any = any || row[x] != 0;
    }
    if (!any) return QV_ERROR_BAD_REGION;
    uint8_t* mask = AllocatePixels(static_cast<size_t>(w) * h);
    if (!mask) return QV_ERROR_NO_MEMORY;
    for (int y = 0; y < h; ++y)
      std::memcpy(mask + static_cast<size_t>(y) * w, pMask + static_cast<size_t>(y) * nMaskStride, w);
    DropRegion(p);
    p->rcRgn = r;
    p->pRgnMask = mask;
    p->nRgnMaskStride = w;
    p->uRgnFlags = QV_RGN_SET;
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_BitmapHasRgn(const BITMAPHANDLE* p, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Read);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    return (p->uRgnFlags & QV_RGN_SET) ? 1 : 0;
  });
}

QV_EXTERN_C int Q_GetBitmapRgnBounds(const BITMAPHANDLE* p, RECT* pRect, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Read);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS && !IsValidAddress(pRect, sizeof(RECT), Access::Write)) rc = QV_ERROR_INVALID_PARAMETER;
    if (rc != QV_SUCCESS) return rc;
    *pRect = (p->uRgnFlags & QV_RGN_SET) ? p->rcRgn : RECT{0, 0, p->nWidth, p->nHeight};
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_FreeBitmapRgn(BITMAPHANDLE* p, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Write);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    DropRegion(p);
    return QV_SUCCESS;
  });
}
