/*
 * Painting into a 32-bit DIB section: every format reaches the device with its darkest and brightest values,
 * only the clip box is painted, and bad device contexts or rectangles are refused. Also the palette exports.
 * What a pixel turns into on the way (reduction, enlargement, palettes, LUTs) is tested natively.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <vector>

#include "TestFiles.h"

using qvtest::OwnedBitmap;

namespace {

// A memory DC with a top-down 32-bit DIB section, filled with a marker color.
class DibTarget {
 public:
  DibTarget(int w, int h, uint32_t fill = 0x00FF00FF) : m_w(w), m_h(h) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = w;
    info.bmiHeader.biHeight = -h;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    m_dc = CreateCompatibleDC(nullptr);
    m_bitmap = CreateDIBSection(m_dc, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&m_bits), nullptr, 0);
    m_old = SelectObject(m_dc, m_bitmap);
    for (int i = 0; i < w * h; ++i) m_bits[i] = fill;
  }
  ~DibTarget() {
    SelectObject(m_dc, m_old);
    DeleteObject(m_bitmap);
    DeleteDC(m_dc);
  }
  HDC dc() const { return m_dc; }
  uint32_t At(int x, int y) const {
    GdiFlush();
    return m_bits[y * m_w + x] & 0xFFFFFF;
  }

 private:
  int m_w, m_h;
  HDC m_dc;
  HBITMAP m_bitmap;
  HGDIOBJ m_old;
  uint32_t* m_bits = nullptr;
};

TEST(Paint, EveryFormatPaintsItsDarkestAndBrightestValues) {
  struct Case {
    const char* name;
    int bits;
    unsigned order;
    bool isSigned;
    std::vector<uint8_t> dark, bright;  // the bytes of one pixel
  };
  const std::vector<uint8_t> z2(2, 0), f2(2, 0xFF), z3(3, 0), f3(3, 0xFF), z4(4, 0), f4(4, 0xFF);
  const Case cases[] = {
      {"indexed1", 1, QV_ORDER_BGR, false, {0x00}, {0x80}},
      {"indexed2", 2, QV_ORDER_BGR, false, {0x00}, {0x40}},
      {"indexed4", 4, QV_ORDER_BGR, false, {0x00}, {0x10}},
      {"indexed8", 8, QV_ORDER_BGR, false, {0}, {1}},
      {"gray8", 8, QV_ORDER_GRAY, false, {0}, {255}},
      {"gray12", 12, QV_ORDER_GRAY, false, {0, 0}, {0xFF, 0x0F}},
      {"gray12 signed", 12, QV_ORDER_GRAY, true, {0x00, 0xF8}, {0xFF, 0x07}},
      {"gray16", 16, QV_ORDER_GRAY, false, z2, f2},
      {"gray16 signed", 16, QV_ORDER_GRAY, true, {0x00, 0x80}, {0xFF, 0x7F}},
      {"5-6-5", 16, QV_ORDER_BGR, false, z2, f2},
      {"24", 24, QV_ORDER_RGB, false, z3, f3},
      {"32", 32, QV_ORDER_BGR, false, z4, f4},
      {"48", 48, QV_ORDER_BGR, false, std::vector<uint8_t>(6, 0), std::vector<uint8_t>(6, 0xFF)},
      {"64", 64, QV_ORDER_RGB, false, std::vector<uint8_t>(8, 0), std::vector<uint8_t>(8, 0xFF)},
  };
  RGBQUAD pal[2] = {{0, 0, 0, 0}, {255, 255, 255, 0}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    OwnedBitmap b;
    ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 1, 2, c.bits, c.order,
                             c.bits <= 8 && c.order != QV_ORDER_GRAY ? pal : nullptr,
                             c.bits <= 8 && c.order != QV_ORDER_GRAY ? 2 : 0, c.isSigned ? QV_BMF_SIGNED : 0),
              QV_SUCCESS);
    std::memcpy(b->pData, c.dark.data(), c.dark.size());
    std::memcpy(b->pData + b->nBytesPerLine, c.bright.data(), c.bright.size());
    DibTarget target(1, 2);
    ASSERT_EQ(Q_PaintBitmap(target.dc(), b.get(), nullptr, nullptr, 0), QV_SUCCESS);
    EXPECT_EQ(target.At(0, 0), 0x000000u);
    EXPECT_EQ(target.At(0, 1), 0xFFFFFFu);
  }
}

TEST(Paint, OnlyTheClipBoxIsPainted) {
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 8, 8, 8, QV_ORDER_GRAY, nullptr, 0, 0), QV_SUCCESS);
  std::memset(b->pData, 200, b->nBytesPerLine * 8);
  DibTarget target(8, 8);
  HRGN clip = CreateRectRgn(2, 2, 4, 4);
  SelectClipRgn(target.dc(), clip);
  DeleteObject(clip);
  ASSERT_EQ(Q_PaintBitmap(target.dc(), b.get(), nullptr, nullptr, 0), QV_SUCCESS);
  EXPECT_EQ(target.At(2, 2), 0xC8C8C8u);
  EXPECT_EQ(target.At(3, 3), 0xC8C8C8u);
  EXPECT_EQ(target.At(1, 1), 0xFF00FFu);
  EXPECT_EQ(target.At(4, 4), 0xFF00FFu);
  // A destination far larger than the device costs only what is visible.
  RECT huge{-1000000, -1000000, 1000000, 1000000};
  EXPECT_EQ(Q_PaintBitmap(target.dc(), b.get(), nullptr, &huge, 0), QV_SUCCESS);
}

TEST(Paint, BadArgumentsAreRefused) {
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 4, 4, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  DibTarget target(4, 4);
  RECT outside{0, 0, 5, 4}, empty{1, 1, 1, 3}, inverted{3, 3, 1, 1};
  EXPECT_EQ(Q_PaintBitmap(nullptr, b.get(), nullptr, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_PaintBitmap(reinterpret_cast<HDC>(b.get()), b.get(), nullptr, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_PaintBitmap(target.dc(), b.get(), &outside, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_PaintBitmap(target.dc(), b.get(), &empty, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_PaintBitmap(target.dc(), b.get(), nullptr, &inverted, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_PaintBitmap(target.dc(), b.get(), nullptr, nullptr, 8), QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(Q_PaintBitmap(target.dc(), b.get(), reinterpret_cast<const RECT*>(16), nullptr, 0),
            QV_ERROR_INVALID_PARAMETER);
}

TEST(Palettes, BitmapPaletteDuplicateAndPaintPalette) {
  RGBQUAD pal[4] = {{1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 12, 0}};
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 2, 2, 2, QV_ORDER_BGR, pal, 4, 0), QV_SUCCESS);
  HPALETTE h = nullptr, dup = nullptr, paint = nullptr;
  ASSERT_EQ(Q_GetBitmapPalette(b.get(), &h, 0), QV_SUCCESS);
  ASSERT_EQ(Q_DupPalette(h, &dup, 0), QV_SUCCESS);
  EXPECT_NE(h, dup);
  PALETTEENTRY entries[8] = {};
  ASSERT_EQ(GetPaletteEntries(dup, 0, 8, entries), 4u);
  EXPECT_EQ(entries[2].peRed, 9);
  EXPECT_EQ(entries[2].peGreen, 8);
  EXPECT_EQ(entries[2].peBlue, 7);
  DibTarget target(2, 2);
  ASSERT_EQ(Q_CreatePaintPalette(target.dc(), b.get(), &paint, 0), QV_SUCCESS);
  EXPECT_EQ(GetPaletteEntries(paint, 0, 0, nullptr), 4u);
  OwnedBitmap gray;
  ASSERT_EQ(Q_CreateBitmap(gray.get(), sizeof(BITMAPHANDLE), 2, 2, 16, QV_ORDER_GRAY, nullptr, 0, 0), QV_SUCCESS);
  HPALETTE grayPal = nullptr;
  ASSERT_EQ(Q_GetBitmapPalette(gray.get(), &grayPal, 0), QV_SUCCESS);
  EXPECT_EQ(GetPaletteEntries(grayPal, 0, 0, nullptr), 256u);
  EXPECT_EQ(Q_DupPalette(reinterpret_cast<HPALETTE>(target.dc()), &dup, 0), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_DupPalette(nullptr, &dup, 0), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_GetBitmapPalette(b.get(), nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  for (HPALETTE p : {h, dup, paint, grayPal}) DeleteObject(p);
}

}  // namespace
