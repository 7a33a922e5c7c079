// Integer HSV for the hue, saturation and remap-hue operations, so that no pixel goes through floating
// point or trigonometry. A pixel is kept as its value V (the largest channel), its chroma d (largest minus
// smallest) and its hue in fixed point: 65536 units per 60-degree sector, 6 sectors a circle. Converting
// back puts V and V - d on the largest and smallest channels and the middle channel where the hue's
// fraction of its sector says; rounding is to the nearest level, so a round trip is exact to one level.
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

// round(n * 65536 / d) for 0 <= n <= 2d, d > 0.
template <class T>
inline int32_t SectorFraction(uint32_t n, uint32_t d) {
  if (sizeof(T) == 1) return static_cast<int32_t>((n * Reciprocals().r[d] + (uint64_t{1} << 15)) >> 16);
  return static_cast<int32_t>(((static_cast<uint64_t>(n) << 16) + d / 2) / d);
}

// Hue of a pixel with largest channel v and chroma d > 0, in 0..kHueCircle-1.
template <class T>
inline int32_t HueOf(int32_t r, int32_t g, int32_t b, int32_t v, int32_t d) {
  int32_t sector;
  int32_t num;
  if (v == r) {
    sector = 0;
    num = g - b;
  } else if (v == g) {
    sector = 2;
    num = b - r;
  } else {
    sector = 4;
    num = r - g;
  }
  // num lies in -d..d; shifting it by d keeps the fraction non-negative.
  int32_t h = (sector - 1) * kHueSector + SectorFraction<T>(static_cast<uint32_t>(num + d), static_cast<uint32_t>(d));
  if (h < 0) h += kHueCircle;
  if (h >= kHueCircle) h -= kHueCircle;
  return h;
}

// The pixel of value v, chroma d (0 <= d <= v) and hue h (0..kHueCircle-1).
template <class T>
inline void FromHsv(int32_t h, int32_t v, int32_t d, T& r, T& g, T& b) {
  const int32_t m = v - d;
  const int32_t sector = h >> 16;
  const int32_t x = static_cast<int32_t>((static_cast<uint64_t>(d) * static_cast<uint32_t>(h & 0xFFFF) + 0x8000) >> 16);
  int32_t rr, gg, bb;
  switch (sector) {
    case 0: rr = v; gg = m + x; bb = m; break;
    case 1: rr = v - x; gg = v; bb = m; break;
    case 2: rr = m; gg = v; bb = m + x; break;
    case 3: rr = m; gg = v - x; bb = v; break;
    case 4: rr = m + x; gg = m; bb = v; break;
    default: rr = v; gg = m; bb = v - x; break;
  }
  r = static_cast<T>(rr);
  g = static_cast<T>(gg);
  b = static_cast<T>(bb);
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
