/*
 * The binary PNM reader of the native file code (P5 and P6, 8 and 16 bits).
 */
#pragma once

#include <cstdint>
#include <vector>

#include "qv/qvkrn.h"

namespace qv {

// True when the bytes start like a binary PNM file.
bool IsPnm(const std::vector<uint8_t>& bytes);

// A new bitmap from a PNM file (8-bit gray, 24-bit BGR, 16-bit gray or 48-bit RGB); QV_ERROR_FILE_CORRUPT
// for a damaged or cut-short file or one declaring more than maxPixels pixels.
int DecodePnm(const std::vector<uint8_t>& bytes, uint64_t maxPixels, BITMAPHANDLE* out);

}  // namespace qv
