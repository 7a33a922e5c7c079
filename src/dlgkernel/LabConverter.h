/*
 * sRGB to and from CIE L*a*b* relative to D50, the way ICC color management
 * computes it: the sRGB tone curve, the sRGB primaries with a D65 white
 * adapted to D50 by the Bradford transform, then the CIE Lab formulas.
 */
#pragma once

#include "qv/qvdlgkrn.h"

namespace qv {

struct LabValue {
  double L, a, b;
};

class LabConverter {
 public:
  static const LabConverter& Instance();

  // Exact values, for the rounding of the records and for tests.
  LabValue ToLab(double r, double g, double b) const;                        // r, g, b in 0..1
  void FromLab(const LabValue& lab, double& r, double& g, double& b) const;  // unclipped

  QVLAB ToLab(const QVRGB& c) const;
  QVRGB FromLab(const QVLAB& c) const;

 private:
  LabConverter();

  double m_toXyz[3][3];
  double m_fromXyz[3][3];
};

}  // namespace qv
