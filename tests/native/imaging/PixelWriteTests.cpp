/*
 * Colour writes: the stored bits of one colour in every format (5-6-5 in both orders, signed gray, palette
 * indices), a fill that keeps to the region, and writes outside the bitmap refused without a change.
 */
#include <gtest/gtest.h>

#include <cstring>

#include "TestBitmaps.h"

namespace {

using qvtest::OwnedBitmap;

constexpr COLORREF Rgb(uint32_t r, uint32_t g, uint32_t b) { return r | (g << 8) | (b << 16); }

// The stored bits of pixel (x, y): packed indices as a number, else the pixel's bytes little-endian.
uint64_t Stored(const BITMAPHANDLE& b, int x, int y) {
  const uint8_t* row = b.pData + size_t(y) * b.nBytesPerLine;
  if (b.nBitsPerPixel < 8) {
    const int perByte = 8 / b.nBitsPerPixel;
    const int shift = (perByte - 1 - x % perByte) * b.nBitsPerPixel;
    return (row[x / perByte] >> shift) & ((1u << b.nBitsPerPixel) - 1);
  }
  const int bytes = (b.nBitsPerPixel == 12 ? 16 : b.nBitsPerPixel) / 8;
  uint64_t v = 0;
  for (int i = bytes - 1; i >= 0; --i) v = (v << 8) | row[x * bytes + i];
  return v;
}

struct Case {
  const char* what;
  int bits;
  unsigned order;
  unsigned flags;
  COLORREF color;
  uint64_t stored;
};

const Case kCases[] = {
    {"24-bit BGR", 24, QV_ORDER_BGR, 0, Rgb(200, 100, 50), 0xC86432},
    {"24-bit RGB", 24, QV_ORDER_RGB, 0, Rgb(200, 100, 50), 0x3264C8},
    {"32-bit gets full alpha", 32, QV_ORDER_BGR, 0, Rgb(200, 100, 50), 0xFFC86432},
    {"48-bit BGR", 48, QV_ORDER_BGR, 0, Rgb(255, 0, 128), 0xFFFF00008080},
    {"64-bit RGB", 64, QV_ORDER_RGB, 0, Rgb(255, 0, 128), 0xFFFF80800000FFFF},
    {"5-6-5 BGR red", 16, QV_ORDER_BGR, 0, Rgb(255, 0, 0), 0xF800},
    {"5-6-5 RGB red", 16, QV_ORDER_RGB, 0, Rgb(255, 0, 0), 0x001F},
    {"5-6-5 RGB blue", 16, QV_ORDER_RGB, 0, Rgb(0, 0, 255), 0xF800},
    {"8-bit gray from the luminance", 8, QV_ORDER_GRAY, 0, Rgb(255, 0, 0), 76},
    {"12-bit gray white", 12, QV_ORDER_GRAY, 0, Rgb(255, 255, 255), 4095},
    {"12-bit signed black", 12, QV_ORDER_GRAY, QV_BMF_SIGNED, Rgb(0, 0, 0), 0xF800},
    {"12-bit signed white", 12, QV_ORDER_GRAY, QV_BMF_SIGNED, Rgb(255, 255, 255), 0x07FF},
    {"16-bit gray white", 16, QV_ORDER_GRAY, 0, Rgb(255, 255, 255), 0xFFFF},
    {"16-bit signed black", 16, QV_ORDER_GRAY, QV_BMF_SIGNED, Rgb(0, 0, 0), 0x8000},
    {"16-bit signed white", 16, QV_ORDER_GRAY, QV_BMF_SIGNED, Rgb(255, 255, 255), 0x7FFF},
    {"8-bit palette: nearest entry of the ramp", 8, QV_ORDER_BGR, 0, Rgb(100, 100, 100), 100},
    {"4-bit palette: nearest of 17 steps", 4, QV_ORDER_BGR, 0, Rgb(100, 100, 100), 6},
    {"1-bit palette", 1, QV_ORDER_BGR, 0, Rgb(200, 200, 200), 1},
};

TEST(PixelWrites, EveryFormatStoresTheColourByOneRule) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.what);
    OwnedBitmap filled, one;
    for (OwnedBitmap* b : {&filled, &one})
      ASSERT_EQ(Q_CreateBitmap(b->get(), sizeof(BITMAPHANDLE), 3, 2, c.bits, c.order, nullptr, 0, c.flags), QV_SUCCESS);
    ASSERT_EQ(Q_FillBitmap(filled.get(), c.color, 0), QV_SUCCESS);
    for (int y = 0; y < 2; ++y)
      for (int x = 0; x < 3; ++x) ASSERT_EQ(Stored(*filled, x, y), c.stored) << x << "," << y;
    ASSERT_EQ(Q_PutPixelColor(one.get(), 2, 1, c.color, 0), QV_SUCCESS);
    EXPECT_EQ(Stored(*one, 2, 1), c.stored);
    EXPECT_EQ(Stored(*one, 1, 1), 0u) << "the neighbour in the same byte is kept";
  }
}

TEST(PixelWrites, FillKeepsToTheRegionAndBadWritesChangeNothing) {
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 3, 2, 4, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  const RECT middle{1, 0, 2, 2};
  ASSERT_EQ(Q_SetBitmapRgnRect(b.get(), &middle, 0), QV_SUCCESS);
  ASSERT_EQ(Q_FillBitmap(b.get(), Rgb(255, 255, 255), 0), QV_SUCCESS);
  for (int y = 0; y < 2; ++y)
    EXPECT_EQ((std::vector<uint64_t>{Stored(*b, 0, y), Stored(*b, 1, y), Stored(*b, 2, y)}),
              (std::vector<uint64_t>{0, 15, 0}));
  const std::vector<uint8_t> before = qvtest::PixelBytes(*b);
  BITMAPHANDLE unallocated = *b;
  unallocated.uFlags &= ~QV_BMF_ALLOCATED;
  struct Bad {
    const char* what;
    BITMAPHANDLE* p;
    int x, y;
    unsigned flags;
    int expected;
  };
  const Bad bad[] = {
      {"left of the bitmap", b.get(), -1, 0, 0, QV_ERROR_INVALID_PARAMETER},
      {"x equal to the width", b.get(), 3, 0, 0, QV_ERROR_INVALID_PARAMETER},
      {"y equal to the height", b.get(), 0, 2, 0, QV_ERROR_INVALID_PARAMETER},
      {"flags", b.get(), 0, 0, 2, QV_ERROR_INVALID_FLAGS},
      {"null", nullptr, 0, 0, 0, QV_ERROR_INVALID_PARAMETER},
      {"unallocated", &unallocated, 0, 0, 0, QV_ERROR_BITMAP_NOT_ALLOCATED},
  };
  for (const Bad& c : bad) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(Q_PutPixelColor(c.p, c.x, c.y, Rgb(255, 255, 255), c.flags), c.expected);
    if (c.x == 0 && c.y == 0) {
      EXPECT_EQ(Q_FillBitmap(c.p, Rgb(255, 255, 255), c.flags), c.expected);
    }
  }
  EXPECT_EQ(qvtest::PixelBytes(*b), before);
}

}  // namespace
