/*
 * The sRGB <-> Lab (D50) transform. The RGB-to-XYZ matrix is derived from the
 * sRGB primaries and the D65 white point of the daylight locus at 6504 K, then
 * chromatically adapted to the D50 connection white with Bradford, which is
 * how ICC sRGB profiles are built. Built once; the conversions are pure.
 */
#include "LabConverter.h"

#include <algorithm>
#include <cmath>

namespace qv {
namespace {

using Matrix = double[3][3];

constexpr double kD50X = 0.9642, kD50Y = 1.0, kD50Z = 0.8249;
constexpr double kLabEpsilon = 216.0 / 24389.0;   // (6/29)^3
constexpr double kLabKappaSlope = 841.0 / 108.0;  // (29/6)^2 / 3

void Multiply(const Matrix a, const Matrix b, Matrix out) {
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) out[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
}

void Invert(const Matrix m, Matrix out) {
  const double det = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                     m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                     m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
  out[0][0] = (m[1][1] * m[2][2] - m[1][2] * m[2][1]) / det;
  out[0][1] = (m[0][2] * m[2][1] - m[0][1] * m[2][2]) / det;
  out[0][2] = (m[0][1] * m[1][2] - m[0][2] * m[1][1]) / det;
  out[1][0] = (m[1][2] * m[2][0] - m[1][0] * m[2][2]) / det;
  out[1][1] = (m[0][0] * m[2][2] - m[0][2] * m[2][0]) / det;
  out[1][2] = (m[0][2] * m[1][0] - m[0][0] * m[1][2]) / det;
  out[2][0] = (m[1][0] * m[2][1] - m[1][1] * m[2][0]) / det;
  out[2][1] = (m[0][1] * m[2][0] - m[0][0] * m[2][1]) / det;
  out[2][2] = (m[0][0] * m[1][1] - m[0][1] * m[1][0]) / det;
}

void Apply(const Matrix m, const double in[3], double out[3]) {
  for (int i = 0; i < 3; ++i) out[i] = m[i][0] * in[0] + m[i][1] * in[1] + m[i][2] * in[2];
}

// White point of the CIE daylight locus at a correlated color temperature (4000 K..7000 K).
void DaylightWhite(double kelvin, double xyz[3]) {
  const double t = kelvin, t2 = t * t, t3 = t2 * t;
  const double x = -4.6070e9 / t3 + 2.9678e6 / t2 + 0.09911e3 / t + 0.244063;
  const double y = -3.000 * x * x + 2.870 * x - 0.275;
  xyz[0] = x / y;
  xyz[1] = 1.0;
  xyz[2] = (1.0 - x - y) / y;
}

// Bradford adaptation from a source white to a destination white.
void BradfordAdaptation(const double srcWhite[3], const double dstWhite[3], Matrix out) {
  const Matrix bradford = {{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}};
  Matrix inverse;
  Invert(bradford, inverse);
  double srcCone[3], dstCone[3];
  Apply(bradford, srcWhite, srcCone);
  Apply(bradford, dstWhite, dstCone);
  const Matrix scale = {{dstCone[0] / srcCone[0], 0, 0},
                        {0, dstCone[1] / srcCone[1], 0},
                        {0, 0, dstCone[2] / srcCone[2]}};
  Matrix tmp;
  Multiply(scale, bradford, tmp);
  Multiply(inverse, tmp, out);
}

double DecodeSrgb(double v) { return v >= 0.04045 ? std::pow((v + 0.055) / 1.055, 2.4) : v / 12.92; }

double EncodeSrgb(double v) { return v > 0.0031308 ? 1.055 * std::pow(v, 1.0 / 2.4) - 0.055 : v * 12.92; }

double LabF(double t) { return t > kLabEpsilon ? std::cbrt(t) : kLabKappaSlope * t + 16.0 / 116.0; }

double LabFInverse(double f) {
  const double cube = f * f * f;
  return cube > kLabEpsilon ? cube : (f - 16.0 / 116.0) / kLabKappaSlope;
}

int RoundClamp(double v, int lo, int hi) { return std::clamp(static_cast<int>(std::lround(v)), lo, hi); }

}  // namespace

const LabConverter& LabConverter::Instance() {
  static const LabConverter converter;
  return converter;
}

LabConverter::LabConverter() {
  // Columns of the primaries in XYZ, scaled so that RGB = 1 gives the D65 white.
  const double primaries[3][2] = {{0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}};
  double d65[3];
  DaylightWhite(6504.0, d65);
  Matrix primaryXyz;
  for (int c = 0; c < 3; ++c) {
    const double x = primaries[c][0], y = primaries[c][1];
    primaryXyz[0][c] = x / y;
    primaryXyz[1][c] = 1.0;
    primaryXyz[2][c] = (1.0 - x - y) / y;
  }
  Matrix inversePrimaries;
  Invert(primaryXyz, inversePrimaries);
  double weights[3];
  Apply(inversePrimaries, d65, weights);
  Matrix rgbToXyzD65;
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) rgbToXyzD65[r][c] = primaryXyz[r][c] * weights[c];
  const double d50[3] = {kD50X, kD50Y, kD50Z};
  Matrix adaptation;
  BradfordAdaptation(d65, d50, adaptation);
  Multiply(adaptation, rgbToXyzD65, m_toXyz);
  Invert(m_toXyz, m_fromXyz);
}

LabValue LabConverter::ToLab(double r, double g, double b) const {
  const double linear[3] = {DecodeSrgb(r), DecodeSrgb(g), DecodeSrgb(b)};
  double xyz[3];
  Apply(m_toXyz, linear, xyz);
  const double fx = LabF(xyz[0] / kD50X), fy = LabF(xyz[1] / kD50Y), fz = LabF(xyz[2] / kD50Z);
  return LabValue{116.0 * fy - 16.0, 500.0 * (fx - fy), 200.0 * (fy - fz)};
}

void LabConverter::FromLab(const LabValue& lab, double& r, double& g, double& b) const {
  const double fy = (lab.L + 16.0) / 116.0;
  const double fx = fy + lab.a / 500.0;
  const double fz = fy - lab.b / 200.0;
  const double xyz[3] = {LabFInverse(fx) * kD50X, LabFInverse(fy) * kD50Y, LabFInverse(fz) * kD50Z};
  double linear[3];
  Apply(m_fromXyz, xyz, linear);
  r = EncodeSrgb(linear[0]);
  g = EncodeSrgb(linear[1]);
  b = EncodeSrgb(linear[2]);
}

QVLAB LabConverter::ToLab(const QVRGB& c) const {
  const LabValue lab = ToLab(c.nRed / 255.0, c.nGreen / 255.0, c.nBlue / 255.0);
  return QVLAB{RoundClamp(lab.L, 0, 100), RoundClamp(lab.a, -128, 127), RoundClamp(lab.b, -128, 127)};
}

QVRGB LabConverter::FromLab(const QVLAB& c) const {
  double r, g, b;
  FromLab(LabValue{double(c.nL), double(c.nA), double(c.nB)}, r, g, b);
  return QVRGB{RoundClamp(r * 255.0, 0, 255), RoundClamp(g * 255.0, 0, 255), RoundClamp(b * 255.0, 0, 255)};
}

}  // namespace qv
