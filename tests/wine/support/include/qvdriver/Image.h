/*
 * Pixels read back from a window: 32-bit BGRA, top-down rows, no padding.
 * Tests compare colours at points and ask whether anything was drawn at all,
 * so the image carries only those queries.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qv::test {

struct Bgra {
  uint8_t b = 0, g = 0, r = 0, a = 0;
  bool SameColor(const Bgra& o) const { return b == o.b && g == o.g && r == o.r; }
};

struct Image {
  int width = 0;
  int height = 0;
  std::vector<Bgra> pixels;  // width * height, row 0 at the top

  bool Empty() const { return width <= 0 || height <= 0 || pixels.empty(); }
  // The pixel at (x, y); a point outside the image reads as transparent black.
  Bgra At(int x, int y) const;
  // Distinct colours (alpha ignored), counted up to `limit` to stay cheap.
  size_t CountColors(size_t limit = 4096) const;
  // True when the image is empty or every pixel has one colour: nothing drawn.
  bool IsBlank() const { return CountColors(2) < 2; }
  // The share (0..1) of pixels within `tolerance` of `color` on every channel.
  double ShareNear(Bgra color, int tolerance) const;
  // The rectangle [x0,x1) x [y0,y1), clipped to the image.
  Image Crop(int x0, int y0, int x1, int y1) const;
};

}  // namespace qv::test
