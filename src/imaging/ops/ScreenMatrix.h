/*
 * Threshold screens shared by the ordered dithering of the color reduction and the halftone screens: the
 * spot functions that say which part of a cell inks first, the recursive Bayer matrix, and the ranking that
 * turns a spot function sampled on a small tile into a threshold matrix.
 */
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace qv {
namespace ops {

// Spot functions over a cell with coordinates fx, fy in [-1, 1): the larger the value, the earlier the
// point is inked as the gray darkens.
enum class Spot { Euclidean, Square, Round, Elliptical, Line };

inline double SpotValue(Spot spot, double fx, double fy) {
  const double ax = std::fabs(fx), ay = std::fabs(fy);
  switch (spot) {
    case Spot::Euclidean:
      // A round dot that turns into a checkerboard at half darkness and then into round holes.
      return ax + ay <= 1.0 ? 1.0 - (fx * fx + fy * fy) / 2.0 : ((ax - 1) * (ax - 1) + (ay - 1) * (ay - 1)) / 2.0;
    case Spot::Square: return 1.0 - (ax > ay ? ax : ay);
    case Spot::Round: return 1.0 - (fx * fx + fy * fy);
    case Spot::Elliptical: return 1.0 - (fx * fx + 2.0 * fy * fy) / 3.0;
    case Spot::Line: return 1.0 - ay;
  }
  return 0.0;
}

// The n x n Bayer matrix (n a power of two): each of 0..n*n-1 once, each step of the recursion splitting the
// previous cell's thresholds over its four sub-cells diagonally first.
inline std::vector<uint16_t> BayerMatrix(int n) {
  std::vector<uint16_t> m(1, 0);
  for (int size = 1; size < n; size *= 2) {
    std::vector<uint16_t> next(static_cast<size_t>(4) * size * size);
    static const int kQuadrant[4] = {0, 2, 3, 1};  // top-left, top-right, bottom-left, bottom-right
    for (int q = 0; q < 4; ++q)
      for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
          const int nx = x + (q & 1) * size, ny = y + (q >> 1) * size;
          next[static_cast<size_t>(ny) * 2 * size + nx] = static_cast<uint16_t>(4 * m[y * size + x] + kQuadrant[q]);
        }
    m.swap(next);
  }
  return m;
}

// The n x n matrix of ranks 0..n*n-1 of a spot function over the cell (ties go to the earlier pixel), with
// cell coordinates at the pixel centres.
template <class Value>
std::vector<uint16_t> RankedMatrix(int n, Value value) {
  std::vector<double> v(static_cast<size_t>(n) * n);
  for (int y = 0; y < n; ++y)
    for (int x = 0; x < n; ++x) v[static_cast<size_t>(y) * n + x] = value(x + 0.5, y + 0.5);
  std::vector<uint32_t> order(v.size());
  for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<uint32_t>(i);
  std::stable_sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) { return v[a] > v[b]; });
  std::vector<uint16_t> m(v.size());
  for (size_t rank = 0; rank < order.size(); ++rank) m[order[rank]] = static_cast<uint16_t>(rank);
  return m;
}

// The 8 x 8 clustered-dot matrix: Euclidean dots on a 45-degree screen, two dots per tile.
inline std::vector<uint16_t> ClusteredDotMatrix() {
  constexpr int kSize = 8;
  return RankedMatrix(kSize, [](double x, double y) {
    const double u = (x + y) / kSize, v = (x - y) / kSize;
    return SpotValue(Spot::Euclidean, 2 * (u - std::floor(u)) - 1, 2 * (v - std::floor(v)) - 1);
  });
}

}  // namespace ops
}  // namespace qv
