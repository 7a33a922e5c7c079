/*
 * Renders a rectangle of a bitmap at a destination size into 32-bit display pixels, as the viewers paint
 * it: area-averaged where the destination is smaller (every source pixel contributes by the area it covers,
 * so thin lines and checkers do not alias), nearest-neighbour where it is larger. Only the visible part of
 * the destination is computed, so a zoomed-in view of a large image costs what the window shows. Integer
 * arithmetic throughout: column and row weights are 16-bit fixed point, precomputed once per call.
 */
#pragma once

#include <cstdint>

#include "qv/qvkrn.h"

namespace qv {

struct DisplayRequest {
  RECT source;     // inside the bitmap, not empty
  int destWidth;   // > 0
  int destHeight;  // > 0
  RECT visible;    // the part of [0, destWidth) x [0, destHeight) to compute, not empty
};

// Fills out (visible width x visible height words, row after row, top-down, 0x00RRGGBB) for a checked bitmap.
// QV_ERROR_INVALID_PARAMETER when the request does not fit the bitmap; QV_ERROR_NO_MEMORY.
int RenderForDisplay(const BITMAPHANDLE& b, const DisplayRequest& request, uint32_t* out);

}  // namespace qv
