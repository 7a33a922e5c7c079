/*
 * Converts bitmap rows of any format into 32-bit B,G,R,X display pixels, the way the viewers show them:
 * indexed pixels through the palette, gray through the window-level LUT when QV_BMF_USELUT is set, 12/16-bit
 * gray without one reduced to 8 bits from the significant bits nLowBit..nHighBit, color narrowed to 8 bits.
 * The per-sample gray table is built once per converter, so the row loop is a table look-up.
 */
#pragma once

#include <cstdint>
#include <vector>

#include "PixelFormat.h"
#include "qv/qvkrn.h"

namespace qv {

class DisplayRows {
 public:
  // b must have passed CheckBitmap.
  explicit DisplayRows(const BITMAPHANDLE& b);

  // Pixels [x0, x1) of row y as 0x00RRGGBB words (B,G,R,0 in memory).
  void Convert(int y, int x0, int x1, uint32_t* out) const;

 private:
  void BuildGrayTable();
  uint32_t LutColor(int32_t sample) const;
  uint32_t ReducedGray(int32_t sample) const;

  const BITMAPHANDLE& m_b;
  PixelFormat m_format{};
  uint32_t m_palette[256] = {};
  std::vector<uint32_t> m_grayTable;  // by raw sample word for gray through a LUT or 12/16-bit gray
  int m_lowBit = 0;
  int m_highBit = 7;
};

// 0x00RRGGBB from an RGBQUAD.
inline uint32_t PackColor(const RGBQUAD& c) {
  return (uint32_t{c.rgbRed} << 16) | (uint32_t{c.rgbGreen} << 8) | c.rgbBlue;
}

}  // namespace qv
