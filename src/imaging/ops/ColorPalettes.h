/*
 * The palettes the color reduction offers without looking at the image: gray ramps, the fixed palette of
 * each depth, the Windows system and VGA colors, and the web-safe cube.
 */
#pragma once

#include <vector>

#include "qv/qvkrn.h"

namespace qv {
namespace ops {

// n evenly spaced grays from black to white (n >= 2).
std::vector<RGBQUAD> GrayRamp(int n);
// The fixed palette of a depth of 1 to 8 bits (see Q_ColorResBitmap for what each depth holds).
std::vector<RGBQUAD> FixedPalette(int bitsPerPixel);
// The 16 VGA colors in their Windows order (black, maroon, ..., aqua, white).
std::vector<RGBQUAD> VgaColors();
// The 20 static colors of the Windows system palette: the ten at its start, then the ten at its end.
std::vector<RGBQUAD> SystemColors();
constexpr int kSystemColorsAtStart = 10;
// The 216-color web-safe cube, red slowest: index 36 r + 6 g + b for levels 0, 51, ..., 255.
std::vector<RGBQUAD> WebSafeColors();

}  // namespace ops
}  // namespace qv
