/*
 * Mapping a region onto a display grid: one table of source columns and one
 * of source rows (the pixel under each display pixel's centre), then a mask
 * test per display pixel. The mask handed to the kernel is trimmed to the
 * inside pixels' bounds, which the kernel wants non-empty.
 */
#include "DisplayRegion.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <vector>

namespace qvpreview {
namespace {

// For each of `dst` display indices, the source index (from `origin`, over
// `src` source pixels) under its centre: display j spans [j*src, (j+1)*src)
// and source i spans [i*dst, (i+1)*dst) on one integer axis; the centre of j
// is at (2j+1)*src/2.
std::vector<int> CentreTable(int origin, int src, int dst) {
  std::vector<int> table(static_cast<size_t>(dst));
  for (int j = 0; j < dst; ++j)
    table[static_cast<size_t>(j)] = origin + static_cast<int>((int64_t(2 * j + 1) * src) / (int64_t(2) * dst));
  return table;
}

class RegionReader {
 public:
  explicit RegionReader(const BITMAPHANDLE& b) : m_b(b) {}
  bool Inside(int x, int y) const {
    const RECT& r = m_b.rcRgn;
    if (x < r.left || x >= r.right || y < r.top || y >= r.bottom) return false;
    if (!m_b.pRgnMask) return true;
    return m_b.pRgnMask[size_t(y - r.top) * size_t(m_b.nRgnMaskStride) + size_t(x - r.left)] != 0;
  }

 private:
  const BITMAPHANDLE& m_b;
};

}  // namespace

int MapRegion(const BITMAPHANDLE& source, const RECT& area, BITMAPHANDLE* display, RegionCover* cover) {
  if (!display || !cover) return QV_ERROR_INVALID_PARAMETER;
  *cover = RegionCover::kWhole;
  Q_FreeBitmapRgn(display, 0);
  if (Q_BitmapHasRgn(&source, 0) != 1) return QV_SUCCESS;
  const int width = display->nWidth;
  const int height = display->nHeight;
  const int areaWidth = area.right - area.left;
  const int areaHeight = area.bottom - area.top;
  if (width <= 0 || height <= 0 || areaWidth < width || areaHeight < height || area.left < 0 || area.top < 0 ||
      area.right > source.nWidth || area.bottom > source.nHeight)
    return QV_ERROR_INVALID_PARAMETER;
  try {
    const std::vector<int> columns = CentreTable(area.left, areaWidth, width);
    const std::vector<int> rows = CentreTable(area.top, areaHeight, height);
    std::vector<uint8_t> mask(size_t(width) * size_t(height), 0);
    const RegionReader region(source);
    RECT bounds{width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
      uint8_t* row = mask.data() + size_t(y) * size_t(width);
      for (int x = 0; x < width; ++x) {
        if (!region.Inside(columns[size_t(x)], rows[size_t(y)])) continue;
        row[x] = 1;
        bounds.left = std::min<LONG>(bounds.left, x);
        bounds.right = std::max<LONG>(bounds.right, x + 1);
        bounds.top = std::min<LONG>(bounds.top, y);
        bounds.bottom = std::max<LONG>(bounds.bottom, y + 1);
      }
    }
    if (bounds.right <= bounds.left) {
      *cover = RegionCover::kNone;
      return QV_SUCCESS;
    }
    const uint8_t* first = mask.data() + size_t(bounds.top) * size_t(width) + size_t(bounds.left);
    const int rc = Q_SetBitmapRgnMask(display, &bounds, first, width, 0);
    if (rc != QV_SUCCESS) return rc;
    *cover = RegionCover::kPart;
    return QV_SUCCESS;
  } catch (const std::bad_alloc&) {
    return QV_ERROR_NO_MEMORY;
  }
}

}  // namespace qvpreview
