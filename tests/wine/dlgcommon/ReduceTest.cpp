/*
 * The preview's reduction: every output sample is the area-weighted mean of
 * the source samples it covers, in the source's own format, whatever the
 * ratio between the sizes.
 */
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "DisplayReduce.h"
#include "TestImages.h"

namespace {

using dlgtest::Samples;
using dlgtest::TestBitmap;

struct FormatCase {
  const char* name;
  int bits;
  unsigned order;
  unsigned flags;
  int outBits;
};

// The mean over the source area of output pixel (ox, oy), computed in
// floating point from the overlap of each source pixel.
std::vector<double> ExpectedMean(const BITMAPHANDLE& b, const RECT& region, int width, int height, int ox, int oy) {
  const double sw = double(region.right - region.left) / width;
  const double sh = double(region.bottom - region.top) / height;
  const double x0 = ox * sw, x1 = (ox + 1) * sw, y0 = oy * sh, y1 = (oy + 1) * sh;
  std::vector<double> sum;
  for (int y = int(std::floor(y0)); y < int(std::ceil(y1)); ++y) {
    const double wy = std::min<double>(y + 1, y1) - std::max<double>(y, y0);
    for (int x = int(std::floor(x0)); x < int(std::ceil(x1)); ++x) {
      const double wx = std::min<double>(x + 1, x1) - std::max<double>(x, x0);
      const std::vector<uint32_t> s = Samples(b, region.left + x, region.top + y);
      if (sum.empty()) sum.assign(s.size(), 0.0);
      for (size_t c = 0; c < s.size(); ++c) sum[c] += s[c] * wx * wy;
    }
  }
  for (double& v : sum) v /= sw * sh;
  return sum;
}

TEST(PreviewReduction, EveryFormatAveragesTheCoveredAreaExactly) {
  const FormatCase cases[] = {
      {"24-bit BGR", 24, QV_ORDER_BGR, 0, 24},        {"24-bit RGB", 24, QV_ORDER_RGB, 0, 24},
      {"32-bit", 32, QV_ORDER_BGR, 0, 32},            {"8-bit gray", 8, QV_ORDER_GRAY, 0, 8},
      {"12-bit gray", 12, QV_ORDER_GRAY, 0, 12},      {"16-bit gray", 16, QV_ORDER_GRAY, 0, 16},
      {"16-bit signed gray", 16, QV_ORDER_GRAY, QV_BMF_SIGNED, 16},
      {"48-bit", 48, QV_ORDER_BGR, 0, 48},            {"64-bit", 64, QV_ORDER_BGR, 0, 64},
      {"8-bit palette", 8, QV_ORDER_BGR, 0, 24},      {"4-bit palette", 4, QV_ORDER_BGR, 0, 24},
      {"1-bit palette", 1, QV_ORDER_BGR, 0, 24},
  };
  // Ratios that are not whole numbers put most source pixels across two
  // output pixels; a region off the origin checks the offsets.
  const RECT region{3, 2, 3 + 23, 2 + 17};
  const int width = 7, height = 5;
  for (const FormatCase& f : cases) {
    SCOPED_TRACE(f.name);
    TestBitmap source(31, 22, f.bits, f.order, f.flags);
    ASSERT_TRUE(source.Ok());
    source.FillPattern(f.bits * 7 + f.order);
    BITMAPHANDLE out{};
    ASSERT_EQ(qvpreview::ReduceRegion(source.Ref(), region, width, height, &out), QV_SUCCESS);
    EXPECT_EQ(out.nBitsPerPixel, f.outBits);
    EXPECT_EQ(out.nWidth, width);
    EXPECT_EQ(out.nHeight, height);
    EXPECT_EQ((out.uFlags & QV_BMF_SIGNED) != 0, (f.flags & QV_BMF_SIGNED) != 0);
    if (f.outBits == f.bits) {
      EXPECT_EQ(out.uOrder, f.order);
    }
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const std::vector<double> expected = ExpectedMean(source.Ref(), region, width, height, x, y);
        const std::vector<uint32_t> got = Samples(out, x, y);
        ASSERT_EQ(got.size(), expected.size());
        for (size_t c = 0; c < got.size(); ++c)
          ASSERT_NEAR(double(got[c]), expected[c], 0.5 + 1e-6) << "pixel " << x << "," << y << " sample " << c;
      }
    }
    Q_FreeBitmap(&out, 0);
  }
}

TEST(PreviewReduction, SameSizeIsACropAndLargeImagesSplitIntoBandsSeamlessly) {
  TestBitmap source(40, 30, 24, QV_ORDER_BGR);
  ASSERT_TRUE(source.Ok());
  source.FillPattern(5);
  BITMAPHANDLE crop{};
  const RECT region{10, 5, 30, 25};
  ASSERT_EQ(qvpreview::ReduceRegion(source.Ref(), region, 20, 20, &crop), QV_SUCCESS);
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 20; ++x) ASSERT_EQ(Samples(crop, x, y), Samples(source.Ref(), x + 10, y + 5));
  Q_FreeBitmap(&crop, 0);

  // Above a million pixels the rows are shared among threads; a band
  // boundary must not drop or double a source row. A flat image stays flat.
  TestBitmap flat(1500, 1001, 24, QV_ORDER_BGR);
  ASSERT_TRUE(flat.Ok());
  for (int y = 0; y < 1001; ++y) memset(flat.Get()->pData + size_t(y) * flat.Ref().nBytesPerLine, 200, 4500);
  BITMAPHANDLE reduced{};
  ASSERT_EQ(qvpreview::ReduceRegion(flat.Ref(), RECT{0, 0, 1500, 1001}, 151, 97, &reduced), QV_SUCCESS);
  for (int y = 0; y < 97; ++y)
    for (int x = 0; x < 151; ++x) ASSERT_EQ(Samples(reduced, x, y), (std::vector<uint32_t>{200, 200, 200}));
  Q_FreeBitmap(&reduced, 0);
}

TEST(PreviewReduction, BadRequestsAreRefusedWithoutOutput) {
  TestBitmap source(16, 16, 24, QV_ORDER_BGR);
  ASSERT_TRUE(source.Ok());
  BITMAPHANDLE out{};
  out.uStructSize = 1234;
  EXPECT_EQ(qvpreview::ReduceRegion(source.Ref(), RECT{0, 0, 17, 16}, 4, 4, &out), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(qvpreview::ReduceRegion(source.Ref(), RECT{-1, 0, 8, 8}, 4, 4, &out), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(qvpreview::ReduceRegion(source.Ref(), RECT{4, 4, 4, 8}, 1, 1, &out), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(qvpreview::ReduceRegion(source.Ref(), RECT{0, 0, 8, 8}, 9, 4, &out), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(qvpreview::ReduceRegion(source.Ref(), RECT{0, 0, 8, 8}, 0, 4, &out), QV_ERROR_INVALID_PARAMETER);
  BITMAPHANDLE empty{};
  empty.uStructSize = sizeof(BITMAPHANDLE);
  EXPECT_EQ(qvpreview::ReduceRegion(empty, RECT{0, 0, 1, 1}, 1, 1, &out), QV_ERROR_BITMAP_NOT_ALLOCATED);
  EXPECT_EQ(out.uStructSize, 1234u) << "a refused request must not write the output";
}

}  // namespace
