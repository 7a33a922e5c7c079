/*
 * Bitmaps for the tests: created through the kernel, filled with a
 * reproducible pattern, and read back sample by sample.
 */
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "OwnedBitmap.h"
#include "qv/qvkrn.h"

namespace dlgtest {

// An owned kernel bitmap, freed at the end of the scope.
class TestBitmap {
 public:
  TestBitmap(int width, int height, int bitsPerPixel, unsigned order, unsigned flags = 0);

  BITMAPHANDLE* Get() { return m_bitmap.get(); }
  const BITMAPHANDLE& Ref() const { return *m_bitmap; }
  bool Ok() const { return m_ok; }
  // Fills every sample with a pseudo-random value of its range (palette
  // images get a random palette too); `seed` makes it reproducible.
  void FillPattern(unsigned seed);
  // All pixel bytes, row after row (without row padding).
  std::vector<uint8_t> Bytes() const;

 private:
  qvtest::OwnedBitmap m_bitmap;
  bool m_ok = false;
};

// Samples of pixel (x, y) as the reduction sees them: B, G, R (alpha) for
// color and palette images, one value for gray. Signed samples come back
// biased by 32768.
std::vector<uint32_t> Samples(const BITMAPHANDLE& b, int x, int y);

// BGR bytes of a 24-bit pixel.
RGBTRIPLE Pixel24(const BITMAPHANDLE& b, int x, int y);

}  // namespace dlgtest
