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

constexpr uint64_t kMaxBitmapBytes = uint64_t{1} << 40;  // beyond this no allocation could ever succeed

uint32_t DefaultOrder(int bitsPerPixel) {
  return bitsPerPixel <= 16 ? QV_ORDER_GRAY : QV_ORDER_BGR;
}

void FillGrayPalette(BITMAPHANDLE* p, int bitsPerPixel) {
  const int n = 1 << (bitsPerPixel > 8 ? 8 : bitsPerPixel);
  for (int i = 0; i < n; ++i) {
    const uint8_t v = static_cast<uint8_t>(n == 1 ? 0 : i * 255 / (n - 1));
    p->Palette[i] = RGBQUAD{v, v, v, 0};
  }
  p->nColors = n;
}

// Checks the caller's pointer and size field for a descriptor about to be (re)written.
int CheckOutDescriptor(BITMAPHANDLE* p, unsigned int structSize) {
  if (!IsValidAddress(p, sizeof(BITMAPHANDLE), Access::Write)) return QV_ERROR_INVALID_PARAMETER;
  if (structSize != sizeof(BITMAPHANDLE)) return QV_ERROR_INVALID_STRUCT_SIZE;
  return QV_SUCCESS;
}

// Fills a descriptor without memory; the caller has checked pointer and size.
int InitDescriptor(BITMAPHANDLE* p, int width, int height, int bitsPerPixel, uint32_t order, bool isSigned) {
  if (width <= 0 || height <= 0) return QV_ERROR_INVALID_DIMENSIONS;
  PixelFormat f{};
  const int rc = DescribePixelFormat(bitsPerPixel, order, isSigned, &f);
  if (rc != QV_SUCCESS) return rc;
  const int32_t line = MinBytesPerLine(width, bitsPerPixel);
  if (line == 0) return QV_ERROR_IMAGE_TOO_LARGE;
  BITMAPHANDLE b;
  std::memset(&b, 0, sizeof b);
  b.uStructSize = sizeof(BITMAPHANDLE);
  b.uFlags = isSigned ? QV_BMF_SIGNED : 0u;
  b.nWidth = width;
  b.nHeight = height;
  b.nBitsPerPixel = bitsPerPixel;
  b.nBytesPerLine = line;
  b.uOrder = order;
  b.nHighBit = bitsPerPixel == 12 ? 11 : (f.kind == PixelKind::Gray16 ? 15 : 7);
  b.nXResolution = 96;
  b.nYResolution = 96;
  if (f.IsIndexed() || f.kind == PixelKind::Gray8) FillGrayPalette(&b, bitsPerPixel);
  *p = b;
  return QV_SUCCESS;
}

int AllocateDescriptor(BITMAPHANDLE* p) {
  if ((p->uFlags & QV_BMF_ALLOCATED) && AllocationSize(p->pData) != 0) return QV_ERROR_INVALID_PARAMETER;
  if (p->nWidth <= 0 || p->nHeight <= 0) return QV_ERROR_INVALID_DIMENSIONS;
  PixelFormat f{};
  const int rc = DescribePixelFormat(*p, &f);
  if (rc != QV_SUCCESS) return rc;
  const int32_t line = MinBytesPerLine(p->nWidth, p->nBitsPerPixel);
  if (line == 0) return QV_ERROR_IMAGE_TOO_LARGE;
  const uint64_t bytes = static_cast<uint64_t>(line) * static_cast<uint64_t>(p->nHeight);
  if (bytes > kMaxBitmapBytes || bytes > SIZE_MAX) return QV_ERROR_IMAGE_TOO_LARGE;
  uint8_t* data = AllocatePixels(static_cast<size_t>(bytes));
  if (!data) return QV_ERROR_NO_MEMORY;
  p->pData = data;
  p->nBytesPerLine = line;
  p->uDataSize = bytes;
  p->uFlags |= QV_BMF_ALLOCATED;
  return QV_SUCCESS;
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

QV_EXTERN_C int Q_InitBitmap(BITMAPHANDLE* p, unsigned int uStructSize, int nWidth, int nHeight,
                             int nBitsPerPixel, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckOutDescriptor(p, uStructSize);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, QV_BMF_SIGNED);
    if (rc != QV_SUCCESS) return rc;
    return InitDescriptor(p, nWidth, nHeight, nBitsPerPixel, DefaultOrder(nBitsPerPixel),
                          (uFlags & QV_BMF_SIGNED) != 0);
  });
}

QV_EXTERN_C int Q_AllocateBitmap(BITMAPHANDLE* p, unsigned int uMemFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckDescriptor(p, Access::Write);
    if (rc == QV_SUCCESS) rc = CheckFlags(uMemFlags, 0);
    return rc == QV_SUCCESS ? AllocateDescriptor(p) : rc;
  });
}

QV_EXTERN_C int Q_CreateBitmap(BITMAPHANDLE* p, unsigned int uStructSize, int nWidth, int nHeight,
                               int nBitsPerPixel, unsigned int uOrder, const RGBQUAD* pPalette, int nColors,
                               unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckOutDescriptor(p, uStructSize);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, QV_BMF_SIGNED);
    if (rc != QV_SUCCESS) return rc;
    if (nColors < 0 || nColors > QV_MAX_PALETTE_ENTRIES) return QV_ERROR_INVALID_PARAMETER;
    if (nBitsPerPixel >= 1 && nBitsPerPixel <= 8 && nColors > (1 << nBitsPerPixel)) return QV_ERROR_INVALID_PARAMETER;
    if (pPalette && nColors > 0 && !IsValidAddress(pPalette, sizeof(RGBQUAD) * nColors, Access::Read))
      return QV_ERROR_INVALID_PARAMETER;
    BITMAPHANDLE b;
    rc = InitDescriptor(&b, nWidth, nHeight, nBitsPerPixel, uOrder, (uFlags & QV_BMF_SIGNED) != 0);
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
    int rc = CheckOutDescriptor(pDst, uStructSize);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckBitmap(pSrc, Access::Read);
    if (rc != QV_SUCCESS) return rc;
    if (pDst == pSrc) return QV_ERROR_INVALID_PARAMETER;
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
