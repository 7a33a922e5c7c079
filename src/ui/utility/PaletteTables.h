/*
 * The standard palettes the palette editor offers and the orders it sorts a palette in, written without a
 * window so they are built at compile time and tested natively. An entry is the 4-byte PALETTEENTRY (red,
 * green, blue, flags); natively a layout-identical stand-in is declared here. What each table holds:
 * - Netscape (216): the browser-safe colour cube, levels 0, 51, ..., 255 on each axis, in the order the
 * Netscape browser listed it: from white (FF,FF,FF) down to black, blue fastest, then green, then red.
 * - Windows system (20): the static colours Windows reserves on an 8-bit display, in system palette order
 * (the ten dark ones, then the ten light ones).
 * - explorer (256): the palette a web browser realised on an 8-bit display: the first ten system colours, the
 * 216 cube colours in ascending order (blue fastest), 20 grays that fill the gaps between the cube's six
 * grays (four evenly spaced in each gap, so with the cube's own grays they form a 26-step ramp), and the
 * last ten system colours.
 * - SVGA (256): the default palette of the VGA's 256-colour mode that SVGA boards keep: the 16 EGA colours, a
 * 16-step gray ramp, nine 24-hue rings (three intensities times three saturations) and eight blacks; the
 * 6-bit DAC levels are scaled to 8 bits with rounding (63 becomes 255).
 * - uniform (256): an 8 x 8 x 4 cube, the 3-3-2 bit split of an index (red in the top three bits, blue in
 * the two lowest), each axis spread evenly over 0..255.
 */
#pragma once

#include <array>
#include <cstdint>

#include "qv/qvbase.h"

#ifndef _WIN32
typedef struct tagPALETTEENTRY {
  uint8_t peRed;
  uint8_t peGreen;
  uint8_t peBlue;
  uint8_t peFlags;
} PALETTEENTRY;
#endif
static_assert(sizeof(PALETTEENTRY) == 4, "a palette entry is four bytes");

constexpr int QV_PALETTE_NUMBER_OF_ENTRIES_NETSCAPE = 216;
constexpr int QV_PALETTE_NUMBER_OF_ENTRIES_MSI_EXPLORER = 256;
constexpr int QV_PALETTE_NUMBER_OF_ENTRIES_SVGA = 256;
constexpr int QV_PALETTE_NUMBER_OF_ENTRIES_WINDOWSSYSTEM = 20;
constexpr int QV_PALETTE_NUMBER_OF_ENTRIES_UNIFORM = 256;

