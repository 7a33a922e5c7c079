/*
 * The reduction: a plan per source format (which of the kernel's row decoders reads it, how many channels
 * are averaged, which writer stores the means), then per row band a horizontal pass of each source row into
 * output columns and a vertical accumulation of those rows into one output row at a time. A band keeps two
 * rows of 64-bit sums and one decoded source row, whatever the output size.
 */
#include "Reduction.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "Bitmap.h"
#include "BitmapCheck.h"
#include "Parallel.h"
#include "PixelConvert.h"
#include "PixelFormat.h"
#include "RegionMapping.h"

namespace qv {
namespace {

enum class Samples { Gray, Rgba8, Rgba16 };

struct Plan {
  Samples samples;
  int channels;  // averaged per pixel: 1 for gray, 3 for colour, 4 with alpha
  int stride;    // samples per decoded pixel: 1 for gray, 4 for the RGBA rows
  PixelFormat in;
  PixelFormat out;
};

Plan MakePlan(const PixelFormat& in, const PixelFormat& out) {
  if (in.IsGray()) return Plan{Samples::Gray, 1, 1, in, out};
  const Samples samples = in.bytesPerSample == 2 ? Samples::Rgba16 : Samples::Rgba8;
  return Plan{samples, in.HasAlpha() ? 4 : 3, 4, in, out};
}

// For source index i of an axis mapping src pixels onto dst: the output index its span starts in and the
// part of its span (in units of which it has dst) that falls there; the rest goes to the next output index.
class AxisWeights {
 public:
  AxisWeights(int src, int dst) : m_dst(dst), m_first(static_cast<size_t>(src)), m_weight(static_cast<size_t>(src)) {
    for (int i = 0; i < src; ++i) {
      const int64_t start = int64_t{i} * dst;
      const int j = static_cast<int>(start / src);
      m_first[static_cast<size_t>(i)] = j;
      m_weight[static_cast<size_t>(i)] = static_cast<uint32_t>(std::min(start + dst, int64_t{j + 1} * src) - start);
    }
  }
  int First(int i) const { return m_first[static_cast<size_t>(i)]; }
  uint32_t Weight(int i) const { return m_weight[static_cast<size_t>(i)]; }
  uint32_t Rest(int i) const { return static_cast<uint32_t>(m_dst) - Weight(i); }

 private:
  int m_dst;
  std::vector<int> m_first;
  std::vector<uint32_t> m_weight;
};

struct Job {
  const BITMAPHANDLE& src;
  const BITMAPHANDLE& dst;
  RECT region;
  Plan plan;
  const AxisWeights& columns;
};

class BandReducer {
 public:
  explicit BandReducer(const Job& job)
      : m_job(job),
        m_srcW(job.region.right - job.region.left),
        m_srcH(job.region.bottom - job.region.top),
        m_dstW(job.dst.nWidth),
        m_dstH(job.dst.nHeight),
        m_wide(job.plan.samples == Samples::Rgba8 ? 0 : RowSamples()),
        m_narrow(job.plan.samples == Samples::Rgba8 ? RowSamples() : 0) {
    if (!SameSize()) {
      m_line.resize(static_cast<size_t>(m_dstW) * job.plan.channels);
      m_acc.resize(m_line.size());
    }
  }

  void Run(int y0, int y1) {
    for (int y = y0; y < y1; ++y) {
      if (SameSize()) {
        CopyRow(y);
      } else {
        AverageRow(y);
      }
    }
  }

 private:
  bool SameSize() const { return m_srcW == m_dstW && m_srcH == m_dstH; }
  // One decoded source row, or one row of means (the output is never wider than the source).
  size_t RowSamples() const { return static_cast<size_t>(m_srcW) * m_job.plan.stride; }

  // Source row sy of the region, decoded into m_wide or m_narrow.
  void Decode(int sy) {
    const int y = m_job.region.top + sy;
    const int x0 = m_job.region.left, x1 = m_job.region.right;
    switch (m_job.plan.samples) {
      case Samples::Gray: ReadRowGray(m_job.src, m_job.plan.in, y, x0, x1, m_wide.data()); break;
      case Samples::Rgba8: ReadRowRgba8(m_job.src, m_job.plan.in, y, x0, x1, m_narrow.data()); break;
      case Samples::Rgba16: ReadRowRgba16(m_job.src, m_job.plan.in, y, x0, x1, m_wide.data()); break;
    }
  }

