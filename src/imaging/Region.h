/*
 * The part of a bitmap an operation must touch: the whole bitmap when no region is set, else the rows of the
 * region's bounding rectangle and, per row, the runs of pixels the rectangle or mask leaves inside. Row loops
 * iterate spans instead of testing each pixel, and worker threads can share one RegionSpans.
 */
#pragma once

#include <cstdint>

#include "qv/qvkrn.h"

namespace qv {

// The rows and spans an operation must touch: the whole bitmap when no region is set, else the region's
// bounding rows and, per row, the runs of pixels inside it (rectangle or mask).
class RegionSpans {
 public:
  explicit RegionSpans(const BITMAPHANDLE& b);
  int Top() const { return m_top; }        // first row to visit
  int Bottom() const { return m_bottom; }  // one past the last row
  int Left() const { return m_left; }      // first column of the bounding rectangle
  int Right() const { return m_right; }    // one past its last column
  bool HasRegion() const { return m_hasRegion; }
  // Calls f(x0, x1) for each run [x0, x1) of pixels inside the region on row y (once with [0, width) when
  // there is no region). Cheap enough to call per row from worker threads (const, no allocation).
  template <class F>
  void ForEachSpan(int y, F&& f) const {
    if (y < m_top || y >= m_bottom) return;
    if (!m_mask) {
      if (m_left < m_right) f(m_left, m_right);
      return;
    }
    const uint8_t* row = m_mask + static_cast<size_t>(y - m_top) * m_maskStride;
    const int n = m_right - m_left;
    int i = 0;
    while (i < n) {
      while (i < n && !row[i]) ++i;
      const int start = i;
      while (i < n && row[i]) ++i;
      if (start < i) f(m_left + start, m_left + i);
    }
  }
  // True when pixel (x, y) lies inside the region (always, without one).
  bool Contains(int x, int y) const;

 private:
  int m_left = 0;
  int m_top = 0;
  int m_right = 0;
  int m_bottom = 0;
  bool m_hasRegion = false;
  const uint8_t* m_mask = nullptr;
  int m_maskStride = 0;
};

}  // namespace qv
