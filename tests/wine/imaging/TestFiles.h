/*
 * Helpers of the kernel's Wine tests: an owning bitmap wrapper, byte-level writers for test images that do
 * not come from our own encoder (an uncompressed 16-bit gray TIFF, a 48-bit PNG in stored deflate blocks),
 * and the output folder.
 */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "OwnedBitmap.h"
#include "qv/qvkrn.h"

namespace qvtest {

// A little-endian baseline TIFF of 16-bit gray samples, uncompressed, one strip.
std::vector<uint8_t> MakeGray16Tiff(int width, int height, const std::vector<uint16_t>& samples);

// A PNG of 16-bit RGB samples (three per pixel) using stored (uncompressed) deflate blocks.
std::vector<uint8_t> MakeRgb48Png(int width, int height, const std::vector<uint16_t>& samples);

void WriteFileBytes(const std::wstring& path, const std::vector<uint8_t>& bytes);
std::vector<uint8_t> ReadFileBytes(const std::wstring& path);

// ..\test-output\ beside the test program, created when missing.
std::wstring OutputPath(const std::wstring& name);

}  // namespace qvtest
