/*
 * The window-level slider's rules: value/pixel mapping and its rounding, where markers are inserted, the drag
 * bounds, the neighbour rule (stacked markers hand the grab over, other neighbours stop the drag), the refusal
 * of a drag of all markers, the interval under a right-click, the tick plan, the palette ramp and the
 * edit-interval clamp.
 */
#include <gtest/gtest.h>

#include <vector>

#include "EditIntervalValue.h"
#include "WindowLevelSliderRules.h"

namespace qvwl {
namespace {

TEST(SliderAxisTest, PixelsAndValuesMapWithTheSlidersRounding) {
  const SliderAxis axis{-1000, 3000, 10, 400};  // 10 value units a pixel
  struct Case {
    double pixel;
    double value;
  };
  const Case toValue[] = {
      {10, -1000},       // the track start is the minimum exactly
      {410, 3000},       // its end the maximum
      {10.004, -1000},   // 0.04 of a unit rounds down to the 0.1 grid
      {10.005, -999.9},  // half a tenth rounds up
      {9, -1010},        // beyond the track: not clamped here
      {210.3, 1003},
  };
  for (const Case& c : toValue) {
    SCOPED_TRACE(c.pixel);
    EXPECT_DOUBLE_EQ(axis.PixelToValue(c.pixel), c.value);
  }
  struct PixelCase {
    double value;
    int pixel;
  };
  const PixelCase toPixel[] = {{-1000, 10}, {3000, 410}, {-995, 11}, {-995.1, 10}, {1004.9, 210}, {1005, 211}};
  for (const PixelCase& c : toPixel) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(axis.ValueToPixel(c.value), c.pixel);
  }
  const SliderAxis empty{5, 5, 3, 0};
  EXPECT_DOUBLE_EQ(empty.PixelToValue(100), 5);
  EXPECT_EQ(empty.ValueToPixel(5), 3);
  EXPECT_DOUBLE_EQ(RoundTo(-2.5, 0), -2);  // floor(x + 0.5), not away from zero
  EXPECT_DOUBLE_EQ(RoundTo(-0.05, 1), 0);
}

TEST(SliderMarkersTest, InsertionGoesBeforeTheFirstEqualAndBoundsSkipEqualValues) {
  const std::vector<double> values = {10, 20, 20, 30};
  EXPECT_EQ(InsertionIndex(values, 5), 0u);
  EXPECT_EQ(InsertionIndex(values, 20), 1u);
  EXPECT_EQ(InsertionIndex(values, 30), 3u);
  EXPECT_EQ(InsertionIndex(values, 31), 4u);
  EXPECT_EQ(InsertionIndex({}, 1), 0u);

  struct Case {
    double value, lower, upper;
  };
  const Case cases[] = {{20, 10, 30}, {10, 0, 20}, {30, 20, 100}, {25, 20, 30}, {0, 0, 10}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.value);
    const DragBounds b = ComputeDragBounds(values, c.value, 0, 100);
    EXPECT_DOUBLE_EQ(b.lower, c.lower);
    EXPECT_DOUBLE_EQ(b.upper, c.upper);
  }
  struct LimitCase {
    size_t index;
    bool noPassing;
    double lower, upper;
  };
  const LimitCase limits[] = {{0, true, 0, 20}, {1, true, 10, 20}, {3, true, 20, 100}, {1, false, 0, 100}};
  for (const LimitCase& c : limits) {
    SCOPED_TRACE(c.index);
    const DragBounds b = MarkerLimits(values, c.index, 0, 100, c.noPassing);
    EXPECT_DOUBLE_EQ(b.lower, c.lower);
    EXPECT_DOUBLE_EQ(b.upper, c.upper);
  }
}

