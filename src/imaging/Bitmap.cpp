/*
 * Whole-descriptor helpers on top of the allocation registry: releasing everything a descriptor owns,
 * deep copies (pixels, LUT and region mask each get a fresh block) and blank bitmaps of a given geometry.
 */
#include "Bitmap.h"

#include <cstring>

#include "PixelFormat.h"

namespace qv {
namespace {

// A fresh kernel block holding a copy of src's block; null when src is null or memory runs out.
uint8_t* DuplicateBlock(const void* src, size_t bytes) {
  if (!src || bytes == 0) return nullptr;
  uint8_t* p = AllocatePixels(bytes);
  if (p) std::memcpy(p, src, bytes);
  return p;
}

}  // namespace

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
  PixelFormat f{};
  int rc = DescribePixelFormat(bitsPerPixel, order, isSigned, &f);
  if (rc != QV_SUCCESS) return rc;
  if (width <= 0 || height <= 0) return QV_ERROR_INVALID_DIMENSIONS;
  const int32_t line = MinBytesPerLine(width, bitsPerPixel);
  if (line == 0) return QV_ERROR_IMAGE_TOO_LARGE;
  const uint64_t bytes = static_cast<uint64_t>(line) * static_cast<uint64_t>(height);
  if (bytes > static_cast<uint64_t>(PTRDIFF_MAX) || bytes > SIZE_MAX) return QV_ERROR_IMAGE_TOO_LARGE;
  uint8_t* data = AllocatePixels(static_cast<size_t>(bytes));
  if (!data) return QV_ERROR_NO_MEMORY;
  std::memset(out, 0, sizeof *out);
  out->uStructSize = sizeof(BITMAPHANDLE);
  out->uFlags = QV_BMF_ALLOCATED | (isSigned ? QV_BMF_SIGNED : 0u);
  out->pData = data;
  out->nWidth = width;
  out->nHeight = height;
  out->nBitsPerPixel = bitsPerPixel;
  out->nBytesPerLine = line;
  out->uDataSize = bytes;
  out->uOrder = order;
  out->nLowBit = 0;
  out->nHighBit = bitsPerPixel == 12 ? 11 : (f.IsGray() && bitsPerPixel == 16 ? 15 : 7);
  out->nXResolution = 96;
  out->nYResolution = 96;
  return QV_SUCCESS;
}

}  // namespace qv
