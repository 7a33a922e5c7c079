/*
 * Local histogram equalization.
 *
 * The mapping. A window holding N samples maps a value v to max * (2 below(v) + count(v)) / (2 N), rounded:
 * the middle of v's rank among the window's samples. Every value keeps its order, a window of one value maps
 * it to the middle level, and inverting the image inverts the result. 16-bit samples are counted in 4096
 * bins of 16 values (histograms of 65536 bins per tile would cost more than the pixels they serve); the
 * mapping is computed at the 4097 bin edges, E_k = max * below(bin k) / N rounded, and a value 16 k + f
 * maps to E_k + (E_k+1 - E_k) (2 f + 1) / 32 rounded, so the output keeps all 16 bits.
 *
 * Channels. Colour space QV_LHE_RGB equalizes red, green and blue each by its own histogram; QV_LHE_YUV
 * equalizes the luminance Y = (299 R + 587 G + 114 B) / 1000 and keeps U and V, which moves every channel
 * by Y' - Y (clamped); QV_LHE_GRAY equalizes the luminance and writes it to all three channels. A gray image
 * has one channel and all three spaces equalize it.
 *
 * Cost. Histograms are kept per strip of columns (TileAxis.h) over the rows of the current tile row's
 * window; moving down one tile row adds the rows entering the window and removes those leaving it, and each
 * tile's window histogram is the previous tile's plus one lead strip less one trail strip. A pixel is thus
 * counted a fixed number of times whatever the tile and extension, and each tile costs a few passes over its
 * bins. Mapping tables live for the tile rows that smoothing can reach, in a ring per band of rows.
 *
 * In place. Histograms read the sample keys copied before anything is written, so no band reads a pixel
 * another band has already changed; each pixel is then written from its own old value alone.
 */
#include "LocalHistoEqualizer.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "LocalHistoRows.h"
#include "TileAxis.h"

namespace qv {
namespace ops {
namespace {

enum class Mode { kGray, kEach, kLuma, kLumaToGray };

// Work memory above which a call is refused with QV_ERROR_NO_MEMORY rather than attempted (tiny tiles of
// 16-bit color over a wide image would ask for gigabytes of strip histograms).
constexpr uint64_t kMaxWorkBytes = uint64_t{1} << 30;

// num / den rounded half up for one den and many num >= 0: a floating-point reciprocal gives the quotient to
// within one, and an integer test settles it, so small tiles do not pay a 64-bit division per bin.
class RoundingDivider {
 public:
  explicit RoundingDivider(int64_t den) : m_den2(2 * den), m_inv(1.0 / static_cast<double>(2 * den)) {}
  int64_t operator()(int64_t num) const {
    const int64_t twice = 2 * num + m_den2 / 2;
    int64_t q = static_cast<int64_t>(static_cast<double>(twice) * m_inv);
    while (q > 0 && q * m_den2 > twice) --q;
    while ((q + 1) * m_den2 <= twice) ++q;
    return q;
  }

 private:
  int64_t m_den2;
  double m_inv;
};

template <bool kBinned>
inline uint32_t Eval(const uint16_t* table, uint32_t v) {
  if (!kBinned) return table[v];
  const uint32_t k = v >> 4, f = v & 15;
  const uint32_t lo = table[k], hi = table[k + 1];
  return lo + (((hi - lo) * (2 * f + 1) + 16) >> 5);
}

class Equalizer {
 public:
  Equalizer(BITMAPHANDLE& b, const PixelFormat& f, const LocalHistoParams& p)
      : m_b(b),
        m_f(f),
        m_spans(b),
        m_left(m_spans.Left()),
        m_top(m_spans.Top()),
        m_x(m_spans.Right() - m_spans.Left(), p.width, p.xExt, static_cast<int>(p.smooth)),
        m_y(m_spans.Bottom() - m_spans.Top(), p.height, p.yExt, static_cast<int>(p.smooth)) {
    m_mode = f.IsGray()                   ? Mode::kGray
             : p.colorSpace == QV_LHE_RGB ? Mode::kEach
             : p.colorSpace == QV_LHE_YUV ? Mode::kLuma
                                          : Mode::kLumaToGray;
    m_channels = m_mode == Mode::kEach ? 3 : 1;
    m_max = ChannelMax(f);
    m_binned = m_max > 4095;
    m_bins = m_binned ? 4096 : static_cast<int>(m_max) + 1;
    m_entries = m_binned ? m_bins + 1 : m_bins;
  }