TEST(NeighbourRuleTest, StacksHandTheGrabOverAndNeighboursStopTheDrag) {
  struct Case {
    const char* what;
    std::vector<double> values;
    size_t grabbed;
    std::vector<size_t> hits;
    double proposed;
    size_t grabbedAfter;
    double valueAfter;
    Collision collision;
  };
  const Case cases[] = {
      {"free move", {10, 20, 30}, 1, {1}, 25, 1, 25, kNoCollision},
      {"stopped by the lower neighbour", {10, 20, 30}, 1, {1}, 5, 1, 10, kStoppedByLower},
      {"touching the lower neighbour stops too", {10, 20, 30}, 1, {1}, 10, 1, 10, kStoppedByLower},
      {"stopped by the upper neighbour", {10, 20, 30}, 1, {1}, 31, 1, 30, kStoppedByUpper},
      {"first marker has no lower neighbour", {10, 20}, 0, {0}, 0, 0, 0, kNoCollision},
      {"last marker has no upper neighbour", {10, 20}, 1, {1}, 99, 1, 99, kNoCollision},
      {"two stacked, drag down: the lower moves", {20, 20}, 0, {0, 1}, 15, 0, 15, kNoCollision},
      {"two stacked, drag up: the upper moves", {20, 20}, 0, {0, 1}, 25, 1, 25, kNoCollision},
      {"three stacked, drag up: the top one moves", {5, 20, 20, 20, 40}, 1, {1, 2, 3}, 30, 3, 30, kNoCollision},
      {"three stacked, drag up past a neighbour", {5, 20, 20, 20, 40}, 1, {1, 2, 3}, 41, 3, 40, kStoppedByUpper},
      {"stack, drag down onto a neighbour", {5, 20, 20}, 1, {1, 2}, 3, 1, 5, kStoppedByLower},
      {"equal neighbour not hit stops the drag", {20, 20}, 1, {1}, 10, 1, 20, kStoppedByLower},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    DragState state;
    state.grabbed = c.grabbed;
    state.hits = c.hits;
    state.value = c.proposed;
    ApplyNeighbourRule(c.values, state);
    EXPECT_EQ(state.grabbed, c.grabbedAfter);
    EXPECT_DOUBLE_EQ(state.value, c.valueAfter);
    EXPECT_EQ(state.collision, c.collision);
  }
}

TEST(SliderMarkersTest, MoveAllIsRefusedWhenAnyMarkerWouldLeaveTheRange) {
  const std::vector<double> atMax = {10, 100};
  EXPECT_FALSE(MoveAllAllowed(atMax, 0.1, 0, 100));
  EXPECT_TRUE(MoveAllAllowed(atMax, -10, 0, 100));  // the low one lands exactly on the minimum
  EXPECT_FALSE(MoveAllAllowed(atMax, -10.1, 0, 100));
  EXPECT_TRUE(MoveAllAllowed({}, 1e9, 0, 100));
}

TEST(SliderMarkersTest, IntervalIndexPicksTheLowerIntervalOnAMarker) {
  const std::vector<double> values = {10, 20, 30};
  struct Case {
    double value;
    size_t index;
  };
  const Case cases[] = {{0, 0}, {10, 0}, {10.1, 1}, {20, 1}, {20.1, 2}, {29.9, 2}, {30, 3}, {99, 3}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(IntervalIndex(values, c.value), c.index);
  }
  EXPECT_EQ(IntervalIndex({}, 5), 0u);
}

TEST(SliderScaleTest, TicksThinOutUntilTheyFit) {
  struct Case {
    double range, frequency, length, minSpacing;
    int count;
    double step;
  };
  const Case cases[] = {
      {100, 10, 400, 30, 11, 10},    // 40 px apart: all fit
      {100, 10, 200, 30, 6, 20},     // 20 px: doubled once
      {100, 30, 400, 30, 5, 30},     // the maximum ends the scale after 90
      {65535, 1, 400, 30, 9, 8192},  // doubled 13 times; the last step is short
      {100, 0, 400, 30, 2, 100},     // no frequency: the two ends
      {0, 10, 400, 30, 1, 0},        // empty range: one tick
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.range);
    const TickPlan plan = PlanTicks(c.range, c.frequency, c.length, c.minSpacing);
    EXPECT_EQ(plan.count, c.count);
    EXPECT_DOUBLE_EQ(plan.step, c.step);
  }
}

TEST(SliderBandTest, RampStepIsIntegerAndNegativeIndicesWrap) {
  EXPECT_EQ(RampIndex(0, 256, 128, 127, 256), 254);
  EXPECT_EQ(RampIndex(0, 100, 128, 127, 256), 0);  // fewer entries than pixels: one colour
  EXPECT_EQ(RampIndex(-10, 246, 128, 0, 256), 246);
  EXPECT_EQ(RampIndex(-10, 246, 128, 5, 256), 0);
  EXPECT_EQ(RampIndex(3, 9, 0, 0, 256), 3);
}

TEST(EditIntervalTest, TheUpperBoundIsTestedFirst) {
  struct Case {
    int value, minimum, maximum, result;
  };
  const Case cases[] = {
      {50, 0, 100, 50}, {101, 0, 100, 100}, {-1, 0, 100, 0},
      {0, 0, 100, 0},   {100, 0, 100, 100}, {60, 50, 10, 10},  // crossed bounds: above the maximum takes the maximum
      {5, 50, 10, 50},  // at or below the maximum but below the minimum takes the minimum
      {10, 50, 10, 50},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.value << " in " << c.minimum << ".." << c.maximum);
    EXPECT_EQ(ClampIntervalValue(c.value, c.minimum, c.maximum), c.result);
  }
}

}  // namespace
}  // namespace qvwl
