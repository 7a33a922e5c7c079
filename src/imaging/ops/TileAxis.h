/*
 * One axis of the local equalization's tile grid. Tiles of `tile` positions run from the start of the area;
 * tile j's histogram window reaches `ext` positions further on each side, clipped to the area. Moving the
 * window from tile j - 1 to tile j adds the positions of lead strip j and drops those of trail strip j - 1,
 * where lead strip k is [k tile + ext, (k + 1) tile + ext) and trail strip k is [k tile - ext, (k + 1) tile
 * - ext); so window j is the sum of lead strips k <= j less the trail strips k < j, and a histogram kept per
 * strip makes each move cost one strip in and one out, whatever the tile or its extension.
 *
 * Smoothing s blends tiles near a seam: a position x stands for the span [x + 1/2 - s, x + 1/2 + s], and each
 * tile weighs by the share of that span it covers (the first and last tiles reaching on past the area's
 * ends, so nothing blends at the border). Within s of one seam this is the linear ramp from one tile's
 * mapping to the other's; weights are counted in half positions, so they are integers over 4 s.
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace qv {
namespace ops {

class TileAxis {
 public:
  struct Weight {
    int tile;
    int weight;
  };

  // length >= 1, tile >= 1, ext >= 0, smooth >= 0. A tile or extension longer than the area acts as the
  // area's length, so both are clamped to it and every later sum fits an int.
  TileAxis(int length, int tile, int ext, int smooth)
      : m_length(length), m_tile(std::min(tile, length)), m_ext(std::min(ext, length)), m_smooth(smooth) {
    m_tiles = (m_length + m_tile - 1) / m_tile;
    m_leadMin = FloorDiv(-m_ext, m_tile);
    m_leadMax = FloorDiv(m_length - 1 - m_ext, m_tile);
    m_trailMin = FloorDiv(m_ext, m_tile);
    m_trailMax = FloorDiv(m_length - 1 + m_ext, m_tile);
    BuildWeights();
  }

  int Length() const { return m_length; }
  int TileSize() const { return m_tile; }
  int Tiles() const { return m_tiles; }
  int TileOf(int x) const { return x / m_tile; }
  int TileBegin(int j) const { return j * m_tile; }
  int TileEnd(int j) const { return std::min(m_length, (j + 1) * m_tile); }
  int WindowBegin(int j) const { return std::max(0, j * m_tile - m_ext); }
  int WindowEnd(int j) const { return std::min(m_length, (j + 1) * m_tile + m_ext); }
  bool Extended() const { return m_ext > 0; }

  // Strip numbers of a position and the ranges they take; without an extension lead and trail coincide
  // with the tiles.
  int LeadStrip(int x) const { return FloorDiv(x - m_ext, m_tile); }
  int TrailStrip(int x) const { return FloorDiv(x + m_ext, m_tile); }
  int LeadMin() const { return m_leadMin; }
  int LeadMax() const { return m_leadMax; }
  int TrailMin() const { return m_trailMin; }
  int TrailMax() const { return m_trailMax; }

  // Tiles whose mapping can reach a position of tile j through smoothing: j - Margin() .. j + Margin().
  int Margin() const { return (m_smooth + m_tile - 1) / m_tile; }
  // Sum of the weights of every position: 4 s, or 1 without smoothing.
  int Denominator() const { return m_smooth > 0 ? 4 * m_smooth : 1; }
  const Weight* WeightsBegin(int x) const { return m_weights.data() + m_first[x]; }
  const Weight* WeightsEnd(int x) const { return m_weights.data() + m_first[x + 1]; }
  // For a position with one tile: one past the last following position with that tile alone.
  int SingleRunEnd(int x) const { return m_runEnd[x]; }

 private:
  static int FloorDiv(int a, int b) { return a >= 0 ? a / b : -((-a + b - 1) / b); }

  void BuildWeights() {
    m_first.assign(static_cast<size_t>(m_length) + 1, 0);
    for (int x = 0; x < m_length; ++x) {
      m_first[x] = static_cast<int>(m_weights.size());
      if (m_smooth == 0) {
        m_weights.push_back({TileOf(x), 1});
        continue;
      }
      // In half positions: the span [lo, hi) against tile j's [2 j tile, 2 (j + 1) tile).
      const int64_t lo = 2 * int64_t{x} + 1 - 2 * m_smooth, hi = 2 * int64_t{x} + 1 + 2 * m_smooth;
      const int first = lo <= 0 ? 0 : static_cast<int>(std::min<int64_t>(m_tiles - 1, lo / (2 * m_tile)));
      const int last = static_cast<int>(std::min<int64_t>(m_tiles - 1, (hi - 1) / (2 * m_tile)));
      for (int j = first; j <= last; ++j) {
        const int64_t begin = j == 0 ? lo : std::max<int64_t>(lo, 2 * int64_t{j} * m_tile);
        const int64_t end = j == m_tiles - 1 ? hi : std::min<int64_t>(hi, 2 * (int64_t{j} + 1) * m_tile);
        if (end > begin) m_weights.push_back({j, static_cast<int>(end - begin)});
      }
    }
    m_first[m_length] = static_cast<int>(m_weights.size());
    m_runEnd.assign(static_cast<size_t>(m_length), 0);
    for (int x = m_length - 1; x >= 0; --x) {
      const bool single = m_first[x + 1] - m_first[x] == 1;
      const bool continues = x + 1 < m_length && m_first[x + 2] - m_first[x + 1] == 1 &&
                             m_weights[m_first[x + 1]].tile == m_weights[m_first[x]].tile;
      m_runEnd[x] = single && continues ? m_runEnd[x + 1] : x + 1;
    }
  }

  int m_length;
  int m_tile;
  int m_ext;
  int m_smooth;
  int m_tiles = 1;
  int m_leadMin = 0;
  int m_leadMax = 0;
  int m_trailMin = 0;
  int m_trailMax = 0;
  std::vector<int> m_first;
  std::vector<Weight> m_weights;
  std::vector<int> m_runEnd;
};

}  // namespace ops
}  // namespace qv
