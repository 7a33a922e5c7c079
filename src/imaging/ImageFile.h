/*
 * The platform's image file reader and writer behind Q_LoadBitmap / Q_SaveBitmap: Windows Imaging Component
 * on Windows, the header-only stb readers natively. Both read a file into a new bitmap in the format the
 * file holds and write a checked bitmap in the requested container; the exports do the argument checks and
 * any conversion the caller asked for.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "qv/qvkrn.h"

namespace qv {

// QV_SUCCESS with *out a new bitmap, or QV_ERROR_FILE_NOT_FOUND / QV_ERROR_FILE_FORMAT (not an image of a
// readable kind) / QV_ERROR_FILE_CORRUPT (damaged, cut short or absurd dimensions) / QV_ERROR_NO_MEMORY.
int ReadImageFile(const wchar_t* path, BITMAPHANDLE* out);

#ifndef _WIN32
// The native decoder on bytes already in memory (the file reader and the fuzz target use it); same codes.
int DecodeImageBytes(const std::vector<uint8_t>& bytes, BITMAPHANDLE* out);
#endif

// QV_SUCCESS, QV_ERROR_FILE_FORMAT when the container cannot be written on this platform, or
// QV_ERROR_FILE_WRITE.
int WriteImageFile(const wchar_t* path, const BITMAPHANDLE& b, unsigned int format);

// Largest image a file may declare (pixels); anything bigger is treated as damaged.
constexpr uint64_t kMaxFilePixels = uint64_t{1} << 28;

// A 16-bit PNG (gray, RGB or RGBA: channels 1, 3 or 4) from samples in native order, row after row.
std::vector<uint8_t> EncodePng16(int width, int height, int channels, const uint16_t* samples);

// The samples of a checked bitmap as R,G,B(,A) or gray, row after row without padding, through the working
// representation (8 or 16 bits per sample).
std::vector<uint8_t> InterleaveSamples8(const BITMAPHANDLE& b, int channels);
std::vector<uint16_t> InterleaveSamples16(const BITMAPHANDLE& b, int channels);
// 1 for gray, 4 with alpha, else 3: the channels a file keeps of the bitmap.
int FileChannels(const BITMAPHANDLE& b);
// True for 12/16-bit gray and 48/64-bit color.
bool HasWideSamples(const BITMAPHANDLE& b);

// Our own encoders: a 16-bit PNG of a bitmap with wide samples, and a TIFF of any bitmap (8 or 16 bits per
// sample as the bitmap holds them).
int EncodeOwnPng16(const BITMAPHANDLE& b, std::vector<uint8_t>* out);
int EncodeOwnTiff(const BITMAPHANDLE& b, std::vector<uint8_t>* out);

// True when the bytes start like an image container we know (PNG, TIFF, GIF, BMP, PNM, JPEG), so that a
// failure to decode means damage rather than a file of another kind.
bool HasImageSignature(const uint8_t* bytes, size_t n);

// Opens a file by its wide path (UTF-8 on the native file system) for reading or writing in binary mode.
FILE* OpenFile(const wchar_t* path, bool write);

// Writes bytes to a file: QV_SUCCESS or QV_ERROR_FILE_WRITE.
int WriteBytes(const wchar_t* path, const std::vector<uint8_t>& bytes);

}  // namespace qv
