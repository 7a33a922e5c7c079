/*
 * Window level on bitmaps: attaching a LUT copy for painting (samples untouched, earlier LUT replaced) and
 * the permanent conversion to 24 bits, with bit ranges, signed samples, short tables, regions and aborts.
 */
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "TestImage.h"

namespace opstest {
namespace {

const Format kGray12{"Gray12", 12, QV_ORDER_GRAY, false};
const Format kGray16{"Gray16", 16, QV_ORDER_GRAY, false};
const Format kSigned16{"SignedGray16", 16, QV_ORDER_GRAY, true};

std::vector<RGBQUAD> PatternLut(unsigned length) {
  std::vector<RGBQUAD> lut(length);
  for (unsigned i = 0; i < length; ++i)
    lut[i] = {static_cast<uint8_t>(i % 7 * 30), static_cast<uint8_t>(i >> 4), static_cast<uint8_t>(i), 0};
  return lut;
}

TEST(WindowLevel, AttachesACopyAndLeavesTheSamples) {
  TestBitmap t(kGray16, 33, 9);
  const Snapshot before(t);
  std::vector<RGBQUAD> lut = PatternLut(65536);
  ASSERT_EQ(Q_WindowLevel(t.get(), 0, 15, lut.data(), 65536, QV_WL_PAINT), QV_SUCCESS);
  const BITMAPHANDLE& b = t.b();
  EXPECT_TRUE(b.uFlags & QV_BMF_USELUT);
  EXPECT_EQ(b.uLUTLength, 65536u);
  ASSERT_NE(b.pLUT, nullptr);
  EXPECT_NE(b.pLUT, lut.data());
  EXPECT_EQ(0, std::memcmp(b.pLUT, lut.data(), lut.size() * sizeof(RGBQUAD)));
  EXPECT_EQ(t.Pixels(), before.pixels);
  lut[5].rgbRed = 99;  // the caller's table is the caller's: the bitmap keeps its own copy
  EXPECT_NE(b.pLUT[5].rgbRed, 99);

  // Replacing with a shorter table, and then with the bitmap's own table, keeps one valid copy.
  const std::vector<RGBQUAD> small = PatternLut(4096);
  ASSERT_EQ(Q_WindowLevel(t.get(), 4, 15, small.data(), 4096, QV_WL_PAINT_AND_PROCESS), QV_SUCCESS);
  EXPECT_EQ(b.nLowBit, 4);
  EXPECT_EQ(b.nHighBit, 15);
  EXPECT_EQ(b.uLUTLength, 4096u);
  ASSERT_EQ(Q_WindowLevel(t.get(), 4, 15, b.pLUT, 4096, 0), QV_SUCCESS);
  EXPECT_EQ(0, std::memcmp(b.pLUT, small.data(), small.size() * sizeof(RGBQUAD)));
  EXPECT_EQ(Q_IsValidBitmap(t.get(), 0), QV_SUCCESS);
}

TEST(WindowLevel, RefusesWhatItCannotIndex) {
  TestBitmap gray12(kGray12, 8, 8);
  const Format gray8{"Gray8", 8, QV_ORDER_GRAY, false}, bgr24{"Bgr24", 24, QV_ORDER_BGR, false};
  TestBitmap g8(gray8, 8, 8), c24(bgr24, 8, 8);
  const std::vector<RGBQUAD> lut = PatternLut(4096);
  EXPECT_EQ(Q_WindowLevel(g8.get(), 0, 7, lut.data(), 256, 0), QV_ERROR_UNSUPPORTED_FORMAT);
  EXPECT_EQ(Q_WindowLevel(c24.get(), 0, 7, lut.data(), 256, 0), QV_ERROR_UNSUPPORTED_FORMAT);
  EXPECT_EQ(Q_WindowLevel(gray12.get(), 0, 12, lut.data(), 4096, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevel(gray12.get(), 5, 4, lut.data(), 4096, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevel(gray12.get(), -1, 4, lut.data(), 4096, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevel(gray12.get(), 0, 11, nullptr, 4096, 0), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_WindowLevel(gray12.get(), 0, 11, lut.data(), 0, 0), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_WindowLevel(gray12.get(), 0, 11, lut.data(), 4096, 2), QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(Q_WindowLevel(nullptr, 0, 11, lut.data(), 4096, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(gray12.b().uFlags & QV_BMF_USELUT);
  EXPECT_EQ(gray12.b().pLUT, nullptr);
}

TEST(WindowLevelBitmap, ConvertsEachSampleThroughItsBits) {
  struct Case {
    Format format;
    int low, high;
    unsigned length, order;
  };
  const Case cases[] = {
      {kGray12, 0, 11, 4096, QV_ORDER_BGR},    {kGray16, 0, 15, 65536, QV_ORDER_RGB},
      {kGray16, 0, 15, 1000, QV_ORDER_BGR},  // short table: larger values take the last entry
      {kGray12, 0, 11, 4095, QV_ORDER_RGB},  // the brightest sample equals the table's length
      {kGray16, 8, 15, 256, QV_ORDER_RGB},     {kSigned16, 4, 15, 4096, QV_ORDER_BGR},
      {kSigned16, 0, 15, 65536, QV_ORDER_RGB},
  };
  for (const Case& c : cases) {
    TestBitmap before(c.format, 23, 5), t(c.format, 23, 5);
    const std::vector<RGBQUAD> lut = PatternLut(c.length);
    ASSERT_EQ(Q_WindowLevelBitmap(t.get(), c.low, c.high, lut.data(), c.length, c.order, 0), QV_SUCCESS);
    const BITMAPHANDLE& b = t.b();
    ASSERT_EQ(b.nBitsPerPixel, 24);
    EXPECT_EQ(b.uOrder, c.order);
    EXPECT_FALSE(b.uFlags & (QV_BMF_SIGNED | QV_BMF_USELUT));
    EXPECT_EQ(Q_IsValidBitmap(t.get(), 0), QV_SUCCESS);
    const int bits = c.high - c.low + 1;
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < 23; ++x) {
        const uint32_t u = (before.Raw(x, y) >> c.low) & ((1u << bits) - 1);
        int64_t index;
        if (c.format.isSigned) {
          const int64_t v = (u >= (1u << (bits - 1))) ? int64_t(u) - (int64_t(1) << bits) : u;
          const int64_t half = c.length / 2;
          index = v >= 0 ? std::min<int64_t>(v, half - 1) : std::max<int64_t>(c.length + v, half);
        } else {
          index = std::min<int64_t>(u, c.length - 1);
        }
        const RGBQUAD& q = lut[index];
        const uint8_t* p = b.pData + y * b.nBytesPerLine + 3 * x;
        const bool bgr = c.order == QV_ORDER_BGR;
        ASSERT_EQ(std::vector<uint8_t>(p, p + 3),
                  (std::vector<uint8_t>{bgr ? q.rgbBlue : q.rgbRed, q.rgbGreen, bgr ? q.rgbRed : q.rgbBlue}))
            << c.format.name << " at " << x << "," << y;
      }
  }
}

int AbortAlways(int, void*) { return QV_ERROR_USER_ABORT; }

TEST(WindowLevelBitmap, LeavesTheBitmapWhenItCannotFinish) {
  const std::vector<RGBQUAD> lut = PatternLut(65536);
  TestBitmap t(kGray16, 300, 300);
  const Snapshot before(t);
  EXPECT_EQ(Q_WindowLevelBitmap(t.get(), 0, 15, lut.data(), 65536, 7, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevelBitmap(t.get(), 0, 15, lut.data(), 65536, QV_ORDER_BGR, 1), QV_ERROR_INVALID_FLAGS);
  const RECT r{10, 10, 50, 50};
  ASSERT_EQ(Q_SetBitmapRgnRect(t.get(), &r, 0), QV_SUCCESS);
  EXPECT_EQ(Q_WindowLevelBitmap(t.get(), 0, 15, lut.data(), 65536, QV_ORDER_BGR, 0), QV_ERROR_UNSUPPORTED_FORMAT);
  ASSERT_EQ(Q_FreeBitmapRgn(t.get(), 0), QV_SUCCESS);
  ASSERT_EQ(Q_SetStatusCallBack(AbortAlways, nullptr, 0), QV_SUCCESS);
  EXPECT_EQ(Q_WindowLevelBitmap(t.get(), 0, 15, lut.data(), 65536, QV_ORDER_BGR, 0), QV_ERROR_USER_ABORT);
  ASSERT_EQ(Q_SetStatusCallBack(nullptr, nullptr, 0), QV_SUCCESS);
  EXPECT_EQ(t.b().nBitsPerPixel, 16);
  EXPECT_EQ(t.Pixels(), before.pixels);
}

}  // namespace
}  // namespace opstest
