/*
 * Halftoning: every screen inks as much as the gray asks, angled screens stay even across the image (a
 * tiled cell that does not fit the pixel grid would leave bands), user patterns land where they belong, and
 * hostile arguments leave the bitmap alone.
 */
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "ReduceImages.h"
#include "TestImage.h"

namespace opstest {
namespace {

using qvtest::OwnedBitmap;

double BlackShare(const BITMAPHANDLE& b, int x0, int y0, int w, int h) {
  int black = 0;
  for (int y = y0; y < y0 + h; ++y)
    for (int x = x0; x < x0 + w; ++x) black += IndexAt(b, x, y) == 0;
  return double(black) / (w * h);
}

// count patterns of size x size, pattern k with k white pixels in raster order, as 24-bit bitmaps.
HBITMAPLIST MakePatterns(int count, int size) {
  HBITMAPLIST list = nullptr;
  Q_CreateBitmapList(&list, 0);
  for (int k = 0; k < count; ++k) {
    OwnedBitmap p;
    MakeRgb24(p, size, size, [&](int x, int y) { return y * size + x < k ? 0xFFFFFFu : 0u; });
    Q_InsertBitmapListItem(list, static_cast<unsigned>(k), p.get(), 0);
  }
  return list;
}

TEST(Halftone, EveryTypeInksAsMuchAsTheGrayAsks) {
  HBITMAPLIST patterns = MakePatterns(17, 4);
  for (unsigned type = 0; type <= QV_HALFTONE_USER; ++type)
    for (int gray : {0, 64, 128, 255}) {
      OwnedBitmap b;
      MakeGray8(b, 160, 160, [&](int, int) { return uint32_t(gray); });
      ASSERT_EQ(Q_HalfToneBitmap(b.get(), type, 3000, 4, patterns, 0), QV_SUCCESS) << type;
      ASSERT_EQ(b->nBitsPerPixel, 1);
      ASSERT_EQ(b->nColors, 2);
      EXPECT_TRUE(b->Palette[0].rgbRed == 0 && b->Palette[1].rgbRed == 255);
      // User patterns come in 17 steps of 1/16; the screens in finer ones.
      const double tolerance = type == QV_HALFTONE_USER ? 1.0 / 16 : 0.03;
      // Black and white themselves are exact.
      const double share = BlackShare(*b, 0, 0, 160, 160);
      EXPECT_NEAR(share, (255 - gray) / 255.0, gray % 255 ? tolerance : 0) << "type " << type << " gray " << gray;
    }
  Q_DestroyBitmapList(patterns, 0);
}

TEST(Halftone, AngledScreensAreEvenWithoutSeams) {
  for (unsigned type : {QV_HALFTONE_PRINT, QV_HALFTONE_ELLIPTICAL, QV_HALFTONE_LINES})
    for (int angle : {1500, 4500, 7500}) {
      OwnedBitmap b, again;
      for (auto* p : {&b, &again}) {
        MakeGray8(*p, 256, 256, [](int, int) { return 150u; });
        ASSERT_EQ(Q_HalfToneBitmap(p->get(), type, angle, 6, nullptr, 0), QV_SUCCESS);
      }
      // Every 32 x 32 block holds several cells at any angle; a seam would push a row of blocks off.
      for (int y = 0; y < 256; y += 32)
        for (int x = 0; x < 256; x += 32)
          ASSERT_NEAR(BlackShare(*b, x, y, 32, 32), 105 / 255.0, 0.05)
              << type << " at " << angle << ", block " << x << "," << y;
      EXPECT_EQ(0, std::memcmp(b->pData, again->pData, b->uDataSize)) << "the same call must give the same screen";
    }
  // The angle turns the screen: 0 and 45 degrees must differ.
  OwnedBitmap flat, turned;
  for (auto [p, angle] : {std::pair{&flat, 0}, std::pair{&turned, 4500}}) {
    MakeGray8(*p, 64, 64, [](int, int) { return 100u; });
    ASSERT_EQ(Q_HalfToneBitmap(p->get(), QV_HALFTONE_LINES, angle, 8, nullptr, 0), QV_SUCCESS);
  }
  EXPECT_NE(0, std::memcmp(flat->pData, turned->pData, flat->uDataSize));
}

TEST(Halftone, UserPatternsTileByBrightness) {
  const int d = 3;
  HBITMAPLIST patterns = MakePatterns(d * d + 1, d);
  OwnedBitmap b;
  // Each band of 9 columns one brightness; pattern floor(v * 257 * 10 / 65536) on the 16-bit scale.
  const uint32_t levels[] = {0, 26, 100, 200, 255};
  MakeGray8(b, 45, 7, [&](int x, int) { return levels[x / 9]; });
  ASSERT_EQ(Q_HalfToneBitmap(b.get(), QV_HALFTONE_USER, 0, d, patterns, 0), QV_SUCCESS);
  for (int y = 0; y < 7; ++y)
    for (int x = 0; x < 45; ++x) {
      const int k = static_cast<int>(levels[x / 9] * 257 * 10 / 65536);
      EXPECT_EQ(IndexAt(*b, x, y), (y % d) * d + x % d < k ? 1 : 0) << x << "," << y;
    }
  Q_DestroyBitmapList(patterns, 0);
}

TEST(Halftone, HostileArgumentsLeaveTheBitmapAlone) {
  HBITMAPLIST tooFew = MakePatterns(9, 3), wrongSize = MakePatterns(10, 4);
  OwnedBitmap unallocated;
  unallocated->uStructSize = sizeof(BITMAPHANDLE);
  struct Hostile {
    const char* what;
    int bitmap;  // 0 the test image, 1 null, 2 unallocated
    unsigned type;
    int angle;
    unsigned dimension;
    HBITMAPLIST list;
    unsigned flags;
    int expected;
  };
  const Hostile cases[] = {
      {"null", 1, 0, 0, 8, nullptr, 0, QV_ERROR_INVALID_PARAMETER},
      {"unallocated", 2, 0, 0, 8, nullptr, 0, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {"flags", 0, 0, 0, 8, nullptr, 1, QV_ERROR_INVALID_FLAGS},
      {"type 8", 0, 8, 0, 8, nullptr, 0, QV_ERROR_INVALID_PARAMETER},
      {"angle 36001", 0, 0, 36001, 8, nullptr, 0, QV_ERROR_INVALID_PARAMETER},
      {"angle -36001", 0, 0, -36001, 8, nullptr, 0, QV_ERROR_INVALID_PARAMETER},
      {"dimension 1", 0, 2, 0, 1, nullptr, 0, QV_ERROR_INVALID_PARAMETER},
      {"dimension 101", 0, 2, 0, 101, nullptr, 0, QV_ERROR_INVALID_PARAMETER},
      {"no list", 0, 7, 0, 3, nullptr, 0, QV_ERROR_INVALID_HANDLE},
      {"forged list", 0, 7, 0, 3, reinterpret_cast<HBITMAPLIST>(&unallocated), 0, QV_ERROR_INVALID_HANDLE},
      {"d*d patterns", 0, 7, 0, 3, tooFew, 0, QV_ERROR_INVALID_PARAMETER},
      {"patterns of the wrong size", 0, 7, 0, 3, wrongSize, 0, QV_ERROR_INVALID_PARAMETER},
  };
  for (const Hostile& c : cases) {
    OwnedBitmap b;
    MakeGray8(b, 11, 5, [](int x, int y) { return uint32_t(x * 20 + y); });
    const BITMAPHANDLE before = *b;
    const std::vector<uint8_t> pixels(b->pData, b->pData + b->uDataSize);
    BITMAPHANDLE* p = c.bitmap == 1 ? nullptr : (c.bitmap == 2 ? unallocated.get() : b.get());
    EXPECT_EQ(Q_HalfToneBitmap(p, c.type, c.angle, c.dimension, c.list, c.flags), c.expected) << c.what;
    EXPECT_EQ(0, std::memcmp(&before, b.get(), sizeof before)) << c.what;
    EXPECT_EQ(pixels, std::vector<uint8_t>(b->pData, b->pData + b->uDataSize)) << c.what;
  }
  Q_DestroyBitmapList(tooFew, 0);
  Q_DestroyBitmapList(wrongSize, 0);
}

TEST(Halftone, EverySourceFormatGivesOneBit) {
  for (const Format& f : AllFormats()) {
    TestBitmap t(f, 23, 7);
    ASSERT_EQ(Q_HalfToneBitmap(t.get(), QV_HALFTONE_PRINT, 4500, 2, nullptr, 0), QV_SUCCESS) << f.name;
    EXPECT_EQ(Q_IsValidBitmap(t.get(), 0), QV_SUCCESS) << f.name;
    EXPECT_EQ(t.b().nBitsPerPixel, 1) << f.name;
  }
}

}  // namespace
}  // namespace opstest
