// The platform's image file reader and writer behind Q_LoadBitmap / Q_SaveBitmap: Windows Imaging Component
// on Windows, the header-only stb readers natively. Both read a file into a new bitmap in the format the
// file holds and write a checked bitmap in the requested container; the exports do the argument checks and
// any conversion the caller asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "qv/qvkrn.h"

namespace qv {

// QV_SUCCESS with *out a new bitmap, or QV_ERROR_FILE_NOT_FOUND / QV_ERROR_FILE_FORMAT (not an image of a
// readable kind) / QV_ERROR_FILE_CORRUPT (damaged, cut short or absurd dimensions) / QV_ERROR_NO_MEMORY.
int ReadImageFile(const wchar_t* path, BITMAPHANDLE* out);

// QV_SUCCESS, QV_ERROR_FILE_FORMAT when the container cannot be written on this platform, or
// QV_ERROR_FILE_WRITE.
int WriteImageFile(const wchar_t* path, const BITMAPHANDLE& b, unsigned int format);

// Largest image a file may declare (pixels); anything bigger is treated as damaged.
constexpr uint64_t kMaxFilePixels = uint64_t{1} << 30;

// A 16-bit PNG (gray, RGB or RGBA: channels 1, 3 or 4) from samples in native order, row after row.
std::vector<uint8_t> EncodePng16(int width, int height, int channels, const uint16_t* samples);

}  // namespace qv