  int Run() {
    if (WorkBytes() > kMaxWorkBytes) return QV_ERROR_NO_MEMORY;
    // Left uninitialized: every key is written before it is read, and zeroing would cost a pass of its own.
    m_keys.reset(new uint16_t[static_cast<size_t>(m_channels) * m_x.Length() * m_y.Length()]);
    m_leadIndex.resize(m_x.Length());
    m_trailIndex.resize(m_x.Length());
    for (int x = 0; x < m_x.Length(); ++x) {
      m_leadIndex[x] = m_x.LeadStrip(x) - m_x.LeadMin();
      m_trailIndex[x] = m_x.TrailStrip(x) - m_x.TrailMin();
    }
    ParallelRowsQuiet(0, m_y.Length(), [&](int y0, int y1) { Guard([&] { BuildKeys(y0, y1); }); });
    if (m_failed) return QV_ERROR_NO_MEMORY;
    const int rc = ParallelRows(0, m_y.Length(), [&](int y0, int y1) { Guard([&] { RunBand(y0, y1); }); });
    if (rc != QV_SUCCESS) return rc;
    return m_failed ? QV_ERROR_NO_MEMORY : QV_SUCCESS;
  }

 private:
  // What one band of rows keeps: the strip histograms of the current window rows, the running window
  // histogram, and the mapping tables of the tile rows in reach.
  struct Band {
    std::vector<uint32_t> lead, trail;
    std::vector<int32_t> window;
    std::vector<uint16_t> ring;
    int ringRows = 1;
    int rowsBegin = 0, rowsEnd = 0;  // window rows the strips hold
  };

  template <class F>
  void Guard(F&& f) noexcept {
    try {
      f();
    } catch (...) {
      m_failed = true;  // a band must not throw into the thread pool; the call reports it instead
    }
  }

  size_t StripSize() const { return static_cast<size_t>(m_channels) * m_bins; }
  size_t TableRowSize() const { return static_cast<size_t>(m_x.Tiles()) * m_channels * m_entries; }
  int RingRows() const { return std::min(2 * m_y.Margin() + 1, m_y.Tiles()); }

  uint64_t WorkBytes() const {
    const uint64_t strips = uint64_t(m_x.LeadMax() - m_x.LeadMin() + 1) + (m_x.TrailMax() - m_x.TrailMin() + 1);
    const uint64_t band = strips * StripSize() * 4 + uint64_t(RingRows()) * TableRowSize() * 2;
    const uint64_t threads = std::max(1u, std::thread::hardware_concurrency());
    return uint64_t(m_channels) * m_x.Length() * m_y.Length() * 2 + threads * band;
  }

  uint16_t* KeyRow(int c, int y) { return m_keys.get() + (static_cast<size_t>(c) * m_y.Length() + y) * m_x.Length(); }

  // The histogram key of every sample of the area: its value, or bin for 16-bit samples.
  void BuildKeys(int y0, int y1) {
    const LocalHistoRows rows(m_b, m_f);
    const int n = m_x.Length(), shift = m_binned ? 4 : 0;
    std::vector<uint16_t> planes(3 * static_cast<size_t>(n)), rgba;
    uint16_t* const c[3] = {planes.data(), planes.data() + n, planes.data() + 2 * n};
    for (int y = y0; y < y1; ++y) {
      rows.Read(m_top + y, m_left, m_left + n, c, rgba);
      if (m_mode == Mode::kGray || m_mode == Mode::kEach) {
        for (int k = 0; k < m_channels; ++k) {
          uint16_t* keys = KeyRow(k, y);
          for (int x = 0; x < n; ++x) keys[x] = static_cast<uint16_t>(c[k][x] >> shift);
        }
      } else {
        uint16_t* keys = KeyRow(0, y);
        for (int x = 0; x < n; ++x) keys[x] = static_cast<uint16_t>(Luminance(c[0][x], c[1][x], c[2][x]) >> shift);
      }
    }
  }