namespace qvutil {

template <int N>
using PaletteTable = std::array<PALETTEENTRY, N>;

namespace detail {

constexpr PALETTEENTRY Entry(int red, int green, int blue) {
  return PALETTEENTRY{static_cast<uint8_t>(red), static_cast<uint8_t>(green), static_cast<uint8_t>(blue), 0};
}

constexpr PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_WINDOWSSYSTEM> MakeWindowsSystemPalette() {
  return {{Entry(0, 0, 0),       Entry(128, 0, 0),     Entry(0, 128, 0),     Entry(128, 128, 0),
           Entry(0, 0, 128),     Entry(128, 0, 128),   Entry(0, 128, 128),   Entry(192, 192, 192),
           Entry(192, 220, 192), Entry(166, 202, 240), Entry(255, 251, 240), Entry(160, 160, 164),
           Entry(128, 128, 128), Entry(255, 0, 0),     Entry(0, 255, 0),     Entry(255, 255, 0),
           Entry(0, 0, 255),     Entry(255, 0, 255),   Entry(0, 255, 255),   Entry(255, 255, 255)}};
}

constexpr PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_NETSCAPE> MakeNetscapePalette() {
  PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_NETSCAPE> table{};
  for (int i = 0; i < QV_PALETTE_NUMBER_OF_ENTRIES_NETSCAPE; ++i)
    table[i] = Entry(255 - 51 * (i / 36), 255 - 51 * (i / 6 % 6), 255 - 51 * (i % 6));
  return table;
}

constexpr PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_MSI_EXPLORER> MakeExplorerPalette() {
  constexpr auto system = MakeWindowsSystemPalette();
  PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_MSI_EXPLORER> table{};
  int n = 0;
  for (int i = 0; i < 10; ++i) table[n++] = system[i];
  for (int i = 0; i < 216; ++i) table[n++] = Entry(51 * (i / 36), 51 * (i / 6 % 6), 51 * (i % 6));
  for (int gap = 0; gap < 5; ++gap) {
    for (int step = 1; step <= 4; ++step) {
      const int gray = 51 * gap + (51 * step * 2 + 5) / 10;
      table[n++] = Entry(gray, gray, gray);
    }
  }
  for (int i = 10; i < 20; ++i) table[n++] = system[i];
  return table;
}

constexpr int DacTo8Bit(int level) { return (level * 255 + 31) / 63; }

// What a component does in one sixth of a VGA hue ring: held at the lowest level, held at the highest, or
// stepping up or down through the levels between.
enum class RingRole { kLow, kHigh, kRising, kFalling };

constexpr int RingLevel(RingRole role, const int (&level)[5], int step) {
  switch (role) {
    case RingRole::kLow: return level[0];
    case RingRole::kHigh: return level[4];
    case RingRole::kRising: return level[step];
    case RingRole::kFalling: break;
  }
  return level[4 - step];
}

// One ring of 24 hues from blue over magenta, red, yellow, green and cyan back towards blue, made of the five
// 6-bit levels low..high that one intensity and saturation allow; each sixth is four steps.
constexpr void AddVgaRing(PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_SVGA>& table, int& n, const int (&level)[5]) {
  using R = RingRole;
  constexpr RingRole kSixths[6][3] = {{R::kRising, R::kLow, R::kHigh}, {R::kHigh, R::kLow, R::kFalling},
                                      {R::kHigh, R::kRising, R::kLow}, {R::kFalling, R::kHigh, R::kLow},
                                      {R::kLow, R::kHigh, R::kRising}, {R::kLow, R::kFalling, R::kHigh}};
  for (int k = 0; k < 24; ++k) {
    const RingRole(&roles)[3] = kSixths[k / 4];
    table[n++] = Entry(DacTo8Bit(RingLevel(roles[0], level, k % 4)), DacTo8Bit(RingLevel(roles[1], level, k % 4)),
                       DacTo8Bit(RingLevel(roles[2], level, k % 4)));
  }
}

constexpr PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_SVGA> MakeSvgaPalette() {
  PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_SVGA> table{};
  int n = 0;
  for (int i = 0; i < 16; ++i) {
    // EGA: bit 0 blue, bit 1 green, bit 2 red, bit 3 bright; colour 6 is brown, not dark yellow.
    const int base = i & 8 ? 21 : 0, on = i & 8 ? 63 : 42;
    const int green = i == 6 ? 21 : (i & 2 ? on : base);
    table[n++] = Entry(DacTo8Bit(i & 4 ? on : base), DacTo8Bit(green), DacTo8Bit(i & 1 ? on : base));
  }
  constexpr int kGrays[16] = {0, 5, 8, 11, 14, 17, 20, 24, 28, 32, 36, 40, 45, 50, 56, 63};
  for (int gray : kGrays) table[n++] = Entry(DacTo8Bit(gray), DacTo8Bit(gray), DacTo8Bit(gray));
  constexpr int kRings[9][5] = {{0, 16, 31, 47, 63}, {31, 39, 47, 55, 63}, {45, 49, 54, 58, 63},
                                {0, 7, 14, 21, 28},  {14, 17, 21, 24, 28}, {20, 22, 24, 26, 28},
                                {0, 4, 8, 12, 16},   {8, 10, 12, 14, 16},  {11, 12, 13, 15, 16}};
  for (const auto& ring : kRings) AddVgaRing(table, n, ring);
  while (n < QV_PALETTE_NUMBER_OF_ENTRIES_SVGA) table[n++] = Entry(0, 0, 0);
  return table;
}

constexpr PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_UNIFORM> MakeUniformPalette() {
  PaletteTable<QV_PALETTE_NUMBER_OF_ENTRIES_UNIFORM> table{};
  for (int i = 0; i < QV_PALETTE_NUMBER_OF_ENTRIES_UNIFORM; ++i)
    table[i] = Entry((i >> 5) * 255 / 7, (i >> 2 & 7) * 255 / 7, (i & 3) * 255 / 3);
  return table;
}

}  // namespace detail

inline constexpr auto kNetscapePalette = detail::MakeNetscapePalette();
inline constexpr auto kExplorerPalette = detail::MakeExplorerPalette();
inline constexpr auto kSvgaPalette = detail::MakeSvgaPalette();
inline constexpr auto kWindowsSystemPalette = detail::MakeWindowsSystemPalette();
inline constexpr auto kUniformPalette = detail::MakeUniformPalette();

// The five orders, all ascending. Hue runs from red over yellow, green, cyan and blue to magenta, with the
// grays (no hue) before every coloured entry; saturation is (max - min) / max and brightness is max of the
// three components, as in the HSB model. Keys are compared exactly (as fractions, never rounded), and
// entries with equal keys are ordered by red, then green, then blue, so the result does not depend on the
// order the entries came in; only entries of the same colour keep their relative order.
enum class PaletteOrder { kHSB, kHue, kSaturation, kBrightness, kRGB };

// Sorts entries[0..count) in place; a count below 2 or a null pointer leaves everything as it is.
void SortPaletteEntries(PALETTEENTRY* entries, int count, PaletteOrder order);

}  // namespace qvutil
