/*
 * Window level for painting: the bitmap gets its own kernel-owned copy of the LUT and the bits to index it
 * with; the samples are never touched, so medical data keeps its full values.
 */
#include <cstring>

#include "../Bitmap.h"
#include "ExportGuard.h"
#include "WindowLevelArgs.h"

extern "C" int Q_WindowLevel(BITMAPHANDLE* pBitmap, int nLowBit, int nHighBit, const RGBQUAD* pLUT,
                             unsigned int uLength, unsigned int uFlags) {
  using namespace qv::ops;
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    qv::PixelFormat f;
    int rc = CheckWindowLevelArgs(pBitmap, uFlags, QV_WL_PAINT_AND_PROCESS, nLowBit, nHighBit, pLUT, uLength, &f);
    if (rc != QV_SUCCESS) return rc;
    const size_t bytes = static_cast<size_t>(uLength) * sizeof(RGBQUAD);
    uint8_t* copy = qv::AllocatePixels(bytes);
    if (!copy) return QV_ERROR_NO_MEMORY;
    // Copied before the old table is released: the caller may hand us the bitmap's own LUT.
    std::memcpy(copy, pLUT, bytes);
    if (pBitmap->pLUT) qv::FreePixels(reinterpret_cast<uint8_t*>(pBitmap->pLUT));
    pBitmap->pLUT = reinterpret_cast<RGBQUAD*>(copy);
    pBitmap->uLUTLength = uLength;
    pBitmap->nLowBit = nLowBit;
    pBitmap->nHighBit = nHighBit;
    pBitmap->uFlags |= QV_BMF_USELUT;
    return QV_SUCCESS;
  });
}
