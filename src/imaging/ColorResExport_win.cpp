/*
 * Q_ColorResBitmap on Windows: a GDI palette handle, when the flags ask for the caller's palette and one is
 * given, is read with GetPaletteEntries into the table the portable core takes; without a handle the table
 * at pPalette is used as everywhere else.
 */
#include <windows.h>

#include <vector>

#include "ExportGuard.h"
#include "ops/ColorResBitmap.h"

namespace {

// Reads uColors entries (all of them when 0) of a GDI palette as RGBQUADs.
int ReadGdiPalette(HPALETTE palette, unsigned colors, std::vector<RGBQUAD>* out) {
  WORD count = 0;
  if (GetObjectType(palette) != OBJ_PAL || GetObjectW(palette, sizeof count, &count) == 0 || count == 0)
    return QV_ERROR_INVALID_HANDLE;
  const unsigned wanted = colors == 0 ? count : colors;
  if (wanted > count || wanted > QV_MAX_PALETTE_ENTRIES) return QV_ERROR_INVALID_PARAMETER;
  std::vector<PALETTEENTRY> entries(wanted);
  if (GetPaletteEntries(palette, 0, wanted, entries.data()) != wanted) return QV_ERROR_PLATFORM;
  for (const PALETTEENTRY& e : entries) out->push_back(RGBQUAD{e.peBlue, e.peGreen, e.peRed, 0});
  return QV_SUCCESS;
}

}  // namespace

extern "C" int Q_ColorResBitmap(BITMAPHANDLE* pSrc, BITMAPHANDLE* pDst, unsigned int uStructSize, int nBitsPerPixel,
                                unsigned int uFlags, const RGBQUAD* pPalette, QVHPALETTE hPalette, unsigned int uColors,
                                pQVSTATUSCALLBACK pfnCallback, void* pUserData) {
  using namespace qv::ops;
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckColorResArguments(pSrc, pDst, uStructSize, nBitsPerPixel, uFlags);
    if (rc != QV_SUCCESS) return rc;
    if (!hPalette || (uFlags & QV_COLORRES_PALETTE_MASK) != QV_COLORRES_USER_PALETTE)
      return ColorResBitmap(pSrc, pDst, uStructSize, nBitsPerPixel, uFlags, pPalette, uColors, pfnCallback, pUserData);
    std::vector<RGBQUAD> table;
    rc = ReadGdiPalette(hPalette, uColors, &table);
    if (rc != QV_SUCCESS) return rc;
    return ColorResBitmap(pSrc, pDst, uStructSize, nBitsPerPixel, uFlags, table.data(),
                          static_cast<unsigned>(table.size()), pfnCallback, pUserData);
  });
}
