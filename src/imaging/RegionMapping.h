/*
 * A region carried onto a reduced (or cropped) copy of part of its bitmap, so an effect run on the copy
 * changes the pixels OK will change and no others. A copy pixel is inside when the source pixel under its
 * centre is inside. That rule treats rows and columns separately, so a rectangle region comes out as a
 * rectangle of the reduced grid, and at one copy pixel per source pixel it is the region itself.
 */
#pragma once

#include "qv/qvkrn.h"

namespace qv {

// Sets on `copy` (fresh, without a region, holding `area` of the checked bitmap `src` at copy->nWidth x
// copy->nHeight, no larger than the area) the region of src mapped by the centre rule. Nothing is set when
// src has no region or when no copy pixel's centre falls inside it: compare Q_BitmapHasRgn of the two to
// tell "everything may change" from "nothing may change". QV_SUCCESS or QV_ERROR_NO_MEMORY.
int MapRegionOnto(const BITMAPHANDLE& src, const RECT& area, BITMAPHANDLE* copy);

}  // namespace qv
