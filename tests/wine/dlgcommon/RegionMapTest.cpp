/*
 * A region carried onto a display bitmap: a display pixel is inside when
 * the source pixel under its centre is, so rectangles stay rectangles of
 * the reduced grid, a crop keeps the region pixel for pixel, and a region
 * the display misses leaves nothing to change.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DisplayRegion.h"
#include "TestImages.h"

namespace {

using dlgtest::TestBitmap;
using qvpreview::MapRegion;
using qvpreview::RegionCover;

bool InsideOf(const BITMAPHANDLE& b, int x, int y) {
  const RECT& r = b.rcRgn;
  if (x < r.left || x >= r.right || y < r.top || y >= r.bottom) return false;
  return !b.pRgnMask || b.pRgnMask[size_t(y - r.top) * b.nRgnMaskStride + (x - r.left)] != 0;
}

TEST(DisplayRegion, RectanglesAndMasksMapByThePixelUnderEachCentre) {
  // A diagonal band as a mask region, to see a crop keep it exactly.
  std::vector<uint8_t> band(20 * 20, 0);
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 20; ++x) band[size_t(y) * 20 + x] = (x - y >= -2 && x - y <= 2) ? 0xFF : 0;

  struct Case {
    const char* name;
    RECT region;  // empty: no region
    bool mask;    // the band above over `region`
    RECT area;
    int width, height;
    RegionCover cover;
    RECT bounds;  // of the mapped region when kPart
  };
  const Case cases[] = {
      {"no region", {}, false, {0, 0, 40, 40}, 20, 20, RegionCover::kWhole, {}},
      {"rectangle halved", {10, 10, 30, 20}, false, {0, 0, 40, 40}, 20, 20, RegionCover::kPart, {5, 5, 15, 10}},
      // Thirds: display index j has source index 3j+1 under its centre.
      {"rectangle by thirds", {4, 7, 11, 30}, false, {0, 0, 30, 30}, 10, 10, RegionCover::kPart, {1, 2, 4, 10}},
      {"rectangle cropped", {10, 10, 30, 20}, false, {15, 5, 35, 25}, 20, 20, RegionCover::kPart, {0, 5, 15, 15}},
      {"mask cropped", {5, 5, 25, 25}, true, {5, 5, 25, 25}, 20, 20, RegionCover::kPart, {0, 0, 20, 20}},
      {"region beside the area", {30, 30, 40, 40}, false, {0, 0, 20, 20}, 10, 10, RegionCover::kNone, {}},
      {"one column between two centres", {1, 0, 2, 40}, false, {0, 0, 40, 40}, 10, 10, RegionCover::kNone, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TestBitmap source(40, 40, 24, QV_ORDER_BGR);
    ASSERT_TRUE(source.Ok());
    if (c.region.right > c.region.left) {
      const int rc = c.mask ? Q_SetBitmapRgnMask(source.Get(), &c.region, band.data(), 20, 0)
                            : Q_SetBitmapRgnRect(source.Get(), &c.region, 0);
      ASSERT_EQ(rc, QV_SUCCESS);
    }
    TestBitmap display(c.width, c.height, 24, QV_ORDER_BGR);
    ASSERT_TRUE(display.Ok());
    RegionCover cover = RegionCover::kWhole;
    ASSERT_EQ(MapRegion(source.Ref(), c.area, display.Get(), &cover), QV_SUCCESS);
    EXPECT_EQ(cover, c.cover);
    EXPECT_EQ(Q_BitmapHasRgn(display.Get(), 0), c.cover == RegionCover::kPart ? 1 : 0);
    if (c.cover != RegionCover::kPart) continue;
    RECT bounds{};
    ASSERT_EQ(Q_GetBitmapRgnBounds(display.Get(), &bounds, 0), QV_SUCCESS);
    EXPECT_TRUE(EqualRect(&bounds, &c.bounds)) << bounds.left << "," << bounds.top << "," << bounds.right << ","
                                               << bounds.bottom;
    const int areaWidth = c.area.right - c.area.left, areaHeight = c.area.bottom - c.area.top;
    for (int y = 0; y < c.height; ++y)
      for (int x = 0; x < c.width; ++x) {
        const int sx = c.area.left + (2 * x + 1) * areaWidth / (2 * c.width);
        const int sy = c.area.top + (2 * y + 1) * areaHeight / (2 * c.height);
        ASSERT_EQ(InsideOf(display.Ref(), x, y), InsideOf(source.Ref(), sx, sy)) << "display pixel " << x << "," << y;
      }
  }
}

TEST(DisplayRegion, BadInputIsRefusedAndAnOldRegionDoesNotSurvive) {
  TestBitmap source(40, 40, 24, QV_ORDER_BGR);
  const RECT rect{0, 0, 10, 10};
  ASSERT_EQ(Q_SetBitmapRgnRect(source.Get(), &rect, 0), QV_SUCCESS);
  TestBitmap display(20, 20, 24, QV_ORDER_BGR);
  const RECT stale{2, 2, 4, 4};
  ASSERT_EQ(Q_SetBitmapRgnRect(display.Get(), &stale, 0), QV_SUCCESS);
  RegionCover cover = RegionCover::kPart;
  const RECT whole{0, 0, 40, 40};
  EXPECT_EQ(MapRegion(source.Ref(), whole, nullptr, &cover), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(MapRegion(source.Ref(), whole, display.Get(), nullptr), QV_ERROR_INVALID_PARAMETER);
  for (const RECT& area : {RECT{0, 0, 10, 10}, RECT{-5, 0, 35, 40}, RECT{10, 10, 50, 50}}) {
    EXPECT_EQ(MapRegion(source.Ref(), area, display.Get(), &cover), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_BitmapHasRgn(display.Get(), 0), 0) << "a refused mapping left a region behind";
  }
  // A source without a region clears what the display had.
  TestBitmap plain(40, 40, 24, QV_ORDER_BGR);
  ASSERT_EQ(Q_SetBitmapRgnRect(display.Get(), &stale, 0), QV_SUCCESS);
  EXPECT_EQ(MapRegion(plain.Ref(), whole, display.Get(), &cover), QV_SUCCESS);
  EXPECT_EQ(cover, RegionCover::kWhole);
  EXPECT_EQ(Q_BitmapHasRgn(display.Get(), 0), 0);
}

}  // namespace
