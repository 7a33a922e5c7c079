/*
 * What the viewers paint: reductions average areas (a checker turns mid-gray instead of aliasing),
 * enlargements repeat pixels, indexed images go through their palette, 12/16-bit gray through the
 * window-level LUT (signed values at length + v) or through its significant bits, and a visible window
 * of the destination equals the same part of a full render.
 */
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "Bitmap.h"
#include "DisplayResampler.h"
#include "PixelConvert.h"
#include "TestBitmaps.h"

using qvtest::OwnedBitmap;

namespace {

std::vector<uint32_t> Render(const BITMAPHANDLE& b, int dw, int dh, RECT visible = RECT{0, 0, 0, 0}) {
  if (visible.right == 0) visible = RECT{0, 0, dw, dh};
  qv::DisplayRequest r{RECT{0, 0, b.nWidth, b.nHeight}, dw, dh, visible};
  std::vector<uint32_t> out(static_cast<size_t>(visible.right - visible.left) * (visible.bottom - visible.top));
  EXPECT_EQ(qv::RenderForDisplay(b, r, out.data()), QV_SUCCESS);
  return out;
}

void FillChecker(BITMAPHANDLE& b) {
  for (int y = 0; y < b.nHeight; ++y)
    for (int x = 0; x < b.nWidth; ++x) std::memset(b.pData + y * b.nBytesPerLine + x * 3, ((x + y) & 1) ? 255 : 0, 3);
}

void AttachLut(BITMAPHANDLE& b, unsigned length, int low, int high) {
  auto* lut = reinterpret_cast<RGBQUAD*>(qv::AllocatePixels(length * sizeof(RGBQUAD)));
  for (unsigned i = 0; i < length; ++i) lut[i] = RGBQUAD{uint8_t(i), uint8_t(i >> 8), uint8_t(0x40), 0};
  b.pLUT = lut;
  b.uLUTLength = length;
  b.uFlags |= QV_BMF_USELUT;
  b.nLowBit = low;
  b.nHighBit = high;
}

void SetWord(BITMAPHANDLE& b, int x, int y, uint16_t v) { std::memcpy(b.pData + y * b.nBytesPerLine + 2 * x, &v, 2); }

TEST(Display, ReductionAveragesAreasInsteadOfAliasing) {
  for (int size : {2, 4, 64}) {
    SCOPED_TRACE(size);
    OwnedBitmap b;
    ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), size, size, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
    FillChecker(*b);
    for (int dest : {1, size / 2}) {  // whole factors: every destination pixel covers half black, half white
      if (dest >= size) continue;
      for (uint32_t px : Render(*b, dest, dest)) {
        EXPECT_NEAR(static_cast<int>(px & 0xFF), 128, 1);
        EXPECT_EQ(px & 0xFF, (px >> 16) & 0xFF);
      }
    }
    if (size <= 3) continue;
    // Any factor keeps the overall brightness.
    const auto px = Render(*b, 3, 3);
    double sum = 0;
    for (uint32_t p : px) sum += p & 0xFF;
    EXPECT_NEAR(sum / px.size(), 127.5, 2.0);
  }
}

TEST(Display, ReductionWeighsPartialPixelsByArea) {
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 3, 1, 8, QV_ORDER_GRAY, nullptr, 0, 0), QV_SUCCESS);
  b->pData[0] = 0;
  b->pData[1] = 90;
  b->pData[2] = 255;
  const auto px = Render(*b, 2, 1);
  EXPECT_EQ(px[0] & 0xFF, 30u);   // (0 + 90 / 2) / 1.5
  EXPECT_EQ(px[1] & 0xFF, 200u);  // (45 + 255) / 1.5
}

TEST(Display, EnlargementRepeatsPixels) {
  RGBQUAD pal[4] = {{0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0}, {9, 9, 9, 0}};
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 2, 2, 2, QV_ORDER_BGR, pal, 4, 0), QV_SUCCESS);
  b->pData[0] = 0x10;                 // indices 0, 1
  b->pData[b->nBytesPerLine] = 0xB0;  // indices 2, 3
  const auto px = Render(*b, 4, 4);
  const uint32_t expect[4] = {0xFF0000, 0x00FF00, 0x0000FF, 0x090909};
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x) EXPECT_EQ(px[y * 4 + x], expect[(y / 2) * 2 + x / 2]) << x << "," << y;
}

