/*
 * Nearest palette entry of any 8-bit RGB color without scanning the palette. The color cube is split into
 * 64 x 64 x 64 cells of 4 x 4 x 4 colors; for each cell the map keeps only the entries that can be nearest
 * to some color in it. Some entry lies within distance D of every color of the cell, D being the smallest
 * over all entries of their largest distance to the cell; an entry whose smallest distance to the cell
 * exceeds D can therefore never win there. A lookup then compares a handful of candidates exactly, so the answer is
 * the true nearest entry (squared RGB distance, the lowest index on ties).
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "qv/qvkrn.h"

namespace qv {
namespace ops {

class InverseColorMap {
 public:
  static constexpr int kCellBits = 5;  // per channel; finer cells mean fewer candidates per lookup

  // palette: 1 to 256 entries.
  explicit InverseColorMap(const std::vector<RGBQUAD>& palette);

  int Nearest(int r, int g, int b) const {
    constexpr int kShift = 8 - kCellBits;
    const uint32_t cell = (static_cast<uint32_t>(r >> kShift) << (2 * kCellBits)) |
                          (static_cast<uint32_t>(g >> kShift) << kCellBits) | static_cast<uint32_t>(b >> kShift);
    const uint8_t* c = m_candidates.data() + m_start[cell];
    const uint8_t* end = m_candidates.data() + m_start[cell + 1];
    // Distance and index in one key, so the smallest key is the nearest entry with the lowest index on ties,
    // found with a branch-free minimum.
    uint32_t best = 0xFFFFFFFFu;
    for (; c < end; ++c) best = std::min(best, (static_cast<uint32_t>(Distance(*c, r, g, b)) << 8) | *c);
    return static_cast<int>(best & 0xFF);
  }

  const int16_t* Entry(int index) const { return &m_rgb[static_cast<size_t>(index) * 3]; }
  int Size() const { return static_cast<int>(m_rgb.size() / 3); }

 private:
  int Distance(int index, int r, int g, int b) const {
    const int16_t* e = &m_rgb[static_cast<size_t>(index) * 3];
    const int dr = e[0] - r, dg = e[1] - g, db = e[2] - b;
    return dr * dr + dg * dg + db * db;
  }

  std::vector<int16_t> m_rgb;         // R, G, B of each entry
  std::vector<uint32_t> m_start;      // per cell, offset of its candidates (one more for the end)
  std::vector<uint8_t> m_candidates;  // entry indices, cell after cell
};

}  // namespace ops
}  // namespace qv
