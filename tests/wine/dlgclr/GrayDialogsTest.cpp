/*
 * The gray scale, colored gray and balance colors dialogs through their
 * exports, one grouped test each: the caller's values come in (or fall back),
 * the user's changes move labels, edits and the after pane; Cancel leaves
 * structure and bitmap byte for byte; OK writes the values back and, under
 * QVDLG_AUTO_PROCESS, gives the caller's bitmap exactly what the pane showed.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <functional>

#include "ToneFixture.h"
#include "qv/qvimgops.h"
#include "qvdriver/TestOutput.h"
#include "resource.h"

namespace qv::test {
namespace {

struct Applied {
  std::vector<COLORREF> colors;
  std::vector<unsigned char> pixels;
};

Applied ApplyToCopy(const TestBitmap& source, const std::function<int(BITMAPHANDLE*)>& operation) {
  TestBitmap copy;
  EXPECT_EQ(Q_CopyBitmap(copy.Get(), sizeof(BITMAPHANDLE), source.Get(), 0), QV_SUCCESS);
  EXPECT_EQ(operation(copy.Get()), QV_SUCCESS);
  return {StripeColors(copy), copy.Pixels()};
}

template <class Params>
Params Head(TestBitmap& bitmap) {
  Params p{};
  p.uStructSize = sizeof p;
  p.pBitmap = bitmap.Get();
  p.bZoomToFit = 1;
  p.uDlgFlags = QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW;
  return p;
}

// The steps of `change` ending in Cancel, which must leave structure and bitmap as they were, then ending in OK.
template <class Params>
void CancelThenOk(int (*call)(HWND, Params*), Params& params, const TestBitmap& bitmap,
                  const std::function<void(Script&)>& change, const std::wstring& screenshot) {
  OwnerWindow owner;
  RunOptions options;
  options.stepWaitMs = 8000;
  const Params before = params;
  const auto pixels = bitmap.Pixels();
  Script cancel;
  change(cancel);
  RunResult result = DialogDriver().Run([&] { return call(owner.Handle(), &params); }, cancel.ClickCancel(), options);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_CANCEL);
  EXPECT_EQ(std::memcmp(&params, &before, sizeof params), 0) << "Cancel wrote into the structure";
  EXPECT_TRUE(bitmap.Pixels() == pixels) << "Cancel changed the bitmap";
  Script ok;
  change(ok);
  ok.Do("photograph", [&](StepContext& c) { c.Require(SaveTestScreenshot(c.Target(), "dlgclr", screenshot)); });
  result = DialogDriver().Run([&] { return call(owner.Handle(), &params); }, ok.ClickOk(), options);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_OK);
}

using Condition = std::function<bool(const DialogView&)>;

Condition AfterPaneShows(const Applied& applied) {
  return [&applied](const DialogView& v) { return PaneShows(v, kAfterViewId, applied.colors); };
}

// The controls show these texts.
Condition Texts(std::vector<std::pair<int, std::wstring>> texts) {
  return [texts](const DialogView& v) {
    for (const auto& [id, text] : texts)
      if (v.Text(id) != text) return false;
    return true;
  };
}

StepAction Press(int id, UINT key) {
  return [id, key](StepContext& c) { c.Require(c.View().PressKey(id, key)); };
}

TEST(GrayDialogs, BalanceColorsTakesFractionsAsPercentagesAndOkAppliesWhatThePreviewShowed) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  auto params = Head<QVBALANCECOLORSDLGPARAMS>(bitmap);
  // Record sizes are not checked on input; 150 % and -10 % come in as 0.
  params.RedFactor = {0, 1.5, 0.5, -0.1};
  params.GreenFactor = {0, 0, 1, 0};
  params.BlueFactor = {0, 0.25, 0, 1};
  QVBALANCINGRECORD in[3] = {{28, 0, 0.5, 0}, {28, 0, 1, 0}, {28, 0.25, 0, 1}};
  QVBALANCINGRECORD out[3] = {{28, 1, 0.5, 0}, {28, 0, 1, 0}, {28, 0.25, 0, 0.7}};
  const Applied taken = ApplyToCopy(bitmap, [&](BITMAPHANDLE* b) { return Q_BalanceColors(b, in, in + 1, in + 2, 0); });
  const Applied chosen = ApplyToCopy(bitmap,
                                     [&](BITMAPHANDLE* b) { return Q_BalanceColors(b, out, out + 1, out + 2, 0); });

  auto change = [&](Script& s) {
    s.Expect("the weights and texts came in", Texts({{IDC_BALANCE_RED_TO_RED, L"0"},
                                                     {IDC_BALANCE_RED_TO_GREEN, L"50"},
                                                     {IDC_BALANCE_RED_TO_BLUE, L"0"},
                                                     {IDC_BALANCE_BLUE_TO_RED, L"25"},
                                                     {IDC_BALANCE_GREEN_GROUP, KernelString(462)},
                                                     {IDC_BALANCE_BLUE_BLUE_LABEL, KernelString(466)}}))
        .WaitUntil("the after pane shows them", AfterPaneShows(taken))
        .Do("pick 100 % red into red and 70 % blue into blue",
            [](StepContext& c) {
              c.Require(c.View().SelectComboText(IDC_BALANCE_RED_TO_RED, L"100"));
              c.Require(c.View().SelectComboText(IDC_BALANCE_BLUE_TO_BLUE, L"70"));
            })
        .WaitUntil("the after pane follows", AfterPaneShows(chosen));
  };
  CancelThenOk(Q_DlgBalanceColors, params, bitmap, change, L"balance-colors.png");
  EXPECT_EQ(std::memcmp(&params.RedFactor, out, sizeof out), 0) << "fractions and record sizes written back";
  EXPECT_TRUE(bitmap.Pixels() == chosen.pixels) << "the caller's bitmap is not what the preview showed";
}

TEST(GrayDialogs, GrayScaleWeightsAlwaysAddUpAndOkAppliesWhatThePreviewShowed) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  auto params = Head<QVGRAYSCALEDLGPARAMS>(bitmap);
  params.nRedFactor = params.nGreenFactor = params.nBlueFactor = 300;  // 900 in all: ignored
  const Applied taken = ApplyToCopy(bitmap, [](BITMAPHANDLE* b) { return Q_GrayScaleBitmapExt(b, 333, 333, 334, 0); });
  const Applied chosen = ApplyToCopy(bitmap, [](BITMAPHANDLE* b) { return Q_GrayScaleBitmapExt(b, 666, 0, 334, 0); });

  auto change = [&](Script& s) {
    s.Expect("the defaults came in", Texts({{IDC_GRAYSCALE_RED_VALUE, L"333"},
                                            {IDC_GRAYSCALE_GREEN_VALUE, L"333"},
                                            {IDC_GRAYSCALE_BLUE_VALUE, L"334"},
                                            {IDC_GRAYSCALE_GROUP, KernelString(454)}}))
        .WaitUntil("the after pane shows them", AfterPaneShows(taken))
        .Do("page the first marker up", Press(IDC_GRAYSCALE_SLIDER, VK_NEXT))
        .Expect("red grew at green's cost",
                Texts({{IDC_GRAYSCALE_RED_VALUE, L"433"}, {IDC_GRAYSCALE_GREEN_VALUE, L"233"}}))
        .Do("send it as far as it goes", Press(IDC_GRAYSCALE_SLIDER, VK_END))
        .Expect("it stopped at the second marker",
                Texts({{IDC_GRAYSCALE_RED_VALUE, L"666"}, {IDC_GRAYSCALE_GREEN_VALUE, L"0"}}))
        .WaitUntil("the after pane follows", AfterPaneShows(chosen));
  };
  CancelThenOk(Q_DlgGrayScale, params, bitmap, change, L"gray-scale.png");
  EXPECT_EQ(std::vector<int>({params.nRedFactor, params.nGreenFactor, params.nBlueFactor}),
            std::vector<int>({666, 0, 334}));
  EXPECT_TRUE(bitmap.Pixels() == chosen.pixels) << "the caller's bitmap is not what the preview showed";
}

TEST(GrayDialogs, ColoredGrayTakesOrRefusesWeightsClampsTypedOnesAndOkAppliesWhatThePreviewShowed) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  auto params = Head<QVCOLOREDGRAYDLGPARAMS>(bitmap);
  params.nRedFactor = params.nGreenFactor = 600;  // with -200 refused these do not add up: 333, 333, 334
  params.nBlueFactor = -200;
  params.nRedGrayFactor = 1500;  // ignored
  params.nGreenGrayFactor = -300;
  const Applied taken = ApplyToCopy(bitmap, [](BITMAPHANDLE* b) {
    return Q_ConvertToColoredGray(b, 333, 333, 334, 0, -300, 0, 0);
  });
  const Applied chosen = ApplyToCopy(bitmap, [](BITMAPHANDLE* b) {
    return Q_ConvertToColoredGray(b, 433, 233, 334, 1000, -300, -200, 0);
  });

  auto change = [&](Script& s) {
    s.Expect("the fallback weights and the gray weights in range came in",
             Texts({{IDC_COLOREDGRAY_RED_VALUE, L"333"},
                    {IDC_COLOREDGRAY_BLUE_VALUE, L"334"},
                    {IDC_COLOREDGRAY_RED_GRAY_EDIT, L"0"},
                    {IDC_COLOREDGRAY_GREEN_GRAY_EDIT, L"-300"},
                    {IDC_COLOREDGRAY_GRAY_GROUP, KernelString(403)},
                    {IDC_COLOREDGRAY_BLUE_GRAY_LABEL, KernelString(406)}}))
        .WaitUntil("the after pane shows them", AfterPaneShows(taken))
        .Do("type 1500 as the red gray weight",
            [](StepContext& c) { c.Require(c.View().SetEditText(IDC_COLOREDGRAY_RED_GRAY_EDIT, L"1500")); })
        .Do("page the first colour marker up", Press(IDC_COLOREDGRAY_COLOR_SLIDER, VK_NEXT))
        .Do("page the blue gray weight down", Press(IDC_COLOREDGRAY_BLUE_GRAY_SLIDER, VK_PRIOR))
        .Expect("the box holds 1000 and labels and edits follow", Texts({{IDC_COLOREDGRAY_RED_GRAY_EDIT, L"1000"},
                                                                         {IDC_COLOREDGRAY_RED_VALUE, L"433"},
                                                                         {IDC_COLOREDGRAY_GREEN_VALUE, L"233"},
                                                                         {IDC_COLOREDGRAY_BLUE_GRAY_EDIT, L"-200"}}))
        .WaitUntil("the after pane follows", AfterPaneShows(chosen));
  };
  CancelThenOk(Q_DlgColoredGray, params, bitmap, change, L"colored-gray.png");
  EXPECT_EQ(std::vector<int>({params.nRedFactor, params.nGreenFactor, params.nBlueFactor, params.nRedGrayFactor,
                              params.nGreenGrayFactor, params.nBlueGrayFactor}),
            std::vector<int>({433, 233, 334, 1000, -300, -200}));
  EXPECT_TRUE(bitmap.Pixels() == chosen.pixels) << "the caller's bitmap is not what the preview showed";
}

}  // namespace
}  // namespace qv::test
