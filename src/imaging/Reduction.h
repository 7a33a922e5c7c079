/*
 * Area-averaged reduction of a bitmap region in the bitmap's own sample format, for previews: an effect run
 * on the reduction sees samples of the depth OK will process (16-bit gray stays 16-bit, signed stays signed,
 * 48-bit stays 48-bit), not an 8-bit display approximation. Palette images and 5-6-5 colour have no
 * meaningful average of their codes; they come out as 24-bit BGR.
 *
 * Every output sample is the exact mean of the source area it covers, rounded half up: with source width S
 * and output width D, source column i spans [i*D, (i+1)*D) and output column j spans [j*S, (j+1)*S) on one
 * integer axis, so the weights are integer overlaps and nothing accumulates rounding. Rows likewise.
 */
#pragma once

#include "qv/qvkrn.h"

namespace qv {

// The bits per pixel the reduction of b comes out in.
int ReducedBitsPerPixel(const BITMAPHANDLE& b);

// A new bitmap in *out (overwritten without being freed) holding `region` of the checked bitmap `src`
// averaged to width x height. The region must lie inside src and the output may not be larger than the
// region either way (QV_ERROR_INVALID_PARAMETER otherwise). Kept formats keep their order, signedness,
// significant bits and window-level LUT; src's region, if any, is carried over by the centre rule of
// MapRegionOnto. Accumulators are sized per row band (a few output rows), never per output sample, so a
// reduction to full size needs about the output plus a few rows. Progress and abort through the status
// callback; QV_ERROR_NO_MEMORY when a band's buffers cannot be had. *out is untouched on an error.
int ReduceBitmapRegion(const BITMAPHANDLE& src, const RECT& region, int width, int height, BITMAPHANDLE* out);

}  // namespace qv
