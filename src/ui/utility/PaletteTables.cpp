/*
 * The palette orders (see PaletteTables.h). Hue and saturation are fractions of small integers, so they are
 * kept as numerator and denominator and compared by cross-multiplication: two colours of the same hue always
 * compare equal, however their components differ, which no rounded key guarantees.
 */
#include "PaletteTables.h"

#include <algorithm>
#include <tuple>

namespace qvutil {
namespace {

// A non-negative fraction num / den with den > 0.
struct Fraction {
  int num;
  int den;
};

int Compare(const Fraction& a, const Fraction& b) {
  const long long left = static_cast<long long>(a.num) * b.den, right = static_cast<long long>(b.num) * a.den;
  return left < right ? -1 : (left > right ? 1 : 0);
}

struct HsbKey {
  bool gray;
  Fraction hue;  // in sixths of the circle, 0 <= hue < 6
  Fraction saturation;
  int brightness;
};

HsbKey KeyOf(const PALETTEENTRY& e) {
  const int r = e.peRed, g = e.peGreen, b = e.peBlue;
  const int high = std::max({r, g, b}), low = std::min({r, g, b}), d = high - low;
  HsbKey key{d == 0, {0, 1}, {d, high == 0 ? 1 : high}, high};
  if (d == 0) return key;
  if (high == r)
    key.hue = {g >= b ? g - b : 6 * d + g - b, d};
  else if (high == g)
    key.hue = {2 * d + b - r, d};
  else
    key.hue = {4 * d + r - g, d};
  return key;
}

int CompareHue(const HsbKey& a, const HsbKey& b) {
  if (a.gray != b.gray) return a.gray ? -1 : 1;
  return a.gray ? 0 : Compare(a.hue, b.hue);
}

int CompareBrightness(const HsbKey& a, const HsbKey& b) {
  return a.brightness < b.brightness ? -1 : (a.brightness > b.brightness ? 1 : 0);
}

int CompareKeys(const HsbKey& a, const HsbKey& b, PaletteOrder order) {
  switch (order) {
    case PaletteOrder::kHue: return CompareHue(a, b);
    case PaletteOrder::kSaturation: return Compare(a.saturation, b.saturation);
    case PaletteOrder::kBrightness: return CompareBrightness(a, b);
    case PaletteOrder::kHSB:
      if (const int c = CompareHue(a, b)) return c;
      if (const int c = Compare(a.saturation, b.saturation)) return c;
      return CompareBrightness(a, b);
    case PaletteOrder::kRGB: break;
  }
  return 0;
}

bool RgbLess(const PALETTEENTRY& a, const PALETTEENTRY& b) {
  return std::tie(a.peRed, a.peGreen, a.peBlue) < std::tie(b.peRed, b.peGreen, b.peBlue);
}

}  // namespace

void SortPaletteEntries(PALETTEENTRY* entries, int count, PaletteOrder order) {
  if (!entries || count < 2) return;
  std::stable_sort(entries, entries + count, [order](const PALETTEENTRY& a, const PALETTEENTRY& b) {
    if (const int c = CompareKeys(KeyOf(a), KeyOf(b), order)) return c < 0;
    return RgbLess(a, b);
  });
}

}  // namespace qvutil
