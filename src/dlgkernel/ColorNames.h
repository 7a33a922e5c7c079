/*
 * The CSS named colors: lookup of a name by exact color, and the whole table
 * for tests.
 */
#pragma once

#include <cstdint>

namespace qv {

struct NamedColor {
  const wchar_t* pszName;
  std::uint32_t uRgb;  // 0xRRGGBB
};

const NamedColor* NamedColorsBegin();
const NamedColor* NamedColorsEnd();

// The name of the color, or null when it has none.
const wchar_t* FindColorName(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

}  // namespace qv
