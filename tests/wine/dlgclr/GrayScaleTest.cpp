/*
 * The gray scale dialog through its export: weights that do not add up to
 * 1000 come in as 333, 333, 334; keys move the first marker, which stops at
 * the second, so the green weight reaches 0 and never goes below; the labels
 * and the after pane follow; Cancel leaves structure and bitmap byte for
 * byte, and OK writes the weights and gives the caller's bitmap exactly
 * what the after pane showed.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include "GrayFixture.h"
#include "qv/qvimgops.h"
#include "resource.h"

namespace qv::test {
namespace {

Applied Gray(const TestBitmap& source, int red, int green, int blue) {
  return ApplyToCopy(source, [=](BITMAPHANDLE* b) { return Q_GrayScaleBitmapExt(b, red, green, blue, 0); });
}

bool LabelsShow(const DialogView& v, const wchar_t* red, const wchar_t* green, const wchar_t* blue) {
  return v.Text(IDC_GRAYSCALE_RED_VALUE) == std::wstring(red) &&
         v.Text(IDC_GRAYSCALE_GREEN_VALUE) == std::wstring(green) &&
         v.Text(IDC_GRAYSCALE_BLUE_VALUE) == std::wstring(blue);
}

TEST(GrayScaleDialog, MarkersSetWeightsThatAddUpCancelKeepsEverythingAndOkAppliesWhatThePreviewShowed) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  QVGRAYSCALEDLGPARAMS params{};
  params.uStructSize = sizeof params;
  params.pBitmap = bitmap.Get();
  params.bZoomToFit = 1;
  params.nRedFactor = 300;  // 900 in all: ignored
  params.nGreenFactor = 300;
  params.nBlueFactor = 300;
  params.uDlgFlags = QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW;
  const Applied defaults = Gray(bitmap, 333, 333, 334);
  const Applied paged = Gray(bitmap, 433, 233, 334);
  const Applied stopped = Gray(bitmap, 666, 0, 334);
  ASSERT_NE(defaults.colors, paged.colors);
  ASSERT_NE(paged.colors, stopped.colors);

  auto change = [&](Script& script) {
    script
        .Do("read the texts",
            [](StepContext& c) {
              const DialogView v = c.View();
              if (v.Caption() != KernelString(453)) c.Fail("caption is not the title string");
              if (v.Text(IDC_GRAYSCALE_GROUP) != KernelString(454)) c.Fail("group box is not its string");
              if (v.Text(IDC_GRAYSCALE_BLUE_LABEL) != KernelString(457)) c.Fail("label is not its string");
            })
        .Expect("the defaults came in", [](const DialogView& v) { return LabelsShow(v, L"333", L"333", L"334"); })
        .WaitUntil("the after pane shows the defaults",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, defaults.colors); })
        .Do("page the first marker up", [](StepContext& c) { c.Require(c.View().PressKey(IDC_GRAYSCALE_SLIDER, VK_NEXT)); })
        .Expect("red grew at green's cost", [](const DialogView& v) { return LabelsShow(v, L"433", L"233", L"334"); })
        .WaitUntil("the after pane follows", [&](const DialogView& v) { return PaneShows(v, kAfterViewId, paged.colors); })
        .Do("send the first marker as far as it goes",
            [](StepContext& c) { c.Require(c.View().PressKey(IDC_GRAYSCALE_SLIDER, VK_END)); })
        .Expect("it stopped at the second: green is 0", [](const DialogView& v) { return LabelsShow(v, L"666", L"0", L"334"); })
        .WaitUntil("the after pane follows again",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, stopped.colors); });
  };
  CancelThenOk(Q_DlgGrayScale, params, bitmap, change, L"gray-scale.png");

  EXPECT_EQ(params.nRedFactor, 666);
  EXPECT_EQ(params.nGreenFactor, 0);
  EXPECT_EQ(params.nBlueFactor, 334);
  EXPECT_TRUE(bitmap.Pixels() == stopped.pixels) << "the caller's bitmap is not what the preview showed";
}

}  // namespace
}  // namespace qv::test
