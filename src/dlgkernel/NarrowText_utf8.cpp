/*
 * UTF-8 to wchar_t (UTF-32 on Linux) for the native build. Strict: overlong
 * forms, surrogates, code points above U+10FFFF and cut-off sequences are
 * refused.
 */
#include "NarrowText.h"

#include <cstdint>

namespace qv {
namespace {

// Decodes one sequence at p (at most `left` bytes); returns its length or 0 when invalid.
std::size_t DecodeOne(const unsigned char* p, std::size_t left, std::uint32_t& codePoint) {
  const unsigned char lead = p[0];
  std::size_t length;
  std::uint32_t minimum;
  if (lead < 0x80) {
    codePoint = lead;
    return 1;
  } else if ((lead & 0xE0) == 0xC0) {
    length = 2;
    minimum = 0x80;
    codePoint = lead & 0x1F;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3;
    minimum = 0x800;
    codePoint = lead & 0x0F;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4;
    minimum = 0x10000;
    codePoint = lead & 0x07;
  } else {
    return 0;
  }
  if (length > left) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((p[i] & 0xC0) != 0x80) return 0;
    codePoint = (codePoint << 6) | (p[i] & 0x3F);
  }
  if (codePoint < minimum || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) return 0;
  return length;
}

}  // namespace

bool NarrowToWide(const char* psz, std::size_t length, std::wstring& out) {
  out.clear();
  const auto* p = reinterpret_cast<const unsigned char*>(psz);
  std::size_t i = 0;
  while (i < length) {
    std::uint32_t codePoint = 0;
    const std::size_t used = DecodeOne(p + i, length - i, codePoint);
    if (used == 0) return false;
    if constexpr (sizeof(wchar_t) == 2) {
      if (codePoint >= 0x10000) {
        codePoint -= 0x10000;
        out.push_back(static_cast<wchar_t>(0xD800 + (codePoint >> 10)));
        out.push_back(static_cast<wchar_t>(0xDC00 + (codePoint & 0x3FF)));
        i += used;
        continue;
      }
    }
    out.push_back(static_cast<wchar_t>(codePoint));
    i += used;
  }
  return true;
}

}  // namespace qv
