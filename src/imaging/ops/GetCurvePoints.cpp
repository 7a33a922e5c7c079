/*
 * The curve-through-points table builder of the curve dialogs: a monotone cubic Hermite curve (tangents by
 * Fritsch and Carlson) through every control point, so the curve never overshoots between two points, held
 * constant before the first point and after the last. Everything is checked before the table is written.
 */
#include <cmath>
#include <vector>

#include "AddressCheck.h"
#include "ExportGuard.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {
namespace {

std::vector<double> MonotoneTangents(const POINT* pts, int n) {
  std::vector<double> secant(n > 1 ? n - 1 : 0);
  for (int i = 0; i + 1 < n; ++i)
    secant[i] = static_cast<double>(pts[i + 1].y - pts[i].y) / static_cast<double>(pts[i + 1].x - pts[i].x);
  std::vector<double> m(n, 0.0);
  if (n < 2) return m;
  m[0] = secant[0];
  m[n - 1] = secant[n - 2];
  for (int i = 1; i + 1 < n; ++i) m[i] = secant[i - 1] * secant[i] <= 0 ? 0.0 : (secant[i - 1] + secant[i]) / 2;
  for (int i = 0; i + 1 < n; ++i) {
    if (secant[i] == 0) {
      m[i] = m[i + 1] = 0;
      continue;
    }
    const double a = m[i] / secant[i], b = m[i + 1] / secant[i];
    const double s = a * a + b * b;
    if (s > 9) {
      const double tau = 3 / std::sqrt(s);
      m[i] = tau * a * secant[i];
      m[i + 1] = tau * b * secant[i];
    }
  }
  return m;
}

unsigned int Rounded(double v, unsigned int last) {
  const double r = std::floor(v + 0.5);
  if (r <= 0) return 0;
  return r >= last ? last : static_cast<unsigned int>(r);
}

void FillCurve(unsigned int* table, unsigned int length, const POINT* pts, int n) {
  const std::vector<double> m = MonotoneTangents(pts, n);
  const unsigned int last = length - 1;
  for (int x = 0; x <= pts[0].x; ++x) table[x] = static_cast<unsigned int>(pts[0].y);
  for (unsigned int x = static_cast<unsigned int>(pts[n - 1].x); x < length; ++x)
    table[x] = static_cast<unsigned int>(pts[n - 1].y);
  for (int i = 0; i + 1 < n; ++i) {
    const double x0 = pts[i].x, x1 = pts[i + 1].x, y0 = pts[i].y, y1 = pts[i + 1].y;
    const double h = x1 - x0;
    for (int x = pts[i].x; x <= pts[i + 1].x; ++x) {
      const double t = (x - x0) / h, t2 = t * t, t3 = t2 * t;
      const double v = (2 * t3 - 3 * t2 + 1) * y0 + (t3 - 2 * t2 + t) * h * m[i] + (-2 * t3 + 3 * t2) * y1 +
                       (t3 - t2) * h * m[i + 1];
      table[x] = Rounded(v, last);
    }
  }
}

int CheckPoints(const POINT* pts, int n, unsigned int length) {
  if (n < 1 || static_cast<unsigned int>(n) > length) return QV_ERROR_INVALID_PARAMETER;
  if (!IsValidAddress(pts, static_cast<size_t>(n) * sizeof(POINT), Access::Read)) return QV_ERROR_INVALID_PARAMETER;
  const int64_t last = length - 1;
  for (int i = 0; i < n; ++i) {
    if (pts[i].x < 0 || pts[i].x > last || pts[i].y < 0 || pts[i].y > last) return QV_ERROR_INVALID_PARAMETER;
    if (i > 0 && pts[i].x <= pts[i - 1].x) return QV_ERROR_INVALID_PARAMETER;
  }
  return QV_SUCCESS;
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_GetCurvePoints(unsigned int* pTable, unsigned int uLength, const POINT* pPoints, int nCount,
                                unsigned int* puFilled, unsigned int uFlags) {
  using namespace qv::ops;
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = qv::CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    rc = CheckCurveTable(pTable, uLength);
    if (rc != QV_SUCCESS) return rc;
    rc = CheckPoints(pPoints, nCount, uLength);
    if (rc != QV_SUCCESS) return rc;
    if (puFilled && !qv::IsValidAddress(puFilled, sizeof(unsigned int), qv::Access::Write))
      return QV_ERROR_INVALID_PARAMETER;
    FillCurve(pTable, uLength, pPoints, nCount);
    if (puFilled) *puFilled = uLength;
    return QV_SUCCESS;
  });
}
