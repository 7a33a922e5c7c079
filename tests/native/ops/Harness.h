/*
 * The per-pixel comparison every operation test uses: run the operation on a fresh image of one format and
 * compare each pixel (each palette entry for indexed images) with a reference computed in the test from
 * the operation's formula on the untouched twin image. Alpha must not change; indices of indexed images
 * must not change.
 */
#pragma once

#include <functional>
#include <string>

#include "TestImage.h"

namespace opstest {

struct Sample {
  uint32_t c[3];
};

using Operation = std::function<int(BITMAPHANDLE* b, uint32_t max)>;
// Fills out from in for one pixel; gray is true for gray images (only out[0] is compared then). A reference
// that cannot decide a pixel (a value on a rounding edge) sets out[0] to kAnyValue to skip it.
constexpr uint32_t kAnyValue = 0xFFFFFFFFu;
using Reference = std::function<void(const uint32_t in[3], uint32_t out[3], uint32_t max, bool gray)>;

// Returns the number of mismatches (also reported through gtest with the first few positions).
int ExpectPerPixel(const Format& f, const Operation& op, const Reference& ref, uint32_t tolerance,
                   const std::string& what, int width = 41, int height = 13);

inline uint32_t ClampTo(double v, uint32_t max) {
  const int64_t r = RoundHalfUp(v);
  return r < 0 ? 0 : (r > static_cast<int64_t>(max) ? max : static_cast<uint32_t>(r));
}

// Contrast n (-1000..1000) about a center: 1000 splits into the ends, above 0 stretches, below 0 flattens.
inline double ContrastAbout(double v, double center, double lo, double hi, int n) {
  if (n == 1000) return v >= center ? hi : lo;
  return center + (v - center) * (n >= 0 ? 1000.0 / (1000.0 - n) : (1000.0 + n) / 1000.0);
}

}  // namespace opstest
