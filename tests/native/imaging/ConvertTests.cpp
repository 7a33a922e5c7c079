/*
 * The working representation: every format survives a read and write through 16-bit RGBA unchanged, the
 * 8-bit path does for 8-bit formats, and known samples land on the documented values (scaling of 12-bit,
 * the signed offset, the 5-6-5 layouts, packed index order).
 */
#include <gtest/gtest.h>

#include <vector>

#include "PixelConvert.h"
#include "TestBitmaps.h"

using qvtest::OwnedBitmap;

namespace {

qv::PixelFormat FormatOf(const BITMAPHANDLE& b) {
  qv::PixelFormat f{};
  EXPECT_EQ(qv::DescribePixelFormat(b, &f), QV_SUCCESS);
  return f;
}

TEST(WorkingRows, EveryFormatRoundTripsThroughSixteenBitsAndEightBitOnesThroughEight) {
  for (const auto& fc : qvtest::AllFormats()) {
    SCOPED_TRACE(fc.name);
    const bool eightBit = fc.bitsPerPixel != 12 && fc.bitsPerPixel < 48 &&
                          !(fc.bitsPerPixel == 16 && fc.order == QV_ORDER_GRAY);
    OwnedBitmap src, wide, narrow;
    ASSERT_EQ(qvtest::CreatePatterned(fc, 21, 5, src.get()), QV_SUCCESS);
    for (OwnedBitmap* dst : {&wide, &narrow}) {
      ASSERT_EQ(Q_CopyBitmap(dst->get(), sizeof(BITMAPHANDLE), src.get(), 0), QV_SUCCESS);
      std::fill_n((*dst)->pData, (*dst)->uDataSize, 0);
    }
    const qv::PixelFormat f = FormatOf(*src);
    std::vector<uint16_t> row16(21 * 4);
    std::vector<uint8_t> row8(21 * 4);
    for (int y = 0; y < 5; ++y) {
      qv::ReadRowRgba16(*src, f, y, 0, 21, row16.data());
      qv::WriteRowRgba16(*wide, f, y, 0, 21, row16.data());
      if (!eightBit) continue;
      qv::ReadRowRgba8(*src, f, y, 0, 21, row8.data());
      qv::WriteRowRgba8(*narrow, f, y, 0, 21, row8.data());
    }
    EXPECT_EQ(qvtest::PixelBytes(*wide), qvtest::PixelBytes(*src));
    EXPECT_TRUE(!eightBit || qvtest::PixelBytes(*narrow) == qvtest::PixelBytes(*src));
  }
}

TEST(WorkingRows, KnownSamplesMapToDocumentedValues) {
  struct Case {
    const char* what;
    int bits;
    unsigned order;
    bool isSigned;
    std::vector<uint8_t> bytes;  // the first pixel's bytes
    uint16_t r, g, b;
  };
  const Case cases[] = {
      {"12-bit full", 12, QV_ORDER_GRAY, false, {0xFF, 0x0F}, 65535, 65535, 65535},
      {"12-bit mid", 12, QV_ORDER_GRAY, false, {0x00, 0x08}, 32776, 32776, 32776},
      {"12-bit signed lowest", 12, QV_ORDER_GRAY, true, {0x00, 0xF8}, 0, 0, 0},
      {"12-bit signed zero", 12, QV_ORDER_GRAY, true, {0x00, 0x00}, 32776, 32776, 32776},
      {"16-bit signed lowest", 16, QV_ORDER_GRAY, true, {0x00, 0x80}, 0, 0, 0},
      {"16-bit signed -1", 16, QV_ORDER_GRAY, true, {0xFF, 0xFF}, 32767, 32767, 32767},
      {"5-6-5 Windows red", 16, QV_ORDER_BGR, false, {0x00, 0xF8}, 65535, 0, 0},
      {"5-6-5 Windows blue", 16, QV_ORDER_BGR, false, {0x1F, 0x00}, 0, 0, 65535},
      {"5-6-5 RGB red", 16, QV_ORDER_RGB, false, {0x1F, 0x00}, 65535, 0, 0},
      {"5-6-5 green", 16, QV_ORDER_RGB, false, {0xE0, 0x07}, 0, 65535, 0},
      {"24 BGR", 24, QV_ORDER_BGR, false, {1, 2, 3}, 3 * 257, 2 * 257, 1 * 257},
      {"24 RGB", 24, QV_ORDER_RGB, false, {1, 2, 3}, 1 * 257, 2 * 257, 3 * 257},
      {"48 BGR", 48, QV_ORDER_BGR, false, {1, 0, 2, 0, 3, 0}, 3, 2, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    OwnedBitmap b;
    ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 1, 1, c.bits, c.order, nullptr, 0,
                             c.isSigned ? QV_BMF_SIGNED : 0),
              QV_SUCCESS);
    std::copy(c.bytes.begin(), c.bytes.end(), b->pData);
    uint16_t px[4];
    qv::ReadRowRgba16(*b, FormatOf(*b), 0, 0, 1, px);
    EXPECT_EQ(std::vector<uint16_t>(px, px + 4), (std::vector<uint16_t>{c.r, c.g, c.b, 65535}));
  }
}

TEST(WorkingRows, PackedIndicesAreMostSignificantFirst) {
  RGBQUAD pal[4] = {{0, 0, 0, 0}, {10, 10, 10, 0}, {20, 20, 20, 0}, {30, 30, 30, 0}};
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 4, 1, 2, QV_ORDER_BGR, pal, 4, 0), QV_SUCCESS);
  b->pData[0] = 0x1B;  // indices 0, 1, 2, 3
  uint8_t px[16];
  qv::ReadRowRgba8(*b, FormatOf(*b), 0, 0, 4, px);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(px[4 * i], 10 * i) << i;
  // Writing pixel 2 alone changes only its two bits.
  const uint8_t white[4] = {30, 30, 30, 255};
  qv::WriteRowRgba8(*b, FormatOf(*b), 0, 2, 3, white);
  EXPECT_EQ(b->pData[0], 0x1F);
}

TEST(WorkingRows, ConvertKeepsPrecisionAndUsesLuminanceForGray) {
  OwnedBitmap src, gray16, gray8, back;
  ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 2, 1, 48, QV_ORDER_RGB, nullptr, 0, 0), QV_SUCCESS);
  uint16_t* s = reinterpret_cast<uint16_t*>(src->pData);
  const uint16_t samples[6] = {1000, 1000, 1000, 60000, 0, 0};
  std::copy(samples, samples + 6, s);
  ASSERT_EQ(qv::ConvertBitmap(*src, 16, QV_ORDER_GRAY, false, gray16.get()), QV_SUCCESS);
  const uint16_t* g = reinterpret_cast<const uint16_t*>(gray16->pData);
  EXPECT_EQ(g[0], 1000);  // no detour through 8 bits
  EXPECT_EQ(g[1], (60000 * 299 + 500) / 1000);
  ASSERT_EQ(qv::ConvertBitmap(*src, 8, QV_ORDER_GRAY, false, gray8.get()), QV_SUCCESS);
  EXPECT_EQ(gray8->pData[1], 70);  // luminance 17940 of 65535 is 69.8 of 255
  ASSERT_EQ(qv::ConvertBitmap(*gray16, 48, QV_ORDER_BGR, false, back.get()), QV_SUCCESS);
  EXPECT_EQ(reinterpret_cast<const uint16_t*>(back->pData)[0], 1000);
  EXPECT_EQ(Q_IsValidBitmap(back.get(), 0), QV_SUCCESS);
}

}  // namespace
