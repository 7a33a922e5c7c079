/*
 * Color names and component ranges: the CSS table is complete and consistent,
 * names are found by exact color only, and the two-step fetch honours buffers.
 */
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "ColorNames.h"
#include "qv/qvdlgkrn.h"

namespace {

COLORREF ColorRef(int r, int g, int b) { return COLORREF(r | (g << 8) | (b << 16)); }

std::wstring NameOf(COLORREF color) {
  unsigned length = 0;
  if (Q_DlgGetColorNameLen(color, &length) != QV_SUCCESS) return L"";
  std::wstring name(length + 1, L'\0');
  EXPECT_EQ(Q_DlgGetColorName(color, &name[0], length + 1), QV_SUCCESS);
  name.resize(length);
  return name;
}

}  // namespace

TEST(ColorNames, TableHoldsThe148CssNamesOnce) {
  std::set<std::wstring> names;
  std::wstring previous;
  int count = 0;
  for (const qv::NamedColor* c = qv::NamedColorsBegin(); c != qv::NamedColorsEnd(); ++c, ++count) {
    const std::wstring name(c->pszName);
    EXPECT_TRUE(names.insert(name).second) << "duplicate name";
    EXPECT_LT(previous, name) << "not alphabetical at " << std::string(name.begin(), name.end());
    EXPECT_LE(c->uRgb, 0xFFFFFFu);
    previous = name;
  }
  EXPECT_EQ(count, 148);
  // Every color of the table answers with a name that has exactly that color.
  for (const qv::NamedColor* c = qv::NamedColorsBegin(); c != qv::NamedColorsEnd(); ++c) {
    const std::wstring name = NameOf(ColorRef(c->uRgb >> 16, (c->uRgb >> 8) & 0xFF, c->uRgb & 0xFF));
    bool sameColor = false;
    for (const qv::NamedColor* d = qv::NamedColorsBegin(); d != qv::NamedColorsEnd(); ++d)
      if (name == d->pszName) sameColor = d->uRgb == c->uRgb;
    EXPECT_TRUE(sameColor);
  }
}

TEST(ColorNames, ExactMatchInCOLORREFOrder) {
  EXPECT_EQ(NameOf(ColorRef(255, 0, 0)), L"red");
  EXPECT_EQ(NameOf(ColorRef(0, 0, 255)), L"blue");    // COLORREF keeps red in the low byte
  EXPECT_EQ(NameOf(ColorRef(0, 255, 255)), L"aqua");  // "cyan" is the second name
  EXPECT_EQ(NameOf(ColorRef(128, 128, 128)), L"gray");
  EXPECT_EQ(NameOf(ColorRef(102, 51, 153)), L"rebeccapurple");
  EXPECT_EQ(NameOf(ColorRef(250, 250, 210)), L"lightgoldenrodyellow");
  EXPECT_EQ(NameOf(ColorRef(255, 0, 0) | 0x02000000u), L"red") << "the high byte is ignored";

  unsigned length = 77;
  EXPECT_EQ(Q_DlgGetColorNameLen(ColorRef(255, 0, 1), &length), QV_ERROR_NOT_FOUND);
  EXPECT_EQ(length, 77u);
  ASSERT_EQ(Q_DlgGetColorNameLen(ColorRef(255, 0, 0), &length), QV_SUCCESS);
  EXPECT_EQ(length, 3u);
  wchar_t small[3] = {L'x', L'x', L'x'};
  EXPECT_EQ(Q_DlgGetColorName(ColorRef(255, 0, 0), small, 3), QV_ERROR_BUFFER_TOO_SMALL);
  EXPECT_EQ(small[0], L'x');
  wchar_t buffer[16];
  EXPECT_EQ(Q_DlgGetColorName(ColorRef(255, 0, 1), buffer, 16), QV_ERROR_NOT_FOUND);
  EXPECT_EQ(Q_DlgGetColorNameLen(ColorRef(255, 0, 0), nullptr), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgGetColorName(ColorRef(255, 0, 0), nullptr, 16), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgGetColorName(ColorRef(255, 0, 0), buffer, 0), QV_ERROR_INVALID_PARAMETER);
}

TEST(ComponentRanges, ByIndex) {
  const std::pair<int, int> expected[] = {
      {6, 359},  {8, 100},  {10, 100}, {12, 100}, {14, 100},  {16, 100}, {18, 100},
      {20, 100}, {22, 100}, {23, 0},   {24, 127}, {25, -128}, {26, 127}, {27, -128},
  };
  for (const auto& [index, value] : expected) {
    int got = -999;
    ASSERT_EQ(Q_DlgGetComponentRange(index, &got), QV_SUCCESS) << index;
    EXPECT_EQ(got, value) << index;
  }
  for (int index : {-1, 0, 5, 7, 21, 28, 1000}) {
    int got = -999;
    EXPECT_EQ(Q_DlgGetComponentRange(index, &got), QV_ERROR_NOT_FOUND) << index;
    EXPECT_EQ(got, -999);
  }
  EXPECT_EQ(Q_DlgGetComponentRange(6, nullptr), QV_ERROR_INVALID_PARAMETER);
  // The ranges bound what the conversions produce and accept.
  int hueMax = 0, aMin = 0, bMax = 0;
  Q_DlgGetComponentRange(QV_RANGE_HUE_MAX, &hueMax);
  Q_DlgGetComponentRange(QV_RANGE_A_MIN, &aMin);
  Q_DlgGetComponentRange(QV_RANGE_B_MAX, &bMax);
  const QVHSB topHue{hueMax, 100, 100};
  QVRGB rgb{};
  EXPECT_EQ(Q_DlgHSBToRGB(&topHue, &rgb), QV_SUCCESS);
  const QVLAB edge{50, aMin, bMax};
  EXPECT_EQ(Q_DlgLabToRGB(&edge, &rgb), QV_SUCCESS);
}
