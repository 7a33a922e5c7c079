/*
 * The value rules of the local histogram equalization dialog: the limits from the bitmap or its region (the
 * region alone loses a pixel), the defaults, the caller's values (the height held against the smoothing
 * unsigned, the width not), the smoothing range, and raising the smoothing past the window.
 */
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "LocalHistoRules.h"

namespace qvdlg {
namespace {

TEST(LheLimits, FullSizeWithoutRegionRegionLessOneAndBitmapLessOneForAnEmptyRegion) {
  struct Case {
    int width, height;
    bool hasRegion;
    LheRect bounds;
    int maxWidth, maxHeight;
  };
  const Case cases[] = {
      {640, 480, false, {10, 10, 20, 20}, 640, 480},
      {5, 1, false, {0, 0, 0, 0}, 5, 1},
      {640, 480, true, {10, 20, 110, 70}, 99, 49},
      {640, 480, true, {10, 70, 110, 20}, 99, 49},  // upside-down height counts by its size
      {640, 480, true, {0, 0, 640, 480}, 639, 479},
      {640, 480, true, {10, 10, 10, 50}, 639, 479},  // empty: the bitmap less one
      {640, 480, true, {10, 10, 50, 10}, 639, 479},
      {640, 480, true, {5, 5, 6, 6}, 0, 0},
  };
  for (const Case& c : cases) {
    const LheLimits limits = LheLimitsFor(c.width, c.height, c.hasRegion, c.bounds);
    EXPECT_EQ(std::make_pair(limits.maxWidth, limits.maxHeight), std::make_pair(c.maxWidth, c.maxHeight))
        << c.width << "x" << c.height << " region " << c.hasRegion;
  }
  const LheValues none = LheDefaults(LheLimits{});
  EXPECT_EQ(std::make_pair(none.width, none.height), std::make_pair(1073741823, 1073741823));
  const LheValues odd = LheDefaults({5, 1});
  EXPECT_EQ(std::make_tuple(odd.width, odd.height, odd.smooth, odd.colorSpace), std::make_tuple(2, 0, 4u, kLheRgb));
}

TEST(LheCallerValues, WidthHeightAndColorSpaceFallBackExtensionsAndSmoothingPassThrough) {
  struct Case {
    int32_t width, height;
    uint32_t colorSpace, smooth;
    int expectWidth, expectHeight;
    uint32_t expectSpace;
  };
  const Case cases[] = {
      {3, 3, 1, 4, 3, 1, 1},  // height not above the smoothing; width never compared
      {3, 5, 2, 4, 3, 5, 2},
      {3, 4, 4, 4, 3, 1, 4},  // equal is not above
      {0, 0, 3, 0, 1, 1, 1},  // 0 and colour space 3
      {-5, -5, 0, 0, 1, 1, 1},
      {1, 1, 0, 0, 1, 1, 1},              // 1 > 0
      {7, 100, 5, 0xFFFFFFFFu, 7, 1, 1},  // unsigned comparison: a huge smoothing beats any height
      {2147483647, 2147483647, 8, 9, 2147483647, 2147483647, 1},
  };
  for (const Case& c : cases) {
    const LheValues v = TakeLheParams(c.width, c.height, -3, 7, c.colorSpace, c.smooth);
    EXPECT_EQ(std::make_tuple(v.width, v.height, v.colorSpace, v.xExt, v.yExt, v.smooth),
              std::make_tuple(c.expectWidth, c.expectHeight, c.expectSpace, -3, 7, c.smooth))
        << c.width << " " << c.height << " " << c.colorSpace << " " << c.smooth;
  }
}

TEST(LheSmoothing, RangeFollowsTheSmallerLimitAndRaisingItDragsTheWindow) {
  struct RangeCase {
    LheLimits limits;
    bool enabled;
    int maximum;
  };
  const RangeCase ranges[] = {
      {{5, 1}, false, 0},  {{0, 0}, false, 0},  {{2, 100}, true, 1},    {{100, 9}, true, 8},
      {{10, 10}, true, 9}, {{11, 11}, true, 9}, {LheLimits{}, true, 9},
  };
  for (const RangeCase& c : ranges) {
    const SmoothRange r = SmoothRangeFor(c.limits);
    EXPECT_EQ(std::make_pair(r.enabled, r.enabled ? r.maximum : 0), std::make_pair(c.enabled, c.maximum))
        << c.limits.maxWidth << "x" << c.limits.maxHeight;
  }

  struct ChangeCase {
    uint32_t smooth;
    int width, height;
    int expectWidth, expectHeight;
    bool written;
    int heightBox;
  };
  const ChangeCase changes[] = {
      {4, 10, 10, 10, 10, false, 0}, {5, 10, 5, 10, 6, true, 6},  // height reaches the smoothing
      {5, 5, 10, 6, 10, true, 6},                                 // width does: the height box shows the new width
      {9, 3, 2, 10, 10, true, 10},   {0, 1, 1, 1, 1, false, 0},
  };
  for (const ChangeCase& c : changes) {
    const SmoothChange r = ApplySmoothChange(c.smooth, c.width, c.height);
    EXPECT_EQ(std::make_tuple(r.width, r.height, r.writeHeightBox, r.writeHeightBox ? r.heightBoxValue : 0),
              std::make_tuple(c.expectWidth, c.expectHeight, c.written, c.heightBox))
        << c.smooth << " " << c.width << " " << c.height;
  }
}

}  // namespace
}  // namespace qvdlg
