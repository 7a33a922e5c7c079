/*
 * The standard palettes and the five palette orders: sizes and the entries where one block of a table gives
 * way to the next, and sorts that are exact about hue and saturation, total (the input order never shows in
 * the result) and confined to the first `count` entries.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PaletteTables.h"

namespace qvutil {
namespace {

using Palette = std::vector<PALETTEENTRY>;

PALETTEENTRY E(int r, int g, int b, int flags = 0) {
  return {static_cast<uint8_t>(r), static_cast<uint8_t>(g), static_cast<uint8_t>(b), static_cast<uint8_t>(flags)};
}

std::string Text(const Palette& p) {
  std::string s;
  for (const PALETTEENTRY& e : p)
    s += std::to_string(e.peRed) + "," + std::to_string(e.peGreen) + "," + std::to_string(e.peBlue) + "," +
         std::to_string(e.peFlags) + " ";
  return s;
}

TEST(StandardPalettes, SizesAndBlockBoundariesAreTheDocumentedColours) {
  struct Spot {
    const PALETTEENTRY* table;
    size_t size, expectedSize;
    int index;
    PALETTEENTRY expected;
  };
  const auto& ns = kNetscapePalette;
  const auto& sys = kWindowsSystemPalette;
  const auto& ie = kExplorerPalette;
  const auto& vga = kSvgaPalette;
  const auto& uni = kUniformPalette;
  const Spot spots[] = {
      {ns.data(), ns.size(), 216, 0, E(255, 255, 255)},     {ns.data(), ns.size(), 216, 1, E(255, 255, 204)},
      {ns.data(), ns.size(), 216, 36, E(204, 255, 255)},    {ns.data(), ns.size(), 216, 215, E(0, 0, 0)},
      {sys.data(), sys.size(), 20, 9, E(166, 202, 240)},    {sys.data(), sys.size(), 20, 10, E(255, 251, 240)},
      {ie.data(), ie.size(), 256, 10, E(0, 0, 0)},          {ie.data(), ie.size(), 256, 225, E(255, 255, 255)},
      {ie.data(), ie.size(), 256, 226, E(10, 10, 10)},      {ie.data(), ie.size(), 256, 245, E(245, 245, 245)},
      {ie.data(), ie.size(), 256, 246, E(255, 251, 240)},   {vga.data(), vga.size(), 256, 6, E(170, 85, 0)},
      {vga.data(), vga.size(), 256, 32, E(0, 0, 255)},      {vga.data(), vga.size(), 256, 55, E(0, 65, 255)},
      {vga.data(), vga.size(), 256, 104, E(0, 0, 113)},     {vga.data(), vga.size(), 256, 247, E(45, 49, 65)},
      {vga.data(), vga.size(), 256, 255, E(0, 0, 0)},       {uni.data(), uni.size(), 256, 37, E(36, 36, 85)},
      {uni.data(), uni.size(), 256, 255, E(255, 255, 255)},
  };
  for (const Spot& s : spots) {
    EXPECT_EQ(s.size, s.expectedSize);
    EXPECT_EQ(Text({s.table[s.index]}), Text({s.expected})) << "entry " << s.index << " of " << s.size;
  }
}

TEST(PaletteSort, EachOrderPutsTheseEntriesInPlace) {
  const PALETTEENTRY red = E(255, 0, 0), dark = E(128, 0, 0), pink = E(255, 128, 128), yellow = E(255, 255, 0),
                     green = E(0, 255, 0), cyan = E(0, 255, 255), blue = E(0, 0, 255), magenta = E(255, 0, 255),
                     almostRed = E(255, 0, 1), black = E(0, 0, 0), gray = E(128, 128, 128), white = E(255, 255, 255);
  using O = PaletteOrder;
  struct Case {
    O order;
    int count;
    Palette input, expected;
  };
  const Case cases[] = {
      {O::kRGB, 4, {E(1, 0, 0), E(0, 9, 9), E(0, 1, 0), E(0, 0, 9)}, {E(0, 0, 9), E(0, 1, 0), E(0, 9, 9), E(1, 0, 0)}},
      // Equal colours keep their order.
      {O::kRGB, 3, {E(5, 5, 5, 2), E(1, 1, 1), E(5, 5, 5, 1)}, {E(1, 1, 1), E(5, 5, 5, 2), E(5, 5, 5, 1)}},
      // Grays first, then around the circle; magenta with a little blue comes before magenta with a little red.
      {O::kHue,
       9,
       {almostRed, magenta, blue, white, cyan, green, yellow, black, red},
       {black, white, red, yellow, green, cyan, blue, magenta, almostRed}},
      {O::kHue, 4, {pink, red, gray, dark}, {gray, dark, red, pink}},
      // 128/254 lies above 128/255 by less than a tenth of a degree; 2/4 and 1/2 are one hue.
      {O::kHue,
       4,
       {E(254, 128, 0), E(255, 128, 0), E(4, 2, 0), E(2, 1, 0)},
       {E(2, 1, 0), E(4, 2, 0), E(255, 128, 0), E(254, 128, 0)}},
      // Saturation is relative to the brightest component.
      {O::kSaturation,
       6,
       {red, E(200, 100, 100), black, E(50, 0, 0), E(100, 50, 50), gray},
       {black, gray, E(100, 50, 50), E(200, 100, 100), E(50, 0, 0), red}},
      {O::kBrightness, 3, {E(200, 0, 0), gray, E(0, 0, 200)}, {gray, E(0, 0, 200), E(200, 0, 0)}},
      {O::kHSB, 5, {red, pink, green, dark, gray}, {gray, pink, dark, red, green}},
      // Only the first count entries move.
      {O::kRGB, 3, {white, gray, black, E(1, 1, 1)}, {black, gray, white, E(1, 1, 1)}},
      {O::kHue, 0, {white, black}, {white, black}},
      {O::kHue, -3, {white, black}, {white, black}},
  };
  for (const Case& c : cases) {
    Palette p = c.input;
    SortPaletteEntries(p.data(), c.count, c.order);
    EXPECT_EQ(Text(p), Text(c.expected)) << "order " << static_cast<int>(c.order) << " count " << c.count;
  }
}

TEST(PaletteSort, TheResultDoesNotDependOnTheInputOrder) {
  Palette all(kSvgaPalette.begin(), kSvgaPalette.end());
  all.insert(all.end(), kExplorerPalette.begin(), kExplorerPalette.end());
  for (PaletteOrder order : {PaletteOrder::kHSB, PaletteOrder::kHue, PaletteOrder::kSaturation,
                             PaletteOrder::kBrightness, PaletteOrder::kRGB}) {
    Palette forward = all, backward(all.rbegin(), all.rend());
    SortPaletteEntries(forward.data(), static_cast<int>(forward.size()), order);
    SortPaletteEntries(backward.data(), static_cast<int>(backward.size()), order);
    EXPECT_EQ(Text(forward), Text(backward)) << static_cast<int>(order);
  }
}

}  // namespace
}  // namespace qvutil
