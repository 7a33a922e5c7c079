/*
 * The table builders: the curve through control points (passes through them, never overshoots, constant
 * outside them), the functional curve between two entries, and the window-level LUT fill with its ramp
 * kinds, curves, signed layout and DICOM window, each against formulas computed here.
 */
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "qv/qvimgops.h"

namespace {

int64_t Round(double x) { return static_cast<int64_t>(std::floor(x + 0.5)); }

TEST(CurvePoints, DiagonalEndsGiveTheIdentityAtEveryLength) {
  for (unsigned length : {256u, 4096u, 65536u}) {
    std::vector<unsigned> table(length, 12345);
    const POINT pts[] = {{0, 0}, {static_cast<int32_t>(length - 1), static_cast<int32_t>(length - 1)}};
    unsigned filled = 0;
    ASSERT_EQ(Q_GetCurvePoints(table.data(), length, pts, 2, &filled, 0), QV_SUCCESS);
    EXPECT_EQ(filled, length);
    for (unsigned i = 0; i < length; ++i) ASSERT_EQ(table[i], i) << "length " << length;
  }
}

TEST(CurvePoints, PassesThroughEveryPointWithoutOvershoot) {
  const std::vector<std::vector<POINT>> curves = {
      {{20, 10}, {60, 200}, {100, 210}, {180, 30}, {230, 250}},
      {{0, 255}, {128, 0}, {255, 255}},
      {{5, 0}, {6, 255}, {250, 255}},
      {{100, 77}},
  };
  for (const auto& pts : curves) {
    std::vector<unsigned> table(256);
    ASSERT_EQ(Q_GetCurvePoints(table.data(), 256, pts.data(), static_cast<int>(pts.size()), nullptr, 0), QV_SUCCESS);
    for (const POINT& p : pts) EXPECT_EQ(table[p.x], static_cast<unsigned>(p.y));
    for (int x = 0; x < pts.front().x; ++x) EXPECT_EQ(table[x], static_cast<unsigned>(pts.front().y));
    for (int x = pts.back().x; x < 256; ++x) EXPECT_EQ(table[x], static_cast<unsigned>(pts.back().y));
    for (size_t i = 0; i + 1 < pts.size(); ++i) {
      const unsigned lo = std::min(pts[i].y, pts[i + 1].y), hi = std::max(pts[i].y, pts[i + 1].y);
      for (int x = pts[i].x; x <= pts[i + 1].x; ++x) {
        EXPECT_GE(table[x], lo) << "overshoot below at " << x;
        EXPECT_LE(table[x], hi) << "overshoot above at " << x;
        // Monotone between two points: the curve moves in the direction of the segment only.
        const bool monotone = x == pts[i].x || table[x] == table[x - 1] ||
                              (table[x] > table[x - 1]) == (pts[i + 1].y > pts[i].y);
        EXPECT_TRUE(monotone) << x;
      }
    }
  }
}

TEST(CurvePoints, RefusesBadPointsAndTablesWithoutWriting) {
  std::vector<unsigned> table(256, 7);
  const POINT unordered[] = {{10, 0}, {10, 5}};
  const POINT outside[] = {{0, 0}, {256, 3}};
  const POINT negative[] = {{0, -1}, {255, 3}};
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 256, unordered, 2, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 256, outside, 2, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 256, negative, 2, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 256, nullptr, 2, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 256, negative, 0, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetCurvePoints(nullptr, 256, negative, 2, nullptr, 0), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 1, negative, 2, nullptr, 0), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 65537, negative, 2, nullptr, 0), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_GetCurvePoints(table.data(), 256, outside, 2, nullptr, 1), QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(table, std::vector<unsigned>(256, 7));
}