  // Adds (delta 1) or removes (delta -1, as unsigned) rows [r0, r1) of the area to the strip histograms.
  void AddRows(Band& band, int r0, int r1, uint32_t delta) {
    const bool trail = m_x.Extended();
    const size_t strip = StripSize();
    for (int y = r0; y < r1; ++y) {
      m_spans.ForEachSpan(m_top + y, [&](int ax0, int ax1) {
        const int x0 = ax0 - m_left, x1 = ax1 - m_left;
        for (int c = 0; c < m_channels; ++c) {
          const uint16_t* keys = KeyRow(c, y);
          uint32_t* lead = band.lead.data() + static_cast<size_t>(c) * m_bins;
          uint32_t* tr = band.trail.data() + static_cast<size_t>(c) * m_bins;
          if (!trail) {
            for (int x = x0; x < x1; ++x) lead[m_leadIndex[x] * strip + keys[x]] += delta;
          } else {
            for (int x = x0; x < x1; ++x) {
              lead[m_leadIndex[x] * strip + keys[x]] += delta;
              tr[m_trailIndex[x] * strip + keys[x]] += delta;
            }
          }
        }
      });
    }
  }

  // Slides the strips' rows to tile row j's window.
  void MoveWindowTo(Band& band, int j) {
    const int begin = m_y.WindowBegin(j), end = m_y.WindowEnd(j);
    if (band.rowsBegin == band.rowsEnd || begin >= band.rowsEnd) {
      // Nothing shared with the previous window (no vertical extension): clearing beats removing each row.
      std::fill(band.lead.begin(), band.lead.end(), 0u);
      std::fill(band.trail.begin(), band.trail.end(), 0u);
      AddRows(band, begin, end, 1);
    } else {
      AddRows(band, std::max(band.rowsEnd, begin), end, 1);
      AddRows(band, band.rowsBegin, std::min(begin, band.rowsEnd), static_cast<uint32_t>(-1));
    }
    band.rowsBegin = begin;
    band.rowsEnd = end;
  }

  // One channel's mapping table from a window histogram.
  template <class Count>
  void BuildTable(const Count* hist, uint16_t* table) const {
    uint64_t n = 0;
    for (int v = 0; v < m_bins; ++v) n += static_cast<uint32_t>(hist[v]);
    if (n == 0) {  // no pixel of the region in the window: values stay
      for (int v = 0; v < m_entries; ++v)
        table[v] = static_cast<uint16_t>(std::min<uint32_t>(v << (m_binned ? 4 : 0), m_max));
      return;
    }
    const int64_t max = m_max;
    // Binned: E_k = max below / n; otherwise max (2 below + count) / (2 n).
    const RoundingDivider divide(m_binned ? static_cast<int64_t>(n) : 2 * static_cast<int64_t>(n));
    const int64_t scale = m_binned ? max : 2 * max;
    int64_t below = 0;
    for (int v = 0; v < m_entries; ++v) {
      const int64_t count = v < m_bins ? static_cast<uint32_t>(hist[v]) : 0;
      table[v] = static_cast<uint16_t>(divide(m_binned ? max * below : scale * below + max * count));
      below += count;
    }
  }

