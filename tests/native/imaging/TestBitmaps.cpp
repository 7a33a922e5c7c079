/*
 * Shared helpers of the kernel's native tests.
 */
#include "TestBitmaps.h"

#include <cstdlib>
#include <cstring>

#include "PixelFormat.h"

namespace qvtest {

const std::vector<FormatCase>& AllFormats() {
  static const std::vector<FormatCase> formats = {
      {"indexed1", 1, QV_ORDER_BGR, false},   {"indexed2", 2, QV_ORDER_BGR, false},
      {"indexed4", 4, QV_ORDER_BGR, false},   {"indexed8", 8, QV_ORDER_BGR, false},
      {"gray8", 8, QV_ORDER_GRAY, false},     {"gray12", 12, QV_ORDER_GRAY, false},
      {"gray12s", 12, QV_ORDER_GRAY, true},   {"gray16", 16, QV_ORDER_GRAY, false},
      {"gray16s", 16, QV_ORDER_GRAY, true},   {"rgb565bgr", 16, QV_ORDER_BGR, false},
      {"rgb565rgb", 16, QV_ORDER_RGB, false}, {"bgr24", 24, QV_ORDER_BGR, false},
      {"rgb24", 24, QV_ORDER_RGB, false},     {"bgr32", 32, QV_ORDER_BGR, false},
      {"rgb32", 32, QV_ORDER_RGB, false},     {"rgb48", 48, QV_ORDER_RGB, false},
      {"bgr48", 48, QV_ORDER_BGR, false},     {"rgb64", 64, QV_ORDER_RGB, false},
      {"bgr64", 64, QV_ORDER_BGR, false},
  };
  return formats;
}

int CreatePatterned(const FormatCase& fc, int width, int height, BITMAPHANDLE* b) {
  RGBQUAD palette[256];
  const int colors = fc.bitsPerPixel <= 8 ? (1 << fc.bitsPerPixel) : 0;
  for (int i = 0; i < colors; ++i)
    palette[i] = RGBQUAD{static_cast<uint8_t>(i * 37), static_cast<uint8_t>(255 - i), static_cast<uint8_t>(i * 11 + 3),
                         0};
  const int rc = Q_CreateBitmap(b, sizeof(BITMAPHANDLE), width, height, fc.bitsPerPixel, fc.order,
                                colors && fc.order != QV_ORDER_GRAY ? palette : nullptr,
                                fc.order != QV_ORDER_GRAY ? colors : 0, fc.isSigned ? QV_BMF_SIGNED : 0);
  if (rc != QV_SUCCESS) return rc;
  uint32_t seed = 12345u + static_cast<uint32_t>(fc.bitsPerPixel);
  for (int y = 0; y < height; ++y) {
    uint8_t* row = b->pData + static_cast<size_t>(y) * b->nBytesPerLine;
    for (int x = 0; x < qv::MinBytesPerLine(width, fc.bitsPerPixel); ++x) {
      seed = seed * 1103515245u + 12345u;
      row[x] = static_cast<uint8_t>(seed >> 16);
    }
    if (fc.bitsPerPixel == 12) {  // keep 12-bit samples in range: 0..4095 or -2048..2047
      for (int x = 0; x < width; ++x) {
        uint16_t v = static_cast<uint16_t>(row[2 * x] | (row[2 * x + 1] << 8)) & 0x0FFF;
        if (fc.isSigned && (v & 0x800)) v |= 0xF000;
        row[2 * x] = static_cast<uint8_t>(v);
        row[2 * x + 1] = static_cast<uint8_t>(v >> 8);
      }
    }
  }
  return QV_SUCCESS;
}

std::vector<uint8_t> PixelBytes(const BITMAPHANDLE& b) {
  const int32_t used = (b.nWidth * (b.nBitsPerPixel == 12 ? 16 : b.nBitsPerPixel) + 7) / 8;
  std::vector<uint8_t> out;
  for (int y = 0; y < b.nHeight; ++y) {
    const uint8_t* row = b.pData + static_cast<size_t>(y) * b.nBytesPerLine;
    out.insert(out.end(), row, row + used);
  }
  // Packed formats: bits past the last pixel of a row are padding.
  if (b.nBitsPerPixel < 8 && (b.nWidth * b.nBitsPerPixel) % 8 != 0) {
    const int keep = (b.nWidth * b.nBitsPerPixel) % 8;
    const uint8_t mask = static_cast<uint8_t>(0xFF << (8 - keep));
    for (int y = 0; y < b.nHeight; ++y) out[static_cast<size_t>(y + 1) * used - 1] &= mask;
  }
  return out;
}

std::string OutputDir() {
  const char* dir = std::getenv("QV_TEST_OUTPUT");
  std::string d = dir && *dir ? dir : "/tmp";
  std::string cmd = "mkdir -p '" + d + "'";
  if (std::system(cmd.c_str()) != 0) return "/tmp";
  return d;
}

}  // namespace qvtest
