/*
 * Synthetic pictures the demo makes with the kernel at run time: a colour
 * chart (gray ramp and wedge, colour wheel, channel ramps) for the 24-bit
 * dialogs, and 12- and 16-bit gray gradients for the window-level dialog
 * and the deep-sample paths of the others.
 */
#pragma once

#include "OwnedBitmap.h"

namespace qvdemo {

// Kernel results; the bitmap holds the chart on QV_SUCCESS.
int MakeColorChart(OwnedBitmap& bitmap, int width = 512, int height = 384);
// A gray gradient with samples 0..(1 << bits) - 1 for bits 12 or 16.
int MakeGrayGradient(OwnedBitmap& bitmap, int bits, int width = 512, int height = 256);

}  // namespace qvdemo
