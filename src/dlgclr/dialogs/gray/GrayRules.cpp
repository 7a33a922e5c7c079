/*
 * The value rules of the gray conversion and colour balance dialogs (see GrayRules.h).
 */
#include "GrayRules.h"

#include <climits>
#include <cmath>

#include "ToneRules.h"

namespace qvdlg {
namespace {

bool IsWeight(int32_t value) { return value >= 0 && value <= kWeightTotal; }

bool AddsUp(const ColorWeights& w) { return static_cast<int64_t>(w.red) + w.green + w.blue == kWeightTotal; }

}  // namespace

int RoundMarker(double value) {
  if (std::isnan(value)) return 0;
  if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
  const double whole = std::trunc(value);
  if (whole == value) return static_cast<int>(whole);
  // The first decimal digit of the magnitude; for negative values "up" is away from zero, as for positive ones.
  const int firstDigit = static_cast<int>(std::trunc(std::fabs(value - whole) * 10.0));
  const int truncated = static_cast<int>(whole);
  if (firstDigit < 5) return truncated;
  return value > 0 ? truncated + 1 : truncated - 1;
}

ColorWeights WeightsFromMarkers(double first, double second) {
  const int red = RoundMarker(first);
  const int redAndGreen = RoundMarker(second);
  return {red, redAndGreen - red, kWeightTotal - redAndGreen};
}

ColorWeights TakeGrayScaleWeights(int32_t red, int32_t green, int32_t blue) {
  const ColorWeights taken{red, green, blue};
  if (IsWeight(red) && IsWeight(green) && IsWeight(blue) && AddsUp(taken)) return taken;
  return kDefaultWeights;
}

ColorWeights TakeColoredGrayWeights(int32_t red, int32_t green, int32_t blue, const ColorWeights& current) {
  const ColorWeights kept{IsWeight(red) ? red : current.red, IsWeight(green) ? green : current.green,
                          IsWeight(blue) ? blue : current.blue};
  return AddsUp(kept) ? kept : kDefaultWeights;
}

int TakeGrayFactor(int32_t raw, int current) {
  return raw >= -kGrayFactorLimit && raw <= kGrayFactorLimit ? raw : current;
}

int ClampTypedGrayFactor(double typed) {
  const int64_t value = TruncateTyped(typed);
  if (value < -kGrayFactorLimit) return -kGrayFactorLimit;
  if (value > kGrayFactorLimit) return kGrayFactorLimit;
  return static_cast<int>(value);
}

double TakeBalancePercent(double fraction) {
  const double percent = fraction * 100.0;
  return percent >= 0.0 && percent <= 100.0 ? percent : 0.0;
}

int BalanceComboValue(double percent) { return static_cast<int>(TruncateTyped(percent)); }

QVBALANCINGRECORD BalanceRecord(const double percents[3]) {
  QVBALANCINGRECORD record{};
  record.uStructSize = sizeof record;
  record.fToRed = percents[0] / 100.0;
  record.fToGreen = percents[1] / 100.0;
  record.fToBlue = percents[2] / 100.0;
  return record;
}

}  // namespace qvdlg
