/*
 * The palette exports: a GDI palette for a bitmap (its own entries when indexed, a gray ramp when gray, the
 * halftone palette otherwise), a copy of a palette handle, and the palette to realise when painting on an
 * 8-bit display. Every handle handed out belongs to the caller, who deletes it with DeleteObject.
 */
#include <windows.h>

#include <vector>

#include "AddressCheck.h"
#include "BitmapCheck.h"
#include "ExportGuard.h"
#include "PixelFormat.h"

using namespace qv;

namespace {

HPALETTE PaletteFromEntries(const std::vector<PALETTEENTRY>& entries) {
  std::vector<uint8_t> storage(sizeof(LOGPALETTE) + sizeof(PALETTEENTRY) * entries.size());
  auto* log = reinterpret_cast<LOGPALETTE*>(storage.data());
  log->palVersion = 0x300;
  log->palNumEntries = static_cast<WORD>(entries.size());
  PALETTEENTRY* dst = log->palPalEntry;
  for (size_t i = 0; i < entries.size(); ++i) dst[i] = entries[i];
  return CreatePalette(log);
}

HPALETTE HalftonePalette(HDC hdc) {
  if (hdc) return CreateHalftonePalette(hdc);
  HDC screen = GetDC(nullptr);
  HPALETTE pal = CreateHalftonePalette(screen);
  ReleaseDC(nullptr, screen);
  return pal;
}

// The palette that shows bitmap b best: its own entries, a gray ramp, or the halftone palette.
HPALETTE PaletteFor(const BITMAPHANDLE& b, HDC hdc) {
  PixelFormat f{};
  DescribePixelFormat(b, &f);
  std::vector<PALETTEENTRY> entries;
  if (f.IsIndexed()) {
    const int full = 1 << f.bitsPerPixel;
    const int n = b.nColors > 0 && b.nColors < full ? b.nColors : full;
    for (int i = 0; i < n; ++i)
      entries.push_back(PALETTEENTRY{b.Palette[i].rgbRed, b.Palette[i].rgbGreen, b.Palette[i].rgbBlue, 0});
  } else if (f.IsGray()) {
    for (int i = 0; i < 256; ++i) entries.push_back(PALETTEENTRY{BYTE(i), BYTE(i), BYTE(i), 0});
  } else {
    return HalftonePalette(hdc);
  }
  return PaletteFromEntries(entries);
}

int CheckPaletteOut(HPALETTE* ph) {
  return IsValidAddress(ph, sizeof *ph, Access::Write) ? QV_SUCCESS : QV_ERROR_INVALID_PARAMETER;
}

}  // namespace

QV_EXTERN_C int Q_GetBitmapPalette(const BITMAPHANDLE* p, HPALETTE* phPalette, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Read);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckPaletteOut(phPalette);
    if (rc != QV_SUCCESS) return rc;
    HPALETTE pal = PaletteFor(*p, nullptr);
    if (!pal) return QV_ERROR_PLATFORM;
    *phPalette = pal;
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DupPalette(HPALETTE hSrc, HPALETTE* phDst, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckPaletteOut(phDst);
    if (rc != QV_SUCCESS) return rc;
    if (!hSrc || GetObjectType(hSrc) != OBJ_PAL) return QV_ERROR_INVALID_HANDLE;
    const UINT count = GetPaletteEntries(hSrc, 0, 0, nullptr);
    if (count == 0) return QV_ERROR_INVALID_HANDLE;
    std::vector<PALETTEENTRY> entries(count);
    if (GetPaletteEntries(hSrc, 0, count, entries.data()) != count) return QV_ERROR_PLATFORM;
    HPALETTE pal = PaletteFromEntries(entries);
    if (!pal) return QV_ERROR_PLATFORM;
    *phDst = pal;
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_CreatePaintPalette(HDC hDC, const BITMAPHANDLE* p, HPALETTE* phPalette, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Read);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckPaletteOut(phPalette);
    if (rc != QV_SUCCESS) return rc;
    const DWORD type = hDC ? GetObjectType(hDC) : 0;
    if (type != OBJ_DC && type != OBJ_MEMDC) return QV_ERROR_INVALID_PARAMETER;
    HPALETTE pal = PaletteFor(*p, hDC);
    if (!pal) return QV_ERROR_PLATFORM;
    *phPalette = pal;
    return QV_SUCCESS;
  });
}
