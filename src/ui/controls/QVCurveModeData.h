/*
 * QVCURVEMODEDATA: one curve of the curve editor as its control points, the factor of the exponential and
 * logarithm modes and the mode, handed between CQVCurveCtrl and the curve dialogs. Pure data without a
 * window, so the curve dialogs' record rules and curve files use it natively too. The point buffer belongs
 * to whoever fills the structure; the editor copies from it and never keeps the pointer.
 */
#pragma once

#include <cstdint>

#include "qv/qvbase.h"

// The curve modes, numbered as the dialogs' curve files store them.
enum : uint32_t {
  QV_CURVE_MODE_POINTS = 1,       // a smooth curve through the points
  QV_CURVE_MODE_EXPONENTIAL = 2,  // one exponential curve from the first to the last value, shaped by the factor
  QV_CURVE_MODE_LOGARITHM = 3,    // the same with a logarithm; the factor is 0..100
  QV_CURVE_MODE_LINE = 4,         // straight lines between the points
};

// A curve has at least its two end points and at most this many points.
constexpr int QV_CURVE_MIN_POINTS = 2;
constexpr int QV_CURVE_MAX_POINTS = 32;

struct QVCURVEMODEDATA {
  POINT* pPoints;       // QV_CURVE_MAX_POINTS points, x strictly increasing
  int32_t nPointCount;  // 2..QV_CURVE_MAX_POINTS once taken from the editor, 0 before
  uint32_t uReserved;   // carried along, never read
  int32_t nFactor;      // exponential -100..100, logarithm 0..100
  uint32_t uMode;       // QV_CURVE_MODE_*
};
