// Runs a whole-pixel operation (one whose channels depend on each other: hue, saturation, gray conversions,
// balance, the intensity test) over every color format: palette entries of indexed images, 5-6-5 pixels
// expanded to 8-bit channels and packed back, 24/32-bit bytes and 48/64-bit samples. The operation is a
// function object with   template <class T> void operator()(T& r, T& g, T& b) const   for T = uint8_t
// (max 255) and uint16_t (max 65535); the kernel for the format is instantiated once, before the row loop.
#pragma once

#include <cstdint>

#include "OpsCommon.h"

namespace qv {
namespace ops {

inline uint8_t Expand5(uint32_t v) { return static_cast<uint8_t>((v << 3) | (v >> 2)); }
inline uint8_t Expand6(uint32_t v) { return static_cast<uint8_t>((v << 2) | (v >> 4)); }
inline uint32_t Reduce(uint32_t v8, uint32_t fieldMax) { return (v8 * fieldMax + 127) / 255; }

template <int kStep, bool kBgr, class Op>
void RgbSpan8(uint8_t* row, int x0, int x1, const Op& op) {
  uint8_t* p = row + static_cast<size_t>(x0) * kStep;
  uint8_t* const end = row + static_cast<size_t>(x1) * kStep;
  for (; p < end; p += kStep) op(p[kBgr ? 2 : 0], p[1], p[kBgr ? 0 : 2]);
}

template <int kStep, bool kBgr, class Op>
void RgbSpan16(uint8_t* row, int x0, int x1, const Op& op) {
  uint8_t* p = row + static_cast<size_t>(x0) * kStep * 2;
  uint8_t* const end = row + static_cast<size_t>(x1) * kStep * 2;
  for (; p < end; p += kStep * 2) {
    uint16_t r = Load16(p + (kBgr ? 4 : 0)), g = Load16(p + 2), b = Load16(p + (kBgr ? 0 : 4));
    op(r, g, b);
    Store16(p + (kBgr ? 4 : 0), r);
    Store16(p + 2, g);
    Store16(p + (kBgr ? 0 : 4), b);
  }
}

template <bool kBgr, class Op>
void RgbSpan565(uint8_t* row, int x0, int x1, const Op& op) {
  for (int x = x0; x < x1; ++x) {
    uint8_t* p = row + static_cast<size_t>(x) * 2;
    const uint16_t w = Load16(p);
    // BGR order keeps blue in the low five bits, RGB order red.
    uint8_t lo = Expand5(w & 31), g = Expand6((w >> 5) & 63), hi = Expand5(w >> 11);
    if (kBgr) {
      op(hi, g, lo);
    } else {
      op(lo, g, hi);
    }
    Store16(p, static_cast<uint16_t>(Reduce(lo, 31) | (Reduce(g, 63) << 5) | (Reduce(hi, 31) << 11)));
  }
}

template <int kStep, bool kBgr, class Op>
int RunRgb8(BITMAPHANDLE& b, const Op& op) {
  return RunSpans(b, [&](uint8_t* row, int x0, int x1) { RgbSpan8<kStep, kBgr>(row, x0, x1, op); });
}

template <int kStep, bool kBgr, class Op>
int RunRgb16(BITMAPHANDLE& b, const Op& op) {
  return RunSpans(b, [&](uint8_t* row, int x0, int x1) { RgbSpan16<kStep, kBgr>(row, x0, x1, op); });
}

// Every color or indexed format; gray images are the caller's business.
template <class Op>
int ApplyRgbOp(BITMAPHANDLE& b, const PixelFormat& f, const Op& op) {
  if (f.IsIndexed()) {
    const int n = PaletteEntries(f);
    for (int i = 0; i < n; ++i) op(b.Palette[i].rgbRed, b.Palette[i].rgbGreen, b.Palette[i].rgbBlue);
    return QV_SUCCESS;
  }
  if (f.kind == PixelKind::Rgb565) {
    if (f.bgr)
      return RunSpans(b, [&](uint8_t* row, int x0, int x1) { RgbSpan565<true>(row, x0, x1, op); });
    return RunSpans(b, [&](uint8_t* row, int x0, int x1) { RgbSpan565<false>(row, x0, x1, op); });
  }
  if (f.bytesPerSample == 2) {
    if (f.channels == 4) return f.bgr ? RunRgb16<4, true>(b, op) : RunRgb16<4, false>(b, op);
    return f.bgr ? RunRgb16<3, true>(b, op) : RunRgb16<3, false>(b, op);
  }
  if (f.channels == 4) return f.bgr ? RunRgb8<4, true>(b, op) : RunRgb8<4, false>(b, op);
  return f.bgr ? RunRgb8<3, true>(b, op) : RunRgb8<3, false>(b, op);
}

}  // namespace ops
}  // namespace qv
