/*
 * The before/after dialog driven like a user: bursts render once, the zoom
 * buttons, keys and wheel, panning that moves both panes, split view, the
 * effect switch, Apply, processing switched off, hidden panes and a failing
 * preview. That the after pane shows what OK does is proven on the real
 * dialogs (tests/wine/dlgclr).
 */
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "DialogFixture.h"
#include "PreviewTestIds.h"
#include "TestImages.h"
#include "qv/qvimgops.h"

namespace {

using dlgtest::ColorOf;
using dlgtest::Drive;
using dlgtest::ShownAt;
using dlgtest::TestBitmap;
using qv::test::DialogView;
using qv::test::Script;
using qv::test::StepContext;

std::unique_ptr<TestBitmap> Photo(int width, int height, unsigned seed = 1) {
  auto bitmap = std::make_unique<TestBitmap>(width, height, 24, QV_ORDER_BGR);
  bitmap->FillPattern(seed);
  return bitmap;
}

// True when the after pane shows the before pane's picture above its note band (inside the frame and the
// focus rectangle, which only one pane has).
bool AfterPaneShowsTheOriginal(const DialogView& v) {
  constexpr int kFrame = 4;
  const auto before = v.Pixels(IDC_TEST_BEFORE);
  const auto after = v.Pixels(IDC_TEST_AFTER);
  if (!before || !after || after->Empty() || before->width != after->width) return false;
  for (int y = kFrame; y < after->height / 2; ++y)
    for (int x = kFrame; x < after->width - kFrame; ++x)
      if (!before->At(x, y).SameColor(after->At(x, y))) return false;
  return true;
}

TEST(BeforeAfterPreview, ABurstOfChangesRendersOnlyTheNewestValue) {
  auto photo = Photo(800, 600);
  CPreviewTestDialog dialog(photo->Get());
  int runsBefore = 0;
  Script script;
  script.WaitUntil("the first preview is rendered", [&](const DialogView&) { return dialog.GetRenderCount() >= 1; })
      .Do("twenty changes in one go",
          [&](StepContext& c) {
            runsBefore = dialog.EffectRuns();
            for (int i = 1; i <= 20; ++i) dialog.SetLevel(i * 25);
            if (dialog.EffectRuns() != runsBefore) c.Fail("a change rendered synchronously");
          })
      .WaitUntil("the newest value is shown", [&](const DialogView&) { return dialog.LastEffectLevel() == 500; })
      .Expect("exactly one render ran for the burst",
              [&](const DialogView&) { return dialog.EffectRuns() == runsBefore + 1; })
      .ClickOk();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, IDOK);
}

