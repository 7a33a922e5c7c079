// Helpers shared by the kernel's native tests: an owning wrapper around BITMAPHANDLE that frees on scope
// exit, the table of every pixel format, and a deterministic pixel pattern.
#pragma once

#include <string>
#include <vector>

#include "qv/qvkrn.h"

namespace qvtest {

// Frees its bitmap when it goes out of scope (when still allocated).
class OwnedBitmap {
 public:
  OwnedBitmap();
  ~OwnedBitmap();
  OwnedBitmap(const OwnedBitmap&) = delete;
  OwnedBitmap& operator=(const OwnedBitmap&) = delete;
  BITMAPHANDLE* get() { return &m_b; }
  BITMAPHANDLE& operator*() { return m_b; }
  BITMAPHANDLE* operator->() { return &m_b; }

 private:
  BITMAPHANDLE m_b;
};

struct FormatCase {
  const char* name;
  int bitsPerPixel;
  unsigned order;
  bool isSigned;
};

// Every pixel format the kernel supports.
const std::vector<FormatCase>& AllFormats();

// Creates b in the format with a palette of distinct colors for indexed formats and fills every byte of the
// pixel rows with a pattern that uses the whole sample range of the format.
int CreatePatterned(const FormatCase& fc, int width, int height, BITMAPHANDLE* b);

// The pixel rows without row padding, for byte-exact comparisons.
std::vector<uint8_t> PixelBytes(const BITMAPHANDLE& b);

std::string OutputDir();

}  // namespace qvtest
