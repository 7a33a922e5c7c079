/*
 * The balance colors dialog through its export: the caller's fractions come
 * in as percentages (out-of-range ones as 0), a weight picked in its combo
 * re-renders the after pane, Cancel leaves structure and bitmap byte for
 * byte, and OK writes fractions and record sizes back and, under
 * QVDLG_AUTO_PROCESS, gives the caller's bitmap exactly what the after pane
 * showed.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include "GrayFixture.h"
#include "qv/qvimgops.h"
#include "resource.h"

namespace qv::test {
namespace {

QVBALANCINGRECORD Record(double toRed, double toGreen, double toBlue) {
  return QVBALANCINGRECORD{0, toRed, toGreen, toBlue};  // the size is not checked on input
}

Applied Balanced(const TestBitmap& source, const QVBALANCINGRECORD (&records)[3]) {
  QVBALANCINGRECORD sized[3];
  for (int i = 0; i < 3; ++i) {
    sized[i] = records[i];
    sized[i].uStructSize = sizeof(QVBALANCINGRECORD);
  }
  return ApplyToCopy(source, [&](BITMAPHANDLE* b) { return Q_BalanceColors(b, &sized[0], &sized[1], &sized[2], 0); });
}

TEST(BalanceColorsDialog, WeightsComeInAsPercentagesCancelKeepsEverythingAndOkAppliesWhatThePreviewShowed) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  const std::vector<COLORREF> original = StripeColors(bitmap);

  QVBALANCECOLORSDLGPARAMS params{};
  params.uStructSize = sizeof params;
  params.pBitmap = bitmap.Get();
  params.bZoomToFit = 1;
  // 150 % and -10 % come in as 0; 25.7 % shows as 25 and stays 25.7 until the user changes it.
  params.RedFactor = Record(1.5, 0.5, -0.1);
  params.GreenFactor = Record(0, 1, 0);
  params.BlueFactor = Record(0.257, 0, 1);
  params.uDlgFlags = QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW;
  const QVBALANCINGRECORD taken[3] = {Record(0, 0.5, 0), Record(0, 1, 0), Record(0.257, 0, 1)};
  const QVBALANCINGRECORD chosen[3] = {Record(1, 0.5, 0), Record(0, 1, 0), Record(0.257, 0, 0.7)};
  const Applied takenResult = Balanced(bitmap, taken);
  const Applied chosenResult = Balanced(bitmap, chosen);
  ASSERT_NE(takenResult.colors, chosenResult.colors);

  struct Shown {
    int id;
    const wchar_t* text;
  };
  const Shown shown[] = {
      {IDC_BALANCE_RED_TO_RED, L"0"},    {IDC_BALANCE_RED_TO_GREEN, L"50"},    {IDC_BALANCE_RED_TO_BLUE, L"0"},
      {IDC_BALANCE_GREEN_TO_RED, L"0"},  {IDC_BALANCE_GREEN_TO_GREEN, L"100"}, {IDC_BALANCE_GREEN_TO_BLUE, L"0"},
      {IDC_BALANCE_BLUE_TO_RED, L"25"},  {IDC_BALANCE_BLUE_TO_GREEN, L"0"},    {IDC_BALANCE_BLUE_TO_BLUE, L"100"},
  };
  auto change = [&](Script& script) {
    script
        .Do("read the weights and texts",
            [&](StepContext& c) {
              const DialogView v = c.View();
              for (const Shown& s : shown)
                if (v.Text(s.id) != std::wstring(s.text)) c.Fail("combo " + std::to_string(s.id) + " shows another value");
              if (v.Caption() != KernelString(460)) c.Fail("caption is not the title string");
              if (v.Text(IDC_BALANCE_GREEN_GROUP) != KernelString(462)) c.Fail("group box is not its string");
              if (v.Text(IDC_BALANCE_BLUE_BLUE_LABEL) != KernelString(466)) c.Fail("label is not its string");
            })
        .WaitUntil("the after pane shows the caller's weights",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, takenResult.colors); })
        .Do("pick 100 % red into red and 70 % blue into blue",
            [](StepContext& c) {
              c.Require(c.View().SelectComboText(IDC_BALANCE_RED_TO_RED, L"100"));
              c.Require(c.View().SelectComboText(IDC_BALANCE_BLUE_TO_BLUE, L"70"));
            })
        .WaitUntil("the after pane follows",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, chosenResult.colors); })
        .Expect("the before pane is unchanged", [&](const DialogView& v) { return PaneShows(v, kBeforeViewId, original); });
  };
  CancelThenOk(Q_DlgBalanceColors, params, bitmap, change, L"balance-colors.png");

  const QVBALANCINGRECORD* written[3] = {&params.RedFactor, &params.GreenFactor, &params.BlueFactor};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(written[i]->uStructSize, sizeof(QVBALANCINGRECORD)) << i;
    EXPECT_DOUBLE_EQ(written[i]->fToRed, chosen[i].fToRed) << i;
    EXPECT_DOUBLE_EQ(written[i]->fToGreen, chosen[i].fToGreen) << i;
    EXPECT_DOUBLE_EQ(written[i]->fToBlue, chosen[i].fToBlue) << i;
  }
  EXPECT_TRUE(bitmap.Pixels() == chosenResult.pixels) << "the caller's bitmap is not what the preview showed";
}

}  // namespace
}  // namespace qv::test
