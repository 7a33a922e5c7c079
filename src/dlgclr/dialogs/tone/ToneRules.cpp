/*
 * The value rules of the single-value dialogs (see ToneRules.h).
 */
#include "ToneRules.h"

#include <cmath>

#include "qv/qvkrn.h"

namespace qvdlg {

int TakeCallerValue(const ToneMember& member, const ToneRange& range, int64_t raw) {
  return range.Contains(raw) ? static_cast<int>(raw) : member.fallback;
}

int64_t WidenField(const ToneMember& member, uint32_t fieldBits) {
  if (member.signedValue) return static_cast<int32_t>(fieldBits);
  return static_cast<int64_t>(fieldBits);
}

ToneRange SolarizeRangeFor(int grayKind, uint32_t bitmapFlags, int bitsPerPixel) {
  if (grayKind < 0) return {0, 255};
  const bool treatAsGray = grayKind != 0 || (bitmapFlags & QV_BMF_USELUT) != 0;
  if (!treatAsGray) {
    if (bitsPerPixel == 48 || bitsPerPixel == 64) return {0, 65535};
    return {0, 255};
  }
  if (bitsPerPixel == 12) return {0, 4095};
  if (bitsPerPixel == 16) return {0, 65535};
  return {0, 255};
}

int64_t TruncateTyped(double typed) {
  // Far beyond any range the dialogs use, and well inside int64_t.
  constexpr double kLimit = 1e15;
  if (std::isnan(typed)) return 0;
  if (typed >= kLimit) return static_cast<int64_t>(kLimit);
  if (typed <= -kLimit) return -static_cast<int64_t>(kLimit);
  return static_cast<int64_t>(std::trunc(typed));
}

std::optional<int> TypedValueToTake(double typed, int current, const ToneRange& range) {
  const int64_t value = TruncateTyped(typed);
  if (value == current || !range.Contains(value)) return std::nullopt;
  return static_cast<int>(value);
}

std::optional<int> CommittedValueToWrite(double typed, const ToneRange& range) {
  const int64_t value = TruncateTyped(typed);
  if (value < range.minimum) return range.minimum;
  if (value > range.maximum) return range.maximum;
  return std::nullopt;
}

}  // namespace qvdlg
