/*
 * The multi-marker slider's rules: value and pixel both ways at widths that do not divide the range, which
 * marker a press takes (equal markers included), moves that stop at a neighbour or push it, key targets,
 * ticks and the labels.
 */
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "SliderRules.h"

namespace qvctl {
namespace {

constexpr unsigned kInt = kSliderShowIntegers;
constexpr unsigned kStop = kSliderPreventCrossing;

TEST(SliderAxis, ValuesAndPixelsRoundHalfUpAndStayOnTheTrack) {
  const SliderAxis wide{0, 1000, 10, 310}, odd{-1000, 1000, 0, 7}, even{0, 10, 0, 4}, inner{0.5, 3.5, 0, 3};
  struct Case {
    SliderAxis axis;
    double value;
    int pixel;
  };
  const Case cases[] = {{wide, 0, 10},   {wide, 1000, 310},    {wide, 500, 160},       {wide, 1, 10},
                        {wide, 2, 11},   {wide, -5, 10},       {wide, 1e300, 310},     {odd, 0, 4},
                        {even, 1.25, 1}, {{5, 5, 3, 9}, 5, 3}, {even, std::nan(""), 0}};
  for (const Case& c : cases) EXPECT_EQ(ValueToPixel(c.axis, c.value), c.pixel) << c.value;

  struct Back {
    SliderAxis axis;
    int pixel;
    bool integers;
    double value;
  };
  const Back backs[] = {
      {wide, 11, false, 1000.0 / 300},
      {wide, 11, true, 3},
      {wide, 0, true, 0},
      {wide, 400, true, 1000},
      {odd, 1, true, -714},
      {even, 1, false, 2.5},
      {even, 1, true, 3},  // half up
      {inner, 0, true, 1},
      {inner, 3, true, 3},               // 3.5 would round out of the range
      {{0.2, 0.8, 0, 3}, 2, true, 0.6},  // no whole number inside: the value as it is
      {{0, 1000, 5, 5}, 5, true, 0},
  };
  for (const Back& b : backs) EXPECT_DOUBLE_EQ(PixelToValue(b.axis, b.pixel, b.integers), b.value) << b.pixel;
}

TEST(SliderAxis, RoundTripsKeepEveryValueOrPixelTheWiderSideCanHold) {
  // Fewer values than pixels: every whole value comes back from its pixel.
  const SliderAxis wide{0, 255, 7, 307};
  for (int v = 0; v <= 255; ++v) ASSERT_EQ(PixelToValue(wide, ValueToPixel(wide, v), true), v) << v;
  // More values than pixels, with an odd range: every pixel comes back from its value.
  const SliderAxis narrow{-1000, 1001, 3, 304};
  for (int p = 3; p <= 304; ++p) ASSERT_EQ(ValueToPixel(narrow, PixelToValue(narrow, p, true)), p) << p;
}

TEST(SliderMarkers, APressTakesTheNearestAndEqualMarkersComeApart) {
  const SliderAxis axis{0, 1000, 0, 1000};
  struct Case {
    std::vector<double> markers;
    int pixel;
    int nearest;
  };
  const Case cases[] = {{{300, 300}, 100, 0}, {{300, 300}, 300, 0}, {{300, 300}, 500, 1}, {{200, 400}, 300, 0},
                        {{200, 400}, 301, 1}, {{0, 0, 0}, 1000, 2}, {{1000}, 0, 0},       {{}, 10, -1}};
  for (const Case& c : cases) EXPECT_EQ(NearestMarker(c.markers, axis, c.pixel), c.nearest) << c.pixel;
  const std::vector<double> equal{100, 500, 500, 500, 900};
  const int moveFrom2[][2] = {{600, 3}, {400, 1}, {500, 2}};  // target, marker that moves
  for (const auto& m : moveFrom2) EXPECT_EQ(MarkerForMove(equal, 2, m[0]), m[1]) << m[0];
  EXPECT_EQ(MarkerForMove(equal, 7, 50), 7);
}

TEST(SliderMarkers, MovesStopAtNeighboursOrPushThemAndNeverCross) {
  struct Case {
    std::vector<double> markers;
    int index;
    double target;
    unsigned styles;
    std::vector<double> after;
    bool changed;
  };
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<double> two{300, 600}, three{300, 600, 800};
  const Case cases[] = {
      {two, 0, 700, kStop, {600, 600}, true},
      {two, 1, 100, kStop, {300, 300}, true},
      {two, 0, -50, kStop, {0, 600}, true},
      {two, 1, 1200, kStop, {300, 1000}, true},
      {two, 0, 300, kStop, two, false},
      {{500, 500}, 0, 700, kStop, {500, 500}, false},
      {three, 0, 900, 0, {900, 900, 900}, true},
      {three, 2, 100, 0, {100, 100, 100}, true},
      {three, 1, 700, 0, {300, 700, 800}, true},
      {two, 0, nan, 0, two, false},
      {two, 2, 10, 0, two, false},
      {two, -1, 10, 0, two, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "marker " << c.index << " to " << c.target);
    std::vector<double> markers = c.markers;
    EXPECT_EQ(MoveMarker(markers, c.index, c.target, 0, 1000, c.styles), c.changed);
    EXPECT_EQ(markers, c.after);
  }
  const double given[] = {600, 500, 2000, nan};
  EXPECT_EQ(OrderedMarkers(given, 4, 0, 1000), (std::vector<double>{600, 600, 1000, 1000}));
  EXPECT_TRUE(OrderedMarkers(nullptr, 3, 0, 1000).empty());
}

TEST(SliderKeys, KeysStepOntoWholeNumbersAndHomeEndReachTheLimits) {
  const std::vector<double> markers{333.5, 666.4};
  struct Case {
    int index;
    SliderKey key;
    unsigned styles;
    double target;
  };
  const Case cases[] = {
      {0, SliderKey::kLineUp, kInt | kStop, 334},
      {0, SliderKey::kLineDown, kInt | kStop, 333},
      {1, SliderKey::kTickUp, kInt | kStop, 676},
      {1, SliderKey::kPageDown, kInt | kStop, 567},
      {1, SliderKey::kHome, kInt | kStop, 333.5},
      {0, SliderKey::kEnd, kInt | kStop, 666.4},
      {0, SliderKey::kHome, kInt | kStop, 0},
      {1, SliderKey::kEnd, kInt | kStop, 1000},
      {1, SliderKey::kHome, kInt, 0},
      {0, SliderKey::kLineUp, 0, 343.5},  // a hundredth of the range
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "marker " << c.index << " key " << static_cast<int>(c.key));
    EXPECT_DOUBLE_EQ(KeyTarget(markers, c.index, c.key, StepsFor(0, 1000, 10, c.styles), 0, 1000, c.styles), c.target);
  }
  EXPECT_DOUBLE_EQ(StepsFor(0, 1, 0, 0).tick, 0.01) << "no ticks: Ctrl steps by a line";
  EXPECT_EQ(StepsFor(0, 4, 0, kInt).page, 1) << "a page is never less than one";
}

TEST(SliderTicks, TicksThinOutToStayApartAndEndOnTheMaximum) {
  struct Case {
    SliderAxis axis;
    double frequency;
    size_t count;
    int second;
  };
  const Case cases[] = {
      {{0, 1000, 0, 300}, 10, 51, 6},                                     // 3 px apart would be too dense: every 20
      {{0, 255, 0, 255}, 10, 27, 10},                                     // 0, 10, ..., 250 and the maximum
      {{-1000, 1000, 0, 200}, 10, 51, 4}, {{0, 10, 0, 100}, 20, 2, 100},  // only the ends
      {{0, 10, 0, 100}, 5, 3, 50},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.frequency);
    const std::vector<int> ticks = TickPixels(c.axis, c.frequency, 4);
    ASSERT_EQ(ticks.size(), c.count);
    EXPECT_EQ(ticks.front(), c.axis.left);
    EXPECT_EQ(ticks[1], c.second);
    EXPECT_EQ(ticks.back(), c.axis.right);
  }
  EXPECT_TRUE(TickPixels({0, 1000, 0, 300}, 0, 4).empty());
  EXPECT_TRUE(TickPixels({0, 1000, 0, 0}, 10, 4).empty());
}

TEST(SliderLabels, LabelsAreWholeOrTrimmed) {
  struct Case {
    double value;
    unsigned styles;
    const wchar_t* text;
  };
  const Case cases[] = {
      {333.5, kInt, L"334"}, {-0.4, kInt, L"0"}, {-2.5, kInt, L"-2"}, {-1000, kInt, L"-1000"}, {12.5, 0, L"12.5"},
      {1.10, 0, L"1.1"},     {0.004, 0, L"0"},   {-0.001, 0, L"0"},   {255, 0, L"255"},        {std::nan(""), 0, L""},
  };
  for (const Case& c : cases) EXPECT_EQ(FormatMarkerValue(c.value, c.styles), c.text) << c.value;
  EXPECT_EQ(FormatMarkerValue(1e300, kInt).size(), 301u);
}

}  // namespace
}  // namespace qvctl