TEST(FunctionalTable, FillsBetweenTheEndsByTheFormula) {
  struct Case {
    unsigned kind;
    int factor;
    int start, end;
    unsigned a, b;
  };
  const Case cases[] = {
      {QV_FUNCTIONAL_EXPONENTIAL, 1, 0, 255, 0, 255},
      {QV_FUNCTIONAL_EXPONENTIAL, -100, 0, 255, 0, 255},
      {QV_FUNCTIONAL_EXPONENTIAL, 100, 10, 200, 250, 3},
      {QV_FUNCTIONAL_LOGARITHM, 1, 0, 255, 0, 255},
      {QV_FUNCTIONAL_LOGARITHM, 100, 30, 90, 5, 4000},
      {QV_FUNCTIONAL_EXPONENTIAL, 0, 0, 255, 0, 255},
      {QV_FUNCTIONAL_LINEAR, 7, 200, 40, 100, 0},
      {QV_FUNCTIONAL_LOGARITHM, 50, 4095, 3900, 9, 900},  // starting on the last entry
  };
  for (const Case& c : cases) {
    std::vector<unsigned> table(4096, 99999);
    table[c.start] = c.a;
    table[c.end] = c.b;
    ASSERT_EQ(Q_GetFunctionalLookupTable(table.data(), 4096, c.start, c.end, c.factor, c.kind, 0), QV_SUCCESS);
    EXPECT_EQ(table[c.start], c.a);
    EXPECT_EQ(table[c.end], c.b);
    const double k = c.factor / 10.0;
    const int lo = std::min(c.start, c.end), hi = std::max(c.start, c.end);
    for (int i = lo + 1; i < hi; ++i) {
      const double t = double(i - c.start) / (c.end - c.start);
      double g = t;
      if (c.factor != 0 && c.kind == QV_FUNCTIONAL_EXPONENTIAL) g = (std::exp(k * t) - 1) / (std::exp(k) - 1);
      if (c.factor != 0 && c.kind == QV_FUNCTIONAL_LOGARITHM) g = std::log(1 + k * t) / std::log(1 + k);
      const double expected = c.a + (double(c.b) - c.a) * g;
      EXPECT_NEAR(double(table[i]), expected, 0.5 + 1e-6) << "kind " << c.kind << " factor " << c.factor << " at " << i;
    }
    EXPECT_EQ(table[hi + 1 < 4096 ? hi + 1 : 0], hi + 1 < 4096 ? 99999u : table[0]);
  }
}