TEST(BeforeAfterPreview, ZoomButtonsAndKeysMoveBothPanesAndAFixedZoomRendersOnlyTheVisiblePart) {
  auto photo = Photo(1200, 900);
  CPreviewTestDialog dialog(photo->Get());
  auto zoomIs = [&](int percent) {
    return [&, percent](const DialogView&) {
      return !dialog.GetZoomToFit() && dialog.GetAfterView().GetZoom() == percent &&
             dialog.GetBeforeView().GetZoom() == percent;
    };
  };
  Script script;
  script.WaitUntil("the first preview is rendered", [&](const DialogView&) { return dialog.GetRenderCount() >= 1; })
      .Expect("the preview starts at fit zoom",
              [&](const DialogView&) {
                return dialog.GetZoomToFit() == 1 && dialog.GetAfterView().GetZoomToFit() == 1;
              })
      .Do("press the 100 % button",
          [&](StepContext& c) { c.Require(c.View().Command(CQVBeforeAfterDlg::kCmdZoomNormal)); })
      .WaitUntil("both panes show 100 %", zoomIs(100))
      .Do("check the source covers the view and not the image",
          [&](StepContext& c) {
            const RECT visible = dialog.GetAfterView().VisibleContentRect();
            const BITMAPHANDLE* s = dialog.GetDisplaySource()->GetHandle();
            if (s->nWidth >= 1200 || s->nHeight >= 900) c.Fail("a 100 % view built a source of the whole image");
            const RECT covered = RECT{0, 0, s->nWidth, s->nHeight};
            if (visible.right - visible.left > covered.right || visible.bottom - visible.top > covered.bottom)
              c.Fail("the source is smaller than the visible part");
          })
      .Do("press the plus key on the keypad",
          [&](StepContext& c) { c.Require(c.View().PostKey(IDC_TEST_SLIDER, VK_ADD)); })
      .WaitUntil("one level up in both panes", zoomIs(150))
      .Do("press minus", [&](StepContext& c) { c.Require(c.View().PostKey(IDC_TEST_SLIDER, VK_SUBTRACT)); })
      .WaitUntil("back to 100 %", zoomIs(100))
      .Do("press divide", [&](StepContext& c) { c.Require(c.View().PostKey(IDC_TEST_SLIDER, VK_DIVIDE)); })
      .WaitUntil("fit zoom again",
                 [&](const DialogView&) {
                   return dialog.GetZoomToFit() == 1 && dialog.GetBeforeView().GetZoomToFit() == 1;
                 })
      .Do("press multiply", [&](StepContext& c) { c.Require(c.View().PostKey(IDC_TEST_SLIDER, VK_MULTIPLY)); })
      .WaitUntil("100 % by key", zoomIs(100))
      .Do("minus typed in the edit box is text, not zoom",
          [&](StepContext& c) { c.Require(c.View().PostKey(IDC_TEST_EDIT, VK_SUBTRACT)); })
      .Expect("still 100 %", zoomIs(100))
      .Do("switch the zoom keys off and press plus",
          [&](StepContext& c) {
            dialog.SetZoomKeyEnabled(0);
            c.Require(c.View().PostKey(IDC_TEST_SLIDER, VK_ADD));
          })
      .Expect("the key did nothing", zoomIs(100))
      .Do("the fit button", [&](StepContext& c) { c.Require(c.View().Command(CQVBeforeAfterDlg::kCmdZoomFit)); })
      .Expect("fit zoom", [&](const DialogView&) { return dialog.GetZoomToFit() == 1; })
      .ClickOk();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(dialog.GetZoomToFit(), 1);
}

