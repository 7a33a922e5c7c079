/*
 * The pixel-format descriptor: one small record that tells every kernel how a BITMAPHANDLE's bytes are laid
 * out (sample size, channel count, order, signedness, largest value), so that format decisions are made once
 * per call and the row loops stay free of bit-depth switches.
 */
#pragma once

#include <cstdint>

#include "qv/qvkrn.h"

namespace qv {

enum class PixelKind {
  Indexed1,
  Indexed2,
  Indexed4,
  Indexed8,
  Gray8,
  Gray12,
  Gray16,
  Rgb565,
  Color24,
  Color32,
  Color48,
  Color64
};

struct PixelFormat {
  PixelKind kind;
  int bitsPerPixel;
  int channels;        // 1 for indexed and gray, 3 for 5-6-5, 24, 48; 4 for 32, 64 (alpha last)
  int bytesPerSample;  // 0 for packed (1/2/4 bit, 5-6-5), 1 for 8/24/32, 2 for 12/16/48/64
  bool bgr;            // color byte order is B,G,R (uOrder QV_ORDER_BGR)
  bool isSigned;       // QV_BMF_SIGNED on a 12/16-bit gray image
  uint32_t maxValue;   // largest sample value: 255, 4095, 65535 (indexed: palette entry 255)

  bool IsIndexed() const { return kind <= PixelKind::Indexed8; }
  bool IsGray() const { return kind == PixelKind::Gray8 || kind == PixelKind::Gray12 || kind == PixelKind::Gray16; }
  bool IsColor() const { return !IsIndexed() && !IsGray(); }
  bool HasAlpha() const { return channels == 4; }
};

// Fills *out for a descriptor whose geometry was already checked; QV_ERROR_INVALID_BITS_PER_PIXEL or
// QV_ERROR_UNSUPPORTED_FORMAT for combinations that do not exist (e.g. 12 bits with a color order).
// Formats: 1/2/4 bits are indexed; 8 bits gray with QV_ORDER_GRAY, else indexed; 12 bits gray (QV_ORDER_GRAY
// only); 16 bits gray with QV_ORDER_GRAY, else 5-6-5 (BGR: blue in the low five bits, as Windows stores it;
// RGB: red in the low five bits); 24/32/48/64 color in RGB or BGR order. QV_BMF_SIGNED is accepted on 12 and
// 16-bit gray only.
int DescribePixelFormat(const BITMAPHANDLE& b, PixelFormat* out);

// The same decision from the three values alone (for descriptors still being built).
int DescribePixelFormat(int bitsPerPixel, uint32_t order, bool isSigned, PixelFormat* out);

// Smallest row size in bytes for a width, rounded up to a multiple of 4; 0 when it would not fit an int32.
int32_t MinBytesPerLine(int32_t width, int bitsPerPixel);

}  // namespace qv