TEST(Display, GrayGoesThroughTheLutOrItsSignificantBits) {
  struct Case {
    const char* what;
    int bits;
    bool isSigned;
    unsigned lutLength;  // 0: no LUT
    int low, high;
    uint16_t word;
    uint32_t expected;
  };
  const Case cases[] = {
      {"12-bit through a 4096 LUT", 12, false, 4096, 0, 11, 0x0ABC, 0x400ABC},
      {"12-bit, bits 4..11 through 256", 12, false, 256, 4, 11, 0x0ABC, 0x4000AB},
      {"16-bit signed negative", 16, true, 65536, 0, 15, 0xFFFE, 0x40FFFE},
      {"12-bit signed negative, 4096", 12, true, 4096, 0, 11, 0xFFFF, 0x400FFF},
      {"12-bit reduced, top", 12, false, 0, 0, 11, 4095, 0xFFFFFF},
      {"12-bit reduced, middle", 12, false, 0, 0, 11, 2048, 0x808080},
      {"16-bit reduced from bits 0..9", 16, false, 0, 0, 9, 0x03FF, 0xFFFFFF},
      {"16-bit signed reduced, lowest", 16, true, 0, 0, 15, 0x8000, 0x000000},
      {"16-bit signed reduced, zero", 16, true, 0, 0, 15, 0x0000, 0x808080},
      {"8-bit gray through a LUT", 8, false, 256, 0, 7, 0x00C8, 0x4000C8},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    OwnedBitmap b;
    ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 1, 1, c.bits, QV_ORDER_GRAY, nullptr, 0,
                             c.isSigned ? QV_BMF_SIGNED : 0),
              QV_SUCCESS);
    b->nLowBit = c.low;
    b->nHighBit = c.high;
    if (c.lutLength) AttachLut(*b, c.lutLength, c.low, c.high);
    ASSERT_EQ(Q_IsValidBitmap(b.get(), 0), QV_SUCCESS);
    SetWord(*b, 0, 0, c.word);
    EXPECT_EQ(Render(*b, 1, 1)[0], c.expected);
  }
}

TEST(Display, EveryFormatPaintsLikeItsWorkingRowsAtFullSize) {
  for (const auto& fc : qvtest::AllFormats()) {
    SCOPED_TRACE(fc.name);
    OwnedBitmap b;
    ASSERT_EQ(qvtest::CreatePatterned(fc, 11, 3, b.get()), QV_SUCCESS);
    qv::PixelFormat f{};
    qv::DescribePixelFormat(*b, &f);
    const auto px = Render(*b, 11, 3);
    std::vector<uint8_t> rgba(11 * 4);
    for (int y = 0; y < 3; ++y) {
      qv::ReadRowRgba8(*b, f, y, 0, 11, rgba.data());
      for (int x = 0; x < 11; ++x) {
        const uint32_t want = (uint32_t{rgba[4 * x]} << 16) | (uint32_t{rgba[4 * x + 1]} << 8) | rgba[4 * x + 2];
        // 12/16-bit gray keeps its top eight significant bits rather than rounding.
        const int tolerance = f.bytesPerSample == 2 && f.IsGray() ? 1 : 0;
        EXPECT_NEAR(static_cast<int>(px[y * 11 + x] & 0xFF), static_cast<int>(want & 0xFF), tolerance) << x << "," << y;
        EXPECT_NEAR(static_cast<int>(px[y * 11 + x] >> 16), static_cast<int>(want >> 16), tolerance) << x << "," << y;
      }
    }
  }
}

TEST(Display, VisibleWindowMatchesTheFullRender) {
  OwnedBitmap b;
  ASSERT_EQ(qvtest::CreatePatterned(qvtest::AllFormats()[11], 37, 23, b.get()), QV_SUCCESS);
  for (auto size : {std::make_pair(15, 9), std::make_pair(80, 61)}) {
    const int dw = size.first, dh = size.second;
    const auto full = Render(*b, dw, dh);
    const RECT vis{3, 2, dw - 4, dh - 1};
    const auto part = Render(*b, dw, dh, vis);
    const int vw = vis.right - vis.left;
    for (int y = vis.top; y < vis.bottom; ++y)
      for (int x = vis.left; x < vis.right; ++x)
        ASSERT_EQ(part[(y - vis.top) * vw + (x - vis.left)], full[y * dw + x]) << x << "," << y;
  }
}

TEST(Display, RequestsOutsideTheBitmapAreRefused) {
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 4, 4, 8, QV_ORDER_GRAY, nullptr, 0, 0), QV_SUCCESS);
  uint32_t out[64];
  const qv::DisplayRequest bad[] = {
      {RECT{0, 0, 5, 4}, 4, 4, RECT{0, 0, 4, 4}},
      {RECT{2, 0, 2, 4}, 4, 4, RECT{0, 0, 4, 4}},
      {RECT{0, 0, 4, 4}, 0, 4, RECT{0, 0, 4, 4}},
      {RECT{0, 0, 4, 4}, 4, 4, RECT{0, 0, 5, 4}},
  };
  for (const auto& r : bad) EXPECT_EQ(qv::RenderForDisplay(*b, r, out), QV_ERROR_INVALID_PARAMETER);
}

}  // namespace
