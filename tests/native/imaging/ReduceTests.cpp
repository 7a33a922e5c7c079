/*
 * The region reduction: exact area means in the source's own format for every format and the edges of the
 * geometry, the region carried by the pixel under each output centre, and hostile requests refused without
 * touching the caller's descriptor.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "PixelConvert.h"
#include "qv/qvimgops.h"
#include "PixelFormat.h"
#include "TestBitmaps.h"

namespace {

using qvtest::OwnedBitmap;

// Pixel (x, y) as the samples the reduction averages: the gray value in the format's unsigned range, or
// R, G, B (and alpha for formats that have it) of the working rows of the format's depth.
std::vector<uint32_t> SamplesAt(const BITMAPHANDLE& b, int x, int y) {
  qv::PixelFormat f{};
  qv::DescribePixelFormat(b, &f);
  if (f.IsGray()) {
    uint16_t v = 0;
    qv::ReadRowGray(b, f, y, x, x + 1, &v);
    return {v};
  }
  uint16_t px[4];
  if (f.bytesPerSample == 2) {
    qv::ReadRowRgba16(b, f, y, x, x + 1, px);
  } else {
    uint8_t narrow[4];
    qv::ReadRowRgba8(b, f, y, x, x + 1, narrow);
    std::copy(narrow, narrow + 4, px);
  }
  return std::vector<uint32_t>(px, px + (f.HasAlpha() ? 4 : 3));
}

// The mean over output pixel (ox, oy)'s area, by brute force over the integer axis on which a source pixel
// is `width` units wide and an output pixel `region width` units: every overlap, then round half up.
std::vector<uint32_t> ExpectedMean(const BITMAPHANDLE& b, const RECT& r, int width, int height, int ox, int oy) {
  const int64_t sw = r.right - r.left, sh = r.bottom - r.top;
  auto overlap = [](int64_t a0, int64_t a1, int64_t b0, int64_t b1) {
    return std::max<int64_t>(0, std::min(a1, b1) - std::max(a0, b0));
  };
  std::vector<uint64_t> sum;
  for (int64_t y = oy * sh / height; y < std::min(sh, (oy + 1) * sh / height + 1); ++y) {
    const int64_t wy = overlap(y * height, (y + 1) * height, oy * sh, (oy + 1) * sh);
    for (int64_t x = ox * sw / width; x < std::min(sw, (ox + 1) * sw / width + 1) && wy; ++x) {
      const int64_t wx = overlap(x * width, (x + 1) * width, ox * sw, (ox + 1) * sw);
      if (!wx) continue;
      const std::vector<uint32_t> s = SamplesAt(b, r.left + int(x), r.top + int(y));
      sum.resize(s.size(), 0);
      for (size_t c = 0; c < s.size(); ++c) sum[c] += uint64_t(s[c]) * uint64_t(wx * wy);
    }
  }
  const uint64_t divisor = uint64_t(sw * sh);
  std::vector<uint32_t> mean;
  for (uint64_t v : sum) mean.push_back(uint32_t((v + divisor / 2) / divisor));
  return mean;
}

TEST(RegionReduction, EveryFormatGivesTheExactMeanOfEachCoveredArea) {
  struct Geometry {
    const char* what;
    RECT region;
    int width, height;
  };
  // The source is 31 x 150.
  const Geometry geometries[] = {
      {"ratios that are not whole, off the origin", {3, 2, 26, 19}, 7, 5},
      {"even halves", {0, 0, 30, 22}, 15, 11},
      {"the full width of the image", {0, 4, 31, 20}, 10, 4},
      {"one output pixel", {0, 0, 31, 22}, 1, 1},
      {"the size of the region: a crop", {5, 3, 17, 11}, 12, 8},
      {"one pixel wide region", {30, 0, 31, 22}, 1, 3},
      {"enough rows for several bands", {0, 0, 31, 150}, 11, 97},
  };
  for (const qvtest::FormatCase& fc : qvtest::AllFormats()) {
    SCOPED_TRACE(fc.name);
    OwnedBitmap src;
    ASSERT_EQ(qvtest::CreatePatterned(fc, 31, 150, src.get()), QV_SUCCESS);
    const bool kept = fc.bitsPerPixel >= 8 && !(fc.bitsPerPixel == 8 && fc.order != QV_ORDER_GRAY) &&
                      !(fc.bitsPerPixel == 16 && fc.order != QV_ORDER_GRAY);
    for (const Geometry& g : geometries) {
      SCOPED_TRACE(g.what);
      OwnedBitmap out;
      ASSERT_EQ(Q_ReduceBitmapRegion(src.get(), &g.region, g.width, g.height, out.get(), sizeof(BITMAPHANDLE), 0),
                QV_SUCCESS);
      ASSERT_EQ(Q_IsValidBitmap(out.get(), 0), QV_SUCCESS);
      EXPECT_EQ(out->nBitsPerPixel, kept ? fc.bitsPerPixel : 24);
      EXPECT_EQ(out->uOrder, kept ? fc.order : QV_ORDER_BGR);
      EXPECT_EQ((out->uFlags & QV_BMF_SIGNED) != 0, fc.isSigned);
      ASSERT_EQ(out->nWidth, g.width);
      ASSERT_EQ(out->nHeight, g.height);
      for (int y = 0; y < g.height; ++y)
        for (int x = 0; x < g.width; ++x)
          ASSERT_EQ(SamplesAt(*out, x, y), ExpectedMean(*src, g.region, g.width, g.height, x, y))
              << "output pixel " << x << "," << y;
    }
  }
}

TEST(RegionReduction, FiveSixFiveReadsRedFromTheLowBitsInRgbOrderOnly) {
  // 0x001F: the low five bits set. The output is 24-bit BGR: byte 0 blue, byte 2 red.
  for (const unsigned order : {QV_ORDER_RGB, QV_ORDER_BGR}) {
    SCOPED_TRACE(order == QV_ORDER_RGB ? "RGB order" : "BGR order");
    OwnedBitmap src, out;
    ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 2, 1, 16, order, nullptr, 0, 0), QV_SUCCESS);
    src->pData[0] = src->pData[2] = 0x1F;
    ASSERT_EQ(Q_ReduceBitmapRegion(src.get(), nullptr, 1, 1, out.get(), sizeof(BITMAPHANDLE), 0), QV_SUCCESS);
    EXPECT_EQ(out->pData[0], order == QV_ORDER_RGB ? 0 : 255);
    EXPECT_EQ(out->pData[2], order == QV_ORDER_RGB ? 255 : 0);
  }
}

TEST(RegionReduction, TheRegionFollowsThePixelUnderEachOutputCentre) {
  // A diagonal band as a mask region, to see a crop keep it exactly.
  std::vector<uint8_t> band(20 * 20, 0);
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 20; ++x) band[size_t(y) * 20 + x] = (x - y >= -2 && x - y <= 2) ? 0xFF : 0;
  struct Case {
    const char* what;
    RECT region;  // empty: none
    bool mask;    // the band over `region`
    RECT area;
    int width, height;
    RECT bounds;  // of the carried region; empty: none
  };
  const Case cases[] = {
      {"no region", {}, false, {0, 0, 40, 40}, 20, 20, {}},
      {"rectangle halved", {10, 10, 30, 20}, false, {0, 0, 40, 40}, 20, 20, {5, 5, 15, 10}},
      // Thirds: output index j has source index 3j+1 under its centre.
      {"rectangle by thirds", {4, 7, 11, 30}, false, {0, 0, 30, 30}, 10, 10, {1, 2, 4, 10}},
      {"mask cropped", {5, 5, 25, 25}, true, {5, 5, 25, 25}, 20, 20, {0, 0, 20, 20}},
      {"mask halved", {5, 5, 25, 25}, true, {0, 0, 40, 40}, 20, 20, {2, 2, 12, 12}},
      {"region beside the area", {30, 30, 40, 40}, false, {0, 0, 20, 20}, 10, 10, {}},
      {"one column between two centres", {1, 0, 2, 40}, false, {0, 0, 40, 40}, 10, 10, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    OwnedBitmap src, out;
    ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 40, 40, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
    if (c.region.right > c.region.left) {
      ASSERT_EQ(c.mask ? Q_SetBitmapRgnMask(src.get(), &c.region, band.data(), 20, 0)
                       : Q_SetBitmapRgnRect(src.get(), &c.region, 0),
                QV_SUCCESS);
    }
    ASSERT_EQ(Q_ReduceBitmapRegion(src.get(), &c.area, c.width, c.height, out.get(), sizeof(BITMAPHANDLE), 0),
              QV_SUCCESS);
    const bool carried = c.bounds.right > c.bounds.left;
    ASSERT_EQ(Q_BitmapHasRgn(out.get(), 0), carried ? 1 : 0);
    if (!carried) continue;
    EXPECT_EQ(std::vector<int>({out->rcRgn.left, out->rcRgn.top, out->rcRgn.right, out->rcRgn.bottom}),
              std::vector<int>({c.bounds.left, c.bounds.top, c.bounds.right, c.bounds.bottom}));
    const int areaWidth = c.area.right - c.area.left, areaHeight = c.area.bottom - c.area.top;
    auto inside = [](const BITMAPHANDLE& b, int x, int y) {
      const RECT& r = b.rcRgn;
      if (x < r.left || x >= r.right || y < r.top || y >= r.bottom) return false;
      return !b.pRgnMask || b.pRgnMask[size_t(y - r.top) * b.nRgnMaskStride + (x - r.left)] != 0;
    };
    for (int y = 0; y < c.height; ++y)
      for (int x = 0; x < c.width; ++x) {
        const int sx = c.area.left + (2 * x + 1) * areaWidth / (2 * c.width);
        const int sy = c.area.top + (2 * y + 1) * areaHeight / (2 * c.height);
        ASSERT_EQ(inside(*out, x, y), inside(*src, sx, sy)) << "output pixel " << x << "," << y;
      }
  }
}

TEST(RegionReduction, AWindowLevelledImageKeepsItsTableAndSignificantBits) {
  OwnedBitmap src, out;
  ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 8, 8, 16, QV_ORDER_GRAY, nullptr, 0, QV_BMF_SIGNED),
            QV_SUCCESS);
  std::vector<RGBQUAD> lut(4096);
  for (size_t i = 0; i < lut.size(); ++i) lut[i] = RGBQUAD{uint8_t(i), uint8_t(i >> 4), 0, 0};
  ASSERT_EQ(Q_WindowLevel(src.get(), 0, 11, lut.data(), 4096, 0), QV_SUCCESS);
  ASSERT_EQ(Q_ReduceBitmapRegion(src.get(), nullptr, 3, 3, out.get(), sizeof(BITMAPHANDLE), 0), QV_SUCCESS);
  EXPECT_TRUE(out->uFlags & QV_BMF_USELUT);
  EXPECT_EQ(out->nHighBit, 11);
  ASSERT_EQ(out->uLUTLength, 4096u);
  EXPECT_NE(out->pLUT, src->pLUT) << "the output owns its own copy";
  EXPECT_EQ(std::memcmp(out->pLUT, lut.data(), 4096 * sizeof(RGBQUAD)), 0);
}

TEST(RegionReduction, HostileRequestsGetTheirCodeAndLeaveTheOutputAlone) {
  OwnedBitmap src;
  ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 16, 12, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  BITMAPHANDLE unallocated = *src;
  unallocated.uFlags &= ~QV_BMF_ALLOCATED;
  BITMAPHANDLE sentinel;
  std::memset(&sentinel, 0x5A, sizeof sentinel);
  sentinel.uStructSize = sizeof(BITMAPHANDLE);
  const RECT whole{0, 0, 16, 12};
  const auto* unmapped = reinterpret_cast<const RECT*>(uintptr_t{16});
  const RECT pastRight{0, 0, 17, 12}, leftOf{-1, 0, 8, 8}, empty{4, 4, 4, 8};
  struct Case {
    const char* what;
    const BITMAPHANDLE* src;
    const RECT* region;
    int width, height;
    bool nullOut;
    unsigned structSize, flags;
    int expected;
  };
  const unsigned k = sizeof(BITMAPHANDLE);
  const Case cases[] = {
      {"null output", src.get(), &whole, 4, 4, true, k, 0, QV_ERROR_INVALID_PARAMETER},
      {"struct size", src.get(), &whole, 4, 4, false, 272, 0, QV_ERROR_INVALID_STRUCT_SIZE},
      {"flags", src.get(), &whole, 4, 4, false, k, 1, QV_ERROR_INVALID_FLAGS},
      {"null source", nullptr, &whole, 4, 4, false, k, 0, QV_ERROR_INVALID_PARAMETER},
      {"unallocated source", &unallocated, &whole, 4, 4, false, k, 0, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {"unmapped region", src.get(), unmapped, 4, 4, false, k, 0, QV_ERROR_INVALID_PARAMETER},
      {"region one past the right", src.get(), &pastRight, 4, 4, false, k, 0, QV_ERROR_BAD_REGION},
      {"region left of the bitmap", src.get(), &leftOf, 4, 4, false, k, 0, QV_ERROR_BAD_REGION},
      {"empty region", src.get(), &empty, 1, 1, false, k, 0, QV_ERROR_BAD_REGION},
      {"height 0", src.get(), &whole, 4, 0, false, k, 0, QV_ERROR_INVALID_DIMENSIONS},
      {"width 0", src.get(), &whole, 0, 4, false, k, 0, QV_ERROR_INVALID_DIMENSIONS},
      {"one wider than the region", src.get(), &whole, 17, 4, false, k, 0, QV_ERROR_INVALID_PARAMETER},
      {"one taller than the region", src.get(), &whole, 4, 13, false, k, 0, QV_ERROR_INVALID_PARAMETER},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    BITMAPHANDLE out = sentinel;
    EXPECT_EQ(Q_ReduceBitmapRegion(c.src, c.region, c.width, c.height, c.nullOut ? nullptr : &out, c.structSize,
                                   c.flags),
              c.expected);
    EXPECT_EQ(std::memcmp(&out, &sentinel, sizeof out), 0);
  }
  EXPECT_EQ(Q_ReduceBitmapRegion(src.get(), nullptr, 4, 4, src.get(), sizeof(BITMAPHANDLE), 0),
            QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_IsValidBitmap(src.get(), 0), QV_SUCCESS);
}

}  // namespace
