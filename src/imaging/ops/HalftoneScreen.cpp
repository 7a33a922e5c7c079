/*
 * Angled screens are computed, not tiled: each pixel centre is rotated into screen coordinates and the
 * fraction of its cell taken from those coordinates directly, so a screen at an angle whose cell does not fit
 * the pixel grid (15 or 75 degrees) has no tile boundary that could show as a seam.
 */
#include "HalftoneScreen.h"

#include <algorithm>
#include <cmath>

namespace qv {
namespace ops {
namespace {

constexpr int kBins = 4096;
constexpr int kSamples = 256;  // per cell axis when measuring a spot function's area
constexpr double kPi = 3.14159265358979323846;

uint16_t ToThreshold(double share) {
  return static_cast<uint16_t>(std::clamp(std::lround(share * 65535.0), 1L, 65534L));
}

// cos and sin of the angle (hundredths of a degree) times scale, exact on the axes so that a screen on the
// pixel grid samples whole pixels.
void SetRotation(int angle, double scale, double* c, double* s) {
  static const double kAxis[4][2] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
  if (angle % 9000 == 0) {
    const int quarter = ((angle / 9000) % 4 + 4) % 4;
    *c = kAxis[quarter][0] * scale;
    *s = kAxis[quarter][1] * scale;
    return;
  }
  *c = std::cos(angle * kPi / 18000.0) * scale;
  *s = std::sin(angle * kPi / 18000.0) * scale;
}

double Fraction(double t) { return 2.0 * (t - std::floor(t)) - 1.0; }

int Wrap(int64_t v, int n) { return static_cast<int>(((v % n) + n) % n); }

uint32_t Hash(uint32_t x, uint32_t y) {
  uint32_t h = x * 0x9E3779B1u ^ (y + 0x7F4A7C15u) * 0x85EBCA77u;
  h ^= h >> 16;
  h *= 0x7FEB352Du;
  h ^= h >> 15;
  h *= 0x846CA68Bu;
  h ^= h >> 16;
  return h;
}

}  // namespace

HalftoneScreen HalftoneScreen::MakeSpot(Spot spot, int period, int angle) {
  if (angle % 9000 == 0) {
    std::vector<uint16_t> ranks = RankedMatrix(period, [&](double x, double y) {
      return SpotValue(spot, 2 * x / period - 1, 2 * y / period - 1);
    });
    return MakeMatrix(ranks, period, angle);
  }
  HalftoneScreen s;
  s.m_kind = Kind::Spot;
  s.m_spot = spot;
  SetRotation(angle, 1.0 / period, &s.m_cos, &s.m_sin);
  std::vector<double> values;
  values.reserve(kSamples * kSamples);
  for (int j = 0; j < kSamples; ++j)
    for (int i = 0; i < kSamples; ++i)
      values.push_back(SpotValue(spot, (2.0 * i + 1) / kSamples - 1, (2.0 * j + 1) / kSamples - 1));
  const auto [lo, hi] = std::minmax_element(values.begin(), values.end());
  s.m_low = *lo;
  s.m_scale = *hi > *lo ? (kBins - 1) / (*hi - *lo) : 0.0;
  std::vector<double> count(kBins, 0.0);
  for (double v : values) count[static_cast<size_t>((v - s.m_low) * s.m_scale)] += 1;
  // Share of the cell inked before a value of this bin: every higher bin, and half of its own.
  s.m_table.resize(kBins);
  double above = 0;
  for (int b = kBins - 1; b >= 0; --b) {
    s.m_table[b] = ToThreshold((above + count[b] / 2) / values.size());
    above += count[b];
  }
  return s;
}

HalftoneScreen HalftoneScreen::MakeMatrix(const std::vector<uint16_t>& ranks, int n, int angle) {
  HalftoneScreen s;
  s.m_kind = Kind::Matrix;
  s.m_size = n;
  SetRotation(angle, 1.0, &s.m_cos, &s.m_sin);
  for (uint16_t r : ranks) s.m_table.push_back(ToThreshold((r + 0.5) / ranks.size()));
  return s;
}

HalftoneScreen HalftoneScreen::MakeRandom(int grain) {
  HalftoneScreen s;
  s.m_kind = Kind::Random;
  s.m_size = std::max(1, grain);
  return s;
}

uint16_t HalftoneScreen::SpotThreshold(double u, double v) const {
  const double value = SpotValue(m_spot, Fraction(u), Fraction(v));
  const int bin = std::clamp(static_cast<int>((value - m_low) * m_scale), 0, kBins - 1);
  return m_table[bin];
}

void HalftoneScreen::Row(int y, int width, uint16_t* thresholds) const {
  const double cy = y + 0.5;
  switch (m_kind) {
    case Kind::Spot:
      for (int x = 0; x < width; ++x) {
        const double cx = x + 0.5;
        thresholds[x] = SpotThreshold(cx * m_cos + cy * m_sin, cy * m_cos - cx * m_sin);
      }
      return;
    case Kind::Matrix:
      for (int x = 0; x < width; ++x) {
        const double cx = x + 0.5;
        const int u = Wrap(static_cast<int64_t>(std::floor(cx * m_cos + cy * m_sin)), m_size);
        const int v = Wrap(static_cast<int64_t>(std::floor(cy * m_cos - cx * m_sin)), m_size);
        thresholds[x] = m_table[static_cast<size_t>(v) * m_size + u];
      }
      return;
    case Kind::Random:
      for (int x = 0; x < width; ++x)
        thresholds[x] = ToThreshold((Hash(static_cast<uint32_t>(x / m_size), static_cast<uint32_t>(y / m_size)) >> 16) /
                                    65536.0);
      return;
  }
}

}  // namespace ops
}  // namespace qv
