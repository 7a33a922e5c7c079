/*
 * Images for the color-reduction and halftone tests: bitmaps filled from a function of the position, and a
 * reader of palette indices written here from the format description (packed most significant first).
 */
#pragma once

#include <cstdint>
#include <functional>

#include "OwnedBitmap.h"
#include "qv/qvimgops.h"

namespace opstest {

using ColorAt = std::function<uint32_t(int x, int y)>;  // 0xRRGGBB

// 24-bit RGB, or 8-bit gray taking the low byte of the function.
inline void MakeRgb24(qvtest::OwnedBitmap& b, int w, int h, const ColorAt& color) {
  Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), w, h, 24, QV_ORDER_RGB, nullptr, 0, 0);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      uint8_t* p = b->pData + static_cast<size_t>(y) * b->nBytesPerLine + 3 * x;
      const uint32_t c = color(x, y);
      p[0] = static_cast<uint8_t>(c >> 16);
      p[1] = static_cast<uint8_t>(c >> 8);
      p[2] = static_cast<uint8_t>(c);
    }
}

inline void MakeGray8(qvtest::OwnedBitmap& b, int w, int h, const ColorAt& gray) {
  Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), w, h, 8, QV_ORDER_GRAY, nullptr, 0, 0);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      b->pData[static_cast<size_t>(y) * b->nBytesPerLine + x] = static_cast<uint8_t>(gray(x, y));
}

inline int IndexAt(const BITMAPHANDLE& b, int x, int y) {
  const uint8_t* row = b.pData + static_cast<size_t>(y) * b.nBytesPerLine;
  const int bits = b.nBitsPerPixel, perByte = 8 / bits;
  return (row[x / perByte] >> ((perByte - 1 - x % perByte) * bits)) & ((1 << bits) - 1);
}

inline uint32_t RgbOf(const RGBQUAD& q) { return (uint32_t{q.rgbRed} << 16) | (uint32_t{q.rgbGreen} << 8) | q.rgbBlue; }

inline uint32_t PaletteColorAt(const BITMAPHANDLE& b, int x, int y) { return RgbOf(b.Palette[IndexAt(b, x, y)]); }

}  // namespace opstest
