/*
 * The value rules of the gray scale, colored gray and balance colors dialogs, as tables: the markers' rounding
 * and the weights they stand for, which caller weights are taken or fall back, the gray weights' range, and
 * the balance weights' percentages against the structure's fractions (the records written back are checked
 * through the export under Wine).
 */
#include <gtest/gtest.h>

#include <limits>

#include "GrayRules.h"

namespace qvdlg {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int32_t kMax = std::numeric_limits<int32_t>::max();

TEST(GrayRules, MarkersRoundByTheFirstDecimalAndSplitIntoWeightsThatAddUp) {
  const struct {
    double first, second;
    ColorWeights expected;
  } cases[] = {
      {333.5, 666.4, {334, 332, 334}},
      {333.45, 666.96, {333, 334, 333}},  // only the first decimal counts
      {332.5, 665.5, {333, 333, 334}},    // halves go up, not to the even neighbour
      {0, 0, {0, 0, 1000}},
      {0, 1000, {0, 1000, 0}},
      {999.5, 999.9, {1000, 0, 0}},
  };
  for (const auto& c : cases) EXPECT_EQ(WeightsFromMarkers(c.first, c.second), c.expected) << c.first;
  EXPECT_EQ(RoundMarker(-2.5), -3);
  EXPECT_EQ(RoundMarker(kNaN), 0);
}

TEST(GrayRules, CallerWeightsAreTakenOrFallBackToTheDefaults) {
  const ColorWeights current{200, 300, 500};
  const struct {
    int32_t red, green, blue;
    ColorWeights grayScale, coloredGray;
  } cases[] = {
      {299, 587, 114, {299, 587, 114}, {299, 587, 114}},
      {300, 300, 300, kDefaultWeights, kDefaultWeights},     // 900 in all
      {1200, -200, 0, kDefaultWeights, kDefaultWeights},     // adds up, but no slider shows it
      {600, 600, -200, kDefaultWeights, kDefaultWeights},    // -200 refused; 600 + 600 + 500 is not 1000
      {200, 300, 1001, kDefaultWeights, {200, 300, 500}},    // 1001 refused; the dialog's 500 makes 1000
      {kMax, kMax, 1002, kDefaultWeights, {200, 300, 500}},  // wraps to 1000 in 32 bits; all three refused
  };
  for (const auto& c : cases) {
    EXPECT_EQ(TakeGrayScaleWeights(c.red, c.green, c.blue), c.grayScale) << c.red << ", " << c.blue;
    EXPECT_EQ(TakeColoredGrayWeights(c.red, c.green, c.blue, current), c.coloredGray) << c.red << ", " << c.blue;
  }
}

TEST(GrayRules, GrayFactorsOutOfRangeAreIgnoredWhenPassedAndClampedWhenTyped) {
  const struct {
    double value;
    int taken, typed;
  } cases[] = {{-1000, -1000, -1000}, {1000, 1000, 1000}, {1500, 77, 1000}, {-1001, 77, -1000}, {999.9, 77, 999}};
  for (const auto& c : cases) {
    // Only whole numbers come in through the structure.
    const bool whole = c.value == static_cast<int32_t>(c.value);
    EXPECT_TRUE(!whole || TakeGrayFactor(static_cast<int32_t>(c.value), 77) == c.taken) << c.value;
    EXPECT_EQ(ClampTypedGrayFactor(c.value), c.typed) << c.value;
  }
}

TEST(GrayRules, BalanceFractionsOutside0To1BecomeZeroAndCombosShowWholePercentages) {
  const struct {
    double fraction, percent;
    int shown;
  } cases[] = {{0, 0, 0}, {1, 100, 100}, {0.257, 25.7, 25}, {1.5, 0, 0}, {-0.1, 0, 0}, {kNaN, 0, 0}};
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(TakeBalancePercent(c.fraction), c.percent) << c.fraction;
    EXPECT_EQ(BalanceComboValue(TakeBalancePercent(c.fraction)), c.shown) << c.fraction;
  }
}

}  // namespace
}  // namespace qvdlg
