/*
 * The color reduction's GDI palette path: the caller's HPALETTE is read entry by entry (all of them, or the
 * first uColors), maps an image of its own colors onto itself, and a handle that is no palette or a count
 * past its end is refused with the bitmap left alone.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>

#include "OwnedBitmap.h"
#include "qv/qvimgops.h"

namespace {

using qvtest::OwnedBitmap;

const PALETTEENTRY kEntries[4] = {{200, 10, 10, 0}, {10, 200, 10, 0}, {10, 10, 200, 0}, {250, 250, 250, 0}};

HPALETTE MakePalette() {
  alignas(LOGPALETTE) unsigned char storage[sizeof(LOGPALETTE) + 4 * sizeof(PALETTEENTRY)] = {};
  LOGPALETTE* log = reinterpret_cast<LOGPALETTE*>(storage);
  log->palVersion = 0x300;
  log->palNumEntries = 4;
  std::memcpy(log->palPalEntry, kEntries, sizeof kEntries);
  return CreatePalette(log);
}

void MakeImage(OwnedBitmap& b) {
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 8, 4, 24, QV_ORDER_RGB, nullptr, 0, 0), QV_SUCCESS);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 8; ++x) {
      const PALETTEENTRY& e = kEntries[(x + y) % 4];
      uint8_t* p = b->pData + y * b->nBytesPerLine + 3 * x;
      p[0] = e.peRed;
      p[1] = e.peGreen;
      p[2] = e.peBlue;
    }
}

TEST(ColorResPalette, GdiPaletteEntriesMapOntoThemselves) {
  HPALETTE palette = MakePalette();
  ASSERT_NE(palette, nullptr);
  struct Case {
    unsigned colors;
    int expected;
  };
  const Case cases[] = {{0, QV_SUCCESS}, {4, QV_SUCCESS}, {5, QV_ERROR_INVALID_PARAMETER}};
  for (const Case& c : cases) {
    OwnedBitmap b;
    MakeImage(b);
    const int rc = Q_ColorResBitmap(b.get(), b.get(), sizeof(BITMAPHANDLE), 2,
                                    QV_COLORRES_USER_PALETTE | QV_COLORRES_FLOYD_STEINBERG, nullptr, palette, c.colors,
                                    nullptr, nullptr);
    ASSERT_EQ(rc, c.expected) << c.colors;
    if (rc != QV_SUCCESS) {
      EXPECT_EQ(b->nBitsPerPixel, 24) << "a refused call leaves the bitmap as it was";
      continue;
    }
    ASSERT_EQ(b->nColors, 4);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(b->Palette[i].rgbRed, kEntries[i].peRed) << i;
      EXPECT_EQ(b->Palette[i].rgbBlue, kEntries[i].peBlue) << i;
    }
    for (int y = 0; y < 4; ++y)
      for (int x = 0; x < 8; ++x)
        EXPECT_EQ((b->pData[y * b->nBytesPerLine + x / 4] >> (6 - 2 * (x % 4))) & 3, (x + y) % 4) << x << "," << y;
  }
  OwnedBitmap b;
  MakeImage(b);
  HDC dc = GetDC(nullptr);
  EXPECT_EQ(Q_ColorResBitmap(b.get(), b.get(), sizeof(BITMAPHANDLE), 2, QV_COLORRES_USER_PALETTE, nullptr,
                             reinterpret_cast<HPALETTE>(dc), 0, nullptr, nullptr),
            QV_ERROR_INVALID_HANDLE);
  ReleaseDC(nullptr, dc);
  DeleteObject(palette);
}

}  // namespace
