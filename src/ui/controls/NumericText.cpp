/*
 * Implementation of the numeric text rules.
 */
#include "NumericText.h"

#include <cmath>
#include <cwchar>
#include <cwctype>

namespace qvctl {

bool IsAcceptableNumericText(const std::wstring& text, bool allowNegative, bool allowDecimal) {
  bool seenPoint = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c >= L'0' && c <= L'9') continue;
    if (c == L'-' && allowNegative && i == 0) continue;
    if (c == L'.' && allowDecimal && !seenPoint) {
      seenPoint = true;
      continue;
    }
    return false;
  }
  return true;
}

std::wstring TextAfterReplace(const std::wstring& text, size_t start, size_t end, const std::wstring& insert) {
  if (start > text.size()) start = text.size();
  if (end > text.size()) end = text.size();
  if (end < start) end = start;
  return text.substr(0, start) + insert + text.substr(end);
}

bool ParseNumber(const std::wstring& text, double& value) {
  const wchar_t* begin = text.c_str();
  while (*begin && std::iswspace(*begin)) ++begin;
  wchar_t* end = nullptr;
  const double parsed = std::wcstod(begin, &end);
  if (end == begin) return false;
  while (*end && std::iswspace(*end)) ++end;
  if (*end || !std::isfinite(parsed)) return false;
  value = parsed;
  return true;
}

std::wstring FormatNumber(double value) {
  if (!std::isfinite(value)) return L"0";
  wchar_t buffer[64];
  if (value == std::trunc(value) && std::fabs(value) < 1e15) {
    std::swprintf(buffer, 64, L"%.0f", value);
  } else {
    std::swprintf(buffer, 64, L"%.6f", value);
    std::wstring text(buffer);
    while (!text.empty() && text.back() == L'0') text.pop_back();
    if (!text.empty() && text.back() == L'.') text.pop_back();
    return text == L"-0" ? L"0" : text;
  }
  std::wstring text(buffer);
  return text == L"-0" ? L"0" : text;
}

}  // namespace qvctl