  // Output row y from the decoded row buffers.
  void Write(int y) {
    switch (m_job.plan.samples) {
      case Samples::Gray: WriteRowGray(m_job.dst, m_job.plan.out, y, 0, m_dstW, m_wide.data()); break;
      case Samples::Rgba8: WriteRowRgba8(m_job.dst, m_job.plan.out, y, 0, m_dstW, m_narrow.data()); break;
      case Samples::Rgba16: WriteRowRgba16(m_job.dst, m_job.plan.out, y, 0, m_dstW, m_wide.data()); break;
    }
  }

  // One output row per source row: a crop, or a change of format only.
  void CopyRow(int y) {
    if (m_job.plan.in.bitsPerPixel == m_job.plan.out.bitsPerPixel) {
      const size_t pixelBytes = static_cast<size_t>(m_job.src.nBitsPerPixel == 12 ? 16 : m_job.src.nBitsPerPixel) / 8;
      std::memcpy(RowPtr(m_job.dst, y), RowPtr(m_job.src, m_job.region.top + y) + m_job.region.left * pixelBytes,
                  static_cast<size_t>(m_dstW) * pixelBytes);
      return;
    }
    Decode(y);
    Write(y);
  }

  void AverageRow(int y) {
    std::fill(m_acc.begin(), m_acc.end(), 0);
    // Output row y spans [y*srcH, (y+1)*srcH); source row s spans [s*dstH, (s+1)*dstH).
    const int64_t lo = int64_t{y} * m_srcH, hi = lo + m_srcH;
    const int first = static_cast<int>(lo / m_dstH), end = static_cast<int>((hi + m_dstH - 1) / m_dstH);
    for (int s = first; s < end; ++s) {
      const uint64_t weight = static_cast<uint64_t>(std::min(hi, int64_t{s + 1} * m_dstH) -
                                                    std::max(lo, int64_t{s} * m_dstH));
      FilterRow(s);
      for (size_t k = 0; k < m_acc.size(); ++k) m_acc[k] += m_line[k] * weight;
    }
    const uint64_t divisor = uint64_t(m_srcW) * uint64_t(m_srcH);
    if (m_job.plan.samples == Samples::Rgba8) {
      StoreMeans(divisor, uint8_t{255}, m_narrow.data());
    } else {
      StoreMeans(divisor, uint16_t{65535}, m_wide.data());
    }
    Write(y);
  }

  // Source row s filtered horizontally into m_line (kept: the row shared by two output rows is read once).
  void FilterRow(int s) {
    if (s == m_lastRow) return;
    m_lastRow = s;
    Decode(s);
    std::fill(m_line.begin(), m_line.end(), 0);
    if (m_job.plan.samples == Samples::Rgba8) {
      FilterChannels(m_narrow.data());
    } else {
      FilterChannels(m_wide.data());
    }
  }

  // The channel count as a template argument, so the per-pixel loops unroll.
  template <class T>
  void FilterChannels(const T* px) {
    switch (m_job.plan.channels) {
      case 1: Filter<T, 1>(px); break;
      case 3: Filter<T, 3>(px); break;
      default: Filter<T, 4>(px); break;
    }
  }

  template <class T, int Channels>
  void Filter(const T* px) {
    const int stride = m_job.plan.stride;
    const AxisWeights& w = m_job.columns;
    for (int x = 0; x < m_srcW; ++x, px += stride) {
      uint64_t* a = &m_line[static_cast<size_t>(w.First(x)) * Channels];
      const uint32_t w0 = w.Weight(x), w1 = w.Rest(x);
      for (int c = 0; c < Channels; ++c) a[c] += uint64_t{px[c]} * w0;
      if (w1 == 0) continue;
      for (int c = 0; c < Channels; ++c) a[Channels + c] += uint64_t{px[c]} * w1;
    }
  }

