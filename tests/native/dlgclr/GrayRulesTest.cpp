// The value rules of the gray scale, colored gray and balance colors dialogs: the markers' rounding and the
// three weights they stand for, which caller weights are taken and when all three fall back, the gray
// weights' range, and the balance weights' percentages against the structure's fractions.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "GrayRules.h"

namespace qvdlg {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(GrayMarkers, RoundByTheFirstDecimalAndSplitIntoThreeWeights) {
  struct Case {
    double first;
    double second;
    ColorWeights expected;
  };
  const Case cases[] = {
      {333, 666, {333, 333, 334}},
      {333.5, 666.4, {334, 332, 334}},
      {333.45, 666.96, {333, 334, 333}},  // only the first decimal counts: .45 is truncated
      {0.49, 0.5, {0, 1, 999}},
      {0, 0, {0, 0, 1000}},
      {0, 1000, {0, 1000, 0}},
      {1000, 1000, {1000, 0, 0}},
      {999.5, 999.9, {1000, 0, 0}},
  };
  for (const Case& c : cases) {
    const ColorWeights w = WeightsFromMarkers(c.first, c.second);
    EXPECT_EQ(w, c.expected) << c.first << ", " << c.second << " gave " << w.red << ", " << w.green << ", " << w.blue;
    EXPECT_EQ(w.red + w.green + w.blue, kWeightTotal);
  }
}

TEST(GrayMarkers, RoundingIsTotalForValuesNoSliderHolds) {
  EXPECT_EQ(RoundMarker(-2.5), -3);
  EXPECT_EQ(RoundMarker(-2.4), -2);
  EXPECT_EQ(RoundMarker(kNaN), 0);
  EXPECT_EQ(RoundMarker(1e300), std::numeric_limits<int>::max());
  EXPECT_EQ(RoundMarker(-1e300), std::numeric_limits<int>::min());
}

TEST(GrayScaleWeights, TakenOnlyWhenEachIsAWeightAndTheyAddUpTo1000) {
  struct Case {
    int32_t red, green, blue;
    ColorWeights expected;
  };
  const Case cases[] = {
      {299, 587, 114, {299, 587, 114}},
      {1000, 0, 0, {1000, 0, 0}},
      {0, 0, 1000, {0, 0, 1000}},
      {300, 300, 300, kDefaultWeights},
      {300, 300, 401, kDefaultWeights},
      {1200, -200, 0, kDefaultWeights},
      // Adds up to 1000 in 32 bits after wrapping; the sum must not wrap.
      {std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::max(), 1002, kDefaultWeights},
  };
  for (const Case& c : cases) EXPECT_EQ(TakeGrayScaleWeights(c.red, c.green, c.blue), c.expected) << c.red;
}

TEST(ColoredGrayWeights, OutOfRangeWeightsKeepTheDialogsAndTheSumDecides) {
  const ColorWeights current{200, 300, 500};
  struct Case {
    int32_t red, green, blue;
    ColorWeights expected;
  };
  const Case cases[] = {
      {500, 500, 0, {500, 500, 0}},
      {600, 600, -200, kDefaultWeights},  // -200 refused, 600 + 600 + 500 is not 1000
      {200, 300, 1001, {200, 300, 500}},  // 1001 refused, the dialog's 500 makes 1000
      {-1, 300, 500, {200, 300, 500}},
      {0, 0, 0, kDefaultWeights},
      {1000, 0, 0, {1000, 0, 0}},
  };
  for (const Case& c : cases) EXPECT_EQ(TakeColoredGrayWeights(c.red, c.green, c.blue, current), c.expected) << c.red;
}

TEST(ColoredGrayFactors, CallerValuesOutsideTheRangeAreIgnoredAndTypedOnesClamped) {
  struct Taken {
    int32_t raw;
    int expected;
  };
  const Taken taken[] = {{-1000, -1000}, {1000, 1000}, {0, 0}, {1500, 77}, {-1001, 77}, {INT32_MIN, 77}};
  for (const Taken& t : taken) EXPECT_EQ(TakeGrayFactor(t.raw, 77), t.expected) << t.raw;

  struct Typed {
    double typed;
    int expected;
  };
  const Typed typed[] = {{1500, 1000}, {-1500, -1000}, {999.9, 999}, {-999.9, -999}, {1e300, 1000}, {kNaN, 0}};
  for (const Typed& t : typed) EXPECT_EQ(ClampTypedGrayFactor(t.typed), t.expected) << t.typed;
}

TEST(BalanceWeights, FractionsOutside0To1BecomeZeroAndRecordsCarryFractions) {
  struct Case {
    double fraction;
    double percent;
    int shown;
  };
  const Case cases[] = {
      {0.0, 0.0, 0}, {1.0, 100.0, 100}, {0.257, 25.7, 25}, {1.5, 0.0, 0}, {-0.1, 0.0, 0}, {1.0000001, 0.0, 0},
      {kNaN, 0.0, 0},
  };
  for (const Case& c : cases) {
    const double percent = TakeBalancePercent(c.fraction);
    EXPECT_DOUBLE_EQ(percent, c.percent) << c.fraction;
    EXPECT_EQ(BalanceComboValue(percent), c.shown) << c.fraction;
  }
  // Independent weights: nothing makes a channel's three add up to 100.
  const double percents[3] = {100, 100, 25};
  const QVBALANCINGRECORD record = BalanceRecord(percents);
  EXPECT_EQ(record.uStructSize, 28u);
  EXPECT_DOUBLE_EQ(record.fToRed, 1.0);
  EXPECT_DOUBLE_EQ(record.fToGreen, 1.0);
  EXPECT_DOUBLE_EQ(record.fToBlue, 0.25);
}

}  // namespace
}  // namespace qvdlg
