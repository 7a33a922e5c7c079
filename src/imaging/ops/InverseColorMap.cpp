/*
 * Candidate lists per cell, built in bands of red blocks over the cores and then concatenated. For a cube
 * [lo, hi] per channel and an entry e, the smallest squared distance is the distance to the clamped point,
 * the largest the distance to the farther corner, each summed per channel.
 */
#include "InverseColorMap.h"

#include <algorithm>
#include <cstdlib>

#include "../Parallel.h"

namespace qv {
namespace ops {
namespace {

constexpr int kCells = 1 << InverseColorMap::kCellBits;
constexpr int kCellSize = 256 / kCells;
constexpr int kBlocks = 8;  // first level: 8 x 8 x 8 blocks of cells
constexpr int kBlockSize = 32;
constexpr int kPerBlock = kBlockSize / kCellSize;

inline int Square(int v) { return v * v; }

// Appends to out the entries of pool that can be nearest to some color of the cube [lo, lo + size - 1]^3.
void Candidates(const std::vector<int16_t>& rgb, const int lo[3], int size, const std::vector<uint8_t>& pool,
                std::vector<int>& nearest, std::vector<uint8_t>& out) {
  int bound = 1 << 30;
  for (size_t k = 0; k < pool.size(); ++k) {
    const int16_t* e = &rgb[static_cast<size_t>(pool[k]) * 3];
    int closest = 0, farthest = 0;
    for (int c = 0; c < 3; ++c) {
      const int l = lo[c], h = lo[c] + size - 1;
      closest += e[c] < l ? Square(l - e[c]) : (e[c] > h ? Square(e[c] - h) : 0);
      farthest += Square(std::max(std::abs(e[c] - l), std::abs(e[c] - h)));
    }
    nearest[k] = closest;
    bound = std::min(bound, farthest);
  }
  for (size_t k = 0; k < pool.size(); ++k)
    if (nearest[k] <= bound) out.push_back(pool[k]);
}

}  // namespace

InverseColorMap::InverseColorMap(const std::vector<RGBQUAD>& palette) {
  std::vector<uint8_t> all;
  for (const RGBQUAD& e : palette) {
    m_rgb.push_back(e.rgbRed);
    m_rgb.push_back(e.rgbGreen);
    m_rgb.push_back(e.rgbBlue);
    all.push_back(static_cast<uint8_t>(all.size()));
  }
  // Two levels: a block's candidates include those of every cell inside it, so each cell only looks at its
  // block's, which cuts the work by the ratio of the palette to a block's candidates. Each red plane of
  // cells collects its lists in block order; slices[] says where each cell's list landed.
  struct Slice {
    uint32_t begin, count;
  };
  std::vector<std::vector<uint8_t>> planes(kCells);
  std::vector<Slice> slices(static_cast<size_t>(kCells) * kCells * kCells);
  ParallelRowsQuiet(0, kBlocks, [&](int r0, int r1) {
    std::vector<int> nearest(all.size());
    std::vector<uint8_t> block;
    for (int rb = r0; rb < r1; ++rb)
      for (int gb = 0; gb < kBlocks; ++gb)
        for (int bb = 0; bb < kBlocks; ++bb) {
          const int blockLo[3] = {rb * kBlockSize, gb * kBlockSize, bb * kBlockSize};
          block.clear();
          Candidates(m_rgb, blockLo, kBlockSize, all, nearest, block);
          for (int rc = rb * kPerBlock; rc < (rb + 1) * kPerBlock; ++rc)
            for (int gc = gb * kPerBlock; gc < (gb + 1) * kPerBlock; ++gc)
              for (int bc = bb * kPerBlock; bc < (bb + 1) * kPerBlock; ++bc) {
                const int cellLo[3] = {rc * kCellSize, gc * kCellSize, bc * kCellSize};
                const size_t before = planes[rc].size();
                Candidates(m_rgb, cellLo, kCellSize, block, nearest, planes[rc]);
                slices[(static_cast<size_t>(rc) * kCells + gc) * kCells + bc] =
                    Slice{static_cast<uint32_t>(before), static_cast<uint32_t>(planes[rc].size() - before)};
              }
        }
  });
  m_start.reserve(slices.size() + 1);
  for (size_t cell = 0; cell < slices.size(); ++cell) {
    const std::vector<uint8_t>& plane = planes[cell / (kCells * kCells)];
    m_start.push_back(static_cast<uint32_t>(m_candidates.size()));
    m_candidates.insert(m_candidates.end(), plane.begin() + slices[cell].begin,
                        plane.begin() + slices[cell].begin + slices[cell].count);
  }
  m_start.push_back(static_cast<uint32_t>(m_candidates.size()));
}

}  // namespace ops
}  // namespace qv
