/*
 * Area-averaged reduction of a bitmap region, kept in the bitmap's own sample
 * format, for the preview panes. The effect a dialog previews then runs on
 * samples of the same depth as the ones OK will process (a 16-bit gray image
 * stays 16-bit, a 48-bit one 48-bit), so the preview shows that effect and
 * not an 8-bit approximation of it. Palette images and 5-6-5 color have no
 * meaningful average of their codes; they come out as 24-bit BGR.
 *
 * Every output pixel is the exact mean of the source area it covers: with
 * source width S and output width D, source column i spans [i*D, (i+1)*D)
 * and output column j spans [j*S, (j+1)*S) on a common integer axis, so the
 * weights are integer overlaps and no fixed-point rounding accumulates. Rows
 * likewise. Output rows are split into bands computed in parallel.
 */
#pragma once

#include "qv/qvkrn.h"

namespace qvpreview {

// The format the reduction of `source` comes out in (bits per pixel).
int ReducedBitsPerPixel(const BITMAPHANDLE& source);

// Creates *out (a fresh kernel bitmap; *out is overwritten, not freed) holding
// `region` of `source` averaged down to width x height. The output may not be
// larger than the region in either direction. Returns QV_SUCCESS or an error
// code (bad region or size, unsupported format, no memory).
int ReduceRegion(const BITMAPHANDLE& source, const RECT& region, int width, int height, BITMAPHANDLE* out);

}  // namespace qvpreview
