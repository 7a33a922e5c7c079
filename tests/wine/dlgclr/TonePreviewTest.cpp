/*
 * What the single-value dialogs show and what OK does to the caller's bitmap:
 * the after pane holds the effect applied to the image (compared with the
 * kernel's operation run on a copy), a slider move re-renders it, and under
 * QVDLG_AUTO_PROCESS the caller's bitmap after OK is byte for byte the
 * operation applied to a copy with the same value. A failing run still closes
 * the dialog and its code becomes the export's result. Each run leaves a
 * screenshot of the finished dialog in the test output folder.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>

#include "ToneFixture.h"
#include "qvdriver/TestOutput.h"

namespace qv::test {
namespace {

struct Expected {
  std::vector<COLORREF> colors;
  std::vector<unsigned char> pixels;
};

Expected ExpectedAfter(const ToneExport& e, const TestBitmap& source, int value) {
  TestBitmap result;
  int code = 0;
  ApplyOperation(e, source, value, result, &code);
  Expected expected;
  expected.colors = StripeColors(result);
  expected.pixels = result.Pixels();
  return expected;
}

std::wstring Wide(const char* text) { return std::wstring(text, text + std::strlen(text)); }

int SecondValue(const ToneExport& e) {
  if (e.minimum < 0) return e.previewValue == -700 ? 700 : -e.previewValue;
  return e.previewValue == 3 ? 5 : 150;
}

class EveryTonePreview : public ::testing::TestWithParam<ToneExport> {};

TEST_P(EveryTonePreview, AfterPaneShowsTheOperationAndOkAppliesItToTheCallersBitmap) {
  const ToneExport& e = GetParam();
  OwnerWindow owner;
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  const std::vector<COLORREF> original{kDarkColor, kMiddleColor, kBrightColor};
  const Expected first = ExpectedAfter(e, bitmap, e.previewValue);
  const int second = SecondValue(e);
  const Expected last = ExpectedAfter(e, bitmap, second);
  ASSERT_NE(first.colors, original) << "the test value must change the image";
  ASSERT_NE(last.colors, first.colors);

  auto params = ToneParams(QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL, bitmap.Get(),
                           e.previewValue);
  Script script;
  script.WaitUntil("the before pane shows the image", [&](const DialogView& v) { return PaneShows(v, kBeforeViewId, original); })
      .WaitUntil("the after pane shows the effect of the caller's value",
                 [&](const DialogView& v) { return PaneShows(v, kAfterViewId, first.colors); })
      .Do("save a screenshot",
          [&](StepContext& c) {
            c.Require(SaveTestScreenshot(c.Target(), "dlgclr", L"tone-" + Wide(e.name) + L".png"));
          })
      .Do("drag the slider", [&](StepContext& c) { c.Require(c.View().SetTrackbar(e.sliderId, second)); })
      .WaitUntil("the after pane follows the new value",
                 [&](const DialogView& v) { return PaneShows(v, kAfterViewId, last.colors); })
      .Expect("the before pane is unchanged", [&](const DialogView& v) { return PaneShows(v, kBeforeViewId, original); })
      .ClickOk();
  RunOptions options;
  options.stepWaitMs = 8000;
  RunResult result = DriveTone(e, owner.Handle(), params, script, options);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_OK);
  EXPECT_EQ(params.nBrightness, second);
  EXPECT_TRUE(bitmap.Pixels() == last.pixels) << "the caller's bitmap is not the operation applied to a copy";
}

INSTANTIATE_TEST_SUITE_P(SingleValue, EveryTonePreview, ::testing::ValuesIn(ToneExports()),
                         [](const ::testing::TestParamInfo<ToneExport>& info) { return std::string(info.param.name); });

TEST(ToneAutoProcess, AFailingRunStillClosesAndItsCodeIsTheResult) {
  OwnerWindow owner;
  for (const char* name : {"Brightness", "Posterize"}) {
    const ToneExport& e = ToneExportNamed(name);
    TestBitmap bitmap;
    MakeStripedBitmap(bitmap);
    // A region the operations refuse: set a valid one, then let it reach past the right edge.
    const RECT inside{10, 10, 100, 100};
    ASSERT_EQ(Q_SetBitmapRgnRect(bitmap.Get(), &inside, 0), QV_SUCCESS);
    bitmap.Get()->rcRgn.right = kStripedWidth + 40;
    const auto pixels = bitmap.Pixels();
    const int refused = e.operation(bitmap.Get(), e.previewValue);
    ASSERT_LT(refused, 0) << "the operation must refuse the region for this test to mean anything";
    ASSERT_EQ(bitmap.Pixels(), pixels);

    auto params = ToneParams(QVDLG_AUTO_PROCESS, bitmap.Get(), e.minimum);
    Script script;
    script.Do("choose a value", [&](StepContext& c) { c.Require(c.View().SetTrackbar(e.sliderId, e.previewValue)); })
        .ClickOk();
    RunResult result = DriveTone(e, owner.Handle(), params, script);
    EXPECT_TRUE(result.Ok()) << name << "\n" << result.Report();
    EXPECT_EQ(result.returnValue, refused) << name;
    EXPECT_EQ(params.nBrightness, e.previewValue) << name << ": the values are written before the run's code returns";
    EXPECT_EQ(bitmap.Pixels(), pixels) << name;
    bitmap.Get()->rcRgn.right = inside.right;
  }
}

}  // namespace
}  // namespace qv::test
