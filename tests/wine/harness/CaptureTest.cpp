/*
 * Pixel read-back and screenshots: the swatch's colour follows the dialog's
 * state exactly, a whole-dialog capture is not blank, and the PNG files land
 * in the test output folder as valid PNG data.
 */
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "SampleFixture.h"
#include "qvdriver/Capture.h"
#include "qvdriver/PngFile.h"
#include "qvdriver/TestOutput.h"
#include "resource.h"

namespace qv::test {
namespace {

// The share of the swatch in `color`, or -1 when it could not be captured.
double SwatchShare(const DialogView& v, Bgra color) {
  auto image = v.Pixels(IDC_SAMPLE_SWATCH);
  if (!image || image->Empty()) return -1;
  return image->ShareNear(color, 2);
}

bool IsPngFile(const std::wstring& path) {
  std::ifstream in(path.c_str(), std::ios::binary);
  unsigned char sig[8] = {};
  in.read(reinterpret_cast<char*>(sig), 8);
  const unsigned char png[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  return in.gcount() == 8 && std::equal(sig, sig + 8, png);
}

TEST(Capture, SwatchPixelsFollowLevelChannelAndApplyState) {
  struct Case {
    const char* name;
    int level;
    const wchar_t* channel;
    bool apply;
    Bgra expected;
  };
  const Case cases[] = {
      {"full red", 100, L"Red", true, Bgra{0, 0, 255}},
      {"full green", 100, L"Green", true, Bgra{0, 255, 0}},
      {"half blue", 50, L"Blue", true, Bgra{127, 0, 0}},
      {"black at zero", 0, L"Red", true, Bgra{0, 0, 0}},
      {"gray when not applied", 100, L"Red", false, Bgra{128, 128, 128}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QVSAMPLEDLGPARAMS params = SampleDefaults();
    double share = -2;
    Script script;
    script
        .Do("set level, channel and apply",
            [&c](StepContext& ctx) {
              ctx.Require(ctx.View().SelectComboText(IDC_SAMPLE_CHANNEL, c.channel));
              ctx.Require(ctx.View().SetTrackbar(IDC_SAMPLE_LEVEL, c.level));
              ctx.Require(ctx.View().SetCheck(IDC_SAMPLE_ENABLE, c.apply));
            })
        .Do("read the swatch", [&](StepContext& ctx) { share = SwatchShare(ctx.View(), c.expected); })
        .ClickCancel();
    RunResult result = DriveSample(params, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
    EXPECT_GT(share, 0.95) << "swatch share in the expected colour";
  }
}

TEST(Capture, ScreenshotsOfDialogAndControlAreWrittenAsPng) {
  const std::wstring dialogPng = TestOutputFile("Capture", L"sample-dialog.png");
  const std::wstring swatchPng = TestOutputFile("Capture", L"sample-swatch.png");
  _wremove(dialogPng.c_str());
  _wremove(swatchPng.c_str());
  QVSAMPLEDLGPARAMS params = SampleDefaults();
  Image dialog, client, okButton, trackbar;
  POINT clientOffset{};
  Script script;
  script.Do("drag the level to 80", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 80)); })
      .Do("take the screenshots",
          [&](StepContext& c) {
            c.Require(SaveTestScreenshot(c.Target(), "Capture", L"sample-dialog-helper.png"));
            dialog = CaptureWindow(c.Target());
            client = CaptureWindow(c.Target(), CaptureArea::Client);
            RECT window{};
            GetWindowRect(c.Target(), &window);
            ClientToScreen(c.Target(), &clientOffset);
            clientOffset.x -= window.left;
            clientOffset.y -= window.top;
            okButton = c.View().Pixels(IDOK).value_or(Image{});
            trackbar = c.View().Pixels(IDC_SAMPLE_LEVEL).value_or(Image{});
            c.Require(SavePng(dialog, dialogPng));
            auto swatch = c.View().Pixels(IDC_SAMPLE_SWATCH);
            if (!swatch) return c.Fail("no swatch pixels");
            c.Require(SavePng(*swatch, swatchPng));
          })
      .ClickOk();
  RunResult result = DriveSample(params, script);
  ASSERT_TRUE(result.Ok()) << result.Report();

  ASSERT_FALSE(dialog.Empty());
  EXPECT_FALSE(dialog.IsBlank());
  EXPECT_GT(dialog.CountColors(), 4u) << "frame, face, text and the swatch at least";
  EXPECT_GT(dialog.ShareNear(Bgra{0, 0, 204}, 2), 0.05) << "the red swatch is part of the dialog's picture";
  EXPECT_LT(client.width, dialog.width);
  EXPECT_LT(client.height, dialog.height);
  // The client area sits inside the whole-window picture at its real offset
  // (how the frame itself looks is up to Wine and the window manager).
  Image inner = dialog.Crop(clientOffset.x, clientOffset.y, clientOffset.x + client.width,
                            clientOffset.y + client.height);
  ASSERT_EQ(inner.pixels.size(), client.pixels.size());
  size_t same = 0;
  for (size_t i = 0; i < inner.pixels.size(); ++i) same += inner.pixels[i].SameColor(client.pixels[i]) ? 1 : 0;
  EXPECT_GT(static_cast<double>(same) / inner.pixels.size(), 0.99);
  EXPECT_EQ(client.ShareNear(Bgra{0xFD, 0x01, 0xFE}, 0), 0.0) << "part of the client area was never drawn";
  EXPECT_FALSE(okButton.IsBlank()) << "a push button draws its face and its text";
  EXPECT_FALSE(trackbar.IsBlank()) << "a trackbar draws its channel and thumb";
  EXPECT_TRUE(IsPngFile(dialogPng));
  EXPECT_TRUE(IsPngFile(swatchPng));
  EXPECT_TRUE(IsPngFile(TestOutputFile("Capture", L"sample-dialog-helper.png")));
  EXPECT_FALSE(SaveTestScreenshot(nullptr, "Capture", L"none.png")) << "no window, no file";
}

TEST(Capture, NothingToCaptureGivesEmptyImagesAndRefusedFiles) {
  EXPECT_TRUE(CaptureWindow(nullptr).Empty());
  EXPECT_TRUE(CaptureWindow(reinterpret_cast<HWND>(static_cast<intptr_t>(0x7FFF0))).Empty());
  Outcome saved = SavePng(Image{}, TestOutputFile("Capture", L"empty.png"));
  EXPECT_FALSE(saved);
  Image tiny;
  tiny.width = 1;
  tiny.height = 1;
  tiny.pixels = {Bgra{1, 2, 3, 255}};
  Outcome badPath = SavePng(tiny, L"Q:\\no\\such\\drive\\x.png");
  EXPECT_FALSE(badPath) << "an unwritable path must be reported";
}

}  // namespace
}  // namespace qv::test
