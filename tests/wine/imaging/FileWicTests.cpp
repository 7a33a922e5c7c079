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

TEST(WicFiles, Gray16TiffKeepsItsSamplesThroughLoadAndSave) {
  const int w = 7, h = 5;
  std::vector<uint16_t> samples(w * h);
  for (int i = 0; i < w * h; ++i) samples[i] = static_cast<uint16_t>(i * 1871 + 3);
  const std::wstring path = qvtest::OutputPath(L"gray16.tif");
  qvtest::WriteFileBytes(path, qvtest::MakeGray16Tiff(w, h, samples));
  OwnedBitmap b;
  ASSERT_EQ(Load(path, b), QV_SUCCESS);
  EXPECT_EQ(b->nBitsPerPixel, 16);
  EXPECT_EQ(b->uOrder, QV_ORDER_GRAY);
  ASSERT_EQ(b->nWidth, w);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) ASSERT_EQ(Word(*b, x, y, 0), samples[y * w + x]) << x << "," << y;
  const std::wstring again = qvtest::OutputPath(L"gray16-saved.tif");
  ASSERT_EQ(Q_SaveBitmap(again.c_str(), b.get(), QV_FILE_TIFF, 0), QV_SUCCESS);
  OwnedBitmap back;
  ASSERT_EQ(Load(again, back), QV_SUCCESS);
  EXPECT_EQ(back->nBitsPerPixel, 16);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) ASSERT_EQ(Word(*back, x, y, 0), samples[y * w + x]) << x << "," << y;
}

TEST(WicFiles, Rgb48PngKeepsItsSamplesThroughLoadAndSave) {
  const int w = 6, h = 4;
  std::vector<uint16_t> samples(w * h * 3);
  for (size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<uint16_t>(i * 977 + 11);
  const std::wstring path = qvtest::OutputPath(L"rgb48.png");
  qvtest::WriteFileBytes(path, qvtest::MakeRgb48Png(w, h, samples));
  OwnedBitmap b;
  ASSERT_EQ(Load(path, b), QV_SUCCESS);
  EXPECT_EQ(b->nBitsPerPixel, 48);
  EXPECT_EQ(b->uOrder, QV_ORDER_RGB);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      for (int c = 0; c < 3; ++c) ASSERT_EQ(Word(*b, 3 * x, y, c), samples[(y * w + x) * 3 + c]) << x << "," << y;
  // Saved from BGR order, the file still holds R, G, B.
  OwnedBitmap bgr;
  ASSERT_EQ(Load(path, bgr, 0, QV_ORDER_BGR), QV_SUCCESS);
  EXPECT_EQ(Word(*bgr, 0, 0, 0), samples[2]);
  const std::wstring again = qvtest::OutputPath(L"rgb48-saved.png");
  ASSERT_EQ(Q_SaveBitmap(again.c_str(), bgr.get(), QV_FILE_PNG, 0), QV_SUCCESS);
  OwnedBitmap back;
  ASSERT_EQ(Load(again, back), QV_SUCCESS);
  ASSERT_EQ(back->nBitsPerPixel, 48);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      for (int c = 0; c < 3; ++c) {
        const uint16_t want = samples[(y * w + x) * 3 + c];
        const uint16_t got = back->uOrder == QV_ORDER_RGB ? Word(*back, 3 * x, y, c) : Word(*back, 3 * x, y, 2 - c);
        ASSERT_EQ(got, want) << x << "," << y << "," << c;
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
  struct Case { const wchar_t* name; unsigned format; int tolerance; };
  const Case cases[] = {{L"color.png", QV_FILE_PNG, 0}, {L"color.bmp", QV_FILE_BMP, 0}, {L"color.jpg", QV_FILE_JPEG, 12}};
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
        worst = std::max(worst, std::abs(src->pData[y * src->nBytesPerLine + i] - back->pData[y * back->nBytesPerLine + i]));
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
