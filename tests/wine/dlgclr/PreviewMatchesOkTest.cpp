/*
 * The after pane of every single-value dialog shows what OK does to the
 * caller's bitmap. Each row opens a dialog under QVDLG_AUTO_PROCESS on an
 * image larger than the pane, made of flat blocks (so a reduction to the pane
 * keeps each block's colour in its middle), waits until the after pane shows
 * the painted colour of every block it covers as the operation on a copy
 * leaves it, presses OK, and compares the caller's bitmap with that copy byte
 * for byte. The middle blocks are dark and the rest bright, so the middle
 * part a pane shows at 100 % has another median than the whole image: a
 * histogram contrast curve taken from the pane's part shows wrong colours.
 * Bitmaps a dialog refuses at its entry never open one.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "ToneFixture.h"
#include "qvdriver/WinHandles.h"

namespace qv::test {
namespace {

constexpr int kBlock = 80;
constexpr int kColumns = 8;
constexpr int kRows = 6;

enum class Kind { kBgr24, kPaletteWithRegion, kSignedGray16, k565BlueLow, k565RedLow };

struct Row {
  const char* what;
  Kind kind;
  bool fit;
};

// Dark in the middle four columns of the middle four rows: 16 of 48 blocks, but most of what a pane shows
// at 100 % around the image's centre.
COLORREF BlockColor(int i, int j) {
  if (i >= 2 && i <= 5 && j >= 1 && j <= 4) return RGB(40 + 12 * i, 60 + 10 * j, 90 - 8 * i);
  return RGB(200 - 6 * i, 150 + 9 * j, 60 + 11 * i + 5 * j);
}

uint16_t Pack565(COLORREF c, bool redLow) {
  const unsigned r = GetRValue(c) >> 3, g = GetGValue(c) >> 2, b = GetBValue(c) >> 3;
  return static_cast<uint16_t>(redLow ? (b << 11) | (g << 5) | r : (r << 11) | (g << 5) | b);
}

void PutBlockPixel(BITMAPHANDLE* b, Kind kind, int x, int y, int i, int j) {
  uint8_t* row = b->pData + static_cast<size_t>(y) * b->nBytesPerLine;
  const COLORREF c = BlockColor(i, j);
  uint16_t word = 0;
  switch (kind) {
    case Kind::kBgr24:
      row[3 * x] = GetBValue(c);
      row[3 * x + 1] = GetGValue(c);
      row[3 * x + 2] = GetRValue(c);
      return;
    case Kind::kPaletteWithRegion: row[x] = static_cast<uint8_t>(j * kColumns + i); return;
    case Kind::kSignedGray16:
      word = static_cast<uint16_t>(static_cast<int16_t>((GetRValue(c) + GetGValue(c) - 250) * 90));
      break;
    case Kind::k565BlueLow:
    case Kind::k565RedLow: word = Pack565(c, kind == Kind::k565RedLow); break;
  }
  std::memcpy(row + 2 * x, &word, 2);
}

void MakeBlocks(TestBitmap& bitmap, Kind kind) {
  BITMAPHANDLE* b = bitmap.Get();
  RGBQUAD palette[256] = {};
  for (int k = 0; k < kColumns * kRows; ++k) {
    const COLORREF c = BlockColor(k % kColumns, k / kColumns);
    palette[k] = RGBQUAD{GetBValue(c), GetGValue(c), GetRValue(c), 0};
  }
  const bool indexed = kind == Kind::kPaletteWithRegion;
  const int bits = kind == Kind::kBgr24 ? 24 : indexed ? 8 : 16;
  const unsigned order = kind == Kind::kSignedGray16 ? QV_ORDER_GRAY
                         : kind == Kind::k565RedLow  ? QV_ORDER_RGB
                                                     : QV_ORDER_BGR;
  ASSERT_EQ(Q_CreateBitmap(b, sizeof(BITMAPHANDLE), kBlock * kColumns, kBlock * kRows, bits, order,
                           indexed ? palette : nullptr, indexed ? 256 : 0, 0),
            QV_SUCCESS);
  for (int y = 0; y < b->nHeight; ++y)
    for (int x = 0; x < b->nWidth; ++x) PutBlockPixel(b, kind, x, y, x / kBlock, y / kBlock);
  if (kind == Kind::kSignedGray16) b->uFlags |= QV_BMF_SIGNED;
  const RECT region{10, 10, 300, 200};
  if (indexed) {
    ASSERT_EQ(Q_SetBitmapRgnRect(b, &region, 0), QV_SUCCESS);
  }
}

// The colour Q_PaintBitmap gives one pixel, as a pane paints it.
COLORREF PaintedColor(const BITMAPHANDLE* b, int x, int y) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), 1, -1, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
  UniqueGdiObject dib(CreateDIBSection(dc.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  const HGDIOBJ old = SelectObject(dc.Get(), dib.Get());
  const RECT src{x, y, x + 1, y + 1};
  const RECT dst{0, 0, 1, 1};
  Q_PaintBitmap(dc.Get(), b, &src, &dst, 0);
  GdiFlush();
  const auto* p = static_cast<const uint8_t*>(bits);
  const COLORREF c = RGB(p[2], p[1], p[0]);
  SelectObject(dc.Get(), old);
  return c;
}

// The painted colours of the blocks a pane covers: all at fit zoom, the four round the centre at 100 % (a
// fixed zoom starts centred).
std::vector<COLORREF> ExpectedColors(const TestBitmap& result, bool fit) {
  std::vector<COLORREF> colors;
  for (int j = fit ? 0 : kRows / 2 - 1; j < (fit ? kRows : kRows / 2 + 1); ++j)
    for (int i = fit ? 0 : kColumns / 2 - 1; i < (fit ? kColumns : kColumns / 2 + 1); ++i) {
      const COLORREF c = PaintedColor(result.Get(), i * kBlock + kBlock / 2, j * kBlock + kBlock / 2);
      if (std::find(colors.begin(), colors.end(), c) == colors.end()) colors.push_back(c);
    }
  return colors;
}

bool PaneShowsAll(const DialogView& v, const std::vector<COLORREF>& colors, int tolerance, double share) {
  const auto pixels = v.Pixels(kAfterViewId);
  if (!pixels || pixels->Empty()) return false;
  for (COLORREF c : colors) {
    Bgra wanted;
    wanted.r = GetRValue(c);
    wanted.g = GetGValue(c);
    wanted.b = GetBValue(c);
    if (pixels->ShareNear(wanted, tolerance) < share) return false;
  }
  return true;
}

// What the export must answer before any window opens (QV_SUCCESS: it opens the dialog).
int EntryRefusal(const ToneExport& e, Kind kind) {
  if (kind == Kind::kPaletteWithRegion) return QV_ERROR_UNSUPPORTED_FORMAT;
  if (kind == Kind::kSignedGray16 && e.refusesSigned) return QV_ERROR_UNSUPPORTED_BITMAP;
  return QV_SUCCESS;
}

TEST(PreviewMatchesOk, EveryDialogAtFitAnd100PercentOnEveryKindOfBitmap) {
  const Row rows[] = {
      {"24-bit at fit zoom", Kind::kBgr24, true},
      {"24-bit at 100 %", Kind::kBgr24, false},
      {"palette image with a region", Kind::kPaletteWithRegion, true},
      {"signed 16-bit gray", Kind::kSignedGray16, true},
      {"5-6-5 blue in the low bits", Kind::k565BlueLow, true},
      {"5-6-5 red in the low bits", Kind::k565RedLow, true},
  };
  OwnerWindow owner;
  for (const Row& row : rows) {
    for (const ToneExport& e : ToneExports()) {
      SCOPED_TRACE(std::string(e.name) + ", " + row.what);
      TestBitmap bitmap;
      MakeBlocks(bitmap, row.kind);
      const std::vector<unsigned char> original = bitmap.Pixels();
      auto params = ToneParams(QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW, bitmap.Get(), e.previewValue);
      params.bZoomToFit = row.fit ? 1 : 0;
      DialogDriver driver;
      const int refusal = EntryRefusal(e, row.kind);
      if (refusal != QV_SUCCESS) {
        const RunResult result = driver.Run([&] { return e.call(owner.Handle(), &params); }, Script());
        EXPECT_FALSE(result.dialogSeen);
        EXPECT_EQ(result.returnValue, refusal);
        EXPECT_EQ(bitmap.Pixels(), original);
        continue;
      }
      TestBitmap expected;
      int code = 0;
      ApplyOperation(e, bitmap, e.previewValue, expected, &code);
      if (code != QV_SUCCESS) {
        ADD_FAILURE() << "the operation itself refuses this bitmap: " << code;
        continue;
      }
      const std::vector<COLORREF> colors = ExpectedColors(expected, row.fit);
      // A 5-6-5 preview is shown as 24-bit colour, so OK's result differs from it by the 5-6-5 rounding:
      // up to one 5-bit step. Swapped red and blue differ far more in every block.
      const bool is565 = row.kind == Kind::k565BlueLow || row.kind == Kind::k565RedLow;
      const int tolerance = is565 ? 8 : 3;
      const double share = row.fit ? 0.01 : 0.02;
      Script script;
      script
          .WaitUntil("the after pane shows what the operation makes of each block",
                     [&](const DialogView& v) { return PaneShowsAll(v, colors, tolerance, share); })
          .ClickOk();
      RunOptions options;
      options.stepWaitMs = 8000;
      const RunResult result = driver.Run([&] { return e.call(owner.Handle(), &params); }, script, options);
      EXPECT_TRUE(result.Ok()) << result.Report();
      EXPECT_EQ(result.returnValue, QV_DLG_OK);
      EXPECT_EQ(params.bZoomToFit, row.fit ? 1 : 0) << "no zoom control was shown, so the zoom stays";
      EXPECT_TRUE(bitmap.Pixels() == expected.Pixels()) << "OK did not apply the operation as run on a copy";
    }
  }
}

TEST(PreviewMatchesOk, AFailingRunStillClosesAndItsCodeIsTheResult) {
  OwnerWindow owner;
  for (const char* name : {"Brightness", "Posterize"}) {
    const ToneExport& e = ToneExportNamed(name);
    TestBitmap bitmap;
    MakeBlocks(bitmap, Kind::kBgr24);
    // A region the operations refuse: set a valid one, then let it reach past the right edge.
    const RECT inside{10, 10, 100, 100};
    ASSERT_EQ(Q_SetBitmapRgnRect(bitmap.Get(), &inside, 0), QV_SUCCESS);
    bitmap.Get()->rcRgn.right = bitmap.Get()->nWidth + 40;
    const auto pixels = bitmap.Pixels();
    const int refused = e.operation(bitmap.Get(), e.previewValue);
    ASSERT_LT(refused, 0) << "the operation must refuse the region for this test to mean anything";

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
