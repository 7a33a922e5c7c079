/*
 * Shared plumbing of the image operations: the accepted-format table every operation declares, the common
 * start of an operation (bitmap, flags, format, the indexed-with-region refusal), the rounding every formula
 * uses, and the parallel walk over the rows and spans a region leaves inside. Kept in one place so that all
 * operations check in the same order and round the same way.
 */
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

#include "../BitmapCheck.h"
#include "../Parallel.h"
#include "../PixelFormat.h"
#include "../Region.h"
#include "AddressCheck.h"
#include "ExportGuard.h"
#include "qv/qvimgops.h"

// Hot kernels get a second copy compiled for AVX2, picked at run time, where the compiler supports
// per-function targets (GCC and Clang on x86, including MinGW); elsewhere only the baseline copy exists.
#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#define QV_OPS_FORCE_INLINE inline __attribute__((always_inline))
#define QV_OPS_AVX2_CLONE 1
#else
#define QV_OPS_FORCE_INLINE inline
#endif

namespace qv {
namespace ops {

#ifdef QV_OPS_AVX2_CLONE
// Lets the tests run the baseline kernels on a processor that has AVX2, so both copies are checked.
inline std::atomic<bool>& BaselineKernelsOnly() {
  static std::atomic<bool> only{false};
  return only;
}

inline bool HasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has && !BaselineKernelsOnly().load(std::memory_order_relaxed);
}
#endif

// The formats an operation works on; anything else is QV_ERROR_UNSUPPORTED_FORMAT.
struct FormatSet {
  bool indexed;     // 1, 2, 4, 8-bit palette images (through their palette)
  bool gray;        // 8, 12, 16-bit unsigned gray
  bool signedGray;  // 12, 16-bit signed gray
  bool rgb565;      // 16-bit 5-6-5 color
  bool color8;      // 24, 32-bit color
  bool color16;     // 48, 64-bit color

  bool Accepts(const PixelFormat& f) const {
    if (f.IsIndexed()) return indexed;
    if (f.IsGray()) return f.isSigned ? signedGray : gray;
    if (f.kind == PixelKind::Rgb565) return rgb565;
    if (f.bytesPerSample == 2) return color16;
    return color8;
  }
};

constexpr FormatSet kAllUnsigned{true, true, false, true, true, true};
constexpr FormatSet kAllFormats{true, true, true, true, true, true};
constexpr FormatSet kColorOnly{true, false, false, true, true, true};

// The checks every operation on a bitmap makes, in this order: the bitmap (writable), the flags, the format,
// and the rule that an indexed image with a region is refused (its palette is shared by pixels on both sides
// of the region). On success *fmt describes the bitmap.
inline int BeginOperation(BITMAPHANDLE* p, unsigned int flags, unsigned int allowedFlags, const FormatSet& accepted,
                          PixelFormat* fmt) {
  int rc = CheckBitmap(p, Access::Write);
  if (rc != QV_SUCCESS) return rc;
  rc = CheckFlags(flags, allowedFlags);
  if (rc != QV_SUCCESS) return rc;
  rc = DescribePixelFormat(*p, fmt);
  if (rc != QV_SUCCESS) return rc;
  if (!accepted.Accepts(*fmt)) return QV_ERROR_UNSUPPORTED_FORMAT;
  if (fmt->IsIndexed() && RegionSpans(*p).HasRegion()) return QV_ERROR_UNSUPPORTED_FORMAT;
  return QV_SUCCESS;
}

// A curve table the caller hands in to be filled: 2 to QV_MAX_TABLE_LENGTH writable entries.
inline int CheckCurveTable(const unsigned int* table, unsigned int length) {
  if (length < 2 || length > QV_MAX_TABLE_LENGTH ||
      !IsValidAddress(table, static_cast<size_t>(length) * sizeof(unsigned int), Access::Write))
    return QV_ERROR_INVALID_TABLE;
  return QV_SUCCESS;
}

// The frame of every operation's export: the checks of BeginOperation, then body(format) returning the
// operation's code, with no exception leaving the export.
template <class Body>
int RunOperation(BITMAPHANDLE* p, unsigned int flags, unsigned int allowedFlags, const FormatSet& accepted,
                 Body&& body) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    PixelFormat fmt;
    const int rc = BeginOperation(p, flags, allowedFlags, accepted, &fmt);
    return rc != QV_SUCCESS ? rc : body(static_cast<const PixelFormat&>(fmt));
  });
}

