/*
 * CQVPalette over a real HPALETTE: a sort reaches only the first `count`
 * entries of the palette, a count beyond the palette sorts all of it, and a
 * palette without a handle or a negative count is refused untouched.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QVPalette.h"

namespace {

std::string Reds(const qvfw::CPalette& palette) {
  std::string s;
  for (const PALETTEENTRY& e : palette.GetAllEntries()) s += std::to_string(e.peRed) + " ";
  return s;
}

qvfw::CPalette Grays(std::vector<BYTE> levels) {
  std::vector<PALETTEENTRY> entries;
  for (BYTE v : levels) entries.push_back({v, v, v, 0});
  qvfw::CPalette palette;
  palette.CreatePalette(entries.data(), static_cast<int>(entries.size()));
  return palette;
}

TEST(CQVPalette, SortsReachOnlyTheCountedEntriesOfTheHandle) {
  struct Case {
    const char* name;
    BOOL (*sort)(qvfw::CPalette&, int);
    int count;
    BOOL result;
    const char* expected;
  };
  const Case cases[] = {
      {"rgb, first four", CQVPalette::SortRGB, 4, TRUE, "10 20 40 50 30 0 "},
      {"brightness, count beyond the size", CQVPalette::SortBrightness, 300, TRUE, "0 10 20 30 40 50 "},
      {"hsb, count equal to the size", CQVPalette::SortHSB, 6, TRUE, "0 10 20 30 40 50 "},
      {"hue, count 1", CQVPalette::SortHue, 1, TRUE, "50 40 20 10 30 0 "},
      {"saturation, negative count", CQVPalette::SortSaturation, -1, FALSE, "50 40 20 10 30 0 "},
  };
  for (const Case& c : cases) {
    qvfw::CPalette palette = Grays({50, 40, 20, 10, 30, 0});
    EXPECT_EQ(c.sort(palette, c.count), c.result) << c.name;
    EXPECT_EQ(Reds(palette), c.expected) << c.name;
  }
  qvfw::CPalette none;
  EXPECT_FALSE(CQVPalette::SortRGB(none, 3));
}

TEST(CQVPalette, StandardTablesMakeRealPalettes) {
  qvfw::CPalette palette;
  ASSERT_TRUE(
      palette.CreatePalette(CQVPalette::m_WindowsSystemPalette.data(), QV_PALETTE_NUMBER_OF_ENTRIES_WINDOWSSYSTEM));
  EXPECT_EQ(palette.GetEntryCount(), 20);
  EXPECT_EQ(GetNearestPaletteIndex(palette, RGB(166, 202, 240)), 9u);
}

}  // namespace