TEST(FunctionalTable, RefusesOutOfRangeArguments) {
  std::vector<unsigned> table(256, 3);
  EXPECT_EQ(Q_GetFunctionalLookupTable(table.data(), 256, 0, 256, 1, 0, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetFunctionalLookupTable(table.data(), 256, -1, 20, 1, 0, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetFunctionalLookupTable(table.data(), 256, 0, 20, -1, QV_FUNCTIONAL_LOGARITHM, 0),
            QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetFunctionalLookupTable(table.data(), 256, 0, 20, 1001, 0, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetFunctionalLookupTable(table.data(), 256, 0, 20, 1, 3, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_GetFunctionalLookupTable(nullptr, 256, 0, 20, 1, 0, 0), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_GetFunctionalLookupTable(table.data(), 0, 0, 20, 1, 0, 0), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_GetFunctionalLookupTable(table.data(), 256, 0, 20, 1, 0, 4), QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(table, std::vector<unsigned>(256, 3));
}

// Window-level fill: the model of one entry, written from the documented ramp kinds and curves.
struct Rgb {
  int r, g, b;
};

double CurveModel(unsigned curve, double k, double t) {
  if (k == 0 || curve == QV_WLFILL_LINEAR) return t;
  if (curve == QV_WLFILL_EXPONENTIAL) return (std::exp(k * t) - 1) / (std::exp(k) - 1);
  if (curve == QV_WLFILL_LOGARITHMIC) return std::log(1 + k * t) / std::log(1 + k);
  const double s = 2 * std::fabs(k);
  auto sig = [](double x) { return 1 / (1 + std::exp(-x)); };
  const double lo = sig(-s / 2), hi = sig(s / 2);
  if (k > 0) return (sig(s * (t - 0.5)) - lo) / (hi - lo);
  // The inverse of the positive curve: solve by bisection.
  double a = 0, b = 1;
  for (int i = 0; i < 60; ++i) {
    const double m = (a + b) / 2;
    ((sig(s * (m - 0.5)) - lo) / (hi - lo) < t ? a : b) = m;
  }
  return (a + b) / 2;
}

Rgb Model(unsigned flags, int v, int low, int high, COLORREF s, COLORREF e, int factor) {
  const unsigned ramp = flags & 0xF, curve = flags & 0xF0;
  const Rgb start{int(s & 0xFF), int((s >> 8) & 0xFF), int((s >> 16) & 0xFF)};
  const Rgb end{int(e & 0xFF), int((e >> 8) & 0xFF), int((e >> 16) & 0xFF)};
  double t;
  if (flags & QV_WLFILL_DICOM) {
    const double c = (low + high) / 2, w = std::max(1, high - low);
    if (v <= c - 0.5 - (w - 1) / 2) return ramp == 1 ? Rgb{0, 0, 0} : start;
    if (v > c - 0.5 + (w - 1) / 2) return ramp == 1 ? Rgb{255, 255, 255} : end;
    t = ((v - (c - 0.5)) / (w - 1) + 0.5);
  } else {
    if (v < low) return ramp == 1 ? Rgb{0, 0, 0} : start;
    if (v > high) return ramp == 1 ? Rgb{255, 255, 255} : end;
    t = high == low ? 1 : double(v - low) / (high - low);
  }
  const double g = CurveModel(curve, factor / 100.0, t);
  if (ramp == 2) {
    const int y = int(Round(255 * g));
    return {y, y, y};
  }
  return {int(Round(start.r + (end.r - start.r) * g)), int(Round(start.g + (end.g - start.g) * g)),
          int(Round(start.b + (end.b - start.b) * g))};
}

TEST(WindowLevelFill, EveryEntryFollowsTheRampAndCurve) {
  struct Case {
    unsigned length, flags;
    int low, high, factor;
  };
  const Case cases[] = {
      {4096, QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR, 1000, 3000, 0},
      {4096, QV_WLFILL_GRAY_RAMP | QV_WLFILL_LINEAR, 0, 4095, 0},
      {65536, QV_WLFILL_COLOR_RAMP | QV_WLFILL_EXPONENTIAL, 200, 60000, 350},
      {65536, QV_WLFILL_GRAY_RAMP | QV_WLFILL_EXPONENTIAL, 200, 60000, -1000},
      {4096, QV_WLFILL_COLOR_RAMP | QV_WLFILL_LOGARITHMIC, 100, 900, 1000},
      {4096, QV_WLFILL_GRAY_RAMP | QV_WLFILL_SIGMOID, 100, 900, 600},
      {4096, QV_WLFILL_GRAY_RAMP | QV_WLFILL_SIGMOID, 100, 900, -600},
      {65536, QV_WLFILL_GRAY_RAMP | QV_WLFILL_LINEAR | QV_WLFILL_SIGNED, -1000, 20000, 0},
      {4096, QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR | QV_WLFILL_DICOM, 1000, 1101, 0},
      {4096, QV_WLFILL_GRAY_RAMP | QV_WLFILL_LINEAR | QV_WLFILL_DICOM, 500, 501, 0},
      {4096, QV_WLFILL_GRAY_RAMP | QV_WLFILL_LINEAR | QV_WLFILL_DICOM, 1000, 1100, 0},  // even window widths
      {4096, QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR | QV_WLFILL_DICOM, 500, 502, 0},
      {256, QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR, 77, 77, 0},
  };
  const COLORREF s = 0x00102030, e = 0x00F0E0D0;
  for (const Case& c : cases) {
    std::vector<RGBQUAD> lut(c.length);
    ASSERT_EQ(Q_WindowLevelFillLUT(lut.data(), c.length, s, e, c.low, c.high, 0, 15, -32768, 65535, c.factor, c.flags),
              QV_SUCCESS);
    int bad = 0;
    for (unsigned i = 0; i < c.length && bad < 3; ++i) {
      const int v = (c.flags & QV_WLFILL_SIGNED) && i >= c.length / 2 ? int(i) - int(c.length) : int(i);
      const Rgb m = Model(c.flags, v, c.low, c.high, s, e, c.factor);
      const RGBQUAD& q = lut[i];
      if (std::abs(q.rgbRed - m.r) > 1 || std::abs(q.rgbGreen - m.g) > 1 || std::abs(q.rgbBlue - m.b) > 1) {
        ++bad;
        ADD_FAILURE() << "flags 0x" << std::hex << c.flags << std::dec << " entry " << i << " (value " << v << "): got "
                      << int(q.rgbRed) << "," << int(q.rgbGreen) << "," << int(q.rgbBlue) << " expected " << m.r << ","
                      << m.g << "," << m.b;
      }
    }
  }
}

TEST(WindowLevelFill, RefusesBadArguments) {
  std::vector<RGBQUAD> lut(256);
  const unsigned ok = QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR;
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 256, 0, 0, 10, 5, 0, 7, 0, 255, 0, ok), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 256, 0, 0, 1, 5, 0, 7, 255, 0, 0, ok), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 256, 0, 0, 1, 5, 0, 7, 0, 255, 1001, ok), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 256, 0, 0, 1, 5, 0, 7, 0, 255, -1,
                                 QV_WLFILL_COLOR_RAMP | QV_WLFILL_LOGARITHMIC),
            QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 256, 0, 0, 1, 5, 0, 7, 0, 255, 0, 3 | QV_WLFILL_LINEAR),
            QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 256, 0, 0, 1, 5, 0, 7, 0, 255, 0, QV_WLFILL_COLOR_RAMP),
            QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 256, 0, 0, 1, 5, 0, 7, 0, 255, 0, ok | 0x200), QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(Q_WindowLevelFillLUT(nullptr, 256, 0, 0, 1, 5, 0, 7, 0, 255, 0, ok), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 0, 0, 0, 1, 5, 0, 7, 0, 255, 0, ok), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(Q_WindowLevelFillLUT(lut.data(), 65537, 0, 0, 1, 5, 0, 7, 0, 255, 0, ok), QV_ERROR_INVALID_TABLE);
}

}  // namespace
