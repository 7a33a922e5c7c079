/*
 * The lookup-table operations against their formulas, evaluated here in floating point: brightness,
 * contrast, posterize, solarize, gamma (also the signed form), remap intensity and the per-channel
 * intensity detect, each with its edge values, on every unsigned pixel format, and the tone operations on
 * signed gray over its own range. Results must be exact.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "Harness.h"

namespace opstest {
namespace {

struct Case {
  std::string name;
  Operation op;
  Reference ref;
};

// Applies f to each channel.
Reference EachChannel(std::function<double(double v, double max, int channel)> f) {
  return [f](const uint32_t in[3], uint32_t out[3], uint32_t max, bool gray) {
    for (int c = 0; c < 3; ++c) out[c] = ClampTo(f(in[c], max, gray ? 3 : c), max);
  };
}

double Brightness(double v, double max, int n) {
  return n >= 0 ? v + (max - v) * n / 1000.0 : v * (1000.0 + n) / 1000.0;
}

double Posterize(double v, double max, int levels) {
  int best = 0;
  for (int k = 1; k < levels; ++k)
    if (std::fabs(v - k * max / (levels - 1)) <= std::fabs(v - best * max / (levels - 1))) best = k;
  return best * max / (levels - 1);
}

double Gamma(double v, double max, unsigned gamma) { return max * std::pow(v / max, 100.0 / gamma); }

std::vector<Case> Cases() {
  std::vector<Case> cases;
  for (int n : {-1000, -250, 0, 373, 1000})
    cases.push_back({"brightness " + std::to_string(n),
                     [n](BITMAPHANDLE* b, uint32_t) { return Q_ChangeBitmapIntensity(b, n, 0); },
                     EachChannel([n](double v, double max, int) { return Brightness(v, max, n); })});
  for (int n : {-1000, -500, 0, 500, 999, 1000})
    cases.push_back({"contrast " + std::to_string(n),
                     [n](BITMAPHANDLE* b, uint32_t) { return Q_ChangeBitmapContrast(b, n, 0); },
                     EachChannel([n](double v, double max, int) {
                       return ContrastAbout(v, std::floor((max + 1) / 2), 0, max, n);
                     })});
  for (unsigned levels : {2u, 7u, 64u})
    cases.push_back({"posterize " + std::to_string(levels),
                     [levels](BITMAPHANDLE* b, uint32_t) { return Q_PosterizeBitmap(b, levels, 0); },
                     EachChannel([levels](double v, double max, int) { return Posterize(v, max, levels); })});
  // Thresholds as fractions of the format's max: 0 inverts everything, max inverts only max itself.
  for (double frac : {0.0, 0.5, 1.0})
    cases.push_back(
        {"solarize " + std::to_string(frac),
         [frac](BITMAPHANDLE* b, uint32_t max) { return Q_SolarizeBitmap(b, static_cast<unsigned>(frac * max), 0); },
         EachChannel(
             [frac](double v, double max, int) { return v >= static_cast<unsigned>(frac * max) ? max - v : v; })});
  const unsigned gammas[][3] = {{10, 100, 500}, {100, 100, 100}, {1, 1000, 250}, {500, 500, 500}};
  for (const auto& g : gammas) {
    const unsigned r = g[0], gr = g[1], bl = g[2];
    cases.push_back({"gamma " + std::to_string(r) + "/" + std::to_string(gr) + "/" + std::to_string(bl),
                     [=](BITMAPHANDLE* b, uint32_t) { return Q_GammaCorrectBitmapExt(b, r, gr, bl, 0); },
                     EachChannel([=](double v, double max, int c) {
                       const unsigned gamma = c == 1 ? gr : (c == 2 ? bl : r);
                       return Gamma(v, max, gamma);
                     })});
  }
  cases.push_back({"signed gamma on unsigned data",
                   [](BITMAPHANDLE* b, uint32_t) { return Q_GammaCorrectBitmapSigned(b, 250, 0); },
                   EachChannel([](double v, double max, int) { return Gamma(v, max, 250); })});
  for (unsigned channel : {0u, 1u, 2u, 3u})
    cases.push_back({"remap channel " + std::to_string(channel),
                     [channel](BITMAPHANDLE* b, uint32_t max) {
                       // A decreasing table with entries past max, which must clamp.
                       std::vector<unsigned> table(max + 1);
                       for (uint32_t i = 0; i <= max; ++i) table[i] = (max - i) * 3 / 2;
                       return Q_RemapBitmapIntensity(b, table.data(), max + 1, channel, 0);
                     },
                     EachChannel([channel](double v, double max, int c) {
                       const bool chosen = c == 3 || channel == 0 || static_cast<unsigned>(c) + 1 == channel;
                       if (!chosen) return v;
                       return std::min(max, std::floor((max - v) * 3 / 2));
                     })});
  return cases;
}

TEST(LookupTableOperations, MatchTheirFormulasOnEveryFormat) {
  for (const Case& c : Cases())
    for (const Format& f : UnsignedFormats()) ExpectPerPixel(f, c.op, c.ref, 0, c.name);
}

TEST(LookupTableOperations, ChannelIntensityDetectTakesTheInOrOutComponent) {
  struct Detect {
    double lowFrac, highFrac;
    unsigned channels;
  };
  const COLORREF in = 0x00C08040, out = 0x00102030;
  const Detect detects[] = {{0.25, 0.75, QV_CHANNEL_RED},
                            {0.0, 1.0, QV_CHANNEL_GREEN | QV_CHANNEL_BLUE},
                            {0.8, 0.2, QV_CHANNEL_RED | QV_CHANNEL_GREEN | QV_CHANNEL_BLUE}};
  for (const Detect& d : detects) {
    for (const Format& f : UnsignedFormats()) {
      auto range = [d](uint32_t max, uint32_t* lo, uint32_t* hi) {
        *lo = static_cast<uint32_t>(d.lowFrac * max);
        *hi = static_cast<uint32_t>(d.highFrac * max);
      };
      ExpectPerPixel(
          f,
          [&](BITMAPHANDLE* b, uint32_t max) {
            uint32_t lo, hi;
            range(max, &lo, &hi);
            return Q_IntensityDetectBitmap(b, lo, hi, in, out, d.channels, 0);
          },
          [&](const uint32_t v[3], uint32_t o[3], uint32_t max, bool gray) {
            uint32_t lo, hi;
            range(max, &lo, &hi);
            const unsigned bits[3] = {QV_CHANNEL_RED, QV_CHANNEL_GREEN, QV_CHANNEL_BLUE};
            for (int c = 0; c < 3; ++c) {
              const bool inside = v[c] >= lo && v[c] <= hi;
              const COLORREF cr = inside ? in : out;
              const double comp[3] = {double(cr & 0xFF), double((cr >> 8) & 0xFF), double((cr >> 16) & 0xFF)};
              if (gray) {
                const double luma = RoundHalfUp((299 * comp[0] + 587 * comp[1] + 114 * comp[2]) / 1000.0);
                o[c] = ClampTo(luma * max / 255.0, max);
              } else {
                o[c] = (d.channels & bits[c]) ? ClampTo(comp[c] * max / 255.0, max) : v[c];
              }
            }
          },
          0, "channel intensity detect");
    }
  }
}

// The same tone operations on signed gray, stated over the signed range lo..hi itself: brightness towards hi
// and lo, contrast about 0, histogram contrast about the signed median, posterize levels from lo to hi,
// solarize thresholds counted from lo with the mirror -1 - v, gamma on the magnitude. The first pixels hold the range's
// ends and the values around 0.
TEST(LookupTableOperations, SignedGrayWorksOnItsOwnRange) {
  struct Row {
    std::string name;
    std::function<int(BITMAPHANDLE* b, uint32_t max)> op;
    std::function<double(double v, double lo, double hi, double median)> ref;
  };
  std::vector<Row> rows;
  for (int n : {-1000, -373, 0, 250, 1000})
    rows.push_back({"brightness " + std::to_string(n),
                    [n](BITMAPHANDLE* b, uint32_t) { return Q_ChangeBitmapIntensity(b, n, 0); },
                    [n](double v, double lo, double hi, double) {
                      return n >= 0 ? v + (hi - v) * n / 1000.0 : lo + (v - lo) * (1000.0 + n) / 1000.0;
                    }});
  for (int n : {-1000, -500, 500, 999, 1000})
    rows.push_back({"contrast " + std::to_string(n),
                    [n](BITMAPHANDLE* b, uint32_t) { return Q_ChangeBitmapContrast(b, n, 0); },
                    [=](double v, double lo, double hi, double) { return ContrastAbout(v, 0, lo, hi, n); }});
  for (int n : {-600, 400, 1000})
    rows.push_back(
        {"histo contrast " + std::to_string(n),
         [n](BITMAPHANDLE* b, uint32_t) { return Q_HistoContrastBitmap(b, n, 0); },
         [=](double v, double lo, double hi, double median) { return ContrastAbout(v, median, lo, hi, n); }});
  // The preview's way: the median asked of the image (a signed value), then the curve about it.
  rows.push_back(
      {"histo contrast about the reported median",
       [](BITMAPHANDLE* b, uint32_t) {
         int median = 0;
         const int rc = Q_GetBitmapMedianIntensity(b, &median, 0);
         return rc == QV_SUCCESS ? Q_HistoContrastBitmapExt(b, 400, median, 0) : rc;
       },
       [=](double v, double lo, double hi, double median) { return ContrastAbout(v, median, lo, hi, 400); }});
  for (unsigned levels : {2u, 3u, 4u, 7u, 64u})
    rows.push_back({"posterize " + std::to_string(levels),
                    [levels](BITMAPHANDLE* b, uint32_t) { return Q_PosterizeBitmap(b, levels, 0); },
                    [levels](double v, double lo, double hi, double) {
                      const double step = (hi - lo) / (levels - 1);
                      int best = 0;
                      for (unsigned k = 1; k < levels; ++k)
                        if (std::fabs(v - (lo + k * step)) <= std::fabs(v - (lo + best * step))) best = k;
                      return lo + best * step;
                    }});
  // Thresholds as fractions of the slider's 0..max: 0 mirrors every sample, max only the range's top.
  for (double frac : {0.0, 0.5, 1.0})
    rows.push_back(
        {"solarize " + std::to_string(frac),
         [frac](BITMAPHANDLE* b, uint32_t max) { return Q_SolarizeBitmap(b, static_cast<unsigned>(frac * max), 0); },
         [frac](double v, double lo, double hi, double) {
           return v >= lo + static_cast<unsigned>(frac * (hi - lo)) ? -1 - v : v;
         }});
  // Signed gamma keeps the sign and bends the magnitude against the range's half.
  for (unsigned gamma : {10u, 100u, 500u})
    rows.push_back({"signed gamma " + std::to_string(gamma),
                    [gamma](BITMAPHANDLE* b, uint32_t) { return Q_GammaCorrectBitmapSigned(b, gamma, 0); },
                    [gamma](double v, double lo, double, double) {
                      const double mag = std::floor(-lo * std::pow(std::fabs(v) / -lo, 100.0 / gamma) + 0.5);
                      return v < 0 ? -mag : mag;
                    }});
  for (const Format& f : AllFormats()) {
    if (!f.isSigned) continue;
    const int lo = f.bits == 12 ? -2048 : -32768, hi = -lo - 1, w = 37, h = 9;
    const int edges[] = {lo, hi, 0, -1, 1, lo + 1, hi - 1};
    for (const Row& row : rows) {
      TestBitmap before(f, w, h, 5), after(f, w, h, 5);
      for (int i = 0; i < 7; ++i)
        for (TestBitmap* t : {&before, &after}) t->SetGray(i, 0, static_cast<uint16_t>(edges[i]));
      std::vector<int> sorted;
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) sorted.push_back(static_cast<int16_t>(before.Raw(x, y)));
      std::sort(sorted.begin(), sorted.end());
      const double median = sorted[(sorted.size() + 1) / 2 - 1];
      ASSERT_EQ(row.op(after.get(), after.Max()), QV_SUCCESS) << row.name << " on " << f.name;
      int bad = 0;
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
          const int v = static_cast<int16_t>(before.Raw(x, y));
          const int64_t expected = std::clamp<int64_t>(RoundHalfUp(row.ref(v, lo, hi, median)), lo, hi);
          const int got = static_cast<int16_t>(after.Raw(x, y));
          if (got != expected && ++bad <= 3)
            ADD_FAILURE() << row.name << " on " << f.name << " from " << v << ": got " << got << " expected "
                          << expected;
        }
    }
  }
}

}  // namespace
}  // namespace opstest
