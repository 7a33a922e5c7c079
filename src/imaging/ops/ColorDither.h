/*
 * Mapping a bitmap's pixels to palette indices, plainly or with one of the dithering methods: six
 * error-diffusion kernels run in a serpentine scan, and two screens (Bayer and clustered dot) that add a
 * position-dependent offset before the nearest entry is taken.
 */
#pragma once

#include "../PixelFormat.h"
#include "InverseColorMap.h"
#include "qv/qvkrn.h"

namespace qv {
namespace ops {

enum class DitherMethod { None, FloydSteinberg, Stucki, Burkes, Sierra, StevensonArce, Jarvis, Ordered, Clustered };

// Writes, for every pixel of src, the index of map's palette that the method chooses into dst (an indexed
// bitmap of the same size whose depth holds every index). With toGray each pixel is first replaced by its
// luminance. Reports progress through the thread's status callback: QV_SUCCESS or QV_ERROR_USER_ABORT.
int DitherToPalette(const BITMAPHANDLE& src, const PixelFormat& sf, bool toGray, const InverseColorMap& map,
                    DitherMethod method, const BITMAPHANDLE& dst, const PixelFormat& df);

}  // namespace ops
}  // namespace qv
