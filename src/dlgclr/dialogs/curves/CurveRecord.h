/*
 * A channel's curve as both curve dialogs keep it, and the rules on it that need no window: which records
 * are valid for a table length, how a record moves between table lengths, and which table length a bitmap
 * gets. The dialogs hand a record to the curve editor through ModeData().
 */
#pragma once

#include <array>
#include <cstdint>

#include "QVCurveModeData.h"

namespace qvdlg {

struct CurveRecord {
  std::array<POINT, QV_CURVE_MAX_POINTS> points{};
  int32_t count = 0;
  int32_t factor = 1;
  uint32_t mode = QV_CURVE_MODE_POINTS;

  // The editor's view of this record; its point pointer is valid while the record is neither moved nor gone.
  QVCURVEMODEDATA ModeData() { return {points.data(), count, 0, factor, mode}; }
};

// Why a record is not valid for a table, in the order the checks run.
enum class CurveCheck {
  kValid,
  kBadPointCount,  // fewer than 2 or more than 32 points
  kBadMode,        // not one of the four modes
  kFirstXNotZero,
  kLastXNotEnd,       // the last point's x is not length - 1
  kPointOutOfRange,   // an x or y outside 0..length - 1
  kXNotIncreasing,    // two points share an x or come in the wrong order
  kFactorOutOfRange,  // exponential outside -100..100, logarithm outside 0..100; other modes ignore the factor
};

// An unknown mode and points out of order are refused as well as the rest: the editor can make neither, and
// the table builders refuse points out of order, so such a record could only ever show a broken curve.
CurveCheck CheckCurveRecord(const CurveRecord& record, uint32_t length);

// 256, 4096 or 65536.
constexpr bool IsCurveTableLength(uint32_t length) { return length == 256 || length == 4096 || length == 65536; }

// x * (to - 1) / (from - 1), truncating, in unsigned 32-bit arithmetic: both factors are at most 65535, so
// the product stays below 2^32. 256 to 65536 multiplies by exactly 257.
constexpr uint32_t RescaleCoordinate(uint32_t value, uint32_t from, uint32_t to) {
  return value * (to - 1) / (from - 1);
}

// Rescales every point of a valid record from one table length to another. Going down, neighbouring points
// can land on one x; then only the first of them is kept (the end points always stay), so the record stays
// valid for the new length and a table can be built from it.
void RescaleCurveRecord(CurveRecord& record, uint32_t from, uint32_t to);

// The table length for the dialog's bitmap: 65536 for 16-bit gray and for 48 bits per pixel and more, 4096
// for 12 bits, 256 for everything else, a 16-bit colour bitmap included. `usable` is false when there is no
// readable, allocated bitmap, which gives 256.
uint32_t CurveTableLength(bool usable, int bitsPerPixel, uint32_t order);

}  // namespace qvdlg
