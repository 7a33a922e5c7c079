/*
 * Mapping a region onto a coarser grid: one table of source columns and one of source rows (the pixel under
 * each copy pixel's centre). A rectangle maps to the rectangle of table entries inside it, without a mask;
 * a mask is tested per copy pixel within that rectangle and handed on trimmed to the inside pixels' bounds.
 */
#include "RegionMapping.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "Region.h"

namespace qv {
namespace {

// For each of `dst` copy indices, the source index (from `origin`, over `src` source pixels) under its
// centre: copy j spans [j*src, (j+1)*src) and source i spans [i*dst, (i+1)*dst) on one integer axis, so the
// centre of j is at (2j+1)*src/2.
std::vector<int> CentreTable(int origin, int src, int dst) {
  std::vector<int> table(static_cast<size_t>(dst));
  for (int j = 0; j < dst; ++j)
    table[static_cast<size_t>(j)] = origin + static_cast<int>((int64_t{2} * j + 1) * src / (int64_t{2} * dst));
  return table;
}

// The first copy index whose source index is at least `value` (the table rises, so the indices inside a
// source range [lo, hi) run from Bound(lo) to Bound(hi)).
int32_t Bound(const std::vector<int>& table, int value) {
  return static_cast<int32_t>(std::lower_bound(table.begin(), table.end(), value) - table.begin());
}

}  // namespace

int MapRegionOnto(const BITMAPHANDLE& src, const RECT& area, BITMAPHANDLE* copy) {
  if (!(src.uRgnFlags & QV_RGN_SET)) return QV_SUCCESS;
  const std::vector<int> columns = CentreTable(area.left, area.right - area.left, copy->nWidth);
  const std::vector<int> rows = CentreTable(area.top, area.bottom - area.top, copy->nHeight);
  const RECT box{Bound(columns, src.rcRgn.left), Bound(rows, src.rcRgn.top), Bound(columns, src.rcRgn.right),
                 Bound(rows, src.rcRgn.bottom)};
  if (box.left >= box.right || box.top >= box.bottom) return QV_SUCCESS;
  if (!src.pRgnMask) {
    copy->rcRgn = box;
    copy->uRgnFlags = QV_RGN_SET;
    return QV_SUCCESS;
  }
  const RegionSpans region(src);
  auto inside = [&](int x, int y) {
    return region.Contains(columns[static_cast<size_t>(x)], rows[static_cast<size_t>(y)]);
  };
  RECT bounds{box.right, box.bottom, box.left, box.top};
  for (int y = box.top; y < box.bottom; ++y)
    for (int x = box.left; x < box.right; ++x) {
      if (!inside(x, y)) continue;
      bounds.left = std::min<int32_t>(bounds.left, x);
      bounds.right = std::max<int32_t>(bounds.right, x + 1);
      bounds.top = std::min<int32_t>(bounds.top, y);
      bounds.bottom = std::max<int32_t>(bounds.bottom, y + 1);
    }
  if (bounds.left >= bounds.right) return QV_SUCCESS;
  const int stride = bounds.right - bounds.left;
  uint8_t* mask = AllocatePixels(static_cast<size_t>(stride) * static_cast<size_t>(bounds.bottom - bounds.top));
  if (!mask) return QV_ERROR_NO_MEMORY;
  for (int y = bounds.top; y < bounds.bottom; ++y)
    for (int x = bounds.left; x < bounds.right; ++x)
      mask[static_cast<size_t>(y - bounds.top) * stride + (x - bounds.left)] = inside(x, y) ? 1 : 0;
  copy->rcRgn = bounds;
  copy->pRgnMask = mask;
  copy->nRgnMaskStride = stride;
  copy->uRgnFlags = QV_RGN_SET;
  return QV_SUCCESS;
}

}  // namespace qv
