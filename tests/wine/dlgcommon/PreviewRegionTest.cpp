/*
 * The preview of a bitmap with a region changes only the region's pixels,
 * at fit zoom and at a fixed zoom, and shows no change when the view misses
 * the region. The preview toolbar's tips and the out-of-date note are the
 * dialog kernel's texts, so a host's override shows in them.
 */
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "DialogFixture.h"
#include "PreviewTestIds.h"
#include "TestImages.h"
#include "qv/qvdlgkrn.h"
#include "qv/qvimgops.h"

namespace {

using dlgtest::ColorOf;
using dlgtest::Drive;
using dlgtest::ShownAt;
using dlgtest::TestBitmap;
using qv::test::DialogView;
using qv::test::Script;
using qv::test::StepContext;

constexpr int kWidth = 1200;
constexpr int kHeight = 900;
constexpr int kLevel = 400;

bool SamePixel(const BITMAPHANDLE& a, const BITMAPHANDLE& b, int x, int y) {
  const RGBTRIPLE p = dlgtest::Pixel24(a, x, y), q = dlgtest::Pixel24(b, x, y);
  return p.rgbtBlue == q.rgbtBlue && p.rgbtGreen == q.rgbtGreen && p.rgbtRed == q.rgbtRed;
}

// Compares the after bitmap with the source pixel by pixel: the effect's
// result where the caller's region lies under the pixel's centre, the
// source itself elsewhere. Returns the number of inside pixels.
int CheckAgainstRegion(StepContext& c, const CQVBeforeAfterDlg& dialog, const RECT& region, const RECT& area) {
  const CQVBitmap* source = dialog.GetDisplaySource();
  const CQVBitmap* after = dialog.GetAfterBitmap();
  if (!source || !after) {
    c.Fail("no display source or after bitmap");
    return 0;
  }
  const BITMAPHANDLE& s = *source->GetHandle();
  CQVBitmap brightened;
  brightened.Copy(s);
  Q_FreeBitmapRgn(brightened.GetHandle(), 0);
  Q_ChangeBitmapIntensity(brightened.GetHandle(), kLevel, 0);
  const int areaWidth = area.right - area.left, areaHeight = area.bottom - area.top;
  int inside = 0, wrong = 0;
  for (int y = 0; y < s.nHeight; ++y)
    for (int x = 0; x < s.nWidth; ++x) {
      const POINT under{area.left + (2 * x + 1) * areaWidth / (2 * s.nWidth),
                        area.top + (2 * y + 1) * areaHeight / (2 * s.nHeight)};
      const bool in = PtInRect(&region, under) != FALSE;
      inside += in ? 1 : 0;
      if (!SamePixel(*after->GetHandle(), in ? *brightened.GetHandle() : s, x, y) && wrong++ < 3)
        c.Fail("after pixel " + std::to_string(x) + "," + std::to_string(y) +
               (in ? " lacks the effect inside the region" : " changed outside the region"));
    }
  return inside;
}

struct RegionCase {
  const char* name;
  bool fit;
  RECT region;
  bool seen;  // whether the view shows part of the region
};

TEST(PreviewRegion, OnlyTheRegionChangesInTheAfterPaneAtEveryZoom) {
  const RegionCase cases[] = {
      {"fit zoom, a rectangle in the middle", true, {300, 200, 900, 700}, true},
      {"100 %, a rectangle in the middle", false, {560, 420, 640, 480}, true},
      {"100 %, a rectangle the view does not reach", false, {0, 0, 30, 20}, false},
  };
  for (const RegionCase& rc : cases) {
    SCOPED_TRACE(rc.name);
    TestBitmap photo(kWidth, kHeight, 24, QV_ORDER_BGR);
    ASSERT_TRUE(photo.Ok());
    photo.FillPattern(7);
    ASSERT_EQ(Q_SetBitmapRgnRect(photo.Get(), &rc.region, 0), QV_SUCCESS);
    const std::vector<uint8_t> original = photo.Bytes();
    CPreviewTestDialog dialog(photo.Get());
    dialog.SetZoomToFit(rc.fit ? 1 : 0);
    Script script;
    script.WaitUntil("the first preview is rendered", [&](const DialogView&) { return dialog.GetRenderCount() >= 1; })
        .Do("drag the level up", [&](StepContext&) { dialog.SetLevel(kLevel); })
        .WaitUntil("the preview ran with the new level",
                   [&](const DialogView&) { return dialog.LastEffectLevel() == kLevel; })
        .Do("compare the after pane with the region",
            [&](StepContext& c) {
              const BITMAPHANDLE& s = *dialog.GetDisplaySource()->GetHandle();
              // At fit zoom the whole image, at 100 % an unscaled crop.
              const RECT area = dialog.GetDisplaySourceRect();
              const bool wantCrop = !rc.fit && area.right - area.left == s.nWidth &&
                                    area.bottom - area.top == s.nHeight && s.nWidth < kWidth && s.nHeight < kHeight;
              const bool wantWhole = rc.fit && area.left == 0 && area.top == 0 && area.right == kWidth &&
                                     area.bottom == kHeight;
              if (!wantCrop && !wantWhole) return c.Fail("the source does not hold what the zoom shows");
              const int inside = CheckAgainstRegion(c, dialog, rc.region, area);
              if ((inside > 0) != rc.seen) c.Fail(std::to_string(inside) + " source pixels lie in the region");
              if (Q_BitmapHasRgn(&s, 0) != (rc.seen ? 1 : 0)) c.Fail("the display source's region is wrong");
            })
        .Do("the panes show it too",
            [&](StepContext& c) {
              if (!rc.fit) return;
              const BITMAPHANDLE& s = *dialog.GetDisplaySource()->GetHandle();
              const RECT whole{0, 0, kWidth, kHeight};
              const POINT outside{s.nWidth / 10, s.nHeight / 10}, inside{s.nWidth / 2, s.nHeight / 2};
              const BITMAPHANDLE& a = *dialog.GetAfterBitmap()->GetHandle();
              if (!ShownAt(dialog.GetAfterView(), whole, outside.x, outside.y)
                       .SameColor(ColorOf(s, outside.x, outside.y)))
                c.Fail("the after pane changed a pixel outside the region");
              if (!ShownAt(dialog.GetAfterView(), whole, inside.x, inside.y)
                       .SameColor(ColorOf(a, inside.x, inside.y)) ||
                  SamePixel(a, s, inside.x, inside.y))
                c.Fail("the after pane does not show the effect inside the region");
            })
        .ClickCancel();
    const auto result = Drive(dialog, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
    EXPECT_EQ(photo.Bytes(), original);
    RECT kept{};
    EXPECT_EQ(Q_GetBitmapRgnBounds(photo.Get(), &kept, 0), QV_SUCCESS);
    EXPECT_TRUE(EqualRect(&kept, &rc.region)) << "the caller's region changed";
  }
}

// Restores the kernel's own texts however the test ends.
class StringOverride {
 public:
  StringOverride(unsigned id, const wchar_t* text) : m_id(id) { m_ok = Q_DlgSetString(id, text) == QV_SUCCESS; }
  ~StringOverride() { Q_DlgSetString(m_id, nullptr); }
  StringOverride(const StringOverride&) = delete;
  StringOverride& operator=(const StringOverride&) = delete;
  bool Ok() const { return m_ok; }

 private:
  unsigned m_id;
  bool m_ok = false;
};

std::wstring ButtonText(HWND toolbar, int command) {
  wchar_t text[128] = {};
  const LRESULT length = SendMessageW(toolbar, TB_GETBUTTONTEXTW, command, reinterpret_cast<LPARAM>(text));
  return length > 0 ? std::wstring(text) : std::wstring();
}

TEST(PreviewRegion, TipsAndTheOutOfDateNoteAreTheKernelsTextsAndFollowAnOverride) {
  const std::wstring fitBuiltIn = CQVBaseDialog::GetDlgString(QVDLGSTR_PREVIEW_ZOOM_FIT);
  ASSERT_FALSE(fitBuiltIn.empty());
  const wchar_t kStale[] = L"Host says: not current, Apply";
  const wchar_t kReset[] = L"Host says: start over";
  TestBitmap photo(320, 240, 24, QV_ORDER_BGR);
  photo.FillPattern(3);
  {
    StringOverride stale(QVDLGSTR_PREVIEW_OUT_OF_DATE, kStale);
    StringOverride reset(QVDLGSTR_PREVIEW_RESET_VIEW, kReset);
    ASSERT_TRUE(stale.Ok() && reset.Ok());
    CPreviewTestDialog dialog(photo.Get());
    dialog.UseApplyButton(1);
    Script script;
    script.WaitUntil("the first preview is rendered", [&](const DialogView&) { return dialog.GetRenderCount() >= 1; })
        .Expect("the reset button's tip is the host's",
                [&](const DialogView&) {
                  return ButtonText(dialog.GetPreviewToolbar(), CQVBeforeAfterDlg::kCmdResetView) == kReset;
                })
        .Expect("the fit button's tip is the built-in text",
                [&](const DialogView&) {
                  return ButtonText(dialog.GetPreviewToolbar(), CQVBeforeAfterDlg::kCmdZoomFit) == fitBuiltIn;
                })
        .Do("change the level", [&](StepContext&) { dialog.SetLevel(250); })
        .Expect("the stale note is the host's text",
                [&](const DialogView&) { return dialog.GetAfterView().GetNote() == kStale; })
        .ClickCancel();
    const auto result = Drive(dialog, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
  }
}

}  // namespace
