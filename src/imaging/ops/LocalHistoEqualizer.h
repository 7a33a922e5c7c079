/*
 * Local histogram equalization over tiles: each tile's values are mapped by the histogram of its extended
 * window, and tiles blend their mappings near their seams. The maths, the sliding window and the memory
 * plan are described in LocalHistoEqualizer.cpp; the export and its argument checks are in
 * LocalHistoEqualizeBitmap.cpp.
 */
#pragma once

#include "OpsCommon.h"

namespace qv {
namespace ops {

struct LocalHistoParams {
  int width;  // tile size, >= 1
  int height;
  int xExt;  // the histogram window grows by these on each side, >= 0
  int yExt;
  unsigned colorSpace;  // QV_LHE_RGB, QV_LHE_YUV or QV_LHE_GRAY
  unsigned smooth;      // 0..QV_LHE_MAX_SMOOTH
};

// The bitmap has passed BeginOperation and the parameters their checks.
int LocalHistoEqualize(BITMAPHANDLE& b, const PixelFormat& f, const LocalHistoParams& p);

}  // namespace ops
}  // namespace qv
