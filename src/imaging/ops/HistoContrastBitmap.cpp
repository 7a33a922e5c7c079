/*
 * Histogram contrast: the contrast curve centered on the median intensity of the pixels the operation
 * touches (the region's, when one is set) instead of the middle value. The intensity histogram is counted
 * per row band and merged, then the curve runs through the ordinary per-channel tables.
 */
#include <mutex>
#include <vector>

#include "ChannelLut.h"
#include "ContrastCurve.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

// Intensity of pixel x of a row, for each format.
class IntensityReader {
 public:
  IntensityReader(const BITMAPHANDLE& b, const PixelFormat& f) : m_f(f) {
    for (int i = 0; i < QV_MAX_PALETTE_ENTRIES; ++i)
      m_paletteLuma[i] = Luminance(b.Palette[i].rgbRed, b.Palette[i].rgbGreen, b.Palette[i].rgbBlue);
    m_ri = f.bgr ? 2 : 0;
    m_bi = f.bgr ? 0 : 2;
  }

  uint32_t At(const uint8_t* row, int x) const {
    switch (m_f.kind) {
      case PixelKind::Gray8: return row[x];
      case PixelKind::Gray12:
      case PixelKind::Gray16: return GrayLevel(m_f, Load16(row + 2 * static_cast<size_t>(x)));
      case PixelKind::Rgb565: {
        const uint16_t w = Load16(row + 2 * static_cast<size_t>(x));
        const uint32_t lo = Expand5(w & 31), g = Expand6((w >> 5) & 63), hi = Expand5(w >> 11);
        return m_f.bgr ? Luminance(hi, g, lo) : Luminance(lo, g, hi);
      }
      case PixelKind::Color24:
      case PixelKind::Color32: {
        const uint8_t* p = row + static_cast<size_t>(x) * m_f.channels;
        return Luminance(p[m_ri], p[1], p[m_bi]);
      }
      case PixelKind::Color48:
      case PixelKind::Color64: {
        const uint8_t* p = row + static_cast<size_t>(x) * m_f.channels * 2;
        return Luminance(Load16(p + 2 * m_ri), Load16(p + 2), Load16(p + 2 * m_bi));
      }
      default: {
        const int bits = m_f.bitsPerPixel;
        const size_t bit = static_cast<size_t>(x) * bits;
        const uint32_t index = (row[bit / 8] >> (8 - bits - bit % 8)) & ((1u << bits) - 1);
        return m_paletteLuma[index];
      }
    }
  }

 private:
  const PixelFormat& m_f;
  uint32_t m_paletteLuma[QV_MAX_PALETTE_ENTRIES];
  int m_ri = 0;
  int m_bi = 2;
};

// The lower median intensity of the pixels inside the region; *rc is QV_ERROR_USER_ABORT when the status
// callback stopped the count.
int64_t MedianIntensity(const BITMAPHANDLE& b, const PixelFormat& f, int* rc) {
  const uint32_t max = ChannelMax(f);
  const IntensityReader reader(b, f);
  const RegionSpans spans(b);
  std::vector<uint64_t> total(max + 1, 0);
  std::mutex merge;
  *rc = ParallelRows(spans.Top(), spans.Bottom(), [&](int y0, int y1) {
    std::vector<uint32_t> local(max + 1, 0);
    for (int y = y0; y < y1; ++y) {
      const uint8_t* row = RowPtr(b, y);
      spans.ForEachSpan(y, [&](int x0, int x1) {
        for (int x = x0; x < x1; ++x) ++local[reader.At(row, x)];
      });
    }
    std::lock_guard<std::mutex> lock(merge);
    for (uint32_t v = 0; v <= max; ++v) total[v] += local[v];
  });
  uint64_t count = 0;
  for (uint64_t c : total) count += c;
  if (count == 0) return (static_cast<int64_t>(max) + 1) / 2;
  const uint64_t half = (count + 1) / 2;
  uint64_t seen = 0;
  for (uint32_t v = 0; v <= max; ++v) {
    seen += total[v];
    if (seen >= half) return v;
  }
  return max;
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_HistoContrastBitmap(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllFormats;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    int rc = QV_SUCCESS;
    if (nChange < -1000 || nChange > 1000) return QV_ERROR_INVALID_PARAMETER;
    const int64_t median = MedianIntensity(*pBitmap, f, &rc);
    if (rc != QV_SUCCESS) return rc;
    return ApplyChannelMap(*pBitmap, f, ContrastCurve(nChange, median));
  });
}

extern "C" int Q_HistoContrastBitmapExt(BITMAPHANDLE* pBitmap, int nChange, int nMedian, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllFormats;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (nChange < -1000 || nChange > 1000) return QV_ERROR_INVALID_PARAMETER;
    // The curves run on signed samples shifted up by half the range; a signed center is shifted with them.
    const int64_t center = static_cast<int64_t>(nMedian) + static_cast<int64_t>(SignedOffset(f));
    if (center < 0 || center > static_cast<int64_t>(ChannelMax(f))) return QV_ERROR_INVALID_PARAMETER;
    return ApplyChannelMap(*pBitmap, f, ContrastCurve(nChange, center));
  });
}

extern "C" int Q_GetBitmapMedianIntensity(const BITMAPHANDLE* pBitmap, int* pnMedian, unsigned int uFlags) {
  using namespace qv::ops;
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!qv::IsValidAddress(pnMedian, sizeof(int), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    int rc = qv::CheckBitmap(pBitmap, qv::Access::Read);
    if (rc != QV_SUCCESS) return rc;
    rc = qv::CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    qv::PixelFormat f;
    rc = qv::DescribePixelFormat(*pBitmap, &f);
    if (rc != QV_SUCCESS) return rc;
    const int64_t median = MedianIntensity(*pBitmap, f, &rc);
    if (rc == QV_SUCCESS) *pnMedian = static_cast<int>(median - static_cast<int64_t>(SignedOffset(f)));
    return rc;
  });
}
