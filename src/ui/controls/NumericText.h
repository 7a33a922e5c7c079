/*
 * The text rules shared by the numeric controls: what a box that accepts
 * numbers only may hold while the user types, how its text reads as a
 * number, and how a number is written back. Kept apart from the windows so
 * every control applies the same rules.
 */
#pragma once

#include <string>

namespace qvctl {

// Digits with at most one decimal point (when `allowDecimal`) and, when
// `allowNegative`, one leading minus. Partial input ("", "-", ".", "-.")
// is acceptable, since the user is still typing it.
bool IsAcceptableNumericText(const std::wstring& text, bool allowNegative, bool allowDecimal);

// The text with [start, end) replaced by `insert`; what the box would hold
// after a keystroke or a paste. Out-of-range positions are clamped.
std::wstring TextAfterReplace(const std::wstring& text, size_t start, size_t end, const std::wstring& insert);

// The number the text stands for; false for text that is not a complete
// number (empty, "-", "abc", trailing junk).
bool ParseNumber(const std::wstring& text, double& value);

// Shortest plain text for the value: integers without a decimal point,
// otherwise up to six decimals without trailing zeros.
std::wstring FormatNumber(double value);

}  // namespace qvctl
