/*
 * Window level made permanent: a 12/16-bit gray bitmap becomes 24-bit color through the LUT. The new pixels
 * are built in a fresh allocation and swapped in only when every row is done, so an abort or a failure
 * leaves the bitmap as it was.
 */
#include <cstring>

#include "../Bitmap.h"
#include "ExportGuard.h"
#include "WindowLevelArgs.h"
#include "WindowLevelIndex.h"

namespace qv {
namespace ops {
namespace {

// RAII owner of a kernel pixel block until it is handed to the bitmap.
class PixelBlock {
 public:
  explicit PixelBlock(size_t bytes) : m_p(AllocatePixels(bytes)) {}
  ~PixelBlock() {
    if (m_p) FreePixels(m_p);
  }
  PixelBlock(const PixelBlock&) = delete;
  PixelBlock& operator=(const PixelBlock&) = delete;
  uint8_t* Get() const { return m_p; }
  uint8_t* Release() {
    uint8_t* p = m_p;
    m_p = nullptr;
    return p;
  }

 private:
  uint8_t* m_p;
};

template <bool kBgr>
void ConvertRow(const uint8_t* src, uint8_t* dst, int width, const RGBQUAD* lut, const WindowLevelIndex& index) {
  for (int x = 0; x < width; ++x, dst += 3) {
    const RGBQUAD& q = lut[index(Load16(src + 2 * static_cast<size_t>(x)))];
    dst[0] = kBgr ? q.rgbBlue : q.rgbRed;
    dst[1] = q.rgbGreen;
    dst[2] = kBgr ? q.rgbRed : q.rgbBlue;
  }
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_WindowLevelBitmap(BITMAPHANDLE* pBitmap, int nLowBit, int nHighBit, const RGBQUAD* pLUT,
                                   unsigned int uLength, unsigned int uOrderDst, unsigned int uFlags) {
  using namespace qv::ops;
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    qv::PixelFormat f;
    int rc = CheckWindowLevelArgs(pBitmap, uFlags, 0, nLowBit, nHighBit, pLUT, uLength, &f);
    if (rc != QV_SUCCESS) return rc;
    if (uOrderDst != QV_ORDER_RGB && uOrderDst != QV_ORDER_BGR) return QV_ERROR_INVALID_PARAMETER;
    if (qv::RegionSpans(*pBitmap).HasRegion()) return QV_ERROR_UNSUPPORTED_FORMAT;
    const int32_t line = qv::MinBytesPerLine(pBitmap->nWidth, 24);
    if (line == 0) return QV_ERROR_IMAGE_TOO_LARGE;
    const size_t bytes = static_cast<size_t>(line) * static_cast<size_t>(pBitmap->nHeight);
    PixelBlock block(bytes);
    if (!block.Get()) return QV_ERROR_NO_MEMORY;
    const WindowLevelIndex index(nLowBit, nHighBit, f.isSigned, uLength);
    const BITMAPHANDLE& src = *pBitmap;
    uint8_t* const dst = block.Get();
    const bool bgr = uOrderDst == QV_ORDER_BGR;
    rc = qv::ParallelRows(0, src.nHeight, [&](int y0, int y1) {
      for (int y = y0; y < y1; ++y) {
        uint8_t* out = dst + static_cast<size_t>(y) * line;
        if (bgr) {
          ConvertRow<true>(qv::RowPtr(src, y), out, src.nWidth, pLUT, index);
        } else {
          ConvertRow<false>(qv::RowPtr(src, y), out, src.nWidth, pLUT, index);
        }
      }
    });
    if (rc != QV_SUCCESS) return rc;
    qv::FreePixels(pBitmap->pData);
    if (pBitmap->pLUT) qv::FreePixels(reinterpret_cast<uint8_t*>(pBitmap->pLUT));
    pBitmap->pData = block.Release();
    pBitmap->pLUT = nullptr;
    pBitmap->uLUTLength = 0;
    pBitmap->nBitsPerPixel = 24;
    pBitmap->nBytesPerLine = line;
    pBitmap->uDataSize = bytes;
    pBitmap->uOrder = uOrderDst;
    pBitmap->uFlags &= ~(QV_BMF_SIGNED | QV_BMF_USELUT);
    pBitmap->nLowBit = 0;
    pBitmap->nHighBit = 7;
    return QV_SUCCESS;
  });
}
