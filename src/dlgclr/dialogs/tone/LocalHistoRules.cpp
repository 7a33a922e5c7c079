/*
 * The value rules of the local histogram equalization dialog (see LocalHistoRules.h).
 */
#include "LocalHistoRules.h"

#include <algorithm>
#include <cstdlib>

namespace qvdlg {

LheLimits LheLimitsFor(int width, int height, bool hasRegion, const LheRect& bounds) {
  if (!hasRegion) return {width, height};
  const int64_t regionWidth = static_cast<int64_t>(bounds.right) - bounds.left;
  const int64_t regionHeight = std::llabs(static_cast<int64_t>(bounds.bottom) - bounds.top);
  if (regionWidth <= 0 || regionHeight == 0) return {width - 1, height - 1};
  return {static_cast<int>(regionWidth - 1), static_cast<int>(regionHeight - 1)};
}

LheValues LheDefaults(const LheLimits& limits) {
  LheValues values;
  values.width = limits.maxWidth / 2;
  values.height = limits.maxHeight / 2;
  return values;
}

LheValues TakeLheParams(int32_t width, int32_t height, int32_t xExt, int32_t yExt, uint32_t colorSpace,
                        uint32_t smooth) {
  LheValues values;
  values.width = width > 0 ? width : 1;
  values.height = height > 0 && static_cast<uint32_t>(height) > smooth ? height : 1;
  values.xExt = xExt;
  values.yExt = yExt;
  values.colorSpace = colorSpace == kLheYuv || colorSpace == kLheGray ? colorSpace : kLheRgb;
  values.smooth = smooth;
  return values;
}

SmoothRange SmoothRangeFor(const LheLimits& limits) {
  const int smaller = std::min(limits.maxWidth, limits.maxHeight);
  if (smaller < 2) return {false, 0};
  return {true, std::min(smaller - 1, kLheMaxSmooth)};
}

SmoothChange ApplySmoothChange(uint32_t smooth, int width, int height) {
  SmoothChange change{width, height, false, 0};
  const int64_t grown = std::min<int64_t>(static_cast<int64_t>(smooth) + 1, kLheNoLimit);
  if (static_cast<int64_t>(height) <= static_cast<int64_t>(smooth)) {
    change.height = static_cast<int>(grown);
    change.writeHeightBox = true;
    change.heightBoxValue = change.height;
  }
  if (static_cast<int64_t>(width) <= static_cast<int64_t>(smooth)) {
    change.width = static_cast<int>(grown);
    change.writeHeightBox = true;
    change.heightBoxValue = change.width;
  }
  return change;
}

}  // namespace qvdlg
