/*
 * Fills a window-level LUT: each entry stands for one source value; values below the window and above it
 * take the ramp kind's end colors, values inside run along the chosen curve from one end to the other. The
 * window is either [low, high] itself or the DICOM VOI linear function of its center and width.
 */
#include <cmath>

#include "AddressCheck.h"
#include "ExportGuard.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {
namespace {

constexpr unsigned int kAllowed = QV_WLFILL_RAMP_MASK | QV_WLFILL_CURVE_MASK | QV_WLFILL_SIGNED | QV_WLFILL_DICOM;

double Logistic(double x) { return 1.0 / (1.0 + std::exp(-x)); }

// The curve on t in [0, 1], from 0 to 1.
double Curve(unsigned int curve, double k, double t) {
  if (k == 0 || curve == QV_WLFILL_LINEAR) return t;
  switch (curve) {
    case QV_WLFILL_EXPONENTIAL: return std::expm1(k * t) / std::expm1(k);
    case QV_WLFILL_LOGARITHMIC: return std::log1p(k * t) / std::log1p(k);
    default: {
      const double s = 2 * std::fabs(k);
      const double lo = Logistic(-s / 2), hi = Logistic(s / 2);
      if (k > 0) return (Logistic(s * (t - 0.5)) - lo) / (hi - lo);
      const double u = lo + t * (hi - lo);
      return 0.5 + std::log(u / (1 - u)) / s;
    }
  }
}

// Where value v lies against the window: -1 below, +1 above, 0 inside with *t in [0, 1].
class Window {
 public:
  Window(int low, int high, bool dicom) : m_low(low), m_high(high), m_dicom(dicom) {
    m_center = (static_cast<int64_t>(low) + high) / 2;
    m_width = static_cast<int64_t>(high) - low;
    if (m_width < 1) m_width = 1;
  }

  int Place(int64_t v, double* t) const {
    if (m_dicom) {
      const double c = m_center - 0.5, half = (m_width - 1) / 2.0;
      if (v <= c - half) return -1;
      if (v > c + half) return 1;
      *t = (v - c) / static_cast<double>(m_width - 1) + 0.5;
      *t = *t < 0 ? 0 : (*t > 1 ? 1 : *t);
      return 0;
    }
    if (v < m_low) return -1;
    if (v > m_high) return 1;
    *t = m_high == m_low ? 1.0 : static_cast<double>(v - m_low) / (static_cast<double>(m_high) - m_low);
    return 0;
  }

 private:
  int64_t m_low, m_high;
  bool m_dicom;
  int64_t m_center = 0;
  int64_t m_width = 1;
};

uint8_t Mix(uint32_t a, uint32_t b, double g) {
  const double v = std::floor(a + (static_cast<double>(b) - a) * g + 0.5);
  return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
}

RGBQUAD Quad(uint32_t r, uint32_t g, uint32_t b) {
  RGBQUAD q;
  q.rgbRed = static_cast<uint8_t>(r);
  q.rgbGreen = static_cast<uint8_t>(g);
  q.rgbBlue = static_cast<uint8_t>(b);
  q.rgbReserved = 0;
  return q;
}

RGBQUAD Quad(COLORREF c) { return Quad(RedOf(c), GreenOf(c), BlueOf(c)); }

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_WindowLevelFillLUT(RGBQUAD* pLUT, unsigned int uLength, COLORREF crStart, COLORREF crEnd, int nLow,
                                    int nHigh, int nLowBit, int nHighBit, int nMinValue, int nMaxValue, int nFactor,
                                    unsigned int uFlags) {
  using namespace qv::ops;
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = qv::CheckFlags(uFlags, kAllowed);
    if (rc != QV_SUCCESS) return rc;
    const unsigned int ramp = uFlags & QV_WLFILL_RAMP_MASK, curve = uFlags & QV_WLFILL_CURVE_MASK;
    if ((ramp != QV_WLFILL_COLOR_RAMP && ramp != QV_WLFILL_GRAY_RAMP) || curve < QV_WLFILL_LINEAR ||
        curve > QV_WLFILL_SIGMOID)
      return QV_ERROR_INVALID_FLAGS;
    if (uLength < 1 || uLength > QV_MAX_TABLE_LENGTH ||
        !qv::IsValidAddress(pLUT, static_cast<size_t>(uLength) * sizeof(RGBQUAD), qv::Access::Write))
      return QV_ERROR_INVALID_TABLE;
    if (nLow > nHigh || nMinValue > nMaxValue || nFactor < -1000 || nFactor > 1000 ||
        (curve == QV_WLFILL_LOGARITHMIC && nFactor < 0))
      return QV_ERROR_INVALID_PARAMETER;
    const bool isSigned = (uFlags & QV_WLFILL_SIGNED) != 0;
    const Window window(nLow, nHigh, (uFlags & QV_WLFILL_DICOM) != 0);
    const double k = nFactor / 100.0;
    const RGBQUAD below = ramp == QV_WLFILL_COLOR_RAMP ? Quad(0, 0, 0) : Quad(crStart);
    const RGBQUAD above = ramp == QV_WLFILL_COLOR_RAMP ? Quad(255, 255, 255) : Quad(crEnd);
    for (uint32_t i = 0; i < uLength; ++i) {
      const int64_t v = isSigned && i >= uLength / 2 ? static_cast<int64_t>(i) - uLength : i;
      double t = 0;
      const int place = window.Place(v, &t);
      if (place < 0) {
        pLUT[i] = below;
      } else if (place > 0) {
        pLUT[i] = above;
      } else {
        const double g = Curve(curve, k, t);
        if (ramp == QV_WLFILL_COLOR_RAMP) {
          pLUT[i] = Quad(Mix(RedOf(crStart), RedOf(crEnd), g), Mix(GreenOf(crStart), GreenOf(crEnd), g),
                         Mix(BlueOf(crStart), BlueOf(crEnd), g));
        } else {
          const uint8_t y = Mix(0, 255, g);
          pLUT[i] = Quad(y, y, y);
        }
      }
    }
    return QV_SUCCESS;
  });
}