  // The rounded means of m_acc into a row of the decoded layout; alpha full where it is not averaged.
  template <class T>
  void StoreMeans(uint64_t divisor, T opaque, T* out) {
    const int channels = m_job.plan.channels, stride = m_job.plan.stride;
    const uint64_t* a = m_acc.data();
    for (int x = 0; x < m_dstW; ++x, out += stride, a += channels) {
      for (int c = 0; c < channels; ++c) out[c] = static_cast<T>((a[c] + divisor / 2) / divisor);
      for (int c = channels; c < stride; ++c) out[c] = opaque;
    }
  }

  const Job& m_job;
  const int m_srcW, m_srcH, m_dstW, m_dstH;
  std::vector<uint16_t> m_wide;
  std::vector<uint8_t> m_narrow;
  std::vector<uint64_t> m_line;
  std::vector<uint64_t> m_acc;
  int m_lastRow = -1;
};

bool RegionFits(const BITMAPHANDLE& b, const RECT& r) {
  return r.left >= 0 && r.top >= 0 && r.left < r.right && r.top < r.bottom && r.right <= b.nWidth &&
         r.bottom <= b.nHeight;
}

// What a reduction in the source's own format keeps besides the samples.
int CarryDisplaySettings(const BITMAPHANDLE& src, BITMAPHANDLE* out) {
  out->nLowBit = src.nLowBit;
  out->nHighBit = src.nHighBit;
  if (!src.pLUT) return QV_SUCCESS;
  uint8_t* lut = DuplicateBlock(src.pLUT, static_cast<size_t>(src.uLUTLength) * sizeof(RGBQUAD));
  if (!lut) return QV_ERROR_NO_MEMORY;
  out->pLUT = reinterpret_cast<RGBQUAD*>(lut);
  out->uLUTLength = src.uLUTLength;
  out->uFlags |= src.uFlags & QV_BMF_USELUT;
  return QV_SUCCESS;
}

}  // namespace

int ReducedBitsPerPixel(const BITMAPHANDLE& b) {
  PixelFormat f{};
  if (DescribePixelFormat(b, &f) != QV_SUCCESS) return 0;
  return f.IsIndexed() || f.kind == PixelKind::Rgb565 ? 24 : f.bitsPerPixel;
}

int ReduceBitmapRegion(const BITMAPHANDLE& src, const RECT& region, int width, int height, BITMAPHANDLE* out) {
  if (!RegionFits(src, region)) return QV_ERROR_BAD_REGION;
  if (width <= 0 || height <= 0) return QV_ERROR_INVALID_DIMENSIONS;
  if (width > region.right - region.left || height > region.bottom - region.top) return QV_ERROR_INVALID_PARAMETER;
  PixelFormat in{}, outFormat{};
  int rc = DescribePixelFormat(src, &in);
  if (rc != QV_SUCCESS) return rc;
  const int bits = ReducedBitsPerPixel(src);
  const bool kept = bits == src.nBitsPerPixel;
  BITMAPHANDLE made;
  rc = CreateBlankBitmap(width, height, bits, kept ? src.uOrder : QV_ORDER_BGR, kept && in.isSigned, &made);
  if (rc != QV_SUCCESS) return rc;
  DescribePixelFormat(made, &outFormat);
  made.nXResolution = src.nXResolution;
  made.nYResolution = src.nYResolution;
  if (kept) rc = CarryDisplaySettings(src, &made);
  if (rc == QV_SUCCESS) {
    const AxisWeights columns(region.right - region.left, width);
    const Job job{src, made, region, MakePlan(in, outFormat), columns};
    rc = ParallelRows(0, height, [&job](int y0, int y1) { BandReducer(job).Run(y0, y1); });
  }
  if (rc == QV_SUCCESS) rc = MapRegionOnto(src, region, &made);
  if (rc != QV_SUCCESS) {
    ReleaseBitmapMemory(&made);
    return rc;
  }
  *out = made;
  return QV_SUCCESS;
}

}  // namespace qv
