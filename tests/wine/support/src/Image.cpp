/*
 * Queries on captured window pixels. Kept free of Windows calls so the
 * comparisons a test makes are plain arithmetic on the BGRA buffer.
 */
#include "qvdriver/Image.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_set>

namespace qv::test {

Bgra Image::At(int x, int y) const {
  if (x < 0 || y < 0 || x >= width || y >= height || Empty()) return {};
  return pixels[static_cast<size_t>(y) * width + x];
}

size_t Image::CountColors(size_t limit) const {
  std::unordered_set<uint32_t> seen;
  for (const Bgra& p : pixels) {
    seen.insert(uint32_t(p.b) | uint32_t(p.g) << 8 | uint32_t(p.r) << 16);
    if (seen.size() >= limit) break;
  }
  return seen.size();
}

double Image::ShareNear(Bgra color, int tolerance) const {
  if (pixels.empty()) return 0.0;
  size_t near = 0;
  for (const Bgra& p : pixels) {
    if (std::abs(p.b - color.b) <= tolerance && std::abs(p.g - color.g) <= tolerance &&
        std::abs(p.r - color.r) <= tolerance)
      ++near;
  }
  return static_cast<double>(near) / static_cast<double>(pixels.size());
}

Image Image::Crop(int x0, int y0, int x1, int y1) const {
  x0 = std::clamp(x0, 0, width);
  x1 = std::clamp(x1, x0, width);
  y0 = std::clamp(y0, 0, height);
  y1 = std::clamp(y1, y0, height);
  Image out;
  out.width = x1 - x0;
  out.height = y1 - y0;
  out.pixels.reserve(static_cast<size_t>(out.width) * out.height);
  for (int y = y0; y < y1; ++y)
    for (int x = x0; x < x1; ++x) out.pixels.push_back(pixels[static_cast<size_t>(y) * width + x]);
  return out;
}

}  // namespace qv::test
