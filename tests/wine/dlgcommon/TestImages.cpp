/*
 * Test bitmaps: creation, patterns and sample read-back.
 */
#include "TestImages.h"

#include <random>

namespace dlgtest {

TestBitmap::TestBitmap(int width, int height, int bitsPerPixel, unsigned order, unsigned flags) {
  RGBQUAD palette[256] = {};
  const int colors = bitsPerPixel <= 8 && order != QV_ORDER_GRAY ? (1 << bitsPerPixel) : 0;
  m_ok = Q_CreateBitmap(m_bitmap.get(), sizeof(BITMAPHANDLE), width, height, bitsPerPixel, order,
                        colors ? palette : nullptr, colors, flags) == QV_SUCCESS;
}

void TestBitmap::FillPattern(unsigned seed) {
  std::mt19937 random(seed);
  BITMAPHANDLE& b = *m_bitmap;
  if (b.nColors > 0) {
    for (int i = 0; i < b.nColors; ++i) b.Palette[i] = RGBQUAD{BYTE(random()), BYTE(random()), BYTE(random()), 0};
  }
  const bool twelve = b.nBitsPerPixel == 12;
  const size_t rowBytes = (size_t(b.nWidth) * b.nBitsPerPixel + 7) / 8;
  for (int y = 0; y < b.nHeight; ++y) {
    uint8_t* row = b.pData + size_t(y) * b.nBytesPerLine;
    for (size_t i = 0; i < rowBytes; ++i) row[i] = static_cast<uint8_t>(random());
    if (twelve)
      for (int x = 0; x < b.nWidth; ++x) row[2 * x + 1] &= 0x0F;
  }
}

std::vector<uint8_t> TestBitmap::Bytes() const {
  const BITMAPHANDLE& b = *m_bitmap;
  const size_t rowBytes = (size_t(b.nWidth) * b.nBitsPerPixel + 7) / 8;
  std::vector<uint8_t> bytes;
  for (int y = 0; y < b.nHeight; ++y) {
    const uint8_t* row = b.pData + size_t(y) * b.nBytesPerLine;
    bytes.insert(bytes.end(), row, row + rowBytes);
  }
  return bytes;
}

std::vector<uint32_t> Samples(const BITMAPHANDLE& b, int x, int y) {
  const uint8_t* row = b.pData + size_t(y) * b.nBytesPerLine;
  auto word = [](const uint8_t* p) { return uint32_t(p[0] | (p[1] << 8)); };
  switch (b.nBitsPerPixel) {
    case 1:
    case 2:
    case 4:
    case 8: {
      if (b.nBitsPerPixel == 8 && b.uOrder == QV_ORDER_GRAY) return {row[x]};
      const int bits = b.nBitsPerPixel;
      const int perByte = 8 / bits;
      const int index = (row[x / perByte] >> ((perByte - 1 - x % perByte) * bits)) & ((1 << bits) - 1);
      const RGBQUAD& e = b.Palette[index];
      return {e.rgbBlue, e.rgbGreen, e.rgbRed};
    }
    case 12:
    case 16: {
      const uint32_t v = word(row + 2 * x);
      return {(b.uFlags & QV_BMF_SIGNED) ? (v + 32768) & 0xFFFF : v};
    }
    case 24: return {row[3 * x], row[3 * x + 1], row[3 * x + 2]};
    case 32: return {row[4 * x], row[4 * x + 1], row[4 * x + 2], row[4 * x + 3]};
    case 48: return {word(row + 6 * x), word(row + 6 * x + 2), word(row + 6 * x + 4)};
    case 64: return {word(row + 8 * x), word(row + 8 * x + 2), word(row + 8 * x + 4), word(row + 8 * x + 6)};
    default: return {};
  }
}

RGBTRIPLE Pixel24(const BITMAPHANDLE& b, int x, int y) {
  const uint8_t* p = b.pData + size_t(y) * b.nBytesPerLine + 3 * size_t(x);
  return RGBTRIPLE{p[0], p[1], p[2]};
}

}  // namespace dlgtest
