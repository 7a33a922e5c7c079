/*
 * The device color models: HSB (hexcone), HLS (double cone), CMY (complement)
 * and device CMYK (K = 1 - max). Computed in doubles and rounded once at the
 * end, so that a value typed into the color picker survives a round trip
 * through RGB as closely as integer RGB allows.
 */
#include "ColorModels.h"

#include <algorithm>
#include <cmath>

namespace qv {
namespace {

constexpr int kHueCount = 360;

bool InRange(int v, int lo, int hi) { return v >= lo && v <= hi; }

int RoundToInt(double v) { return static_cast<int>(std::lround(v)); }

int ToByte(double unit) { return std::clamp(RoundToInt(unit * 255.0), 0, 255); }

int ToPercent(double unit) { return std::clamp(RoundToInt(unit * 100.0), 0, 100); }

// Hue in degrees [0, 360) of a color with max > min; 0 for grays.
int HueOf(double r, double g, double b) {
  const double maxV = std::max({r, g, b});
  const double minV = std::min({r, g, b});
  const double delta = maxV - minV;
  if (delta <= 0.0) return 0;
  double h;
  if (maxV == r)
    h = (g - b) / delta;
  else if (maxV == g)
    h = (b - r) / delta + 2.0;
  else
    h = (r - g) / delta + 4.0;
  h *= 60.0;
  if (h < 0.0) h += 360.0;
  int degrees = RoundToInt(h);
  return degrees >= kHueCount ? degrees - kHueCount : degrees;
}

// The fully saturated color of a hue at unit value, as fractions.
void HueToRgb(int hue, double& r, double& g, double& b) {
  const double h = hue / 60.0;
  const double x = 1.0 - std::fabs(std::fmod(h, 2.0) - 1.0);
  switch (static_cast<int>(h)) {
    case 0:
      r = 1;
      g = x;
      b = 0;
      break;
    case 1:
      r = x;
      g = 1;
      b = 0;
      break;
    case 2:
      r = 0;
      g = 1;
      b = x;
      break;
    case 3:
      r = 0;
      g = x;
      b = 1;
      break;
    case 4:
      r = x;
      g = 0;
      b = 1;
      break;
    default:
      r = 1;
      g = 0;
      b = x;
      break;
  }
}

}  // namespace

bool IsValid(const QVRGB& c) {
  return InRange(c.nRed, 0, 255) && InRange(c.nGreen, 0, 255) && InRange(c.nBlue, 0, 255);
}
bool IsValid(const QVHSB& c) {
  return InRange(c.nHue, 0, kHueCount - 1) && InRange(c.nSaturation, 0, 100) && InRange(c.nBrightness, 0, 100);
}
bool IsValid(const QVHLS& c) {
  return InRange(c.nHue, 0, kHueCount - 1) && InRange(c.nLightness, 0, 100) && InRange(c.nSaturation, 0, 100);
}
bool IsValid(const QVCMY& c) {
  return InRange(c.nCyan, 0, 255) && InRange(c.nMagenta, 0, 255) && InRange(c.nYellow, 0, 255);
}
bool IsValid(const QVCMYK& c) {
  return InRange(c.nCyan, 0, 100) && InRange(c.nMagenta, 0, 100) && InRange(c.nYellow, 0, 100) &&
         InRange(c.nBlack, 0, 100);
}
bool IsValid(const QVLAB& c) { return InRange(c.nL, 0, 100) && InRange(c.nA, -128, 127) && InRange(c.nB, -128, 127); }

QVHSB RgbToHsb(const QVRGB& c) {
  const int maxV = std::max({c.nRed, c.nGreen, c.nBlue});
  const int minV = std::min({c.nRed, c.nGreen, c.nBlue});
  QVHSB out{};
  out.nHue = HueOf(c.nRed, c.nGreen, c.nBlue);
  out.nSaturation = maxV == 0 ? 0 : ToPercent(double(maxV - minV) / maxV);
  out.nBrightness = ToPercent(maxV / 255.0);
  return out;
}

QVRGB HsbToRgb(const QVHSB& c) {
  const double v = c.nBrightness / 100.0;
  const double s = c.nSaturation / 100.0;
  double r, g, b;
  HueToRgb(c.nHue, r, g, b);
  // Blend the pure hue towards white by (1 - s), then scale by the value.
  auto channel = [&](double pure) { return ToByte(v * (1.0 - s + s * pure)); };
  return QVRGB{channel(r), channel(g), channel(b)};
}

QVHLS RgbToHls(const QVRGB& c) {
  const double maxV = std::max({c.nRed, c.nGreen, c.nBlue}) / 255.0;
  const double minV = std::min({c.nRed, c.nGreen, c.nBlue}) / 255.0;
  const double l = (maxV + minV) / 2.0;
  const double delta = maxV - minV;
  double s = 0.0;
  if (delta > 0.0) s = l <= 0.5 ? delta / (maxV + minV) : delta / (2.0 - maxV - minV);
  QVHLS out{};
  out.nHue = HueOf(c.nRed, c.nGreen, c.nBlue);
  out.nLightness = ToPercent(l);
  out.nSaturation = ToPercent(s);
  return out;
}

QVRGB HlsToRgb(const QVHLS& c) {
  const double l = c.nLightness / 100.0;
  const double s = c.nSaturation / 100.0;
  const double chroma = (1.0 - std::fabs(2.0 * l - 1.0)) * s;
  const double minV = l - chroma / 2.0;
  double r, g, b;
  HueToRgb(c.nHue, r, g, b);
  return QVRGB{ToByte(minV + chroma * r), ToByte(minV + chroma * g), ToByte(minV + chroma * b)};
}

QVCMY RgbToCmy(const QVRGB& c) { return QVCMY{255 - c.nRed, 255 - c.nGreen, 255 - c.nBlue}; }

QVRGB CmyToRgb(const QVCMY& c) { return QVRGB{255 - c.nCyan, 255 - c.nMagenta, 255 - c.nYellow}; }

QVCMYK RgbToCmyk(const QVRGB& c) {
  const double r = c.nRed / 255.0, g = c.nGreen / 255.0, b = c.nBlue / 255.0;
  const double k = 1.0 - std::max({r, g, b});
  QVCMYK out{};
  out.nBlack = ToPercent(k);
  if (k < 1.0) {
    out.nCyan = ToPercent((1.0 - r - k) / (1.0 - k));
    out.nMagenta = ToPercent((1.0 - g - k) / (1.0 - k));
    out.nYellow = ToPercent((1.0 - b - k) / (1.0 - k));
  }
  return out;
}

QVRGB CmykToRgb(const QVCMYK& c) {
  const double k = 1.0 - c.nBlack / 100.0;
  auto channel = [&](int ink) { return ToByte((1.0 - ink / 100.0) * k); };
  return QVRGB{channel(c.nCyan), channel(c.nMagenta), channel(c.nYellow)};
}

}  // namespace qv
