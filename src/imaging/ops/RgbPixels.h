/*
 * Runs a whole-pixel operation (one whose channels depend on each other: hue, saturation, gray conversions,
 * balance, the intensity test) over every color format: palette entries of indexed images, 5-6-5 pixels
 * expanded to 8-bit channels and packed back, 24/32-bit bytes and 48/64-bit samples. The operation is a
 * function object with   template <class T> void operator()(T& r, T& g, T& b) const   for T = uint8_t
 * (max 255) and uint16_t (max 65535); the kernel for the format is instantiated once, before the row loop.
 */
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

// 8-bit color in planar blocks: a block of pixels is split into red, green and blue int16 arrays, the
// operation's Block(r, g, b, n) runs over them as straight-line code the compiler can vectorize, and the
// results are interleaved back. For operations whose per-pixel branches would otherwise dominate.
constexpr int kPlanarBlock = 256;

// Branch-free select for the block kernels (16-bit lanes, eight to a vector even on the baseline
// instruction set): a where mask is all ones, b where it is zero.
inline int16_t Pick(int16_t mask, int16_t a, int16_t b) { return static_cast<int16_t>(b ^ ((a ^ b) & mask)); }
inline int16_t MaskOf(bool c) { return static_cast<int16_t>(-static_cast<int16_t>(c)); }
inline int32_t Pick32(int32_t mask, int32_t a, int32_t b) { return b ^ ((a ^ b) & mask); }

template <int kStep, bool kBgr, class Op>
QV_OPS_FORCE_INLINE void PlanarSpanBody(uint8_t* row, int x0, int x1, const Op& op) {
  alignas(64) int16_t r[kPlanarBlock], g[kPlanarBlock], b[kPlanarBlock];
  for (int x = x0; x < x1; x += kPlanarBlock) {
    const int n = x1 - x < kPlanarBlock ? x1 - x : kPlanarBlock;
    uint8_t* p = row + static_cast<size_t>(x) * kStep;
    for (int i = 0; i < n; ++i) {
      r[i] = p[i * kStep + (kBgr ? 2 : 0)];
      g[i] = p[i * kStep + 1];
      b[i] = p[i * kStep + (kBgr ? 0 : 2)];
    }
    op.Block(r, g, b, n);
    for (int i = 0; i < n; ++i) {
      p[i * kStep + (kBgr ? 2 : 0)] = static_cast<uint8_t>(r[i]);
      p[i * kStep + 1] = static_cast<uint8_t>(g[i]);
      p[i * kStep + (kBgr ? 0 : 2)] = static_cast<uint8_t>(b[i]);
    }
  }
}

template <int kStep, bool kBgr, class Op>
void PlanarSpan8(uint8_t* row, int x0, int x1, const Op& op) {
  PlanarSpanBody<kStep, kBgr>(row, x0, x1, op);
}

#ifdef QV_OPS_AVX2_CLONE
// The same kernel compiled for AVX2 (twice the lanes of the baseline), chosen at run time when the
// processor has it.
template <int kStep, bool kBgr, class Op>
__attribute__((target("avx2"))) void PlanarSpan8Avx2(uint8_t* row, int x0, int x1, const Op& op) {
  PlanarSpanBody<kStep, kBgr>(row, x0, x1, op);
}

#endif

template <int kStep, bool kBgr, class Op>
int RunPlanar8(BITMAPHANDLE& b, const Op& op) {
#ifdef QV_OPS_AVX2_CLONE
  if (HasAvx2())
    return RunSpans(b, [&](uint8_t* row, int x0, int x1) { PlanarSpan8Avx2<kStep, kBgr>(row, x0, x1, op); });
#endif
  return RunSpans(b, [&](uint8_t* row, int x0, int x1) { PlanarSpan8<kStep, kBgr>(row, x0, x1, op); });
}

// Every color or indexed format; gray images are the caller's business. With kPlanar, 24/32-bit images go
// through the operation's Block kernel instead of its per-pixel one.
template <bool kPlanar = false, class Op>
int ApplyRgbOp(BITMAPHANDLE& b, const PixelFormat& f, const Op& op) {
  if (f.IsIndexed()) {
    const int n = PaletteEntries(f);
    for (int i = 0; i < n; ++i) op(b.Palette[i].rgbRed, b.Palette[i].rgbGreen, b.Palette[i].rgbBlue);
    return QV_SUCCESS;
  }
  if (f.kind == PixelKind::Rgb565) {
    if (f.bgr) return RunSpans(b, [&](uint8_t* row, int x0, int x1) { RgbSpan565<true>(row, x0, x1, op); });
    return RunSpans(b, [&](uint8_t* row, int x0, int x1) { RgbSpan565<false>(row, x0, x1, op); });
  }
  if (f.bytesPerSample == 2) {
    if (f.channels == 4) return f.bgr ? RunRgb16<4, true>(b, op) : RunRgb16<4, false>(b, op);
    return f.bgr ? RunRgb16<3, true>(b, op) : RunRgb16<3, false>(b, op);
  }
  if constexpr (kPlanar) {
    if (f.channels == 4) return f.bgr ? RunPlanar8<4, true>(b, op) : RunPlanar8<4, false>(b, op);
    return f.bgr ? RunPlanar8<3, true>(b, op) : RunPlanar8<3, false>(b, op);
  }
  if (f.channels == 4) return f.bgr ? RunRgb8<4, true>(b, op) : RunRgb8<4, false>(b, op);
  return f.bgr ? RunRgb8<3, true>(b, op) : RunRgb8<3, false>(b, op);
}

}  // namespace ops
}  // namespace qv
