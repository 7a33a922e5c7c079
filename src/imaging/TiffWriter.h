/*
 * A baseline TIFF encoder (little-endian, uncompressed, one strip) for gray and RGB(A) samples of 8 or 16
 * bits. It writes the layouts a system TIFF encoder may not keep, 16-bit gray above all.
 */
#pragma once

#include <cstdint>
#include <vector>

namespace qv {

// channels 1 (gray), 3 (RGB) or 4 (RGB with unassociated alpha); bitsPerSample 8 or 16; samples row after
// row without padding, 16-bit ones in native order. Empty on sizes a TIFF cannot hold.
std::vector<uint8_t> EncodeTiff(int width, int height, int channels, int bitsPerSample, const void* samples);

}  // namespace qv
