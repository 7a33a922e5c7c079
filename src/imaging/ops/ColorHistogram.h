/*
 * The color statistics the palette builders work from: for each cell of a 32 x 32 x 32 grid over 8-bit RGB
 * (the top five bits of each channel), the pixel count, the channel sums and the sum of squares. That is
 * exactly what a variance-minimizing cut needs (the variance of any box follows from the sums), and the
 * cells' mean colors are the weighted points the k-means refinement moves the palette over.
 */
#pragma once

#include <cstdint>
#include <vector>

#include "qv/qvkrn.h"

namespace qv {

struct PixelFormat;

namespace ops {

// Sums over a set of pixels: count, per-channel sums, sum of r^2 + g^2 + b^2.
struct ColorMoment {
  double w = 0, r = 0, g = 0, b = 0, q = 0;

  ColorMoment& operator+=(const ColorMoment& o) {
    w += o.w;
    r += o.r;
    g += o.g;
    b += o.b;
    q += o.q;
    return *this;
  }
  ColorMoment& operator-=(const ColorMoment& o) {
    w -= o.w;
    r -= o.r;
    g -= o.g;
    b -= o.b;
    q -= o.q;
    return *this;
  }
};

// A weighted color: the mean of the pixels of one cell and how many they are.
struct ColorPoint {
  float r, g, b;
  double weight;
};

class ColorHistogram {
 public:
  static constexpr int kSide = 33;  // 32 cells per channel plus a zero plane for the cumulative sums

  // Counts every pixel of a checked bitmap (any format, read through the kernel's row decoding).
  ColorHistogram(const BITMAPHANDLE& b, const PixelFormat& f);
  // From explicit pixels (R, G, B, A bytes), for tests and small images.
  ColorHistogram(const uint8_t* rgba, size_t pixels);

  static int Index(int r, int g, int b) { return (r * kSide + g) * kSide + b; }
  const ColorMoment& Cell(int r, int g, int b) const { return m_cells[Index(r, g, b)]; }
  const std::vector<ColorMoment>& Cells() const { return m_cells; }

  // The occupied cells as weighted mean colors.
  std::vector<ColorPoint> Points() const;

  static void Add(std::vector<ColorMoment>& cells, const uint8_t* rgba, size_t pixels);

 private:
  std::vector<ColorMoment> m_cells;
};

}  // namespace ops
}  // namespace qv