TEST(BeforeAfterPreview, PanningOrWheelZoomInOnePaneMovesTheOther) {
  auto photo = Photo(1000, 800);
  CPreviewTestDialog dialog(photo->Get());
  dialog.SetZoomToFit(0);
  unsigned rendersBeforeFarPan = 0;
  Script script;
  script.WaitUntil("the first preview is rendered", [&](const DialogView&) { return dialog.GetRenderCount() >= 1; })
      .Expect("a fixed zoom from the start", [&](const DialogView&) { return dialog.GetAfterView().GetZoom() == 100; })
      .Do("drag the before pane up and left",
          [&](StepContext& c) {
            const DialogView v = c.View();
            c.Require(v.MouseDown(IDC_TEST_BEFORE, POINT{100, 80}));
            c.Require(v.MouseMove(IDC_TEST_BEFORE, POINT{70, 60}, true));
            c.Require(v.MouseMove(IDC_TEST_BEFORE, POINT{40, 30}, true));
            c.Require(v.MouseUp(IDC_TEST_BEFORE, POINT{40, 30}));
          })
      .Expect("both panes scrolled by the drag",
              [&](const DialogView&) {
                const POINT a = dialog.GetAfterView().GetScrollPosition();
                const POINT b = dialog.GetBeforeView().GetScrollPosition();
                return a.x == b.x && a.y == b.y && b.x > 0 && b.y > 0;
              })
      .Do("drag the after pane far to the right",
          [&](StepContext& c) {
            rendersBeforeFarPan = dialog.GetRenderCount();
            const DialogView v = c.View();
            c.Require(v.MouseDown(IDC_TEST_AFTER, POINT{150, 80}));
            c.Require(v.MouseMove(IDC_TEST_AFTER, POINT{5, 80}, true));
            c.Require(v.MouseUp(IDC_TEST_AFTER, POINT{5, 80}));
          })
      .Expect("the before pane followed",
              [&](const DialogView&) {
                const POINT a = dialog.GetAfterView().GetScrollPosition();
                const POINT b = dialog.GetBeforeView().GetScrollPosition();
                return a.x == b.x && a.y == b.y;
              })
      .Expect("leaving the margin rebuilt the source and rendered it",
              [&](const DialogView&) { return dialog.GetRenderCount() > rendersBeforeFarPan; })
      .Do("wheel up over the after pane",
          [&](StepContext& c) {
            RECT r{};
            GetWindowRect(dialog.GetAfterView().m_hWnd, &r);
            c.Require(c.View().MouseWheel(IDC_TEST_AFTER, POINT{60, 60}, WHEEL_DELTA));
          })
      .Expect("both panes zoomed in",
              [&](const DialogView&) {
                return dialog.GetAfterView().GetZoom() == 150 && dialog.GetBeforeView().GetZoom() == 150;
              })
      .Do("zoom keys off, as for a host without zoom buttons, back at fit zoom",
          [&](StepContext& c) {
            dialog.SetZoomKeyEnabled(0);
            dialog.OnZoomToFitBtnClicked();
            c.Require(c.View().MouseWheel(IDC_TEST_AFTER, POINT{60, 60}, WHEEL_DELTA));
            c.Require(c.View().MouseWheel(IDC_TEST_BEFORE, POINT{60, 60}, -WHEEL_DELTA));
          })
      .Expect("the wheel left the fit zoom alone",
              [&](const DialogView&) {
                return dialog.GetZoomToFit() == 1 && dialog.GetAfterView().GetZoomToFit() == 1 &&
                       dialog.GetBeforeView().GetZoomToFit() == 1;
              })
      .ClickCancel();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(BeforeAfterPreview, SplitViewEffectSwitchAndResetView) {
  auto photo = Photo(900, 700);
  CPreviewTestDialog dialog(photo->Get());
  const RECT whole{0, 0, 900, 700};
  int split = 0;
  auto shows = [&](bool effect, int x, int y) {
    const BITMAPHANDLE& expected = effect ? *dialog.GetAfterBitmap()->GetHandle()
                                          : *dialog.GetDisplaySource()->GetHandle();
    return ShownAt(dialog.GetAfterView(), whole, x, y).SameColor(ColorOf(expected, x, y));
  };
  Script script;
  script.WaitUntil("the first preview is rendered", [&](const DialogView&) { return dialog.GetRenderCount() >= 1; })
      .Do("a strong effect", [&](StepContext&) { dialog.SetLevel(700); })
      .WaitUntil("rendered", [&](const DialogView&) { return dialog.LastEffectLevel() == 700; })
      .Do("split view", [&](StepContext& c) { c.Require(c.View().Command(CQVBeforeAfterDlg::kCmdSplitView)); })
      .Expect("the after pane is split",
              [&](const DialogView&) { return dialog.GetSplitView() == 1 && dialog.GetAfterView().IsSplit(); })
      .Do("before left of the divider, after right of it",
          [&](StepContext& c) {
            const RECT placed = dialog.GetAfterView().ContentToClient(whole);
            split = dialog.GetAfterView().GetSplitPos() - placed.left;
            if (!shows(false, split - 6, 20)) c.Fail("left of the divider is not the original");
            if (!shows(true, split + 6, 20)) c.Fail("right of the divider is not the effect");
          })
      .Do("drag the divider 30 pixels left",
          [&](StepContext& c) {
            const int x = dialog.GetAfterView().GetSplitPos();
            const DialogView v = c.View();
            c.Require(v.MouseDown(IDC_TEST_AFTER, POINT{x, 40}));
            c.Require(v.MouseMove(IDC_TEST_AFTER, POINT{x - 30, 40}, true));
            c.Require(v.MouseUp(IDC_TEST_AFTER, POINT{x - 30, 40}));
          })
      .Do("the divider moved and the pane did not pan",
          [&](StepContext& c) {
            const RECT placed = dialog.GetAfterView().ContentToClient(whole);
            const int moved = dialog.GetAfterView().GetSplitPos() - placed.left;
            if (std::abs(moved - (split - 30)) > 1) c.Fail("divider at " + std::to_string(moved));
            if (!shows(true, moved + 6, 20) || !shows(false, moved - 6, 20))
              c.Fail("the halves do not follow the divider");
          })
      .Do("split off, effect off",
          [&](StepContext& c) {
            c.Require(c.View().Command(CQVBeforeAfterDlg::kCmdSplitView));
            c.Require(c.View().Command(CQVBeforeAfterDlg::kCmdEffectToggle));
          })
      .Do("the after pane shows the original",
          [&](StepContext& c) {
            if (dialog.GetShowEffect() != 0 || dialog.GetAfterView().IsSplit()) c.Fail("state not switched");
            if (!shows(false, 50, 50)) c.Fail("the original is not shown with the effect off");
          })
      .Do("effect on", [&](StepContext& c) { c.Require(c.View().Command(CQVBeforeAfterDlg::kCmdEffectToggle)); })
      .Expect("the effect is back", [&](const DialogView&) { return shows(true, 50, 50); })
      .Do("zoom, split and switch the effect off, then reset",
          [&](StepContext& c) {
            const DialogView v = c.View();
            c.Require(v.Command(CQVBeforeAfterDlg::kCmdZoomNormal));
            c.Require(v.Command(CQVBeforeAfterDlg::kCmdSplitView));
            c.Require(v.Command(CQVBeforeAfterDlg::kCmdEffectToggle));
            c.Require(v.Command(CQVBeforeAfterDlg::kCmdResetView));
          })
      .Expect("everything is back as it started",
              [&](const DialogView&) {
                return dialog.GetSplitView() == 0 && dialog.GetShowEffect() == 1 && dialog.GetZoomToFit() == 1 &&
                       dialog.GetBeforeView().GetZoomToFit() == 1 && !dialog.GetAfterView().IsSplit();
              })
      .Expect("the toolbar has its six buttons",
              [&](const DialogView& v) { return v.ToolbarButtonCount(CQVBeforeAfterDlg::kToolbarId) == 6; })
      .ClickCancel();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(BeforeAfterPreview, WithApplyChangesWaitForTheButtonAndThePaneSaysSo) {
  auto photo = Photo(640, 480);
  CPreviewTestDialog dialog(photo->Get());
  dialog.UseApplyButton(1);
  int runs = 0;
  Script script;
  script.Expect("Apply is shown", [](const DialogView& v) { return v.Visible(IDC_TEST_APPLY) == true; })
      .Do("change the level",
          [&](StepContext&) {
            runs = dialog.EffectRuns();
            dialog.SetLevel(300);
          })
      .Expect("nothing rendered, the pane is out of date",
              [&](const DialogView&) {
                return dialog.EffectRuns() == runs && dialog.IsAfterPaneStale() &&
                       !dialog.GetAfterView().GetNote().empty();
              })
      .Do("press Apply", [&](StepContext& c) { c.Require(c.View().Click(IDC_TEST_APPLY)); })
      .Expect("rendered once with the new value, the note is gone",
              [&](const DialogView&) {
                return dialog.EffectRuns() == runs + 1 && dialog.LastEffectLevel() == 300 &&
                       !dialog.IsAfterPaneStale() && dialog.GetAfterView().GetNote().empty();
              })
      .ClickOk();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
}

TEST(BeforeAfterPreview, ProcessingOffRendersNothingAndEndingMakesTheWaitingRender) {
  auto photo = Photo(300, 200);
  {
    CPreviewTestDialog dialog(photo->Get());
    dialog.onInit = [](CPreviewTestDialog& d) {
      d.EnableProcessing(0);
      for (HWND view : {d.GetBeforeView().m_hWnd, d.GetAfterView().m_hWnd}) ::ShowWindow(view, SW_HIDE);
    };
    Script script;
    script.Do("let posted messages run", [](StepContext&) {})
        .Do("rebuild the views", [&](StepContext&) { dialog.DoUpdateViews(); })
        .Expect("with both panes hidden no display source is made",
                [&](const DialogView&) { return dialog.GetDisplaySource() == nullptr && dialog.EffectRuns() == 0; })
        .ClickCancel();
    const auto result = Drive(dialog, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
  }
  {
    CPreviewTestDialog dialog(photo->Get());
    dialog.onInit = [](CPreviewTestDialog& d) { d.EnableProcessing(0); };
    Script script;
    script.Do("change the level", [&](StepContext&) { dialog.SetLevel(250); })
        .Do("let posted messages run", [](StepContext&) {})
        .Expect("no effect ran and nothing was rendered",
                [&](const DialogView&) {
                  return dialog.EffectRuns() == 0 && dialog.GetRenderCount() == 0 && dialog.GetAfterBitmap() == nullptr;
                })
        .ClickCancel();
    const auto result = Drive(dialog, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
  }
  {
    CPreviewTestDialog dialog(photo->Get());
    Script script;
    script.WaitUntil("the first preview is rendered", [&](const DialogView&) { return dialog.GetRenderCount() >= 1; })
        .Do("change the level and end at once",
            [&](StepContext& c) {
              dialog.SetLevel(-300);
              if (dialog.PreEndDialog(1) != 1) c.Fail("PreEndDialog kept the dialog open");
              if (dialog.LastEffectLevel() != -300) c.Fail("the waiting render was not made before ending");
            })
        .Do("a failing preview",
            [&](StepContext&) {
              dialog.failEffect = true;
              dialog.SetLevel(200);
            })
        .WaitUntil("the failure is kept", [&](const DialogView&) { return dialog.GetLastPreviewResult() == 0; })
        .Expect("the after pane says that the preview failed",
                [&](const DialogView&) {
                  return dialog.GetPreviewFailure() == 0 &&
                         dialog.GetAfterView().GetNote() == L"Preview failed (error 0)";
                })
        .Expect("the after pane drops the older render",
                [&](const DialogView& v) { return AfterPaneShowsTheOriginal(v); })
        .Do("a working preview again",
            [&](StepContext&) {
              dialog.failEffect = false;
              dialog.SetLevel(100);
            })
        .WaitUntil("the note goes",
                   [&](const DialogView&) {
                     return dialog.LastEffectLevel() == 100 && dialog.GetAfterView().GetNote().empty();
                   })
        .ClickOk();
    const auto result = Drive(dialog, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
    EXPECT_EQ(result.returnValue, IDOK) << "a failing preview does not keep the dialog open";
  }
}

TEST(BeforeAfterPreview, NeighbourhoodEffectsRunAtFullResolutionBeforeReduction) {
  // Solarize is pointwise, so running it before or after the reduction
  // differs only through the averaging: a checkerboard of 0 and 255 under a
  // threshold of 128 turns every 255 into 0 at full resolution (black), but
  // averages to mid-gray first and stays well above black when reduced first.
  TestBitmap checker(400, 300, 24, QV_ORDER_BGR);
  for (int y = 0; y < 300; ++y)
    for (int x = 0; x < 400; ++x)
      memset(checker.Get()->pData + size_t(y) * checker.Ref().nBytesPerLine + 3 * x, ((x + y) & 1) ? 255 : 0, 3);
  for (bool neighbourhood : {false, true}) {
    SCOPED_TRACE(neighbourhood ? "neighbourhood" : "pointwise");
    struct Solarizing : CPreviewTestDialog {
      using CPreviewTestDialog::CPreviewTestDialog;
      int PrepareEffectBitmap(CQVBitmap& b) override { return b.Solarize(128); }
    } dialog(checker.Get());
    dialog.neighbourhood = neighbourhood;
    int shown = -1;
    Script script;
    script.WaitUntil("rendered", [&](const DialogView&) { return dialog.GetAfterBitmap() != nullptr; })
        .Do("read the middle",
            [&](StepContext&) {
              const BITMAPHANDLE& a = *dialog.GetAfterBitmap()->GetHandle();
              shown = dlgtest::Pixel24(a, a.nWidth / 2, a.nHeight / 2).rgbtRed;
            })
        .ClickCancel();
    const auto result = Drive(dialog, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
    if (neighbourhood)
      EXPECT_LE(shown, 2);
    else
      EXPECT_GE(shown, 40);
  }
}

}  // namespace
