/*
 * Hue, saturation and remap hue against a floating-point HSV model written here: RGB to hue in degrees,
 * saturation and value in 0..1, the change, and back. Integer results may differ from the model by one
 * level; gray pixels and gray images must not change at all.
 */
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "Harness.h"

namespace opstest {
namespace {

struct Hsv {
  double h, s, v;  // degrees, 0..1, 0..max
};

Hsv ToHsv(const uint32_t c[3]) {
  const double r = c[0], g = c[1], b = c[2];
  const double mx = std::max({r, g, b}), mn = std::min({r, g, b}), d = mx - mn;
  Hsv out{0, mx > 0 ? d / mx : 0, mx};
  if (d > 0) {
    if (mx == r)
      out.h = 60 * std::fmod((g - b) / d + 6, 6);
    else if (mx == g)
      out.h = 60 * ((b - r) / d + 2);
    else
      out.h = 60 * ((r - g) / d + 4);
  }
  return out;
}

void FromHsv(Hsv x, uint32_t max, uint32_t out[3]) {
  double h = std::fmod(x.h, 360);
  if (h < 0) h += 360;
  const double c = x.v * x.s, hp = h / 60, xx = c * (1 - std::fabs(std::fmod(hp, 2) - 1)), m = x.v - c;
  double r = 0, g = 0, b = 0;
  if (hp < 1) {
    r = c;
    g = xx;
  } else if (hp < 2) {
    r = xx;
    g = c;
  } else if (hp < 3) {
    g = c;
    b = xx;
  } else if (hp < 4) {
    g = xx;
    b = c;
  } else if (hp < 5) {
    r = xx;
    b = c;
  } else {
    r = c;
    b = xx;
  }
  out[0] = ClampTo(r + m, max);
  out[1] = ClampTo(g + m, max);
  out[2] = ClampTo(b + m, max);
}

Reference Unchanged() {
  return [](const uint32_t in[3], uint32_t out[3], uint32_t, bool) { std::copy(in, in + 3, out); };
}

TEST(HsvOperations, HueRotationMatchesTheModelWithinOneLevel) {
  for (int angle : {-360, -200, -90, 0, 45, 120, 181, 360}) {
    for (const Format& f : UnsignedFormats()) {
      const Reference ref = [angle](const uint32_t in[3], uint32_t out[3], uint32_t max, bool gray) {
        if (gray) return std::copy(in, in + 3, out), void();
        Hsv x = ToHsv(in);
        x.h += angle;
        FromHsv(x, max, out);
      };
      ExpectPerPixel(
          f, [angle](BITMAPHANDLE* b, uint32_t) { return Q_ChangeBitmapHue(b, angle, 0); }, ref, 1,
          "hue " + std::to_string(angle));
    }
  }
}

TEST(HsvOperations, SaturationMatchesTheModelWithinOneLevel) {
  for (int n : {-1000, -500, 0, 300, 1000}) {
    for (const Format& f : UnsignedFormats()) {
      const Reference ref = [n](const uint32_t in[3], uint32_t out[3], uint32_t max, bool gray) {
        if (gray) return std::copy(in, in + 3, out), void();
        Hsv x = ToHsv(in);
        x.s = std::min(1.0, std::max(0.0, x.s + x.s * n / 1000.0));
        FromHsv(x, max, out);
      };
      ExpectPerPixel(
          f, [n](BITMAPHANDLE* b, uint32_t) { return Q_ChangeBitmapSaturation(b, n, 0); }, ref, 1,
          "saturation " + std::to_string(n));
    }
  }
}

TEST(HsvOperations, GrayPixelsKeepTheirValueUnderHueAndSaturation) {
  const Format bgr24{"Bgr24", 24, QV_ORDER_BGR, false};
  TestBitmap t(bgr24, 16, 2);
  for (int x = 0; x < 16; ++x) {
    uint8_t* p = t.get()->pData + 3 * x;
    p[0] = p[1] = p[2] = static_cast<uint8_t>(x * 17);
  }
  const Snapshot s(t);
  ASSERT_EQ(Q_ChangeBitmapHue(t.get(), 77, 0), QV_SUCCESS);
  ASSERT_EQ(Q_ChangeBitmapSaturation(t.get(), 1000, 0), QV_SUCCESS);
  EXPECT_EQ(std::vector<uint8_t>(s.pixels.begin(), s.pixels.begin() + 48),
            std::vector<uint8_t>(t.get()->pData, t.get()->pData + 48));
}

TEST(HsvOperations, RemapHueWithIdentityTablesChangesNothing) {
  for (const Format& f : UnsignedFormats()) {
    ExpectPerPixel(
        f,
        [](BITMAPHANDLE* b, uint32_t max) {
          std::vector<unsigned> id(max + 1), mask(max + 1, 1);
          for (uint32_t i = 0; i <= max; ++i) id[i] = i;
          const int rc = Q_RemapBitmapHue(b, mask.data(), id.data(), id.data(), id.data(), max + 1, 0);
          return rc == QV_SUCCESS ? Q_RemapBitmapHue(b, nullptr, nullptr, nullptr, nullptr, max + 1, 0) : rc;
        },
        Unchanged(), 0, "identity remap hue");
  }
}

// The hue band 10..20 of a 256-entry mask (entries 10 to 19 set), with the value halved and the saturation
// raised inside it: pixels of other hues stay exactly, pixels inside follow the model.
TEST(HsvOperations, RemapHueActsOnlyInsideTheMaskBand) {
  for (const Format& f : UnsignedFormats()) {
    if (f.order == QV_ORDER_GRAY) continue;
    const auto bandIndex = [](const uint32_t in[3], uint32_t max, double* frac) {
      const double x = ToHsv(in).h / 360.0 * max;
      *frac = x - std::floor(x);
      return RoundHalfUp(x);
    };
    int boundary = 0;
    ExpectPerPixel(
        f,
        [](BITMAPHANDLE* b, uint32_t max) {
          const uint32_t n = max + 1;
          std::vector<unsigned> mask(n, 0), sat(n), val(n);
          const uint32_t lo = 10 * n / 256, hi = 20 * n / 256;
          for (uint32_t i = lo; i < hi; ++i) mask[i] = 1;
          for (uint32_t i = 0; i < n; ++i) {
            sat[i] = std::min<uint32_t>(max, i + i / 4);
            val[i] = i / 2;
          }
          return Q_RemapBitmapHue(b, mask.data(), nullptr, sat.data(), val.data(), n, 0);
        },
        [&](const uint32_t in[3], uint32_t out[3], uint32_t max, bool) {
          double frac;
          const int64_t h = bandIndex(in, max, &frac);
          const uint32_t n = max + 1;
          const bool nearEdge = std::fabs(frac - 0.5) < 0.01;
          const bool inside = h >= 10 * n / 256 && h < 20 * n / 256 && (in[0] != in[1] || in[1] != in[2]);
          if (nearEdge) {
            ++boundary;
            out[0] = kAnyValue;
            return;
          }
          if (!inside) return std::copy(in, in + 3, out), void();
          Hsv x = ToHsv(in);
          const double si = std::floor(x.s * max + 0.5), vi = x.v;
          const double sOut = std::min<double>(max, si + std::floor(si / 4)) / max;
          const double vOut = std::floor(vi / 2);
          FromHsv({static_cast<double>(h) * 360.0 / max, sOut, vOut}, max, out);
        },
        1, "remap hue band");
    EXPECT_LT(boundary, 41 * 13 / 4) << "too few pixels were compared on " << f.name;
  }
}

}  // namespace
}  // namespace opstest
