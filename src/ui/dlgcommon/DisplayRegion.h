/*
 * The region of a display source: the caller's region carried over to a
 * reduced (or cropped) copy of part of its bitmap, so an effect run on that
 * copy changes the same pixels OK will change. A display pixel is inside
 * when the source pixel under its centre is inside. That rule treats rows
 * and columns separately, so a rectangle region comes out as a rectangle of
 * the reduced grid, and at one display pixel per source pixel it is the
 * region itself.
 */
#pragma once

#include "qv/qvkrn.h"

namespace qvpreview {

enum class RegionCover {
  kWhole,  // no region: every pixel may change
  kPart,   // the display bitmap now has the mapped region
  kNone,   // the region misses the display bitmap: no pixel may change
};

// Sets on `display` (holding `area` of `source` at display->nWidth x
// display->nHeight) the region of `source` mapped by the centre rule.
// *cover says what came out. Returns QV_SUCCESS or an error code; on an
// error `display` keeps no region.
int MapRegion(const BITMAPHANDLE& source, const RECT& area, BITMAPHANDLE* display, RegionCover* cover);

}  // namespace qvpreview
