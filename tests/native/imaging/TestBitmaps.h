/*
 * Helpers shared by the kernel's native tests: the owning bitmap wrapper (OwnedBitmap.h), the table of
 * every pixel format, and a deterministic pixel pattern.
 */
#pragma once

#include <string>
#include <vector>

#include "OwnedBitmap.h"
#include "qv/qvkrn.h"

namespace qvtest {

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
