/*
 * Color resolution: a new bitmap of the requested depth is built beside the source and only swapped in when
 * it is complete, so a failure or an abort leaves both descriptors as they were. Depths above 8 bits are the
 * kernel's exact format conversion; indexed depths choose a palette (a table, the quantizer, or the caller's)
 * and map the pixels to it through the inverse color map, dithered as asked.
 */
#include "ColorResBitmap.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>
#include <vector>

#include "../Bitmap.h"
#include "../PixelConvert.h"
#include "ColorDither.h"
#include "ColorHistogram.h"
#include "ColorPalettes.h"
#include "InverseColorMap.h"
#include "OpsCommon.h"
#include "OptimizedPalette.h"
#include "PendingBitmap.h"

namespace qv {
namespace ops {
namespace {

constexpr unsigned kKnownFlags = QV_COLORRES_PALETTE_MASK | QV_COLORRES_ORDER_MASK | QV_COLORRES_DITHER_MASK;

bool IsTargetDepth(int bits) {
  return (bits >= 1 && bits <= 8) || bits == 12 || bits == 16 || bits == 24 || bits == 32 || bits == 48 || bits == 64;
}

bool HasOneBitAtMost(unsigned v) { return (v & (v - 1)) == 0; }

// The image's colors when there are no more than limit of them (then an optimized palette can hold them
// exactly); empty otherwise. Stops at the first color past the limit, so a photograph costs a few pixels.
std::vector<RGBQUAD> ExactColors(const BITMAPHANDLE& b, const PixelFormat& f, size_t limit) {
  std::unordered_set<uint32_t> seen;
  std::vector<RGBQUAD> colors;
  std::vector<uint8_t> row(static_cast<size_t>(b.nWidth) * 4);
  uint32_t last = 0xFFFFFFFFu;
  for (int y = 0; y < b.nHeight; ++y) {
    ReadRowRgba8(b, f, y, 0, b.nWidth, row.data());
    for (int x = 0; x < b.nWidth; ++x) {
      const uint8_t* p = &row[static_cast<size_t>(x) * 4];
      const uint32_t key = (uint32_t{p[0]} << 16) | (uint32_t{p[1]} << 8) | p[2];
      if (key == last || !seen.insert(key).second) continue;
      last = key;
      if (seen.size() > limit) return {};
      colors.push_back(RGBQUAD{p[2], p[1], p[0], 0});
    }
  }
  return colors;
}

std::vector<RGBQUAD> Optimized(const BITMAPHANDLE& b, const PixelFormat& f, int room,
                               const std::vector<RGBQUAD>& fixed) {
  if (fixed.empty()) {
    std::vector<RGBQUAD> exact = ExactColors(b, f, static_cast<size_t>(room));
    if (!exact.empty()) return exact;
  }
  return BuildOptimizedPalette(ColorHistogram(b, f), room, fixed);
}

// The 20 system colors around optimized ones: the first ten, the optimized entries, the last ten.
std::vector<RGBQUAD> SystemPalette(const BITMAPHANDLE& b, const PixelFormat& f, int bits) {
  if (bits == 4) return VgaColors();
  if (bits < 4) return Optimized(b, f, 1 << bits, GrayRamp(2));
  const std::vector<RGBQUAD> system = SystemColors();
  const std::vector<RGBQUAD> built = Optimized(b, f, 1 << bits, system);
  std::vector<RGBQUAD> p(system.begin(), system.begin() + kSystemColorsAtStart);
  p.insert(p.end(), built.begin() + static_cast<ptrdiff_t>(system.size()), built.end());
  // An image of few colors leaves entries over; black fills them so the last ten stay at the table's end.
  p.resize(static_cast<size_t>(1 << bits) - (system.size() - kSystemColorsAtStart), RGBQUAD{0, 0, 0, 0});
  p.insert(p.end(), system.begin() + kSystemColorsAtStart, system.end());
  return p;
}

// A caller's palette larger than the depth holds: the `room` entries that the image's colors would use most,
// in their original order.
std::vector<RGBQUAD> MostUsedEntries(const BITMAPHANDLE& b, const PixelFormat& f, const std::vector<RGBQUAD>& palette,
                                     int room) {
  if (static_cast<int>(palette.size()) <= room) return palette;
  const InverseColorMap map(palette);
  std::vector<double> use(palette.size(), 0.0);
  for (const ColorPoint& p : ColorHistogram(b, f).Points())
    use[map.Nearest(static_cast<int>(p.r + 0.5f), static_cast<int>(p.g + 0.5f), static_cast<int>(p.b + 0.5f))] +=
        p.weight;
  std::vector<int> order(palette.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int c) { return use[a] > use[c]; });
  order.resize(static_cast<size_t>(room));
  std::sort(order.begin(), order.end());
  std::vector<RGBQUAD> kept;
  for (int i : order) kept.push_back(palette[i]);
  return kept;
}

std::vector<RGBQUAD> ChoosePalette(const BITMAPHANDLE& b, const PixelFormat& f, int bits, unsigned flags,
                                   const RGBQUAD* user, unsigned colors) {
  const int room = 1 << bits;
  switch (flags & QV_COLORRES_PALETTE_MASK) {
    case QV_COLORRES_OPTIMIZED_PALETTE: return Optimized(b, f, room, {});
    case QV_COLORRES_SYSTEM_PALETTE: return SystemPalette(b, f, bits);
    case QV_COLORRES_WEBSAFE_PALETTE: return WebSafeColors();
    case QV_COLORRES_USER_PALETTE: return MostUsedEntries(b, f, std::vector<RGBQUAD>(user, user + colors), room);
    default: return FixedPalette(bits);
  }
}

DitherMethod MethodOf(unsigned flags) { return static_cast<DitherMethod>((flags & QV_COLORRES_DITHER_MASK) >> 16); }

int ReduceToPalette(const BITMAPHANDLE& src, const PixelFormat& sf, int bits, unsigned flags, const RGBQUAD* user,
                    unsigned colors, BITMAPHANDLE* out) {
  const bool gray = (flags & QV_COLORRES_ORDER_MASK) == QV_COLORRES_ORDER_GRAY;
  if (gray && bits == 8) return ConvertBitmap(src, 8, QV_ORDER_GRAY, false, out);
  const std::vector<RGBQUAD> palette = gray ? GrayRamp(1 << bits) : ChoosePalette(src, sf, bits, flags, user, colors);
  const int storage = bits <= 2 ? bits : (bits <= 4 ? 4 : 8);
  int rc = CreateBlankBitmap(src.nWidth, src.nHeight, storage, QV_ORDER_BGR, false, out);
  if (rc != QV_SUCCESS) return rc;
  std::copy(palette.begin(), palette.end(), out->Palette);
  out->nColors = static_cast<int32_t>(palette.size());
  PixelFormat df{};
  DescribePixelFormat(*out, &df);
  return DitherToPalette(src, sf, gray, InverseColorMap(palette), MethodOf(flags), *out, df);
}

// Gray pixels in a color format: through 16-bit gray, so deep sources keep their precision.
int ConvertToGrayColor(const BITMAPHANDLE& src, int bits, BITMAPHANDLE* out) {
  PendingBitmap gray;
  const int rc = ConvertBitmap(src, 16, QV_ORDER_GRAY, false, gray.get());
  return rc != QV_SUCCESS ? rc : ConvertBitmap(*gray.get(), bits, QV_ORDER_BGR, false, out);
}

int ConvertDeep(const BITMAPHANDLE& src, int bits, unsigned flags, BITMAPHANDLE* out) {
  const unsigned order = flags & QV_COLORRES_ORDER_MASK;
  if (bits == 12) return ConvertBitmap(src, 12, QV_ORDER_GRAY, false, out);
  if (order == QV_COLORRES_ORDER_GRAY)
    return bits == 16 ? ConvertBitmap(src, 16, QV_ORDER_GRAY, false, out) : ConvertToGrayColor(src, bits, out);
  return ConvertBitmap(src, bits, order == QV_COLORRES_ORDER_BGR ? QV_ORDER_BGR : QV_ORDER_RGB, false, out);
}

int CheckPalette(int bits, unsigned flags, const RGBQUAD* palette, unsigned colors) {
  const unsigned choice = flags & QV_COLORRES_PALETTE_MASK;
  if (bits > 8 || (flags & QV_COLORRES_ORDER_MASK) == QV_COLORRES_ORDER_GRAY) return QV_SUCCESS;
  if (choice == QV_COLORRES_WEBSAFE_PALETTE && bits != 8) return QV_ERROR_INVALID_PARAMETER;
  if (choice != QV_COLORRES_USER_PALETTE) return QV_SUCCESS;
  if (colors < 1 || colors > QV_MAX_PALETTE_ENTRIES ||
      !qv::IsValidAddress(palette, colors * sizeof(RGBQUAD), qv::Access::Read))
    return QV_ERROR_INVALID_PARAMETER;
  return QV_SUCCESS;
}

}  // namespace

int CheckColorResArguments(const BITMAPHANDLE* pSrc, const BITMAPHANDLE* pDst, unsigned int uStructSize,
                           int nBitsPerPixel, unsigned int uFlags) {
  int rc = CheckBitmap(pSrc, pDst == pSrc ? Access::Write : Access::Read);
  if (rc != QV_SUCCESS) return rc;
  if (uStructSize != sizeof(BITMAPHANDLE)) return QV_ERROR_INVALID_STRUCT_SIZE;
  if (!qv::IsValidAddress(pDst, sizeof(BITMAPHANDLE), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
  if (!IsTargetDepth(nBitsPerPixel)) return QV_ERROR_INVALID_BITS_PER_PIXEL;
  if ((uFlags & ~kKnownFlags) || !HasOneBitAtMost(uFlags & QV_COLORRES_PALETTE_MASK) ||
      !HasOneBitAtMost(uFlags & QV_COLORRES_ORDER_MASK) || (uFlags & QV_COLORRES_DITHER_MASK) > QV_COLORRES_CLUSTERED)
    return QV_ERROR_INVALID_FLAGS;
  return QV_SUCCESS;
}

int ColorResBitmap(BITMAPHANDLE* pSrc, BITMAPHANDLE* pDst, unsigned int uStructSize, int nBitsPerPixel,
                   unsigned int uFlags, const RGBQUAD* pPalette, unsigned int uColors, pQVSTATUSCALLBACK pfnCallback,
                   void* pUserData) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckColorResArguments(pSrc, pDst, uStructSize, nBitsPerPixel, uFlags);
    if (rc == QV_SUCCESS) rc = CheckPalette(nBitsPerPixel, uFlags, pPalette, uColors);
    if (rc != QV_SUCCESS) return rc;
    PixelFormat sf{};
    rc = DescribePixelFormat(*pSrc, &sf);
    if (rc != QV_SUCCESS) return rc;
    const ScopedStatusCallback status(pfnCallback, pUserData);
    PendingBitmap out;
    rc = nBitsPerPixel <= 8 ? ReduceToPalette(*pSrc, sf, nBitsPerPixel, uFlags, pPalette, uColors, out.get())
                            : ConvertDeep(*pSrc, nBitsPerPixel, uFlags, out.get());
    if (rc != QV_SUCCESS) return rc;
    out.get()->nXResolution = pSrc->nXResolution;
    out.get()->nYResolution = pSrc->nYResolution;
    out.HandOver(pSrc, pDst);
    return QV_SUCCESS;
  });
}

}  // namespace ops
}  // namespace qv
