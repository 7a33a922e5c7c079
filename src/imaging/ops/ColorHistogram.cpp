/*
 * Histogram of a bitmap's colors in the 32-level grid. Rows are split over the cores; each band counts into
 * its own grid and the bands are merged under a lock, so no cell is written by two threads at once.
 */
#include "ColorHistogram.h"

#include <mutex>

#include "../Parallel.h"
#include "../PixelConvert.h"

namespace qv {
namespace ops {

void ColorHistogram::Add(std::vector<ColorMoment>& cells, const uint8_t* rgba, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i, rgba += 4) {
    const int r = rgba[0], g = rgba[1], b = rgba[2];
    ColorMoment& c = cells[Index((r >> 3) + 1, (g >> 3) + 1, (b >> 3) + 1)];
    c.w += 1;
    c.r += r;
    c.g += g;
    c.b += b;
    c.q += r * r + g * g + b * b;
  }
}

ColorHistogram::ColorHistogram(const BITMAPHANDLE& b, const PixelFormat& f)
    : m_cells(static_cast<size_t>(kSide) * kSide * kSide) {
  std::mutex merge;
  ParallelRowsQuiet(0, b.nHeight, [&](int y0, int y1) {
    std::vector<ColorMoment> local(m_cells.size());
    std::vector<uint8_t> row(static_cast<size_t>(b.nWidth) * 4);
    for (int y = y0; y < y1; ++y) {
      ReadRowRgba8(b, f, y, 0, b.nWidth, row.data());
      Add(local, row.data(), static_cast<size_t>(b.nWidth));
    }
    std::lock_guard<std::mutex> lock(merge);
    for (size_t i = 0; i < local.size(); ++i)
      if (local[i].w > 0) m_cells[i] += local[i];
  });
}

ColorHistogram::ColorHistogram(const uint8_t* rgba, size_t pixels)
    : m_cells(static_cast<size_t>(kSide) * kSide * kSide) {
  Add(m_cells, rgba, pixels);
}

std::vector<ColorPoint> ColorHistogram::Points() const {
  std::vector<ColorPoint> points;
  for (const ColorMoment& c : m_cells)
    if (c.w > 0)
      points.push_back(
          ColorPoint{static_cast<float>(c.r / c.w), static_cast<float>(c.g / c.w), static_cast<float>(c.b / c.w), c.w});
  return points;
}

}  // namespace ops
}  // namespace qv
