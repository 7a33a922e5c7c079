/*
 * The operations that mix channels: gray scale, colored gray, balance colors, the intensity test without
 * channel bits and the histogram contrast around the median, each against its formula computed here.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "Harness.h"

namespace opstest {
namespace {

double Luma(const uint32_t c[3]) { return RoundHalfUp((299.0 * c[0] + 587.0 * c[1] + 114.0 * c[2]) / 1000.0); }

TEST(MixOperations, GrayScaleUsesTheWeightsOnEveryFormat) {
  const int weights[][3] = {{299, 587, 114}, {1000, 0, 0}, {0, 0, 1000}, {333, 333, 334}};
  for (const auto& w : weights) {
    for (const Format& f : UnsignedFormats()) {
      ExpectPerPixel(
          f, [&](BITMAPHANDLE* b, uint32_t) { return Q_GrayScaleBitmapExt(b, w[0], w[1], w[2], 0); },
          [&](const uint32_t in[3], uint32_t out[3], uint32_t max, bool gray) {
            const uint32_t y = gray ? in[0]
                                    : ClampTo((in[0] * w[0] + in[1] * w[1] + in[2] * double(w[2])) / 1000.0, max);
            out[0] = out[1] = out[2] = y;
          },
          0, "gray scale " + std::to_string(w[0]));
    }
  }
}

TEST(MixOperations, ColoredGrayTintsTheGrayLevel) {
  const int tints[][3] = {{-1000, 0, 1000}, {250, -300, 500}, {0, 0, 0}};
  for (const auto& t : tints) {
    for (const Format& f : UnsignedFormats()) {
      if (f.order == QV_ORDER_GRAY) continue;
      ExpectPerPixel(
          f, [&](BITMAPHANDLE* b, uint32_t) { return Q_ConvertToColoredGray(b, 299, 587, 114, t[0], t[1], t[2], 0); },
          [&](const uint32_t in[3], uint32_t out[3], uint32_t max, bool) {
            const double g = Luma(in);
            for (int c = 0; c < 3; ++c) out[c] = ClampTo(g + g * t[c] / 1000.0, max);
          },
          0, "colored gray " + std::to_string(t[0]));
    }
  }
}

TEST(MixOperations, BalanceColorsMixesTheSourceChannels) {
  struct Mix {
    double w[3][3];
  };
  const Mix mixes[] = {
      {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
      {{{0, 0, 1}, {0, 1, 0}, {1, 0, 0}}},
      {{{0.5, 0.25, 0.25}, {0.1, 0.8, 0.1}, {0.0, 0.3, 0.9}}},
      {{{1.5, 0.7, 0}, {0, 0, 0}, {-0.5, 0, 1}}},
  };
  for (const Mix& m : mixes) {
    QVBALANCINGRECORD rec[3];
    for (int o = 0; o < 3; ++o) rec[o] = {sizeof(QVBALANCINGRECORD), m.w[o][0], m.w[o][1], m.w[o][2]};
    for (const Format& f : UnsignedFormats()) {
      if (f.order == QV_ORDER_GRAY) continue;
      ExpectPerPixel(
          f, [&](BITMAPHANDLE* b, uint32_t) { return Q_BalanceColors(b, &rec[0], &rec[1], &rec[2], 0); },
          [&](const uint32_t in[3], uint32_t out[3], uint32_t max, bool) {
            for (int o = 0; o < 3; ++o)
              out[o] = ClampTo(in[0] * m.w[o][0] + in[1] * m.w[o][1] + in[2] * m.w[o][2], max);
          },
          1, "balance");
    }
  }
}

TEST(MixOperations, IntensityDetectWhitensTheIntensityWindow) {
  const double windows[][2] = {{0.0, 1.0}, {0.3, 0.6}, {0.6, 0.3}, {0.0, 0.0}};
  for (const auto& w : windows) {
    for (const Format& f : UnsignedFormats()) {
      ExpectPerPixel(
          f,
          [&](BITMAPHANDLE* b, uint32_t max) {
            return Q_IntensityDetectBitmap(b, unsigned(w[0] * max), unsigned(w[1] * max), 0x123456, 0x654321, 0, 0);
          },
          [&](const uint32_t in[3], uint32_t out[3], uint32_t max, bool gray) {
            const double y = gray ? in[0] : Luma(in);
            const bool inside = y >= unsigned(w[0] * max) && y <= unsigned(w[1] * max);
            out[0] = out[1] = out[2] = inside ? max : 0;
          },
          0, "intensity detect " + std::to_string(w[0]) + ".." + std::to_string(w[1]));
    }
  }
}

TEST(MixOperations, HistogramContrastCentersOnTheLowerMedianOrOnTheGivenOne) {
  // 41 x 13 pixels give an odd count, 40 x 13 an even one, where the lower and upper medians differ. A given
  // center of a third of the range stands for the median of another (the full) image.
  for (int width : {41, 40}) {
    for (int n : {-1000, -400, 0, 600, 1000}) {
      for (const Format& f : UnsignedFormats()) {
        for (bool given : {false, true}) {
          TestBitmap probe(f, width, 13, 7);
          std::vector<double> values;
          for (int y = 0; y < 13; ++y)
            for (int x = 0; x < width; ++x) {
              uint32_t c[3];
              probe.Get(x, y, c);
              values.push_back(probe.IsGray() ? c[0] : Luma(c));
            }
          std::sort(values.begin(), values.end());
          const int median = static_cast<int>(values[(values.size() + 1) / 2 - 1]);
          const int center = given ? static_cast<int>(probe.Max() / 3) : median;
          int reported = -1;
          ASSERT_EQ(Q_GetBitmapMedianIntensity(probe.get(), &reported, 0), QV_SUCCESS);
          EXPECT_EQ(reported, median) << f.name << " on " << width << " columns";
          ExpectPerPixel(
              f,
              [&](BITMAPHANDLE* b, uint32_t) {
                return given ? Q_HistoContrastBitmapExt(b, n, center, 0) : Q_HistoContrastBitmap(b, n, 0);
              },
              [&](const uint32_t in[3], uint32_t out[3], uint32_t max, bool) {
                for (int c = 0; c < 3; ++c) out[c] = ClampTo(ContrastAbout(in[c], center, 0, max, n), max);
              },
              0,
              "histogram contrast " + std::to_string(n) + (given ? " about a given center" : "") + " on " +
                  std::to_string(width) + " columns",
              width, 13);
        }
      }
    }
  }
}

}  // namespace
}  // namespace opstest
