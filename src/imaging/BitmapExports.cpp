/*
 * The descriptor and memory exports: initialise, allocate, create, free, copy, validate and the gray test.
 * Each export checks its arguments in the same order (descriptor pointer, size field, flags, geometry,
 * format) before it touches anything, and leaves the caller's descriptor unchanged on any error.
 */
#include <cstring>

#include "AddressCheck.h"
#include "Bitmap.h"
#include "BitmapCheck.h"
#include "ExportGuard.h"
#include "PixelFormat.h"

using namespace qv;

namespace {

uint32_t DefaultOrder(int bitsPerPixel) { return bitsPerPixel <= 16 ? QV_ORDER_GRAY : QV_ORDER_BGR; }

int AllocateDescriptor(BITMAPHANDLE* p) {
  if ((p->uFlags & QV_BMF_ALLOCATED) && AllocationSize(p->pData) != 0) return QV_ERROR_INVALID_PARAMETER;
  return AllocateBitmapPixels(p);
}

int GrayTest(const BITMAPHANDLE& b) {
  PixelFormat f{};
  DescribePixelFormat(b, &f);
  if (f.IsGray()) return QV_GRAY_ORDERED;
  if (!f.IsIndexed()) return QV_GRAY_NONE;
  const int n = b.nColors > 0 ? b.nColors : (1 << f.bitsPerPixel);
  bool rising = true, falling = true;
  for (int i = 0; i < n; ++i) {
    const RGBQUAD& c = b.Palette[i];
    if (c.rgbRed != c.rgbGreen || c.rgbGreen != c.rgbBlue) return QV_GRAY_NONE;
    if (i > 0) {
      rising = rising && c.rgbRed > b.Palette[i - 1].rgbRed;
      falling = falling && c.rgbRed < b.Palette[i - 1].rgbRed;
    }
  }
  if (rising) return QV_GRAY_ORDERED;
  return falling ? QV_GRAY_INVERSE : QV_GRAY_NOT_ORDERED;
}

}  // namespace

QV_EXTERN_C int Q_InitBitmap(BITMAPHANDLE* p, unsigned int uStructSize, int nWidth, int nHeight, int nBitsPerPixel,
                             unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckNewDescriptor(p, uStructSize);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, QV_BMF_SIGNED);
    if (rc != QV_SUCCESS) return rc;
    return DescribeNewBitmap(nWidth, nHeight, nBitsPerPixel, DefaultOrder(nBitsPerPixel), (uFlags & QV_BMF_SIGNED) != 0,
                             p);
  });
}

QV_EXTERN_C int Q_AllocateBitmap(BITMAPHANDLE* p, unsigned int uMemFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckDescriptor(p, Access::Write);
    if (rc == QV_SUCCESS) rc = CheckFlags(uMemFlags, 0);
    return rc == QV_SUCCESS ? AllocateDescriptor(p) : rc;
  });
}

QV_EXTERN_C int Q_CreateBitmap(BITMAPHANDLE* p, unsigned int uStructSize, int nWidth, int nHeight, int nBitsPerPixel,
                               unsigned int uOrder, const RGBQUAD* pPalette, int nColors, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckNewDescriptor(p, uStructSize);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, QV_BMF_SIGNED);
    if (rc != QV_SUCCESS) return rc;
    if (nColors < 0 || nColors > QV_MAX_PALETTE_ENTRIES) return QV_ERROR_INVALID_PARAMETER;
    if (nBitsPerPixel >= 1 && nBitsPerPixel <= 8 && nColors > (1 << nBitsPerPixel)) return QV_ERROR_INVALID_PARAMETER;
    if (pPalette && nColors > 0 && !IsValidAddress(pPalette, sizeof(RGBQUAD) * nColors, Access::Read))
      return QV_ERROR_INVALID_PARAMETER;
    BITMAPHANDLE b;
    rc = DescribeNewBitmap(nWidth, nHeight, nBitsPerPixel, uOrder, (uFlags & QV_BMF_SIGNED) != 0, &b);
    if (rc != QV_SUCCESS) return rc;
    if (pPalette && nColors > 0) {
      std::memcpy(b.Palette, pPalette, sizeof(RGBQUAD) * nColors);
      b.nColors = nColors;
    }
    rc = AllocateDescriptor(&b);
    if (rc == QV_SUCCESS) *p = b;
    return rc;
  });
}

QV_EXTERN_C int Q_FreeBitmap(BITMAPHANDLE* p, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckDescriptor(p, Access::Write);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (!(p->uFlags & QV_BMF_ALLOCATED) || AllocationSize(p->pData) == 0) return QV_ERROR_BITMAP_NOT_ALLOCATED;
    ReleaseBitmapMemory(p);
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_CopyBitmap(BITMAPHANDLE* pDst, unsigned int uStructSize, const BITMAPHANDLE* pSrc,
                             unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckSourceAndNewDescriptor(pSrc, pDst, uStructSize, uFlags);
    if (rc != QV_SUCCESS) return rc;
    BITMAPHANDLE copy;
    rc = DeepCopyBitmap(*pSrc, &copy);
    if (rc == QV_SUCCESS) *pDst = copy;
    return rc;
  });
}

QV_EXTERN_C int Q_IsValidBitmap(const BITMAPHANDLE* p, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    const int rc = CheckFlags(uFlags, 0);
    return rc == QV_SUCCESS ? CheckBitmap(p, Access::Read) : rc;
  });
}

QV_EXTERN_C int Q_IsGrayScaleBitmap(const BITMAPHANDLE* p, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckBitmap(p, Access::Read);
    return rc == QV_SUCCESS ? GrayTest(*p) : rc;
  });
}
