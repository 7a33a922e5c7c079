/*
 * The functional table builder of the curve dialogs: the entries strictly between two indices follow an
 * exponential, logarithmic or linear curve from the value already at the first index to the value at the
 * second. The two end entries are read, never written.
 */
#include <cmath>

#include "AddressCheck.h"
#include "ExportGuard.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {
namespace {

// The shape on t in [0, 1], from 0 to 1.
double Shape(unsigned int kind, double k, double t) {
  if (k == 0 || kind == QV_FUNCTIONAL_LINEAR) return t;
  if (kind == QV_FUNCTIONAL_EXPONENTIAL) return std::expm1(k * t) / std::expm1(k);
  return std::log1p(k * t) / std::log1p(k);
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_GetFunctionalLookupTable(unsigned int* pTable, unsigned int uLength, int nStart, int nEnd, int nFactor,
                                          unsigned int uKind, unsigned int uFlags) {
  using namespace qv::ops;
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = qv::CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    rc = CheckCurveTable(pTable, uLength);
    if (rc != QV_SUCCESS) return rc;
    const int64_t last = uLength - 1;
    if (nStart < 0 || nStart > last || nEnd < 0 || nEnd > last || uKind > QV_FUNCTIONAL_LINEAR || nFactor < -1000 ||
        nFactor > 1000 || (uKind == QV_FUNCTIONAL_LOGARITHM && nFactor < 0))
      return QV_ERROR_INVALID_PARAMETER;
    const double a = pTable[nStart], b = pTable[nEnd];
    const double lo = a < b ? a : b, hi = a < b ? b : a;
    const double k = nFactor / 10.0;
    const int step = nEnd > nStart ? 1 : -1;
    for (int i = nStart + step; i != nEnd && nStart != nEnd; i += step) {
      const double t = static_cast<double>(i - nStart) / (nEnd - nStart);
      double v = std::floor(a + (b - a) * Shape(uKind, k, t) + 0.5);
      v = v < lo ? lo : (v > hi ? hi : v);
      pTable[i] = static_cast<unsigned int>(v);
    }
    return QV_SUCCESS;
  });
}
