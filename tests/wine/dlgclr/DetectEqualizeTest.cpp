/*
 * The intensity detect and local histogram equalization dialogs driven
 * through their exports on the striped test image: what they open with
 * (caller values taken or replaced, the caller's channel bits ignored, the
 * colour controls off in the intensity mode), that each change of a control
 * re-renders the after pane with exactly what the kernel operation gives for
 * the new values, that OK under QVDLG_AUTO_PROCESS writes those values and
 * applies them to the caller's bitmap byte for byte, that Cancel leaves
 * structure and bitmap alone, and that with QVDLG_SHOW_APPLY a change waits
 * for the Apply button.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <functional>

#include "ToneFixture.h"
#include "qv/qvimgops.h"
#include "resource.h"

namespace qv::test {
namespace {

// Ends the script with OK or Cancel and runs the call; renders of the full-size neighbourhood effect get time.
RunResult Close(Script& script, bool ok, const std::function<int()>& call) {
  if (ok)
    script.ClickOk();
  else
    script.ClickCancel();
  RunOptions options;
  options.stepWaitMs = 8000;
  return DialogDriver().Run(call, script, options);
}

template <class Params>
void ExpectCancelled(const RunResult& result, const Params& params, const Params& before, const TestBitmap& caller,
                     const std::vector<unsigned char>& pixels) {
  EXPECT_EQ(result.returnValue, QV_DLG_CANCEL);
  EXPECT_EQ(std::memcmp(&params, &before, sizeof params), 0) << "Cancel wrote into the structure";
  EXPECT_TRUE(caller.Pixels() == pixels) << "Cancel changed the bitmap";
}

struct DetectValues {
  unsigned low, high;
  COLORREF in, out;
  unsigned channel;
};

void DetectedCopy(const TestBitmap& source, const DetectValues& v, TestBitmap& result) {
  EXPECT_EQ(Q_CopyBitmap(result.Get(), sizeof(BITMAPHANDLE), source.Get(), 0), QV_SUCCESS);
  EXPECT_EQ(Q_IntensityDetectBitmap(result.Get(), v.low, v.high, v.in, v.out, v.channel, 0), QV_SUCCESS);
}

std::vector<COLORREF> DetectedColors(const TestBitmap& source, const DetectValues& v) {
  TestBitmap result;
  DetectedCopy(source, v, result);
  return StripeColors(result);
}

QVINTENSITYDETECTDLGPARAMS DetectParams(uint32_t flags, BITMAPHANDLE* bitmap) {
  QVINTENSITYDETECTDLGPARAMS p{};
  p.uStructSize = sizeof p;
  p.pBitmap = bitmap;
  p.bZoomToFit = 1;
  p.uLow = 100;
  p.uHigh = 200;
  p.uChannel = QV_CHANNEL_GREEN;  // ignored: the dialog opens in the intensity mode
  p.crInColor = RGB(255, 0, 0);
  p.crOutColor = RGB(0, 0, 255);
  p.uDlgFlags = flags;
  return p;
}

bool ColorControlsEnabled(const DialogView& v, bool enabled) {
  for (int id : {IDC_INTENSITY_COLOR_GROUP, IDC_INTENSITY_RED, IDC_INTENSITY_GREEN, IDC_INTENSITY_BLUE,
                 IDC_INTENSITY_IN_COLOR, IDC_INTENSITY_OUT_COLOR, IDC_INTENSITY_IN_LABEL, IDC_INTENSITY_OUT_LABEL})
    if (v.Enabled(id) != enabled) return false;
  return true;
}

TEST(IntensityDetectDialog, OpensInTheIntensityModeFollowsEveryControlAndOkOrCancelAsPreviewed) {
  OwnerWindow owner;
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  const auto original = StripeColors(bitmap);
  const DetectValues opened{100, 200, RGB(255, 0, 0), RGB(0, 0, 255), 0};
  const DetectValues narrowed{100, 150, opened.in, opened.out, 0};
  const DetectValues red{100, 150, opened.in, opened.out, QV_CHANNEL_RED};
  const auto openedColors = DetectedColors(bitmap, opened);
  const auto narrowedColors = DetectedColors(bitmap, narrowed);
  TestBitmap redResult;
  DetectedCopy(bitmap, red, redResult);
  const auto redColors = StripeColors(redResult);
  ASSERT_NE(openedColors, narrowedColors) << "the slider move must change the image";
  ASSERT_NE(narrowedColors, redColors) << "the channel mode must change the image";

  for (bool ok : {true, false}) {
    SCOPED_TRACE(ok ? "OK" : "Cancel");
    TestBitmap caller;
    MakeStripedBitmap(caller);
    const auto pixels = caller.Pixels();
    auto params = DetectParams(QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW, caller.Get());
    const auto before = params;
    Script script;
    script
        .WaitUntil("the before pane shows the image",
                   [&](const DialogView& v) { return PaneShows(v, kBeforeViewId, original); })
        .WaitUntil("the after pane shows the caller's bounds",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, openedColors); })
        .Expect("the caller's channel bits are ignored",
                [](const DialogView& v) {
                  return v.ComboSelection(IDC_INTENSITY_CHANNEL) == 0 && v.ComboCount(IDC_INTENSITY_CHANNEL) == 2 &&
                         v.CheckState(IDC_INTENSITY_GREEN) == BST_UNCHECKED && ColorControlsEnabled(v, false);
                })
        .Expect("both sliders run over 0..255 with the caller's bounds",
                [](const DialogView& v) {
                  return v.TrackbarRange(IDC_INTENSITY_LOW_SLIDER) == std::make_pair(0, 255) &&
                         v.TrackbarPos(IDC_INTENSITY_LOW_SLIDER) == 100 &&
                         v.TrackbarPos(IDC_INTENSITY_HIGH_SLIDER) == 200 &&
                         v.Text(IDC_INTENSITY_HIGH_EDIT) == std::wstring(L"200");
                })
        .Do("drag the high slider",
            [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_INTENSITY_HIGH_SLIDER, 150)); })
        .WaitUntil("the after pane follows the high bound",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, narrowedColors); })
        .Expect("the edit box mirrors the slider",
                [](const DialogView& v) { return v.Text(IDC_INTENSITY_HIGH_EDIT) == std::wstring(L"150"); })
        .Do("pick the per-channel mode",
            [](StepContext& c) { c.Require(c.View().SelectComboIndex(IDC_INTENSITY_CHANNEL, 1)); })
        .Expect("the colour controls are on", [](const DialogView& v) { return ColorControlsEnabled(v, true); })
        .Do("check red", [](StepContext& c) { c.Require(c.View().SetCheck(IDC_INTENSITY_RED, true)); })
        .WaitUntil("the after pane shows red recoloured",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, redColors); })
        .Expect("the before pane is unchanged",
                [&](const DialogView& v) { return PaneShows(v, kBeforeViewId, original); });
    const RunResult result = Close(script, ok, [&] { return Q_DlgIntensityDetect(owner.Handle(), &params); });
    EXPECT_TRUE(result.Ok()) << result.Report();
    if (ok) {
      EXPECT_EQ(result.returnValue, QV_DLG_OK);
      EXPECT_EQ(params.uLow, 100u);
      EXPECT_EQ(params.uHigh, 150u);
      EXPECT_EQ(params.uChannel, QV_CHANNEL_RED);
      EXPECT_TRUE(caller.Pixels() == redResult.Pixels()) << "OK must do what the after pane showed";
    } else {
      ExpectCancelled(result, params, before, caller, pixels);
    }
  }
}

TEST(IntensityDetectDialog, DeepGrayWidensBothSlidersBeforeTheBoundsAreChecked) {
  OwnerWindow owner;
  TestBitmap gray;
  MakeGray16Bitmap(gray, false);
  auto params = DetectParams(0, gray.Get());
  params.uLow = 300;
  params.uHigh = 70000;
  Script script;
  script
      .Expect("0..65535 on both sliders, 300 kept, 70000 replaced by 0",
              [](const DialogView& v) {
                return v.TrackbarRange(IDC_INTENSITY_LOW_SLIDER) == std::make_pair(0, 65535) &&
                       v.TrackbarRange(IDC_INTENSITY_HIGH_SLIDER) == std::make_pair(0, 65535) &&
                       v.TrackbarPos(IDC_INTENSITY_LOW_SLIDER) == 300 && v.TrackbarPos(IDC_INTENSITY_HIGH_SLIDER) == 0;
              })
      .ClickOk();
  DialogDriver driver;
  const RunResult result = driver.Run([&] { return Q_DlgIntensityDetect(owner.Handle(), &params); }, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(params.uLow, 300u);
  EXPECT_EQ(params.uHigh, 0u);
}

void EqualizedCopy(const TestBitmap& source, const QVLOCALHISTOEQUALIZEDLGPARAMS& p, TestBitmap& result) {
  EXPECT_EQ(Q_CopyBitmap(result.Get(), sizeof(BITMAPHANDLE), source.Get(), 0), QV_SUCCESS);
  EXPECT_EQ(Q_LocalHistoEqualizeBitmap(result.Get(), p.nWidth, p.nHeight, p.nXExt, p.nYExt, p.uColorSpace, p.uSmooth,
                                       0),
            QV_SUCCESS);
}

QVLOCALHISTOEQUALIZEDLGPARAMS EqualizeParams(uint32_t flags, BITMAPHANDLE* bitmap) {
  QVLOCALHISTOEQUALIZEDLGPARAMS p{};
  p.uStructSize = sizeof p;
  p.pBitmap = bitmap;
  p.bZoomToFit = 1;
  // One tile over the whole image keeps the stripes flat, so the panes can be compared by colour.
  p.nWidth = kStripedWidth;
  p.nHeight = kStripedHeight;
  p.uColorSpace = 1;
  p.uSmooth = 4;
  p.uDlgFlags = flags;
  return p;
}

TEST(LocalHistoEqualizeDialog, PreviewFollowsTheColorSpaceWaitsForApplyWhenAskedAndOkOrCancelAsPreviewed) {
  OwnerWindow owner;
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  const auto original = StripeColors(bitmap);
  auto rgb = EqualizeParams(0, nullptr);
  auto gray = rgb;
  gray.uColorSpace = 4;
  TestBitmap rgbResult, grayResult;
  EqualizedCopy(bitmap, rgb, rgbResult);
  EqualizedCopy(bitmap, gray, grayResult);
  const auto rgbColors = StripeColors(rgbResult);
  const auto grayColors = StripeColors(grayResult);
  ASSERT_NE(rgbColors, original);
  ASSERT_NE(rgbColors, grayColors);

  struct Run {
    const char* name;
    bool apply;
    bool ok;
  };
  for (const Run& run : {Run{"OK", false, true}, Run{"Cancel", false, false}, Run{"Apply then OK", true, true}}) {
    SCOPED_TRACE(run.name);
    TestBitmap caller;
    MakeStripedBitmap(caller);
    const auto pixels = caller.Pixels();
    auto params = EqualizeParams(QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW | (run.apply ? QVDLG_SHOW_APPLY : 0),
                                 caller.Get());
    const auto before = params;
    Script script;
    script
        .WaitUntil("the after pane shows the caller's values",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, rgbColors); })
        .Expect("the Apply button shows only when asked",
                [&](const DialogView& v) { return v.Visible(IDC_QV_APPLY) == run.apply; })
        .Expect("the combos show the caller's values",
                [](const DialogView& v) {
                  return v.Text(IDC_LOCALHISTO_WIDTH) == std::wstring(L"320") &&
                         v.Text(IDC_LOCALHISTO_SMOOTH) == std::wstring(L"4") &&
                         v.ComboSelection(IDC_LOCALHISTO_SPACE) == 0;
                })
        .Do("pick the gray colour space",
            [](StepContext& c) { c.Require(c.View().SelectComboIndex(IDC_LOCALHISTO_SPACE, 2)); });
    if (run.apply) {
      script
          .Expect("the after pane waits for Apply",
                  [&](const DialogView& v) { return !PaneShows(v, kAfterViewId, grayColors); })
          .Do("click Apply", [](StepContext& c) { c.Require(c.View().Click(IDC_QV_APPLY)); });
    }
    script.WaitUntil("the after pane shows the gray equalization",
                     [&](const DialogView& v) { return PaneShows(v, kAfterViewId, grayColors); });
    const RunResult result = Close(script, run.ok, [&] { return Q_DlgLocalHistoEqualize(owner.Handle(), &params); });
    EXPECT_TRUE(result.Ok()) << result.Report();
    if (run.ok) {
      EXPECT_EQ(result.returnValue, QV_DLG_OK);
      EXPECT_EQ(params.uColorSpace, 4u);
      EXPECT_EQ(params.nWidth, kStripedWidth);
      EXPECT_EQ(params.nHeight, kStripedHeight);
      EXPECT_EQ(params.uSmooth, 4u);
      EXPECT_TRUE(caller.Pixels() == grayResult.Pixels()) << "OK must do what the after pane showed";
    } else {
      ExpectCancelled(result, params, before, caller, pixels);
    }
  }
}

TEST(LocalHistoEqualizeDialog, TinyBitmapsDisableSmoothingAndClampTheWindow) {
  OwnerWindow owner;
  TestBitmap tiny;
  ASSERT_EQ(Q_CreateBitmap(tiny.Get(), sizeof(BITMAPHANDLE), 5, 1, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  auto params = EqualizeParams(0, tiny.Get());
  params.nXExt = -4;
  Script script;
  script
      .Expect("smoothing off at 0, the window within 5 by 1",
              [](const DialogView& v) {
                return v.Enabled(IDC_LOCALHISTO_SMOOTH) == false &&
                       v.Text(IDC_LOCALHISTO_SMOOTH) == std::wstring(L"0") &&
                       v.Text(IDC_LOCALHISTO_WIDTH) == std::wstring(L"5") &&
                       v.Text(IDC_LOCALHISTO_HEIGHT) == std::wstring(L"1");
              })
      .ClickOk();
  DialogDriver driver;
  const RunResult result = driver.Run([&] { return Q_DlgLocalHistoEqualize(owner.Handle(), &params); }, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(params.uSmooth, 0u);
  EXPECT_EQ(params.nWidth, 5);
  EXPECT_EQ(params.nHeight, 1);
  EXPECT_EQ(params.nXExt, 0) << "a negative extension the kernel would refuse comes back as the combo shows it";
}

}  // namespace
}  // namespace qv::test
