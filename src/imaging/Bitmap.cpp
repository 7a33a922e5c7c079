/*
 * Whole-descriptor helpers on top of the allocation registry: releasing everything a descriptor owns,
 * deep copies (pixels, LUT and region mask each get a fresh block) and the one way a new bitmap is made.
 */
#include "Bitmap.h"

#include <cstring>

#include "PixelFormat.h"

namespace qv {
namespace {

void FillGrayPalette(BITMAPHANDLE* p, int bitsPerPixel) {
  const int n = 1 << (bitsPerPixel > 8 ? 8 : bitsPerPixel);
  for (int i = 0; i < n; ++i) {
    const uint8_t v = static_cast<uint8_t>(i * 255 / (n - 1));
    p->Palette[i] = RGBQUAD{v, v, v, 0};
  }
  p->nColors = n;
}

}  // namespace

uint8_t* DuplicateBlock(const void* src, size_t bytes) {
  if (!src || bytes == 0) return nullptr;
  uint8_t* p = AllocatePixels(bytes);
  if (p) std::memcpy(p, src, bytes);
  return p;
}

int CheckBitmapSize(int width, int height) {
  if (width <= 0 || height <= 0) return QV_ERROR_INVALID_DIMENSIONS;
  if (width > kMaxBitmapSide || height > kMaxBitmapSide) return QV_ERROR_IMAGE_TOO_LARGE;
  return QV_SUCCESS;
}

int DescribeNewBitmap(int width, int height, int bitsPerPixel, uint32_t order, bool isSigned, BITMAPHANDLE* out) {
  int rc = CheckBitmapSize(width, height);
  PixelFormat f{};
  if (rc == QV_SUCCESS) rc = DescribePixelFormat(bitsPerPixel, order, isSigned, &f);
  if (rc != QV_SUCCESS) return rc;
  BITMAPHANDLE b;
  std::memset(&b, 0, sizeof b);
  b.uStructSize = sizeof(BITMAPHANDLE);
  b.uFlags = isSigned ? QV_BMF_SIGNED : 0u;
  b.nWidth = width;
  b.nHeight = height;
  b.nBitsPerPixel = bitsPerPixel;
  b.nBytesPerLine = MinBytesPerLine(width, bitsPerPixel);
  b.uOrder = order;
  b.nHighBit = bitsPerPixel == 12 ? 11 : (f.kind == PixelKind::Gray16 ? 15 : 7);
  b.nXResolution = 96;
  b.nYResolution = 96;
  if (f.IsIndexed() || f.kind == PixelKind::Gray8) FillGrayPalette(&b, bitsPerPixel);
  *out = b;
  return QV_SUCCESS;
}

int AllocateBitmapPixels(BITMAPHANDLE* b) {
  int rc = CheckBitmapSize(b->nWidth, b->nHeight);
  PixelFormat f{};
  if (rc == QV_SUCCESS) rc = DescribePixelFormat(*b, &f);
  if (rc != QV_SUCCESS) return rc;
  const int32_t line = MinBytesPerLine(b->nWidth, b->nBitsPerPixel);
  const size_t bytes = static_cast<size_t>(line) * static_cast<size_t>(b->nHeight);
  uint8_t* data = AllocatePixels(bytes);
  if (!data) return QV_ERROR_NO_MEMORY;
  b->pData = data;
  b->nBytesPerLine = line;
  b->uDataSize = bytes;
  b->uFlags |= QV_BMF_ALLOCATED;
  return QV_SUCCESS;
}

void ReleaseBitmapMemory(BITMAPHANDLE* p) {
  FreePixels(p->pData);
  FreePixels(reinterpret_cast<uint8_t*>(p->pLUT));
  FreePixels(p->pRgnMask);
  p->pData = nullptr;
  p->uDataSize = 0;
  p->uFlags &= ~(QV_BMF_ALLOCATED | QV_BMF_USELUT);
  p->pLUT = nullptr;
  p->uLUTLength = 0;
  p->pRgnMask = nullptr;
  p->nRgnMaskStride = 0;
  p->uRgnFlags = 0;
  p->rcRgn = RECT{0, 0, 0, 0};
}

int DeepCopyBitmap(const BITMAPHANDLE& src, BITMAPHANDLE* dst) {
  const size_t dataBytes = static_cast<size_t>(src.nBytesPerLine) * static_cast<size_t>(src.nHeight);
  uint8_t* data = DuplicateBlock(src.pData, dataBytes);
  if (!data) return QV_ERROR_NO_MEMORY;
  uint8_t* lut = nullptr;
  if (src.pLUT) {
    lut = DuplicateBlock(src.pLUT, static_cast<size_t>(src.uLUTLength) * sizeof(RGBQUAD));
    if (!lut) {
      FreePixels(data);
      return QV_ERROR_NO_MEMORY;
    }
  }
  uint8_t* mask = nullptr;
  if ((src.uRgnFlags & QV_RGN_SET) && src.pRgnMask) {
    mask = DuplicateBlock(src.pRgnMask, static_cast<size_t>(src.nRgnMaskStride) *
                                            static_cast<size_t>(src.rcRgn.bottom - src.rcRgn.top));
    if (!mask) {
      FreePixels(data);
      FreePixels(lut);
      return QV_ERROR_NO_MEMORY;
    }
  }
  *dst = src;
  dst->pData = data;
  dst->uDataSize = dataBytes;
  dst->pLUT = reinterpret_cast<RGBQUAD*>(lut);
  dst->pRgnMask = mask;
  if (!mask) dst->nRgnMaskStride = 0;
  return QV_SUCCESS;
}

int CreateBlankBitmap(int width, int height, int bitsPerPixel, uint32_t order, bool isSigned, BITMAPHANDLE* out) {
  BITMAPHANDLE b;
  int rc = DescribeNewBitmap(width, height, bitsPerPixel, order, isSigned, &b);
  if (rc == QV_SUCCESS) rc = AllocateBitmapPixels(&b);
  if (rc == QV_SUCCESS) *out = b;
  return rc;
}

}  // namespace qv
