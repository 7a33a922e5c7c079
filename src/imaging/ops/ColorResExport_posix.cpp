/*
 * Q_ColorResBitmap where there are no GDI palettes: the user palette comes as a table only, and any handle
 * is refused.
 */
#include "ColorResBitmap.h"

extern "C" int Q_ColorResBitmap(BITMAPHANDLE* pSrc, BITMAPHANDLE* pDst, unsigned int uStructSize, int nBitsPerPixel,
                                unsigned int uFlags, const RGBQUAD* pPalette, QVHPALETTE hPalette, unsigned int uColors,
                                pQVSTATUSCALLBACK pfnCallback, void* pUserData) {
  using namespace qv::ops;
  const int rc = CheckColorResArguments(pSrc, pDst, uStructSize, nBitsPerPixel, uFlags);
  if (rc != QV_SUCCESS) return rc;
  if (hPalette != nullptr) return QV_ERROR_INVALID_HANDLE;
  return ColorResBitmap(pSrc, pDst, uStructSize, nBitsPerPixel, uFlags, pPalette, uColors, pfnCallback, pUserData);
}
