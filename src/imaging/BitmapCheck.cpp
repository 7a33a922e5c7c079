/*
 * The argument checks of the bitmap exports, in one fixed order: the descriptor's own memory, its size
 * field, its pixel allocation, geometry, format, palette, LUT and region. The first failure decides the
 * result code, so every export reports the same fault the same way.
 */
#include "BitmapCheck.h"

#include "AddressCheck.h"
#include "Bitmap.h"
#include "PixelFormat.h"

namespace qv {
namespace {

int CheckGeometry(const BITMAPHANDLE& b) {
  if (b.nWidth <= 0 || b.nHeight <= 0) return QV_ERROR_INVALID_DIMENSIONS;
  return QV_SUCCESS;
}

int CheckRowsFit(const BITMAPHANDLE& b) {
  const int32_t minLine = MinBytesPerLine(b.nWidth, b.nBitsPerPixel);
  if (minLine == 0 || b.nBytesPerLine < minLine || b.nBytesPerLine % 4 != 0) return QV_ERROR_INVALID_DIMENSIONS;
  const uint64_t needed = static_cast<uint64_t>(b.nBytesPerLine) * static_cast<uint64_t>(b.nHeight);
  if (AllocationSize(b.pData) < needed) return QV_ERROR_BITMAP_NOT_ALLOCATED;
  return QV_SUCCESS;
}

int CheckPalette(const BITMAPHANDLE& b, const PixelFormat& f) {
  if (b.nColors < 0 || b.nColors > QV_MAX_PALETTE_ENTRIES) return QV_ERROR_INVALID_PARAMETER;
  if (f.IsIndexed() && b.nColors > (1 << (f.bitsPerPixel > 8 ? 8 : f.bitsPerPixel))) return QV_ERROR_INVALID_PARAMETER;
  return QV_SUCCESS;
}

int CheckLut(const BITMAPHANDLE& b) {
  if (!b.pLUT) return (b.uFlags & QV_BMF_USELUT) ? QV_ERROR_INVALID_TABLE : QV_SUCCESS;
  if (b.uLUTLength == 0) return QV_ERROR_INVALID_TABLE;
  const uint64_t needed = static_cast<uint64_t>(b.uLUTLength) * sizeof(RGBQUAD);
  return AllocationSize(b.pLUT) >= needed ? QV_SUCCESS : QV_ERROR_INVALID_TABLE;
}

int CheckRegion(const BITMAPHANDLE& b) {
  if (!(b.uRgnFlags & QV_RGN_SET)) return QV_SUCCESS;
  const RECT& r = b.rcRgn;
  if (r.left < 0 || r.top < 0 || r.right > b.nWidth || r.bottom > b.nHeight || r.left >= r.right || r.top >= r.bottom)
    return QV_ERROR_BAD_REGION;
  if (!b.pRgnMask) return QV_SUCCESS;
  const int w = r.right - r.left;
  if (b.nRgnMaskStride < w) return QV_ERROR_BAD_REGION;
  const uint64_t needed = static_cast<uint64_t>(b.nRgnMaskStride) * static_cast<uint64_t>(r.bottom - r.top);
  return AllocationSize(b.pRgnMask) >= needed ? QV_SUCCESS : QV_ERROR_BAD_REGION;
}

}  // namespace

int CheckDescriptor(const BITMAPHANDLE* p, Access access) {
  if (!IsValidAddress(p, sizeof(uint32_t), access)) return QV_ERROR_INVALID_PARAMETER;
  if (p->uStructSize != sizeof(BITMAPHANDLE)) return QV_ERROR_INVALID_STRUCT_SIZE;
  if (!IsValidAddress(p, sizeof(BITMAPHANDLE), access)) return QV_ERROR_INVALID_PARAMETER;
  return QV_SUCCESS;
}

int CheckNewDescriptor(BITMAPHANDLE* p, unsigned int structSize) {
  if (!qv::IsValidAddress(p, sizeof(BITMAPHANDLE), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
  if (structSize != sizeof(BITMAPHANDLE)) return QV_ERROR_INVALID_STRUCT_SIZE;
  return QV_SUCCESS;
}

int CheckSourceAndNewDescriptor(const BITMAPHANDLE* src, BITMAPHANDLE* dst, unsigned int structSize,
                                unsigned int flags) {
  int rc = CheckNewDescriptor(dst, structSize);
  if (rc == QV_SUCCESS) rc = CheckFlags(flags, 0);
  if (rc == QV_SUCCESS) rc = CheckBitmap(src, Access::Read);
  if (rc == QV_SUCCESS && dst == src) rc = QV_ERROR_INVALID_PARAMETER;
  return rc;
}

int CheckBitmap(const BITMAPHANDLE* p, Access access) {
  int rc = CheckDescriptor(p, access);
  if (rc != QV_SUCCESS) return rc;
  const BITMAPHANDLE& b = *p;
  if (!(b.uFlags & QV_BMF_ALLOCATED) || AllocationSize(b.pData) == 0) return QV_ERROR_BITMAP_NOT_ALLOCATED;
  if ((rc = CheckGeometry(b)) != QV_SUCCESS) return rc;
  PixelFormat f{};
  if ((rc = DescribePixelFormat(b, &f)) != QV_SUCCESS) return rc;
  if ((rc = CheckRowsFit(b)) != QV_SUCCESS) return rc;
  if ((rc = CheckPalette(b, f)) != QV_SUCCESS) return rc;
  if ((rc = CheckLut(b)) != QV_SUCCESS) return rc;
  return CheckRegion(b);
}

}  // namespace qv
