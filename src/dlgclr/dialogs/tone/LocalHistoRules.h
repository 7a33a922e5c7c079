/*
 * The value rules of the local histogram equalization dialog, kept apart from its windows so they are tested
 * natively: the largest window the bitmap (or its region) allows, the defaults derived from it, how a caller's
 * values come in, the smoothing range, and how raising the smoothing drags the window size along (a window
 * must stay taller and wider than the smoothing span).
 */
#pragma once

#include <cstdint>

namespace qvdlg {

// Color-space values (the item data of the three list entries).
constexpr uint32_t kLheRgb = 1;
constexpr uint32_t kLheYuv = 2;
constexpr uint32_t kLheGray = 4;
constexpr int kLheNoLimit = 2147483647;
constexpr int kLheMaxSmooth = 9;

struct LheLimits {
  int maxWidth = kLheNoLimit;
  int maxHeight = kLheNoLimit;
};

// A region's bounding rectangle (right and bottom exclusive; the height may come upside down).
struct LheRect {
  int left, top, right, bottom;
};

struct LheValues {
  int width = 1;
  int height = 1;
  int xExt = 0;
  int yExt = 0;
  uint32_t colorSpace = kLheRgb;
  uint32_t smooth = 4;
};

// The limits for a bitmap of `width` by `height`. Without a region they are the full size; with one they are
// its bounding rectangle less one pixel each way (the bitmap's size less one when the rectangle is empty).
LheLimits LheLimitsFor(int width, int height, bool hasRegion, const LheRect& bounds);

// The values a dialog starts from: half the limits, no extension, smoothing 4, RGB.
LheValues LheDefaults(const LheLimits& limits);

// The caller's values over the defaults: a width below 1 becomes 1; a height becomes 1 unless it is positive
// and (compared unsigned) above the smoothing; a colour space other than YUV or gray becomes RGB; the
// extensions and the smoothing are taken as they are. The width is not held against the smoothing, and
// nothing against the limits: the combos do that when the dialog opens.
LheValues TakeLheParams(int32_t width, int32_t height, int32_t xExt, int32_t yExt, uint32_t colorSpace,
                        uint32_t smooth);

// The smoothing combo for the limits: disabled (and the smoothing 0) when the smaller limit is below 2,
// else 0 up to one less than that limit, at most kLheMaxSmooth.
struct SmoothRange {
  bool enabled;
  int maximum;
};
SmoothRange SmoothRangeFor(const LheLimits& limits);

// The smoothing changed to `smooth`. The height grows to smooth + 1 when it is not above the smoothing, and so
// does the width. The height box shows the new height, or, when the width grew, the new width: the width box
// is not written, and its new lower range end moves it instead.
struct SmoothChange {
  int width;
  int height;
  bool writeHeightBox;
  int heightBoxValue;
};
SmoothChange ApplySmoothChange(uint32_t smooth, int width, int height);

}  // namespace qvdlg
