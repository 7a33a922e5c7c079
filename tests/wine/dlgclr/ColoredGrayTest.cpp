/*
 * The colored gray dialog through its export: colour weights 600, 600, -200
 * fall back to 333, 333, 334 and a gray weight of 1500 is ignored; typed
 * into an edit, 1500 becomes 1000; the colour slider and a gray slider move
 * their weights, and labels, edits and the after pane follow; Cancel leaves
 * structure and bitmap byte for byte, and OK writes the six weights and gives
 * the caller's bitmap exactly what the after pane showed.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include "GrayFixture.h"
#include "qv/qvimgops.h"
#include "resource.h"

namespace qv::test {
namespace {

Applied Tinted(const TestBitmap& source, int red, int green, int blue, int redGray, int greenGray, int blueGray) {
  return ApplyToCopy(source, [=](BITMAPHANDLE* b) {
    return Q_ConvertToColoredGray(b, red, green, blue, redGray, greenGray, blueGray, 0);
  });
}

bool Shows(const DialogView& v, std::initializer_list<std::pair<int, const wchar_t*>> texts) {
  for (const auto& [id, text] : texts)
    if (v.Text(id) != std::wstring(text)) return false;
  return true;
}

TEST(ColoredGrayDialog, WeightsComeInOrFallBackTypedAndSlidValuesFollowAndOkAppliesWhatThePreviewShowed) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  QVCOLOREDGRAYDLGPARAMS params{};
  params.uStructSize = sizeof params;
  params.pBitmap = bitmap.Get();
  params.bZoomToFit = 1;
  params.nRedFactor = 600;
  params.nGreenFactor = 600;
  params.nBlueFactor = -200;
  params.nRedGrayFactor = 1500;
  params.nGreenGrayFactor = -300;
  params.nBlueGrayFactor = 0;
  params.uDlgFlags = QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW;
  const Applied taken = Tinted(bitmap, 333, 333, 334, 0, -300, 0);
  const Applied typed = Tinted(bitmap, 333, 333, 334, 1000, -300, 0);
  const Applied last = Tinted(bitmap, 433, 233, 334, 1000, -300, -200);
  ASSERT_NE(taken.colors, typed.colors);
  ASSERT_NE(typed.colors, last.colors);

  auto change = [&](Script& script) {
    script
        .Do("read the texts",
            [](StepContext& c) {
              const DialogView v = c.View();
              if (v.Caption() != KernelString(398)) c.Fail("caption is not the title string");
              if (v.Text(IDC_COLOREDGRAY_GRAY_GROUP) != KernelString(403)) c.Fail("gray group box is not its string");
              if (v.Text(IDC_COLOREDGRAY_BLUE_GRAY_LABEL) != KernelString(406)) c.Fail("label is not its string");
            })
        .Expect("the fallback weights and the gray weights in range came in",
                [](const DialogView& v) {
                  return Shows(v, {{IDC_COLOREDGRAY_RED_VALUE, L"333"},
                                   {IDC_COLOREDGRAY_GREEN_VALUE, L"333"},
                                   {IDC_COLOREDGRAY_BLUE_VALUE, L"334"},
                                   {IDC_COLOREDGRAY_RED_GRAY_EDIT, L"0"},
                                   {IDC_COLOREDGRAY_GREEN_GRAY_EDIT, L"-300"},
                                   {IDC_COLOREDGRAY_BLUE_GRAY_EDIT, L"0"}});
                })
        .WaitUntil("the after pane shows them",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, taken.colors); })
        .Do("type 1500 as the red gray weight",
            [](StepContext& c) { c.Require(c.View().SetEditText(IDC_COLOREDGRAY_RED_GRAY_EDIT, L"1500")); })
        .Expect("it became 1000", [](const DialogView& v) { return Shows(v, {{IDC_COLOREDGRAY_RED_GRAY_EDIT, L"1000"}}); })
        .WaitUntil("the after pane follows", [&](const DialogView& v) { return PaneShows(v, kAfterViewId, typed.colors); })
        .Do("page the first colour marker up and the blue gray weight down",
            [](StepContext& c) {
              c.Require(c.View().PressKey(IDC_COLOREDGRAY_COLOR_SLIDER, VK_NEXT));
              c.Require(c.View().PressKey(IDC_COLOREDGRAY_BLUE_GRAY_SLIDER, VK_PRIOR));
            })
        .Expect("labels and edit follow",
                [](const DialogView& v) {
                  return Shows(v, {{IDC_COLOREDGRAY_RED_VALUE, L"433"},
                                   {IDC_COLOREDGRAY_GREEN_VALUE, L"233"},
                                   {IDC_COLOREDGRAY_BLUE_VALUE, L"334"},
                                   {IDC_COLOREDGRAY_BLUE_GRAY_EDIT, L"-200"}});
                })
        .WaitUntil("the after pane follows again",
                   [&](const DialogView& v) { return PaneShows(v, kAfterViewId, last.colors); });
  };
  CancelThenOk(Q_DlgColoredGray, params, bitmap, change, L"colored-gray.png");

  const int32_t written[] = {params.nRedFactor,     params.nGreenFactor,     params.nBlueFactor,
                             params.nRedGrayFactor, params.nGreenGrayFactor, params.nBlueGrayFactor};
  const int32_t expected[] = {433, 233, 334, 1000, -300, -200};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(written[i], expected[i]) << i;
  EXPECT_TRUE(bitmap.Pixels() == last.pixels) << "the caller's bitmap is not what the preview showed";
}

}  // namespace
}  // namespace qv::test
