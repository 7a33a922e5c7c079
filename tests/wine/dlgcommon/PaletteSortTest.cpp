/*
 * CQVPalette over a real HPALETTE: a sort reaches only the first `count`
 * entries, a count beyond the palette sorts all of it, and a palette without
 * a handle or a negative count is refused untouched.
 */
#include <gtest/gtest.h>

#include <string>

#include "QVPalette.h"

TEST(CQVPalette, SortsReachOnlyTheCountedEntriesOfTheHandle) {
  struct Case {
    BOOL (*sort)(qvfw::CPalette&, int);
    int count;
    BOOL result;
    const char* expected;
  };
  const Case cases[] = {{CQVPalette::SortRGB, 4, TRUE, "10 20 40 50 30 0 "},
                        {CQVPalette::SortBrightness, 300, TRUE, "0 10 20 30 40 50 "},
                        {CQVPalette::SortHue, 1, TRUE, "50 40 20 10 30 0 "},
                        {CQVPalette::SortSaturation, -1, FALSE, "50 40 20 10 30 0 "}};
  for (const Case& c : cases) {
    PALETTEENTRY grays[6] = {};
    const BYTE levels[6] = {50, 40, 20, 10, 30, 0};
    for (int i = 0; i < 6; ++i) grays[i].peRed = grays[i].peGreen = grays[i].peBlue = levels[i];
    qvfw::CPalette palette;
    ASSERT_TRUE(palette.CreatePalette(grays, 6));
    EXPECT_EQ(c.sort(palette, c.count), c.result) << c.count;
    std::string reds;
    for (const PALETTEENTRY& e : palette.GetAllEntries()) reds += std::to_string(e.peRed) + " ";
    EXPECT_EQ(reds, c.expected) << c.count;
  }
  qvfw::CPalette none;
  EXPECT_FALSE(CQVPalette::SortRGB(none, 3));
}
