/*
 * CQVBitmap: each effect member runs the kernel operation it names with its
 * arguments in the right places, ownership is never shared by accident, and
 * painting shows the pixels (with the paint gamma) without changing them.
 */
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "QVBitmap.h"
#include "TestImages.h"
#include "qv/qvimgops.h"

namespace {

using dlgtest::TestBitmap;

struct EffectCase {
  const char* name;
  std::function<int(CQVBitmap&)> member;
  std::function<int(BITMAPHANDLE*)> operation;
};

TEST(PreviewBitmap, EachEffectMemberMatchesItsKernelOperation) {
  static unsigned table[256];
  for (unsigned i = 0; i < 256; ++i) table[i] = 255 - i / 2;
  static unsigned hue[256];
  for (unsigned i = 0; i < 256; ++i) hue[i] = (i + 40) % 256;
  static unsigned mask[256];
  for (unsigned i = 0; i < 256; ++i) mask[i] = i < 128;
  static const QVBALANCINGRECORD red{28, 0.5, 0.25, 0.25}, green{28, 0.1, 0.8, 0.1}, blue{28, 0.0, 0.3, 0.9};
  // The single-value members are compared byte for byte with their operation through the real dialogs.
  const EffectCase cases[] = {
      {"gamma", [](CQVBitmap& b) { return b.GammaAdjustment(50, 120, 300); },
       [](BITMAPHANDLE* p) { return Q_GammaCorrectBitmapExt(p, 50, 120, 300, 0); }},
      {"intensity detect",
       [](CQVBitmap& b) { return b.IntensityDetect(30, 200, RGB(255, 0, 0), RGB(0, 0, 255), 0x010); },
       [](BITMAPHANDLE* p) { return Q_IntensityDetectBitmap(p, 30, 200, RGB(255, 0, 0), RGB(0, 0, 255), 0x010, 0); }},
      {"gray scale", [](CQVBitmap& b) { return b.GrayScaleBitmapExt(500, 300, 200); },
       [](BITMAPHANDLE* p) { return Q_GrayScaleBitmapExt(p, 500, 300, 200, 0); }},
      {"colored gray", [](CQVBitmap& b) { return b.ConvertToColoredGray(300, 500, 200, 100, -200, 300); },
       [](BITMAPHANDLE* p) { return Q_ConvertToColoredGray(p, 300, 500, 200, 100, -200, 300, 0); }},
      {"balance", [](CQVBitmap& b) { return b.BalanceColors(&red, &green, &blue); },
       [](BITMAPHANDLE* p) { return Q_BalanceColors(p, &red, &green, &blue, 0); }},
      {"remap intensity", [](CQVBitmap& b) { return b.RemapBitmapIntensity(table, 256, 2); },
       [](BITMAPHANDLE* p) { return Q_RemapBitmapIntensity(p, table, 256, 2, 0); }},
      {"remap hue", [](CQVBitmap& b) { return b.RemapBitmapHue(mask, hue, nullptr, nullptr, 256); },
       [](BITMAPHANDLE* p) { return Q_RemapBitmapHue(p, mask, hue, nullptr, nullptr, 256, 0); }},
  };
  TestBitmap original(37, 23, 24, QV_ORDER_BGR);
  ASSERT_TRUE(original.Ok());
  original.FillPattern(11);
  for (const EffectCase& c : cases) {
    SCOPED_TRACE(c.name);
    CQVBitmap wrapped;
    ASSERT_TRUE(wrapped.Copy(original.Ref()));
    BITMAPHANDLE direct{};
    ASSERT_EQ(Q_CopyBitmap(&direct, sizeof direct, &original.Ref(), 0), QV_SUCCESS);
    EXPECT_NE(wrapped.GetHandle()->pData, original.Ref().pData) << "a copy must own its pixels";
    EXPECT_EQ(c.operation(&direct), QV_SUCCESS);
    EXPECT_EQ(c.member(wrapped), 1);
    EXPECT_EQ(wrapped.LastResult(), QV_SUCCESS);
    const BITMAPHANDLE& w = *wrapped.GetHandle();
    for (int y = 0; y < w.nHeight; ++y)
      ASSERT_EQ(memcmp(w.pData + size_t(y) * w.nBytesPerLine, direct.pData + size_t(y) * direct.nBytesPerLine,
                       size_t(w.nWidth) * 3),
                0)
          << "row " << y;
    Q_FreeBitmap(&direct, 0);
  }
  // Failures come back as 0 with the kernel's code kept.
  CQVBitmap empty;
  EXPECT_EQ(empty.Brightness(10), 0);
  EXPECT_EQ(empty.LastResult(), QV_ERROR_BITMAP_NOT_ALLOCATED);
  CQVBitmap wrapped;
  ASSERT_TRUE(wrapped.Copy(original.Ref()));
  EXPECT_EQ(wrapped.RemapBitmapIntensity(table, 100, 0), 0);
  EXPECT_EQ(wrapped.LastResult(), QV_ERROR_INVALID_TABLE);
  EXPECT_EQ(wrapped.Posterize(1), 0);
  EXPECT_LT(wrapped.LastResult(), 0);
}

TEST(PreviewBitmap, OwnershipAttachDetachMoveAndPixelWrites) {
  TestBitmap caller(8, 6, 24, QV_ORDER_BGR);
  ASSERT_TRUE(caller.Ok());
  caller.FillPattern(3);
  const std::vector<uint8_t> before = caller.Bytes();
  {
    CQVBitmap wrapper;
    ASSERT_TRUE(wrapper.Attach(caller.Get()));
    EXPECT_EQ(wrapper.GetHandle(), caller.Get());
    EXPECT_TRUE(wrapper.IsAllocated());
  }
  EXPECT_EQ(Q_IsValidBitmap(caller.Get(), 0), QV_SUCCESS) << "an attached bitmap is not freed with the wrapper";
  EXPECT_EQ(caller.Bytes(), before);
  {
    CQVBitmap wrapper;
    wrapper.Attach(caller.Get());
    EXPECT_EQ(wrapper.Detach(), caller.Get());
    EXPECT_EQ(wrapper.Detach(), nullptr);
  }
  EXPECT_EQ(CQVBitmap().Attach(nullptr), 0);

  CQVBitmap first;
  ASSERT_TRUE(first.CreateEmptyBitmap(24, 5, 4, 1, RGB(10, 20, 30)));
  BITMAPHANDLE* handle = first.GetHandle();
  CQVBitmap second(std::move(first));
  EXPECT_EQ(second.GetHandle(), handle) << "moving keeps the descriptor where the kernel saw it";
  EXPECT_FALSE(first.IsAllocated());
  const RGBTRIPLE filled = dlgtest::Pixel24(*second.GetHandle(), 4, 3);
  EXPECT_EQ(filled.rgbtRed, 10);
  EXPECT_EQ(filled.rgbtGreen, 20);
  EXPECT_EQ(filled.rgbtBlue, 30);
  EXPECT_TRUE(second.PutPixelColor(2, 1, RGB(200, 100, 50)));
  const RGBTRIPLE put = dlgtest::Pixel24(*second.GetHandle(), 2, 1);
  EXPECT_EQ(put.rgbtRed, 200);
  EXPECT_EQ(put.rgbtBlue, 50);
  EXPECT_EQ(second.PutPixelColor(5, 0, 0), 0);
  EXPECT_EQ(second.LastResult(), QV_ERROR_INVALID_PARAMETER);

  // 8 bits make a gray bitmap; how each format takes a colour is the kernel's rule, tested with it.
  CQVBitmap gray;
  ASSERT_TRUE(gray.CreateEmptyBitmap(8, 3, 3, 1, RGB(255, 255, 255)));
  EXPECT_EQ(gray.GetHandle()->uOrder, QV_ORDER_GRAY);
  EXPECT_EQ(dlgtest::Samples(*gray.GetHandle(), 2, 2), (std::vector<uint32_t>{255}));
  EXPECT_EQ(gray.CreateEmptyBitmap(24, 0, 5, 1, 0), 0);
  EXPECT_TRUE(gray.IsAllocated()) << "a failed creation keeps the old bitmap";
}

TEST(PreviewBitmap, PaintShowsThePixelsAndPaintGammaOnlyChangesWhatIsShown) {
  CQVBitmap bitmap;
  ASSERT_TRUE(bitmap.CreateEmptyBitmap(24, 4, 4, 1, RGB(64, 64, 64)));
  BITMAPINFO info{};
  info.bmiHeader = BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER), 8, -8, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP target = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  ASSERT_TRUE(target && bits);
  HGDIOBJ old = SelectObject(dc, target);
  const RECT dst{0, 0, 8, 8};
  EXPECT_TRUE(bitmap.Paint(dc, nullptr, nullptr, &dst, nullptr, 0));
  GdiFlush();
  const auto* pixels = static_cast<const uint32_t*>(bits);
  EXPECT_EQ(pixels[8 * 5 + 5] & 0xFFFFFF, 0x404040u);
  bitmap.SetPaintGamma(200);
  EXPECT_TRUE(bitmap.Paint(dc, nullptr, nullptr, &dst, nullptr, 0));
  GdiFlush();
  EXPECT_GT(pixels[8 * 5 + 5] & 0xFF, 0x40u) << "gamma 2.0 shows mid-gray brighter";
  EXPECT_EQ(dlgtest::Pixel24(*bitmap.GetHandle(), 1, 1).rgbtRed, 64) << "painting never changes the pixels";
  // A clip keeps the rest of the target as it was.
  memset(bits, 0, 8 * 8 * 4);
  const RECT clip{0, 0, 4, 8};
  bitmap.SetPaintGamma(100);
  EXPECT_TRUE(bitmap.Paint(dc, nullptr, nullptr, &dst, &clip, 0));
  GdiFlush();
  EXPECT_EQ(pixels[8 * 2 + 1] & 0xFFFFFF, 0x404040u);
  EXPECT_EQ(pixels[8 * 2 + 6] & 0xFFFFFF, 0u);
  SelectObject(dc, old);
  DeleteObject(target);
  DeleteDC(dc);
  CQVBitmap empty;
  EXPECT_EQ(empty.Paint(nullptr, nullptr, nullptr, &dst, nullptr, 0), 0);
}

}  // namespace
