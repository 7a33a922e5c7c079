/*
 * The color quantizer behind the optimized palettes: Wu's greedy variance-minimizing cut of the color
 * histogram into boxes, whose means seed a weighted k-means over the histogram's cell means. The cut alone
 * already lands near a local optimum in a single pass over the grid; a few k-means rounds then move each
 * entry to the mean of the colors it actually wins, which is what lowers the mapping error further.
 */
#pragma once

#include <vector>

#include "ColorHistogram.h"

namespace qv {
namespace ops {

// At most `count` entries (fewer when the histogram has fewer occupied cells): `fixed` first, unchanged,
// then the optimized ones. The fixed entries take part in the k-means assignment (so optimized entries are
// not wasted next to them) but never move. count must be at least fixed.size().
std::vector<RGBQUAD> BuildOptimizedPalette(const ColorHistogram& histogram, int count,
                                           const std::vector<RGBQUAD>& fixed);

}  // namespace ops
}  // namespace qv
