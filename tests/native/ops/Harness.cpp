/*
 * The per-pixel comparison of the operation tests (see Harness.h).
 */
#include "Harness.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace opstest {
namespace {

bool Near(uint32_t a, uint32_t b, uint32_t tol) { return (a > b ? a - b : b - a) <= tol; }

}  // namespace

int ExpectPerPixel(const Format& f, const Operation& op, const Reference& ref, uint32_t tolerance,
                   const std::string& what, int width, int height) {
  TestBitmap before(f, width, height, 7);
  TestBitmap after(f, width, height, 7);
  const int rc = op(after.get(), after.Max());
  EXPECT_EQ(rc, QV_SUCCESS) << what << " on " << f.name;
  if (rc != QV_SUCCESS) return 1;
  int bad = 0;
  const bool gray = before.IsGray();
  if (before.IsIndexed()) {
    EXPECT_EQ(before.Pixels(), after.Pixels()) << what << ": indices of " << f.name << " changed";
    for (int i = 0; i < (1 << f.bits); ++i) {
      const RGBQUAD& q = before.b().Palette[i];
      const uint32_t in[3] = {q.rgbRed, q.rgbGreen, q.rgbBlue};
      uint32_t out[3];
      ref(in, out, 255, false);
      if (out[0] == kAnyValue) continue;
      const RGBQUAD& a = after.b().Palette[i];
      const uint32_t got[3] = {a.rgbRed, a.rgbGreen, a.rgbBlue};
      for (int c = 0; c < 3; ++c)
        if (!Near(got[c], out[c], tolerance) && ++bad <= 3)
          ADD_FAILURE() << what << " on " << f.name << " palette " << i << " channel " << c << ": got " << got[c]
                        << " expected " << out[c] << " from " << in[0] << "," << in[1] << "," << in[2];
    }
    return bad;
  }
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      uint32_t in[3], out[3], got[3];
      before.Get(x, y, in);
      after.Get(x, y, got);
      ref(in, out, before.Max(), gray);
      if (out[0] == kAnyValue) continue;
      if (before.Is565()) {
        // Compared in the format's own levels: a 5-bit step is 8 of the widened 8-bit scale.
        for (int c = 0; c < 3; ++c) {
          const uint32_t fieldMax = c == 1 ? 63 : 31;
          out[c] = static_cast<uint32_t>(RoundHalfUp(out[c] * static_cast<double>(fieldMax) / 255.0));
          got[c] = static_cast<uint32_t>(RoundHalfUp(got[c] * static_cast<double>(fieldMax) / 255.0));
        }
      }
      for (int c = 0; c < (gray ? 1 : 3); ++c)
        if (!Near(got[c], out[c], tolerance) && ++bad <= 3)
          ADD_FAILURE() << what << " on " << f.name << " at " << x << "," << y << " channel " << c << ": got " << got[c]
                        << " expected " << out[c] << " from " << in[0] << "," << in[1] << "," << in[2];
      if (before.HasAlpha()) {
        const auto pb = before.PixelBytes(x, y), pa = after.PixelBytes(x, y);
        const size_t alpha = pb.size() / 4 * 3;
        if (!std::equal(pb.begin() + alpha, pb.end(), pa.begin() + alpha) && ++bad <= 3)
          ADD_FAILURE() << what << " on " << f.name << ": alpha changed at " << x << "," << y;
      }
    }
  }
  return bad;
}

}  // namespace opstest
