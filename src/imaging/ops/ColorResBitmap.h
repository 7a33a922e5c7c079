/*
 * The portable core of Q_ColorResBitmap: every check and the conversion itself, taking the caller's palette
 * as a table. The exports around it only differ in where a palette comes from (a GDI palette on Windows).
 */
#pragma once

#include "qv/qvimgops.h"

namespace qv {
namespace ops {

// The checks of Q_ColorResBitmap that come before the palette, in their documented order.
int CheckColorResArguments(const BITMAPHANDLE* pSrc, const BITMAPHANDLE* pDst, unsigned int uStructSize,
                           int nBitsPerPixel, unsigned int uFlags);

// Q_ColorResBitmap with the user palette (when the flags ask for one) given as uColors entries at pPalette.
int ColorResBitmap(BITMAPHANDLE* pSrc, BITMAPHANDLE* pDst, unsigned int uStructSize, int nBitsPerPixel,
                   unsigned int uFlags, const RGBQUAD* pPalette, unsigned int uColors, pQVSTATUSCALLBACK pfnCallback,
                   void* pUserData);

}  // namespace ops
}  // namespace qv
