/*
 * The curve record rules (see CurveRecord.h).
 */
#include "CurveRecord.h"

#include "qv/qvkrn.h"

namespace qvdlg {
namespace {

bool InTable(int32_t v, uint32_t length) { return v >= 0 && static_cast<uint32_t>(v) < length; }

bool FactorFits(const CurveRecord& record) {
  if (record.mode == QV_CURVE_MODE_EXPONENTIAL) return record.factor >= -100 && record.factor <= 100;
  if (record.mode == QV_CURVE_MODE_LOGARITHM) return record.factor >= 0 && record.factor <= 100;
  return true;
}

}  // namespace

CurveCheck CheckCurveRecord(const CurveRecord& record, uint32_t length) {
  if (record.count < QV_CURVE_MIN_POINTS || record.count > QV_CURVE_MAX_POINTS) return CurveCheck::kBadPointCount;
  if (record.mode < QV_CURVE_MODE_POINTS || record.mode > QV_CURVE_MODE_LINE) return CurveCheck::kBadMode;
  const POINT* p = record.points.data();
  const int n = record.count;
  if (p[0].x != 0) return CurveCheck::kFirstXNotZero;
  if (length == 0 || static_cast<uint32_t>(p[n - 1].x) != length - 1) return CurveCheck::kLastXNotEnd;
  for (int i = 0; i < n; ++i) {
    if (!InTable(p[i].x, length) || !InTable(p[i].y, length)) return CurveCheck::kPointOutOfRange;
  }
  for (int i = 1; i < n; ++i) {
    if (p[i].x <= p[i - 1].x) return CurveCheck::kXNotIncreasing;
  }
  return FactorFits(record) ? CurveCheck::kValid : CurveCheck::kFactorOutOfRange;
}

void RescaleCurveRecord(CurveRecord& record, uint32_t from, uint32_t to) {
  if (from == to || from < 2 || to < 2) return;
  int kept = 0;
  for (int i = 0; i < record.count; ++i) {
    const POINT scaled{static_cast<int32_t>(RescaleCoordinate(static_cast<uint32_t>(record.points[i].x), from, to)),
                       static_cast<int32_t>(RescaleCoordinate(static_cast<uint32_t>(record.points[i].y), from, to))};
    const bool last = i == record.count - 1;
    // A point that fell onto the one before gives way, unless it is the end point: then the one before does.
    if (kept > 0 && scaled.x <= record.points[kept - 1].x) {
      if (!last) continue;
      if (kept > 1) --kept;
    }
    record.points[kept++] = scaled;
  }
  record.count = kept;
}

uint32_t CurveTableLength(bool usable, int bitsPerPixel, uint32_t order) {
  if (!usable) return 256;
  if ((bitsPerPixel == 16 && order == QV_ORDER_GRAY) || bitsPerPixel >= 48) return 65536;
  return bitsPerPixel == 12 ? 4096 : 256;
}

}  // namespace qvdlg
