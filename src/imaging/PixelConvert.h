/*
 * The working representation: any pixel format read into, and written back from, rows of R,G,B,A samples,
 * either 8 bits per channel (0..255) or 16 bits per channel (0..65535, full scale: a 12-bit sample v becomes
 * round(v * 65535 / 4095)). Signed gray samples are offset into the unsigned range (a 16-bit sample s becomes
 * s + 32768, a 12-bit one (s + 2048) scaled). Indexed pixels are read through the palette and written as the
 * nearest palette entry; gray formats read as R = G = B and are written from the luminance
 * (0.299 R + 0.587 G + 0.114 B). Formats without alpha read alpha as full and ignore it when written.
 */
#pragma once

#include <cstdint>

#include "PixelFormat.h"
#include "qv/qvkrn.h"

namespace qv {

// Pixels [x0, x1) of row y, four samples per pixel into out. The bitmap must have passed CheckBitmap and
// f must describe it.
void ReadRowRgba8(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, uint8_t* out);
void ReadRowRgba16(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, uint16_t* out);
void WriteRowRgba8(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint8_t* in);
void WriteRowRgba16(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint16_t* in);

// Gray samples [x0, x1) of row y of a gray format (8, 12, 16 bits) in the format's unsigned range 0..max, signed
// samples offset by half the range (a 16-bit s becomes s + 32768, a 12-bit one s + 2048), without scaling;
// and the way back. For work that must stay exact in the format's own units (averages for display).
void ReadRowGray(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, uint16_t* out);
void WriteRowGray(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint16_t* in);
// Stores palette indices [x0, x1) of row y of an indexed image (packed most significant first for 1, 2 and
// 4 bits); each index must fit the depth.
void WriteRowIndices(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint8_t* indices);

// The raw gray sample at (x, y) of a 12/16-bit gray image as a signed or unsigned integer (sign-extended
// when f.isSigned), without scaling.
int32_t ReadGraySample(const BITMAPHANDLE& b, const PixelFormat& f, int x, int y);

// Luminance of an RGB triple with the weights above, rounded.
inline uint32_t Luminance(uint32_t r, uint32_t g, uint32_t blue) {
  return (r * 299 + g * 587 + blue * 114 + 500) / 1000;
}

// A new bitmap in *dst holding src converted to bitsPerPixel / order / signedness through the working
// representation (16 bits per channel, so 12/16/48/64-bit data keeps its precision). Indexed targets get a
// gray ramp palette when src is not indexed and src's palette when it is (reduced to the entries that fit).
// Region and LUT are not carried over. *dst is overwritten without being freed.
int ConvertBitmap(const BITMAPHANDLE& src, int bitsPerPixel, uint32_t order, bool isSigned, BITMAPHANDLE* dst);

}  // namespace qv
