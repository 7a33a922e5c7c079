/*
 * Image files through Windows Imaging Component: a 16-bit gray TIFF and a 48-bit PNG made byte by byte load
 * with their depth kept and their samples exact, and save back to the same samples; a PNG and a JPEG made by
 * our encoder load back (JPEG within its loss); indexed and gray images keep what their container can hold.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "TestFiles.h"

using qvtest::OwnedBitmap;

namespace {

uint16_t Word(const BITMAPHANDLE& b, int x, int y, int i) {
  uint16_t v;
  std::memcpy(&v, b.pData + static_cast<size_t>(y) * b.nBytesPerLine + 2 * x + 2 * i, 2);
  return v;
}

int Load(const std::wstring& path, OwnedBitmap& b, int bits = 0, unsigned order = QV_LOAD_KEEP_ORDER) {
  return Q_LoadBitmap(path.c_str(), b.get(), sizeof(BITMAPHANDLE), bits, order, 0);
}

// The sample of channel `c` at (x, y) as the file holds it, whatever order the bitmap keeps.
uint16_t Sample(const BITMAPHANDLE& b, int channels, int x, int y, int c) {
  const bool swapped = channels == 3 && b.uOrder != QV_ORDER_RGB;
  return Word(b, channels * x, y, swapped ? 2 - c : c);
}

// Saved from the order the load was asked for (BGR swaps the channels in memory), the file still holds the
// samples as they came.
TEST(WicFiles, DeepSamplesKeepTheirValuesThroughLoadAndSave) {
  struct Case {
    const wchar_t* name;
    int channels;
    unsigned format, order, loadOrder;
    std::vector<uint8_t> (*make)(int, int, const std::vector<uint16_t>&);
  };
  const Case cases[] = {{L"gray16.tif", 1, QV_FILE_TIFF, QV_ORDER_GRAY, QV_LOAD_KEEP_ORDER, qvtest::MakeGray16Tiff},
                        {L"rgb48.png", 3, QV_FILE_PNG, QV_ORDER_RGB, QV_ORDER_BGR, qvtest::MakeRgb48Png}};
  const int w = 7, h = 5;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.channels);
    std::vector<uint16_t> samples(size_t(w) * h * c.channels);
    for (size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<uint16_t>(i * 1871 + 3);
    const std::wstring path = qvtest::OutputPath(c.name);
    qvtest::WriteFileBytes(path, c.make(w, h, samples));
    OwnedBitmap b, reordered, back;
    ASSERT_EQ(Load(path, b), QV_SUCCESS);
    EXPECT_EQ(b->nBitsPerPixel, 16 * c.channels);
    EXPECT_EQ(b->uOrder, c.order);
    ASSERT_EQ(b->nWidth, w);
    ASSERT_EQ(Load(path, reordered, 0, c.loadOrder), QV_SUCCESS);
    const std::wstring again = qvtest::OutputPath(std::wstring(L"saved-") + c.name);
    ASSERT_EQ(Q_SaveBitmap(again.c_str(), reordered.get(), c.format, 0), QV_SUCCESS);
    ASSERT_EQ(Load(again, back), QV_SUCCESS);
    ASSERT_EQ(back->nBitsPerPixel, 16 * c.channels);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        for (int ch = 0; ch < c.channels; ++ch) {
          const uint16_t want = samples[size_t(y * w + x) * c.channels + ch];
          ASSERT_EQ(Sample(*b, c.channels, x, y, ch), want) << x << "," << y << "," << ch;
          ASSERT_EQ(Sample(*reordered, c.channels, x, y, ch), want) << x << "," << y << "," << ch;
          ASSERT_EQ(Sample(*back, c.channels, x, y, ch), want) << x << "," << y << "," << ch;
        }
  }
}

void FillGradient(BITMAPHANDLE& b) {
  for (int y = 0; y < b.nHeight; ++y)
    for (int x = 0; x < b.nWidth; ++x) {
      uint8_t* p = b.pData + y * b.nBytesPerLine + 3 * x;
      p[0] = static_cast<uint8_t>(x * 4);
      p[1] = static_cast<uint8_t>(y * 4);
      p[2] = static_cast<uint8_t>(128);
    }
}

TEST(WicFiles, PngIsExactAndJpegIsClose) {
  OwnedBitmap src;
  ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 48, 40, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  FillGradient(*src);
  struct Case {
    const wchar_t* name;
    unsigned format;
    int tolerance;
  };
  const Case cases[] = {{L"color.png", QV_FILE_PNG, 0},
                        {L"color.bmp", QV_FILE_BMP, 0},
                        {L"color.jpg", QV_FILE_JPEG, 12}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.format);
    const std::wstring path = qvtest::OutputPath(c.name);
    ASSERT_EQ(Q_SaveBitmap(path.c_str(), src.get(), c.format, 0), QV_SUCCESS);
    OwnedBitmap back;
    ASSERT_EQ(Load(path, back, 24, QV_ORDER_BGR), QV_SUCCESS);
    ASSERT_EQ(back->nWidth, 48);
    ASSERT_EQ(back->nHeight, 40);
    int worst = 0;
    for (int y = 0; y < 40; ++y)
      for (int i = 0; i < 48 * 3; ++i)
        worst = std::max(worst,
                         std::abs(src->pData[y * src->nBytesPerLine + i] - back->pData[y * back->nBytesPerLine + i]));
    EXPECT_LE(worst, c.tolerance);
    // Saving what was loaded and loading it again gives the same pixels for the lossless containers.
    const std::wstring again = qvtest::OutputPath(std::wstring(L"again-") + c.name);
    ASSERT_EQ(Q_SaveBitmap(again.c_str(), back.get(), c.format, 0), QV_SUCCESS);
    OwnedBitmap twice;
    ASSERT_EQ(Load(again, twice, 24, QV_ORDER_BGR), QV_SUCCESS);
    if (c.tolerance == 0) {
      EXPECT_EQ(std::memcmp(twice->pData, back->pData, back->nBytesPerLine * back->nHeight), 0);
    }
  }
}

TEST(WicFiles, IndexedImagesLoadWithTheirPalette) {
  RGBQUAD pal[4] = {{0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0}, {40, 50, 60, 0}};
  OwnedBitmap src;
  ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 4, 2, 8, QV_ORDER_BGR, pal, 4, 0), QV_SUCCESS);
  for (int i = 0; i < 4; ++i) src->pData[i] = static_cast<uint8_t>(i);
  const std::wstring path = qvtest::OutputPath(L"indexed.png");
  ASSERT_EQ(Q_SaveBitmap(path.c_str(), src.get(), QV_FILE_PNG, 0), QV_SUCCESS);
  OwnedBitmap back;
  ASSERT_EQ(Load(path, back, 24, QV_ORDER_BGR), QV_SUCCESS);
  for (int i = 0; i < 4; ++i) {
    const uint8_t* p = back->pData + 3 * i;
    EXPECT_EQ(p[0], pal[i].rgbBlue) << i;
    EXPECT_EQ(p[1], pal[i].rgbGreen) << i;
    EXPECT_EQ(p[2], pal[i].rgbRed) << i;
  }
  OwnedBitmap asIndexed;
  ASSERT_EQ(Load(path, asIndexed, 8, QV_ORDER_BGR), QV_SUCCESS);
  EXPECT_EQ(asIndexed->nBitsPerPixel, 8);
  EXPECT_EQ(Q_IsValidBitmap(asIndexed.get(), 0), QV_SUCCESS);
}

}  // namespace
