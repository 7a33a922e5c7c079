/*
 * The resampling behind painting. Each axis gets a tap list per destination index: one tap of full weight
 * when enlarging (nearest neighbour at the pixel centre), the covered source pixels with their overlap when
 * reducing. Horizontal taps are applied to each converted source row, giving 8.8 fixed-point values; vertical
 * taps then combine those rows, and the 8.8 x 0.16 products fit 32 bits.
 */
#include "DisplayResampler.h"

#include <algorithm>
#include <vector>

#include "DisplayRows.h"
#include "Parallel.h"

namespace qv {
namespace {

constexpr uint32_t kOne = 65536;  // weights of one destination pixel sum to this

struct Tap {
  int32_t index;  // source index relative to the start of the source range
  uint32_t weight;
};

// Taps for destination indices [first, last) of an axis mapping srcLen source pixels onto dstLen.
class AxisTaps {
 public:
  AxisTaps(int64_t srcLen, int64_t dstLen, int first, int last) {
    m_start.reserve(static_cast<size_t>(last - first) + 1);
    for (int64_t j = first; j < last; ++j) {
      m_start.push_back(static_cast<uint32_t>(m_taps.size()));
      if (srcLen <= dstLen) {
        const int64_t i = ((2 * j + 1) * srcLen) / (2 * dstLen);
        m_taps.push_back(Tap{static_cast<int32_t>(i), kOne});
        continue;
      }
      // Source pixel i covers [i*dstLen, (i+1)*dstLen); destination j covers [j*srcLen, (j+1)*srcLen).
      const int64_t lo = j * srcLen, hi = (j + 1) * srcLen;
      const int64_t i0 = lo / dstLen, i1 = (hi + dstLen - 1) / dstLen;
      int64_t covered = 0;
      uint32_t given = 0;
      for (int64_t i = i0; i < i1; ++i) {
        covered += std::min(hi, (i + 1) * dstLen) - std::max(lo, i * dstLen);
        const uint32_t cumulative = static_cast<uint32_t>((covered * kOne + srcLen / 2) / srcLen);
        if (cumulative > given) m_taps.push_back(Tap{static_cast<int32_t>(i), cumulative - given});
        given = cumulative;
      }
    }
    m_start.push_back(static_cast<uint32_t>(m_taps.size()));
  }

  const Tap* Begin(int k) const { return m_taps.data() + m_start[static_cast<size_t>(k)]; }
  const Tap* End(int k) const { return m_taps.data() + m_start[static_cast<size_t>(k) + 1]; }
  // The lowest and one past the highest source index any tap uses.
  int32_t MinIndex() const { return m_taps.empty() ? 0 : m_taps.front().index; }
  int32_t MaxIndex() const { return m_taps.empty() ? 0 : m_taps.back().index + 1; }

 private:
  std::vector<uint32_t> m_start;
  std::vector<Tap> m_taps;
};

// One band of destination rows: converts the source rows it needs, filters them horizontally (8.8 fixed
// point per channel) and combines them vertically.
class BandRenderer {
 public:
  BandRenderer(const DisplayRows& conv, const DisplayRequest& r, const AxisTaps& cols, const AxisTaps& rows)
      : m_r(r), m_cols(cols), m_rows(rows), m_rowsConv(conv) {
    m_srcX0 = r.source.left + cols.MinIndex();
    m_srcX1 = r.source.left + cols.MaxIndex();
    m_visW = r.visible.right - r.visible.left;
    m_source.resize(static_cast<size_t>(m_srcX1 - m_srcX0));
    m_filtered.resize(static_cast<size_t>(m_visW) * 3);
    m_acc.resize(static_cast<size_t>(m_visW) * 3);
  }

  void Render(int k0, int k1, uint32_t* out) {
    for (int k = k0; k < k1; ++k) {
      std::fill(m_acc.begin(), m_acc.end(), 0u);
      for (const Tap* t = m_rows.Begin(k); t != m_rows.End(k); ++t) {
        FilterRow(m_r.source.top + t->index);
        const uint32_t w = t->weight;
        for (size_t i = 0; i < m_acc.size(); ++i) m_acc[i] += m_filtered[i] * w;
      }
      uint32_t* dst = out + static_cast<size_t>(k) * m_visW;
      for (int x = 0; x < m_visW; ++x) {
        const uint32_t* a = &m_acc[static_cast<size_t>(x) * 3];
        dst[x] = (((a[0] + (1u << 23)) >> 24) << 16) | (((a[1] + (1u << 23)) >> 24) << 8) | ((a[2] + (1u << 23)) >> 24);
      }
    }
  }

 private:
  // Horizontally filtered source row y into m_filtered (kept when the same row is asked for again).
  void FilterRow(int y) {
    if (y == m_lastRow) return;
    m_lastRow = y;
    m_rowsConv.Convert(y, m_srcX0, m_srcX1, m_source.data());
    const int offset = m_r.source.left - m_srcX0;
    for (int x = 0; x < m_visW; ++x) {
      uint32_t red = 0, green = 0, blue = 0;
      for (const Tap* t = m_cols.Begin(x); t != m_cols.End(x); ++t) {
        const uint32_t px = m_source[static_cast<size_t>(t->index + offset)];
        red += ((px >> 16) & 0xFF) * t->weight;
        green += ((px >> 8) & 0xFF) * t->weight;
        blue += (px & 0xFF) * t->weight;
      }
      uint32_t* f = &m_filtered[static_cast<size_t>(x) * 3];
      f[0] = (red + 128) >> 8;
      f[1] = (green + 128) >> 8;
      f[2] = (blue + 128) >> 8;
    }
  }

  const DisplayRequest& m_r;
  const AxisTaps& m_cols;
  const AxisTaps& m_rows;
  const DisplayRows& m_rowsConv;
  int m_srcX0 = 0, m_srcX1 = 0, m_visW = 0;
  int m_lastRow = -1;
  std::vector<uint32_t> m_source;
  std::vector<uint32_t> m_filtered;
  std::vector<uint32_t> m_acc;
};

bool RequestFits(const BITMAPHANDLE& b, const DisplayRequest& r) {
  const RECT& s = r.source;
  const RECT& v = r.visible;
  return s.left >= 0 && s.top >= 0 && s.right <= b.nWidth && s.bottom <= b.nHeight && s.left < s.right &&
         s.top < s.bottom && r.destWidth > 0 && r.destHeight > 0 && v.left >= 0 && v.top >= 0 &&
         v.right <= r.destWidth && v.bottom <= r.destHeight && v.left < v.right && v.top < v.bottom;
}

}  // namespace

int RenderForDisplay(const BITMAPHANDLE& b, const DisplayRequest& r, uint32_t* out) {
  if (!RequestFits(b, r)) return QV_ERROR_INVALID_PARAMETER;
  const AxisTaps cols(r.source.right - r.source.left, r.destWidth, r.visible.left, r.visible.right);
  const AxisTaps rows(r.source.bottom - r.source.top, r.destHeight, r.visible.top, r.visible.bottom);
  const DisplayRows conv(b);
  const int visH = r.visible.bottom - r.visible.top;
  return ParallelRowsQuiet(0, visH, [&](int k0, int k1) {
    BandRenderer band(conv, r, cols, rows);
    band.Render(k0, k1, out);
  });
}

}  // namespace qv