// Largest value of one channel as the operations see it: palette entries and 5-6-5 channels are handled
// as 8-bit values.
inline uint32_t ChannelMax(const PixelFormat& f) {
  if (f.IsIndexed() || f.kind == PixelKind::Rgb565) return 255;
  return f.maxValue;
}

// Signed gray is worked on as levels 0..max of its own range: a stored value s is level s + half the range
// (2048 for 12 bits, 32768 for 16), so the range's minimum is level 0, 0 the middle level and the range's
// maximum level max -- the offset the kernel's format conversions use. Unsigned gray has offset 0.
inline uint32_t SignedOffset(const PixelFormat& f) { return f.isSigned ? (f.maxValue + 1) / 2 : 0; }

// The level 0..max of a stored 12/16-bit gray word; a word outside the format's range (stray high bits of a
// 12-bit image) counts as the nearer end.
inline uint32_t GrayLevel(const PixelFormat& f, uint16_t word) {
  if (!f.isSigned) return word > f.maxValue ? f.maxValue : word;
  const int32_t level = static_cast<int16_t>(word) + static_cast<int32_t>(SignedOffset(f));
  return level < 0 ? 0u : (static_cast<uint32_t>(level) > f.maxValue ? f.maxValue : static_cast<uint32_t>(level));
}

// The stored word of a level 0..max (signed data sign-extended to 16 bits).
inline uint16_t GrayWord(const PixelFormat& f, uint32_t level) {
  return static_cast<uint16_t>(static_cast<int32_t>(level) - static_cast<int32_t>(SignedOffset(f)));
}

// num / den rounded to the nearest integer, halves up (towards +infinity); den > 0.
inline int64_t RoundDiv(int64_t num, int64_t den) {
  const int64_t twice = 2 * num + den;
  const int64_t d2 = 2 * den;
  int64_t q = twice / d2;
  if ((twice % d2) != 0 && twice < 0) --q;
  return q;
}

inline int64_t Clamp64(int64_t v, int64_t lo, int64_t hi) { return v < lo ? lo : (v > hi ? hi : v); }

// The luminance every operation uses for "intensity": (299 R + 587 G + 114 B) / 1000, rounded.
inline uint32_t Luminance(uint32_t r, uint32_t g, uint32_t b) {
  return static_cast<uint32_t>(
      (299u * static_cast<uint64_t>(r) + 587u * static_cast<uint64_t>(g) + 114u * static_cast<uint64_t>(b) + 500u) /
      1000u);
}

inline uint16_t Load16(const uint8_t* p) {
  uint16_t v;
  std::memcpy(&v, p, 2);
  return v;
}
inline void Store16(uint8_t* p, uint16_t v) { std::memcpy(p, &v, 2); }

// COLORREF components (0x00BBGGRR).
inline uint32_t RedOf(COLORREF c) { return c & 0xFFu; }
inline uint32_t GreenOf(COLORREF c) { return (c >> 8) & 0xFFu; }
inline uint32_t BlueOf(COLORREF c) { return (c >> 16) & 0xFFu; }

// Calls fn(row, x0, x1) for every span inside the region (or every whole row), rows split over the cores
// with progress and abort through the status callback.
template <class Fn>
int RunSpans(const BITMAPHANDLE& b, const Fn& fn) {
  const RegionSpans spans(b);
  return ParallelRows(spans.Top(), spans.Bottom(), [&](int y0, int y1) {
    for (int y = y0; y < y1; ++y) {
      uint8_t* row = RowPtr(b, y);
      spans.ForEachSpan(y, [&](int x0, int x1) { fn(row, x0, x1); });
    }
  });
}

// Number of palette entries an indexed image can address.
inline int PaletteEntries(const PixelFormat& f) {
  const int n = 1 << (f.bitsPerPixel < 8 ? f.bitsPerPixel : 8);
  return n < QV_MAX_PALETTE_ENTRIES ? n : QV_MAX_PALETTE_ENTRIES;
}

}  // namespace ops
}  // namespace qv
