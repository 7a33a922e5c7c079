/*
 * Image files natively: every format survives a PNG, BMP and PNM round trip at the precision the container
 * keeps (16-bit samples stay 16-bit in PNG and PNM), the loader converts on request, and damaged, cut-short
 * or foreign files get their codes with the caller's descriptor left alone.
 */
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "PixelConvert.h"
#include "TestBitmaps.h"

using qvtest::OwnedBitmap;

namespace {

std::wstring Widen(const std::string& s) { return std::wstring(s.begin(), s.end()); }

std::wstring OutPath(const std::string& name) { return Widen(qvtest::OutputDir() + "/kernel-" + name); }

std::vector<uint8_t> ReadBytes(const std::wstring& path) {
  std::ifstream f(std::string(path.begin(), path.end()), std::ios::binary);
  return std::vector<uint8_t>((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::wstring& path, const std::vector<uint8_t>& bytes) {
  std::ofstream f(std::string(path.begin(), path.end()), std::ios::binary);
  f.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::vector<uint16_t> Rows16(const BITMAPHANDLE& b) {
  qv::PixelFormat f{};
  qv::DescribePixelFormat(b, &f);
  std::vector<uint16_t> out(static_cast<size_t>(b.nWidth) * b.nHeight * 4);
  for (int y = 0; y < b.nHeight; ++y)
    qv::ReadRowRgba16(b, f, y, 0, b.nWidth, out.data() + static_cast<size_t>(y) * b.nWidth * 4);
  return out;
}

// Compares color (and alpha when both keep it) at the given precision: 8 compares the top byte.
void ExpectSamePixels(const BITMAPHANDLE& a, const BITMAPHANDLE& b, int bits, bool alpha) {
  ASSERT_EQ(a.nWidth, b.nWidth);
  ASSERT_EQ(a.nHeight, b.nHeight);
  const auto pa = Rows16(a), pb = Rows16(b);
  int mismatches = 0;
  for (size_t i = 0; i < pa.size(); ++i) {
    if (i % 4 == 3 && !alpha) continue;
    const int va = bits == 8 ? (pa[i] * 255 + 32767) / 65535 : pa[i];
    const int vb = bits == 8 ? (pb[i] * 255 + 32767) / 65535 : pb[i];
    if (va != vb && ++mismatches < 4) ADD_FAILURE() << "sample " << i << ": " << va << " != " << vb;
  }
  EXPECT_EQ(mismatches, 0);
}

TEST(ImageFiles, EveryFormatRoundTripsThroughPngBmpAndPnm) {
  struct Container {
    unsigned format;
    const char* ext;
    bool keeps16;
    bool keepsAlpha;
  };
  const Container containers[] = {{QV_FILE_PNG, "png", true, true},
                                  {QV_FILE_BMP, "bmp", false, true},
                                  {QV_FILE_PNM, "pnm", true, false}};
  for (const auto& fc : qvtest::AllFormats()) {
    OwnedBitmap src;
    ASSERT_EQ(qvtest::CreatePatterned(fc, 17, 9, src.get()), QV_SUCCESS);
    qv::PixelFormat f{};
    qv::DescribePixelFormat(*src, &f);
    for (const Container& c : containers) {
      SCOPED_TRACE(std::string(fc.name) + "." + c.ext);
      const std::wstring path = OutPath(std::string(fc.name) + "." + c.ext);
      ASSERT_EQ(Q_SaveBitmap(path.c_str(), src.get(), c.format, 0), QV_SUCCESS);
      OwnedBitmap back;
      ASSERT_EQ(Q_LoadBitmap(path.c_str(), back.get(), sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0), QV_SUCCESS);
      const bool wide = f.bytesPerSample == 2 && c.keeps16;
      if (f.IsGray() && c.format != QV_FILE_BMP) {
        EXPECT_EQ(back->uOrder, QV_ORDER_GRAY);
        EXPECT_EQ(back->nBitsPerPixel, wide ? 16 : 8);
      } else {
        EXPECT_EQ(back->nBitsPerPixel % 24 == 0 || back->nBitsPerPixel % 32 == 0, true);
      }
      ExpectSamePixels(*src, *back, wide ? 16 : 8, f.HasAlpha() && c.keepsAlpha);
    }
  }
}

TEST(ImageFiles, LoaderConvertsOnRequest) {
  OwnedBitmap src;
  ASSERT_EQ(qvtest::CreatePatterned(qvtest::AllFormats()[15], 8, 4, src.get()), QV_SUCCESS);  // 48-bit RGB
  const std::wstring path = OutPath("convert.png");
  ASSERT_EQ(Q_SaveBitmap(path.c_str(), src.get(), QV_FILE_PNG, 0), QV_SUCCESS);
  struct Case {
    int bits;
    unsigned order;
    int expectBits;
    unsigned expectOrder;
  };
  const Case cases[] = {{0, QV_LOAD_KEEP_ORDER, 48, QV_ORDER_RGB},   {0, QV_ORDER_BGR, 48, QV_ORDER_BGR},
                        {24, QV_LOAD_KEEP_ORDER, 24, QV_ORDER_RGB},  {16, QV_ORDER_GRAY, 16, QV_ORDER_GRAY},
                        {12, QV_LOAD_KEEP_ORDER, 12, QV_ORDER_GRAY}, {4, QV_LOAD_KEEP_ORDER, 4, QV_ORDER_BGR}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bits);
    OwnedBitmap b;
    ASSERT_EQ(Q_LoadBitmap(path.c_str(), b.get(), sizeof(BITMAPHANDLE), c.bits, c.order, 0), QV_SUCCESS);
    EXPECT_EQ(b->nBitsPerPixel, c.expectBits);
    EXPECT_EQ(b->uOrder, c.expectOrder);
    EXPECT_EQ(Q_IsValidBitmap(b.get(), 0), QV_SUCCESS);
  }
  OwnedBitmap b;
  ASSERT_EQ(Q_LoadBitmap(path.c_str(), b.get(), sizeof(BITMAPHANDLE), 0, QV_ORDER_BGR, 0), QV_SUCCESS);
  ExpectSamePixels(*src, *b, 16, false);
}

TEST(ImageFiles, DamagedAndForeignFilesAreRefused) {
  OwnedBitmap src;
  ASSERT_EQ(qvtest::CreatePatterned(qvtest::AllFormats()[11], 64, 64, src.get()), QV_SUCCESS);  // 24-bit BGR
  const std::wstring png = OutPath("good.png"), bmp = OutPath("good.bmp"), pnm = OutPath("good.pnm");
  ASSERT_EQ(Q_SaveBitmap(png.c_str(), src.get(), QV_FILE_PNG, 0), QV_SUCCESS);
  ASSERT_EQ(Q_SaveBitmap(bmp.c_str(), src.get(), QV_FILE_BMP, 0), QV_SUCCESS);
  ASSERT_EQ(Q_SaveBitmap(pnm.c_str(), src.get(), QV_FILE_PNM, 0), QV_SUCCESS);
  auto cut = [](std::vector<uint8_t> v, size_t keep) {
    v.resize(keep);
    return v;
  };
  std::vector<uint8_t> hugePng = ReadBytes(png);
  hugePng[16] = 0x7F;  // width 0x7F0000xx in the header
  const std::string text = "this is a text file, not an image\n";
  struct Case {
    const char* name;
    std::vector<uint8_t> bytes;
    int expected;
  };
  const Case cases[] = {
      {"cut.png", cut(ReadBytes(png), ReadBytes(png).size() / 2), QV_ERROR_FILE_CORRUPT},
      {"cut.bmp", cut(ReadBytes(bmp), ReadBytes(bmp).size() - 100), QV_ERROR_FILE_CORRUPT},
      {"cut.pnm", cut(ReadBytes(pnm), ReadBytes(pnm).size() - 10), QV_ERROR_FILE_CORRUPT},
      {"header-only.png", cut(ReadBytes(png), 20), QV_ERROR_FILE_CORRUPT},
      {"huge.png", hugePng, QV_ERROR_FILE_CORRUPT},
      {"text.png", std::vector<uint8_t>(text.begin(), text.end()), QV_ERROR_FILE_FORMAT},
      {"empty.bmp", {}, QV_ERROR_FILE_FORMAT},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const std::wstring path = OutPath(c.name);
    WriteBytes(path, c.bytes);
    BITMAPHANDLE b;
    std::memset(&b, 0x33, sizeof b);
    EXPECT_EQ(Q_LoadBitmap(path.c_str(), &b, sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0), c.expected);
    EXPECT_EQ(b.uStructSize, 0x33333333u);  // untouched
  }
}

TEST(ImageFiles, TiffIsWrittenWithItsDepthButNotReadHere) {
  struct Case {
    int fmt;
    size_t minBytes;
  };
  for (const Case c : {Case{7, 5 * 3 * 2}, Case{15, 5 * 3 * 6}, Case{17, 5 * 3 * 8}, Case{11, 5 * 3 * 3}}) {
    const auto& fc = qvtest::AllFormats()[c.fmt];
    SCOPED_TRACE(fc.name);
    OwnedBitmap b;
    ASSERT_EQ(qvtest::CreatePatterned(fc, 5, 3, b.get()), QV_SUCCESS);
    const std::wstring path = OutPath(std::string(fc.name) + ".tif");
    ASSERT_EQ(Q_SaveBitmap(path.c_str(), b.get(), QV_FILE_TIFF, 0), QV_SUCCESS);
    const auto bytes = ReadBytes(path);
    ASSERT_GT(bytes.size(), 8 + c.minBytes);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 4), std::string("II*\0", 4));
    OwnedBitmap back;
    EXPECT_EQ(Q_LoadBitmap(path.c_str(), back.get(), sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0),
              QV_ERROR_FILE_FORMAT);
  }
}

TEST(ImageFiles, ArgumentsAreChecked) {
  OwnedBitmap b;
  const std::wstring missing = OutPath("does-not-exist.png");
  EXPECT_EQ(Q_LoadBitmap(missing.c_str(), b.get(), sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0),
            QV_ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Q_LoadBitmap(nullptr, b.get(), sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_LoadBitmap(L"", b.get(), sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_LoadBitmap(missing.c_str(), nullptr, sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0),
            QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_LoadBitmap(missing.c_str(), b.get(), 4, 0, QV_LOAD_KEEP_ORDER, 0), QV_ERROR_INVALID_STRUCT_SIZE);
  EXPECT_EQ(Q_LoadBitmap(missing.c_str(), b.get(), sizeof(BITMAPHANDLE), 7, QV_LOAD_KEEP_ORDER, 0),
            QV_ERROR_INVALID_BITS_PER_PIXEL);
  EXPECT_EQ(Q_LoadBitmap(missing.c_str(), b.get(), sizeof(BITMAPHANDLE), 0, 9, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_LoadBitmap(missing.c_str(), b.get(), sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 1),
            QV_ERROR_INVALID_FLAGS);
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 4, 4, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  const std::wstring out = OutPath("args.png");
  EXPECT_EQ(Q_SaveBitmap(out.c_str(), b.get(), 99, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_SaveBitmap(L"/nonexistent-dir/x.png", b.get(), QV_FILE_PNG, 0), QV_ERROR_FILE_WRITE);
  EXPECT_EQ(Q_SaveBitmap(out.c_str(), nullptr, QV_FILE_PNG, 0), QV_ERROR_INVALID_PARAMETER);
}

}  // namespace
