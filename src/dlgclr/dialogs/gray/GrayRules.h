/*
 * The value rules of the gray scale, colored gray and balance colors dialogs, kept apart from the windows so
 * they are tested natively: how the caller's weights are taken in, how two slider markers become three
 * weights that add up to 1000, the dialogs' own rounding of a marker, and the balance weights' percentages
 * against the structure's fractions.
 */
#pragma once

#include <cstdint>

#include "qv/qvimgops.h"

namespace qvdlg {

// Red, green and blue weights in thousandths; the dialogs keep them adding up to kWeightTotal.
struct ColorWeights {
  int red;
  int green;
  int blue;
  bool operator==(const ColorWeights& other) const {
    return red == other.red && green == other.green && blue == other.blue;
  }
};

constexpr int kWeightTotal = 1000;
constexpr ColorWeights kDefaultWeights{333, 333, 334};
constexpr int kGrayFactorLimit = 1000;  // a gray weight lies in -1000..1000

// The dialogs' rounding of a marker: a whole value stays; otherwise a first decimal digit of 5 or more goes up
// to the next whole number, a smaller one is truncated. So 333.5 gives 334, 666.4 gives 666 and 333.45 gives
// 333 (only the first digit counts). Markers never leave 0..1000, but the rule is total: NaN gives 0 and
// magnitudes beyond the int range saturate.
int RoundMarker(double value);

// The three weights two markers stand for: red up to the first, green between them, blue the rest.
ColorWeights WeightsFromMarkers(double first, double second);

// Gray scale: the caller's weights are taken only when each lies in 0..1000 and they add up to exactly 1000;
// otherwise the dialog keeps its defaults. The sum alone is not enough: 1200, -200, 0 adds up but cannot be
// shown by the slider, and the conversion refuses a negative weight, so OK would fail.
ColorWeights TakeGrayScaleWeights(int32_t red, int32_t green, int32_t blue);

// Colored gray: each weight in 0..1000 replaces the dialog's `current` one; when the kept three then do not
// add up to 1000 all three fall back to the defaults (600, 600, -200 keeps 600, 600 and the current blue, and
// falls back).
ColorWeights TakeColoredGrayWeights(int32_t red, int32_t green, int32_t blue, const ColorWeights& current);

// A gray weight from the caller: taken when it lies in -1000..1000, else `current` stays.
int TakeGrayFactor(int32_t raw, int current);
// A number typed into a gray weight's edit, truncated toward zero and clamped to -1000..1000.
int ClampTypedGrayFactor(double typed);

// Balance colors keep each weight as a percentage. A caller's fraction is taken as fraction * 100 when that
// lies in 0..100, else it becomes 0 (150 % and -10 % alike, and NaN).
double TakeBalancePercent(double fraction);
// What a weight's combo shows and takes: the percentage truncated to a whole number.
int BalanceComboValue(double percent);
// One output channel's record for the operation: the three percentages as fractions, and the record size.
QVBALANCINGRECORD BalanceRecord(const double percents[3]);

}  // namespace qvdlg