  // The mapping tables of every tile of tile row j into the band's ring.
  void BuildTableRow(Band& band, int j) {
    uint16_t* out = band.ring.data() + static_cast<size_t>(j % band.ringRows) * TableRowSize();
    const size_t strip = StripSize();
    if (!m_x.Extended()) {
      for (int i = 0; i < m_x.Tiles(); ++i)
        for (int c = 0; c < m_channels; ++c)
          BuildTable(band.lead.data() + i * strip + static_cast<size_t>(c) * m_bins,
                     out + (static_cast<size_t>(i) * m_channels + c) * m_entries);
      return;
    }
    std::vector<int32_t>& w = band.window;
    std::fill(w.begin(), w.end(), 0);
    for (int k = m_x.LeadMin(); k <= std::min(0, m_x.LeadMax()); ++k) Accumulate(w, band.lead, k - m_x.LeadMin(), 1);
    for (int i = 0; i < m_x.Tiles(); ++i) {
      if (i > 0) {
        if (i <= m_x.LeadMax()) Accumulate(w, band.lead, i - m_x.LeadMin(), 1);
        if (i - 1 >= m_x.TrailMin() && i - 1 <= m_x.TrailMax()) Accumulate(w, band.trail, i - 1 - m_x.TrailMin(), -1);
      }
      for (int c = 0; c < m_channels; ++c)
        BuildTable(w.data() + static_cast<size_t>(c) * m_bins,
                   out + (static_cast<size_t>(i) * m_channels + c) * m_entries);
    }
  }

  void Accumulate(std::vector<int32_t>& w, const std::vector<uint32_t>& strips, int k, int sign) const {
    const uint32_t* s = strips.data() + static_cast<size_t>(k) * StripSize();
    if (sign > 0) {
      for (size_t i = 0; i < w.size(); ++i) w[i] += static_cast<int32_t>(s[i]);
    } else {
      for (size_t i = 0; i < w.size(); ++i) w[i] -= static_cast<int32_t>(s[i]);
    }
  }

  const uint16_t* Table(const Band& band, int tileRow, int tileCol, int c) const {
    return band.ring.data() + static_cast<size_t>(tileRow % band.ringRows) * TableRowSize() +
           (static_cast<size_t>(tileCol) * m_channels + c) * m_entries;
  }

  // The mapped values of one span of row y: out[c][i] for the values v[c][i], blended over the tiles in
  // reach of each pixel.
  template <bool kBinned>
  void MapSpan(const Band& band, int y, int x0, int n, const uint16_t* const v[3], uint16_t* const out[3]) const {
    const TileAxis::Weight* rb = m_y.WeightsBegin(y);
    const TileAxis::Weight* re = m_y.WeightsEnd(y);
    const uint64_t den = static_cast<uint64_t>(m_y.Denominator()) * m_x.Denominator();
    for (int i = 0; i < n;) {
      const int x = x0 + i;
      const TileAxis::Weight* cb = m_x.WeightsBegin(x);
      const TileAxis::Weight* ce = m_x.WeightsEnd(x);
      if (re - rb == 1 && ce - cb == 1) {
        // Inside one tile on both axes: a plain table pass up to the next blended column.
        const int end = std::min(n, m_x.SingleRunEnd(x) - x0);
        for (int c = 0; c < m_channels; ++c) {
          const uint16_t* t = Table(band, rb->tile, cb->tile, c);
          const uint16_t* in = v[c];
          uint16_t* o = out[c];
          for (int k = i; k < end; ++k) o[k] = static_cast<uint16_t>(Eval<kBinned>(t, in[k]));
        }
        i = end;
        continue;
      }
      uint64_t acc[3] = {0, 0, 0};
      for (const TileAxis::Weight* r = rb; r < re; ++r)
        for (const TileAxis::Weight* col = cb; col < ce; ++col) {
          const uint64_t w = static_cast<uint64_t>(r->weight) * col->weight;
          for (int c = 0; c < m_channels; ++c) acc[c] += w * Eval<kBinned>(Table(band, r->tile, col->tile, c), v[c][i]);
        }
      for (int c = 0; c < m_channels; ++c) out[c][i] = static_cast<uint16_t>((acc[c] + den / 2) / den);
      ++i;
    }
  }

