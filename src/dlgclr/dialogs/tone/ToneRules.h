/*
 * The value rules of the single-value dialogs, kept apart from the windows so they are tested natively: how a
 * caller's value is taken in, how the solarize range follows the bitmap, and what typing into the edit box
 * and committing it do to the value. The dialog holds one value; slider and edit box only mirror it.
 */
#pragma once

#include <cstdint>
#include <optional>

#include "ToneMember.h"

namespace qvdlg {

// The caller's value as the dialog takes it: itself when inside `range` (both ends included), else the
// member's fallback. `raw` is the structure field widened without loss (signed or unsigned as the field).
int TakeCallerValue(const ToneMember& member, const ToneRange& range, int64_t raw);

// The structure field's 32 bits widened as the member's field type says.
int64_t WidenField(const ToneMember& member, uint32_t fieldBits);

// Solarize's range for a bitmap. `grayKind` is the kernel's gray-scale test (0 not gray, 1..3 gray, negative:
// the test failed); `bitmapFlags` the bitmap's flag word (bit 11: painted through its LUT, which counts as
// gray here). A failed test decides nothing: the range stays 0..255, the one the dialog starts with, rather
// than being widened for a bitmap the kernel could not read.
ToneRange SolarizeRangeFor(int grayKind, uint32_t bitmapFlags, int bitsPerPixel);

// A number read from the edit box, truncated toward zero; absurd magnitudes saturate instead of overflowing.
int64_t TruncateTyped(double typed);

// Typing: the value the dialog takes from the box, or nothing when the box holds the current value or a
// number outside the range (left in the box until it is committed).
std::optional<int> TypedValueToTake(double typed, int current, const ToneRange& range);

// Committing: the end of the range to write into the box when the number lies beyond it, else nothing.
std::optional<int> CommittedValueToWrite(double typed, const ToneRange& range);

}  // namespace qvdlg
