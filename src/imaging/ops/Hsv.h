/*
 * Integer HSV for the hue, saturation and remap-hue operations, so that no pixel goes through floating
 * point or trigonometry. A pixel is kept as its value V (the largest channel), its chroma d (largest minus
 * smallest) and its hue in fixed point: 65536 units per 60-degree sector, 6 sectors a circle. Converting
 * back puts V and V - d on the largest and smallest channels and the middle channel where the hue's
 * fraction of its sector says; rounding is to the nearest level, so a round trip is exact to one level.
 */
#pragma once

#include <array>
#include <cstdint>

namespace qv {
namespace ops {

constexpr int32_t kHueSector = 1 << 16;
constexpr int32_t kHueCircle = 6 * kHueSector;

// round(2^32 / d) for d = 1..255: the 8-bit hue fraction without a division per pixel.
struct ReciprocalTable {
  std::array<uint64_t, 256> r{};
  ReciprocalTable() {
    for (uint64_t d = 1; d < 256; ++d) r[d] = ((uint64_t{1} << 32) + d / 2) / d;
  }
};

inline const ReciprocalTable& Reciprocals() {
  static const ReciprocalTable table;
  return table;
}

// round(n * 65536 / d) for 0 <= n <= 2d, d > 0; recip is Reciprocals().r for 8-bit samples (looked up
// once per call, not per pixel).
template <class T>
inline int32_t SectorFraction(uint32_t n, uint32_t d, const uint64_t* recip) {
  if (sizeof(T) == 1) return static_cast<int32_t>((n * recip[d] + (uint64_t{1} << 15)) >> 16);
  return static_cast<int32_t>(((static_cast<uint64_t>(n) << 16) + d / 2) / d);
}

// Hue of a pixel with largest channel v and chroma d > 0, in 0..kHueCircle-1. The sector is picked by
// index rather than by branches: on photographs the largest channel changes from pixel to pixel.
template <class T>
inline int32_t HueOf(int32_t r, int32_t g, int32_t b, int32_t v, int32_t d, const uint64_t* recip) {
  const int32_t nums[3] = {g - b, b - r, r - g};
  const int which = v == r ? 0 : (v == g ? 1 : 2);
  // num lies in -d..d; shifting it by d keeps the fraction non-negative.
  int32_t h = (2 * which - 1) * kHueSector +
              SectorFraction<T>(static_cast<uint32_t>(nums[which] + d), static_cast<uint32_t>(d), recip);
  h += h < 0 ? kHueCircle : 0;
  h -= h >= kHueCircle ? kHueCircle : 0;
  return h;
}

// The pixel of value v, chroma d (0 <= d <= v) and hue h (0..kHueCircle-1). Each sector takes its
// channels from {v, m, m + x, v - x}; the choice is a table, not a switch.
template <class T>
inline void FromHsv(int32_t h, int32_t v, int32_t d, T& r, T& g, T& b) {
  static constexpr uint8_t kPick[6][3] = {{0, 2, 1}, {3, 0, 1}, {1, 0, 2}, {1, 3, 0}, {2, 1, 0}, {0, 1, 3}};
  const int32_t m = v - d;
  const int32_t x = static_cast<int32_t>((static_cast<uint64_t>(d) * static_cast<uint32_t>(h & 0xFFFF) + 0x8000) >> 16);
  const int32_t vals[4] = {v, m, m + x, v - x};
  const uint8_t* pick = kPick[h >> 16];
  r = static_cast<T>(vals[pick[0]]);
  g = static_cast<T>(vals[pick[1]]);
  b = static_cast<T>(vals[pick[2]]);
}

template <class T>
inline int32_t Max3(T r, T g, T b) {
  const T m = r > g ? r : g;
  return m > b ? m : b;
}

template <class T>
inline int32_t Min3(T r, T g, T b) {
  const T m = r < g ? r : g;
  return m < b ? m : b;
}

}  // namespace ops
}  // namespace qv