  // Writes the pixels of tile row t inside the region.
  void WriteTileRow(const Band& band, const LocalHistoRows& rows, int t) {
    std::vector<uint16_t> planes(9 * static_cast<size_t>(m_x.Length())), rgba;
    const size_t n = m_x.Length();
    uint16_t* const c[3] = {planes.data(), planes.data() + n, planes.data() + 2 * n};
    uint16_t* const luma[3] = {planes.data() + 3 * n, nullptr, nullptr};
    uint16_t* const mapped[3] = {planes.data() + 6 * n, planes.data() + 7 * n, planes.data() + 8 * n};
    const int64_t max = m_max;
    for (int y = m_y.TileBegin(t); y < m_y.TileEnd(t); ++y) {
      m_spans.ForEachSpan(m_top + y, [&](int ax0, int ax1) {
        const int count = ax1 - ax0;
        rows.Read(m_top + y, ax0, ax1, c, rgba);
        const bool lumaMode = m_mode == Mode::kLuma || m_mode == Mode::kLumaToGray;
        if (lumaMode)
          for (int i = 0; i < count; ++i) luma[0][i] = static_cast<uint16_t>(Luminance(c[0][i], c[1][i], c[2][i]));
        const uint16_t* const* values = lumaMode ? luma : c;
        if (m_binned) {
          MapSpan<true>(band, y, ax0 - m_left, count, values, mapped);
        } else {
          MapSpan<false>(band, y, ax0 - m_left, count, values, mapped);
        }
        for (int i = 0; i < count; ++i) {
          switch (m_mode) {
            case Mode::kGray: c[0][i] = mapped[0][i]; break;
            case Mode::kEach:
              for (int k = 0; k < 3; ++k) c[k][i] = mapped[k][i];
              break;
            case Mode::kLuma: {
              const int64_t d = static_cast<int64_t>(mapped[0][i]) - luma[0][i];
              for (int k = 0; k < 3; ++k) c[k][i] = static_cast<uint16_t>(Clamp64(c[k][i] + d, 0, max));
              break;
            }
            case Mode::kLumaToGray:
              for (int k = 0; k < 3; ++k) c[k][i] = mapped[0][i];
              break;
          }
        }
        rows.Write(m_top + y, ax0, ax1, c, rgba);
      });
    }
  }

  // Band of area rows [y0, y1): writes the tile rows that start inside it, computing the mapping tables of
  // those and of the tile rows smoothing reaches from them.
  void RunBand(int y0, int y1) {
    const int th = m_y.TileSize();
    const int first = (y0 + th - 1) / th, last = (y1 + th - 1) / th - 1;
    if (first > last) return;
    const int margin = m_y.Margin();
    const int begin = std::max(0, first - margin), end = std::min(m_y.Tiles() - 1, last + margin);
    Band band;
    const size_t strips = static_cast<size_t>(m_x.LeadMax() - m_x.LeadMin() + 1);
    band.lead.assign(strips * StripSize(), 0);
    if (m_x.Extended()) {
      band.trail.assign(static_cast<size_t>(m_x.TrailMax() - m_x.TrailMin() + 1) * StripSize(), 0);
      band.window.assign(StripSize(), 0);
    }
    band.ringRows = RingRows();
    band.ring.assign(static_cast<size_t>(band.ringRows) * TableRowSize(), 0);
    const LocalHistoRows rows(m_b, m_f);
    for (int j = begin; j <= end; ++j) {
      MoveWindowTo(band, j);
      BuildTableRow(band, j);
      const int t = j - margin;
      if (t >= first && t <= last) WriteTileRow(band, rows, t);
    }
    for (int t = std::max(first, end - margin + 1); t <= last; ++t) WriteTileRow(band, rows, t);
  }

  BITMAPHANDLE& m_b;
  const PixelFormat& m_f;
  RegionSpans m_spans;
  int m_left;
  int m_top;
  TileAxis m_x;
  TileAxis m_y;
  Mode m_mode = Mode::kGray;
  int m_channels = 1;
  uint32_t m_max = 255;
  bool m_binned = false;
  int m_bins = 256;
  int m_entries = 256;
  std::unique_ptr<uint16_t[]> m_keys;
  std::vector<int> m_leadIndex;
  std::vector<int> m_trailIndex;
  std::atomic<bool> m_failed{false};
};

}  // namespace

int LocalHistoEqualize(BITMAPHANDLE& b, const PixelFormat& f, const LocalHistoParams& p) {
  Equalizer e(b, f, p);
  return e.Run();
}

}  // namespace ops
}  // namespace qv
