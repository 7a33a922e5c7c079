/*
 * Test images for the operation tests: every pixel format with deterministic content, an owner that frees
 * the bitmap, and a decoder/encoder written here from the format description (not from the library), so
 * that expected results can be computed per pixel in plain channel values.
 */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "OwnedBitmap.h"
#include "qv/qvimgops.h"
#include "qv/qvkrn.h"

namespace opstest {

struct Format {
  const char* name;
  int bits;
  unsigned order;
  bool isSigned;
};

// Every format the operations are tried on (unsigned ones first).
const std::vector<Format>& AllFormats();
const std::vector<Format>& UnsignedFormats();

class TestBitmap {
 public:
  TestBitmap(const Format& f, int width, int height, uint32_t seed = 1);
  BITMAPHANDLE* get() { return m_b.get(); }
  const BITMAPHANDLE& b() const { return *m_b; }
  const Format& format() const { return m_f; }

  bool IsIndexed() const;
  bool IsGray() const;
  bool Is565() const;
  bool HasAlpha() const { return m_f.bits == 32 || m_f.bits == 64; }
  // Largest channel value as the operations see it (palette and 5-6-5 channels count as 8-bit).
  uint32_t Max() const;

  // Logical R, G, B of pixel (x, y) in 0..Max(); gray gives the gray value three times; indexed gives its
  // palette color; 5-6-5 gives the channels widened to 8 bits.
  void Get(int x, int y, uint32_t c[3]) const;
  uint32_t Raw(int x, int y) const;  // the sample word of a gray image / the index of an indexed one
  void SetGray(int x, int y, uint32_t v);

  std::vector<uint8_t> Pixels() const;                  // all rows, nBytesPerLine each
  std::vector<uint8_t> PixelBytes(int x, int y) const;  // the bytes of one pixel (whole bytes for indexed)

 private:
  Format m_f;
  qvtest::OwnedBitmap m_b;
};

// Snapshot of a bitmap's pixels and palette, to compare against after an operation.
struct Snapshot {
  explicit Snapshot(const TestBitmap& t);
  std::vector<uint8_t> pixels;
  std::vector<RGBQUAD> palette;
};

// 5-6-5: a channel widened to 8 bits, and an 8-bit value as a field of the given width, widened again.
uint32_t Widen(uint32_t field, int bits);
uint32_t Quantize(uint32_t v8, int bits);

// floor(x + 0.5): the rounding the operations promise.
inline int64_t RoundHalfUp(double x);

}  // namespace opstest

#include <cmath>
inline int64_t opstest::RoundHalfUp(double x) { return static_cast<int64_t>(std::floor(x + 0.5)); }
