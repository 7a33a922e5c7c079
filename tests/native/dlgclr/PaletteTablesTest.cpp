// The standard palettes and the five palette orders: table sizes and the entries a user would check first
// (ends, cube steps, where one block of a table gives way to the next), and sorts that are total, stable
// only among equal colours, exact about hue and saturation, and confined to the first `count` entries.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <vector>

#include "PaletteTables.h"

namespace qvutil {
namespace {

using Palette = std::vector<PALETTEENTRY>;

PALETTEENTRY E(int r, int g, int b, int flags = 0) {
  return PALETTEENTRY{static_cast<uint8_t>(r), static_cast<uint8_t>(g), static_cast<uint8_t>(b),
                      static_cast<uint8_t>(flags)};
}

bool Same(const PALETTEENTRY& a, const PALETTEENTRY& b) {
  return std::tie(a.peRed, a.peGreen, a.peBlue, a.peFlags) == std::tie(b.peRed, b.peGreen, b.peBlue, b.peFlags);
}

std::string Text(const Palette& p) {
  std::string s;
  for (const PALETTEENTRY& e : p)
    s += "(" + std::to_string(e.peRed) + "," + std::to_string(e.peGreen) + "," + std::to_string(e.peBlue) + "," +
         std::to_string(e.peFlags) + ")";
  return s;
}

template <size_t N>
Palette Of(const std::array<PALETTEENTRY, N>& table) {
  return Palette(table.begin(), table.end());
}

TEST(StandardPalettes, SizesEndsAndBlockBoundariesAreTheDocumentedColours) {
  struct Spot {
    const char* table;
    Palette entries;
    size_t size;
    int index;
    PALETTEENTRY expected;
  };
  const Palette netscape = Of(kNetscapePalette), system = Of(kWindowsSystemPalette),
                explorer = Of(kExplorerPalette), svga = Of(kSvgaPalette), uniform = Of(kUniformPalette);
  const Spot spots[] = {
      {"netscape", netscape, 216, 0, E(255, 255, 255)},    {"netscape", netscape, 216, 1, E(255, 255, 204)},
      {"netscape", netscape, 216, 6, E(255, 204, 255)},    {"netscape", netscape, 216, 36, E(204, 255, 255)},
      {"netscape", netscape, 216, 215, E(0, 0, 0)},        {"system", system, 20, 0, E(0, 0, 0)},
      {"system", system, 20, 8, E(192, 220, 192)},         {"system", system, 20, 9, E(166, 202, 240)},
      {"system", system, 20, 10, E(255, 251, 240)},        {"system", system, 20, 12, E(128, 128, 128)},
      {"system", system, 20, 19, E(255, 255, 255)},        {"explorer", explorer, 256, 9, E(166, 202, 240)},
      {"explorer", explorer, 256, 10, E(0, 0, 0)},         {"explorer", explorer, 256, 11, E(0, 0, 51)},
      {"explorer", explorer, 256, 225, E(255, 255, 255)},  {"explorer", explorer, 256, 226, E(10, 10, 10)},
      {"explorer", explorer, 256, 245, E(245, 245, 245)},  {"explorer", explorer, 256, 246, E(255, 251, 240)},
      {"explorer", explorer, 256, 255, E(255, 255, 255)},  {"svga", svga, 256, 1, E(0, 0, 170)},
      {"svga", svga, 256, 6, E(170, 85, 0)},               {"svga", svga, 256, 15, E(255, 255, 255)},
      {"svga", svga, 256, 16, E(0, 0, 0)},                 {"svga", svga, 256, 31, E(255, 255, 255)},
      {"svga", svga, 256, 32, E(0, 0, 255)},               {"svga", svga, 256, 36, E(255, 0, 255)},
      {"svga", svga, 256, 40, E(255, 0, 0)},               {"svga", svga, 256, 55, E(0, 65, 255)},
      {"svga", svga, 256, 104, E(0, 0, 113)},              {"svga", svga, 256, 247, E(45, 49, 65)},
      {"svga", svga, 256, 248, E(0, 0, 0)},                {"svga", svga, 256, 255, E(0, 0, 0)},
      {"uniform", uniform, 256, 0, E(0, 0, 0)},            {"uniform", uniform, 256, 3, E(0, 0, 255)},
      {"uniform", uniform, 256, 28, E(0, 255, 0)},         {"uniform", uniform, 256, 37, E(36, 36, 85)},
      {"uniform", uniform, 256, 224, E(255, 0, 0)},        {"uniform", uniform, 256, 255, E(255, 255, 255)},
  };
  for (const Spot& s : spots) {
    ASSERT_EQ(s.entries.size(), s.size) << s.table;
    EXPECT_TRUE(Same(s.entries[s.index], s.expected)) << s.table << "[" << s.index << "] is "
                                                      << Text({s.entries[s.index]});
  }
  EXPECT_EQ(QV_PALETTE_NUMBER_OF_ENTRIES_NETSCAPE, 216);
  EXPECT_EQ(QV_PALETTE_NUMBER_OF_ENTRIES_WINDOWSSYSTEM, 20);
}

TEST(StandardPalettes, CubesAreCompleteAndEveryFlagByteIsZero) {
  for (const Palette& cube : {Of(kNetscapePalette), Of(kUniformPalette)}) {
    std::set<std::tuple<int, int, int>> distinct;
    for (const PALETTEENTRY& e : cube) distinct.insert({e.peRed, e.peGreen, e.peBlue});
    EXPECT_EQ(distinct.size(), cube.size());
  }
  for (const PALETTEENTRY& e : kNetscapePalette) {
    EXPECT_EQ(e.peRed % 51 + e.peGreen % 51 + e.peBlue % 51, 0) << Text({e});
  }
  for (const Palette& p : {Of(kNetscapePalette), Of(kWindowsSystemPalette), Of(kExplorerPalette), Of(kSvgaPalette),
                           Of(kUniformPalette)}) {
    EXPECT_TRUE(std::all_of(p.begin(), p.end(), [](const PALETTEENTRY& e) { return e.peFlags == 0; }));
  }
}

TEST(StandardPalettes, ExplorerGraysFillTheCubeGapsIntoOneEvenRamp) {
  std::set<int> grays;
  for (const PALETTEENTRY& e : kExplorerPalette) {
    if (e.peRed == e.peGreen && e.peGreen == e.peBlue && e.peRed % 51 == 0) grays.insert(e.peRed);
  }
  for (int i = 226; i < 246; ++i) grays.insert(kExplorerPalette[i].peRed);
  ASSERT_EQ(grays.size(), 26u);
  int previous = -1;
  for (int g : grays) {
    if (previous >= 0) {
      EXPECT_GE(g - previous, 10);
      EXPECT_LE(g - previous, 11);
    }
    previous = g;
  }
}

struct SortCase {
  const char* name;
  PaletteOrder order;
  Palette input;
  int count;
  Palette expected;
};

TEST(PaletteSort, EachOrderPutsTheseEntriesInPlace) {
  const PALETTEENTRY red = E(255, 0, 0), darkRed = E(128, 0, 0), pink = E(255, 128, 128), yellow = E(255, 255, 0),
                     green = E(0, 255, 0), cyan = E(0, 255, 255), blue = E(0, 0, 255), magenta = E(255, 0, 255),
                     almostRed = E(255, 0, 1), black = E(0, 0, 0), gray = E(128, 128, 128), white = E(255, 255, 255);
  const SortCase cases[] = {
      {"rgb, lexicographic", PaletteOrder::kRGB, {E(1, 0, 0), E(0, 255, 255), E(0, 1, 0), E(0, 0, 9)}, 4,
       {E(0, 0, 9), E(0, 1, 0), E(0, 255, 255), E(1, 0, 0)}},
      {"rgb, equal colours keep their order", PaletteOrder::kRGB, {E(5, 5, 5, 2), E(1, 1, 1), E(5, 5, 5, 1)}, 3,
       {E(1, 1, 1), E(5, 5, 5, 2), E(5, 5, 5, 1)}},
      {"hue, grays first then around the circle", PaletteOrder::kHue,
       {almostRed, magenta, blue, white, cyan, green, yellow, black, red}, 9,
       {black, white, red, yellow, green, cyan, blue, magenta, almostRed}},
      {"hue ties broken by rgb", PaletteOrder::kHue, {pink, red, gray, darkRed}, 4, {gray, darkRed, red, pink}},
      // 128/254 lies above 128/255 by less than a tenth of a degree; 2/4 and 1/2 are one hue.
      {"hue compared exactly", PaletteOrder::kHue, {E(254, 128, 0), E(255, 128, 0), E(4, 2, 0), E(2, 1, 0)}, 4,
       {E(2, 1, 0), E(4, 2, 0), E(255, 128, 0), E(254, 128, 0)}},
      {"saturation, with equal fractions tied by rgb", PaletteOrder::kSaturation,
       {red, E(200, 100, 100), black, E(100, 50, 50), gray}, 5,
       {black, gray, E(100, 50, 50), E(200, 100, 100), red}},
      {"brightness is the largest component", PaletteOrder::kBrightness, {E(200, 0, 0), gray, E(0, 0, 200)}, 3,
       {gray, E(0, 0, 200), E(200, 0, 0)}},
      {"hsb: hue, then saturation, then brightness", PaletteOrder::kHSB, {red, pink, green, darkRed, gray}, 5,
       {gray, pink, darkRed, red, green}},
      {"only the first count entries move", PaletteOrder::kRGB, {white, gray, black, E(1, 1, 1)}, 3,
       {black, gray, white, E(1, 1, 1)}},
      {"count 1 leaves everything", PaletteOrder::kRGB, {white, black}, 1, {white, black}},
      {"count 0 leaves everything", PaletteOrder::kHue, {white, black}, 0, {white, black}},
      {"a negative count leaves everything", PaletteOrder::kHue, {white, black}, -3, {white, black}},
  };
  for (const SortCase& c : cases) {
    Palette p = c.input;
    SortPaletteEntries(p.data(), c.count, c.order);
    EXPECT_EQ(Text(p), Text(c.expected)) << c.name;
  }
  SortPaletteEntries(nullptr, 5, PaletteOrder::kRGB);
}

TEST(PaletteSort, TheResultDoesNotDependOnTheInputOrder) {
  Palette all = Of(kSvgaPalette);
  all.insert(all.end(), kExplorerPalette.begin(), kExplorerPalette.end());
  for (PaletteOrder order :
       {PaletteOrder::kHSB, PaletteOrder::kHue, PaletteOrder::kSaturation, PaletteOrder::kBrightness,
        PaletteOrder::kRGB}) {
    Palette forward = all, backward(all.rbegin(), all.rend());
    SortPaletteEntries(forward.data(), static_cast<int>(forward.size()), order);
    SortPaletteEntries(backward.data(), static_cast<int>(backward.size()), order);
    EXPECT_EQ(Text(forward), Text(backward)) << static_cast<int>(order);
  }
}

}  // namespace
}  // namespace qvutil
