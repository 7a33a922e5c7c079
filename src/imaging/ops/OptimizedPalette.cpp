/*
 * Wu's cut works on cumulative moments: after the prefix sums, the count, channel sums and sum of squares
 * of any box come from eight corner lookups, so the variance of a box and of both halves of every candidate
 * cut is O(1). Each step splits the box with the largest variance along the axis and position that leave
 * the smallest summed variance (equivalently, the largest sum of |mean sum|^2 / count over the two halves).
 */
#include "OptimizedPalette.h"

#include <algorithm>
#include <cmath>

namespace qv {
namespace ops {
namespace {

constexpr int kSide = ColorHistogram::kSide;
constexpr int kKMeansRounds = 5;

// A box of histogram cells: lower bounds exclusive, upper bounds inclusive, in cumulative coordinates.
struct Box {
  int lo[3] = {0, 0, 0};
  int hi[3] = {kSide - 1, kSide - 1, kSide - 1};
  double variance = 0;
};

class WuCutter {
 public:
  explicit WuCutter(const ColorHistogram& h) : m_sum(h.Cells()) {
    // Prefix sums along each axis in turn.
    for (int r = 1; r < kSide; ++r)
      for (int g = 1; g < kSide; ++g)
        for (int b = 1; b < kSide; ++b) At(r, g, b) += At(r, g, b - 1);
    for (int r = 1; r < kSide; ++r)
      for (int g = 1; g < kSide; ++g)
        for (int b = 1; b < kSide; ++b) At(r, g, b) += At(r, g - 1, b);
    for (int r = 1; r < kSide; ++r)
      for (int g = 1; g < kSide; ++g)
        for (int b = 1; b < kSide; ++b) At(r, g, b) += At(r - 1, g, b);
  }

  std::vector<Box> Cut(int count) {
    std::vector<Box> boxes(1);
    boxes[0].variance = Variance(boxes[0]);
    while (static_cast<int>(boxes.size()) < count) {
      auto worst = std::max_element(boxes.begin(), boxes.end(),
                                    [](const Box& a, const Box& b) { return a.variance < b.variance; });
      if (worst->variance <= 0) break;
      Box other;
      if (!Split(&*worst, &other)) {
        worst->variance = 0;
        continue;
      }
      worst->variance = Variance(*worst);
      other.variance = Variance(other);
      boxes.push_back(other);
    }
    return boxes;
  }

  ColorMoment Volume(const Box& x) const {
    ColorMoment m = At(x.hi[0], x.hi[1], x.hi[2]);
    m -= At(x.hi[0], x.hi[1], x.lo[2]);
    m -= At(x.hi[0], x.lo[1], x.hi[2]);
    m += At(x.hi[0], x.lo[1], x.lo[2]);
    m -= At(x.lo[0], x.hi[1], x.hi[2]);
    m += At(x.lo[0], x.hi[1], x.lo[2]);
    m += At(x.lo[0], x.lo[1], x.hi[2]);
    m -= At(x.lo[0], x.lo[1], x.lo[2]);
    return m;
  }

 private:
  ColorMoment& At(int r, int g, int b) { return m_sum[ColorHistogram::Index(r, g, b)]; }
  const ColorMoment& At(int r, int g, int b) const { return m_sum[ColorHistogram::Index(r, g, b)]; }

  static double Spread(const ColorMoment& m) { return m.w > 0 ? (m.r * m.r + m.g * m.g + m.b * m.b) / m.w : 0.0; }

  double Variance(const Box& x) const {
    if (x.hi[0] - x.lo[0] <= 1 && x.hi[1] - x.lo[1] <= 1 && x.hi[2] - x.lo[2] <= 1) return 0;  // one cell
    const ColorMoment m = Volume(x);
    return m.w > 0 ? m.q - Spread(m) : 0;
  }

  // The best cut of box along one axis: returns the score and sets *at (-1 when no cut leaves both halves
  // occupied).
  double BestCut(const Box& x, int axis, const ColorMoment& whole, int* at) const {
    double best = 0;
    *at = -1;
    for (int i = x.lo[axis] + 1; i < x.hi[axis]; ++i) {
      Box lower = x;
      lower.hi[axis] = i;
      const ColorMoment half = Volume(lower);
      if (half.w <= 0 || half.w >= whole.w) continue;
      ColorMoment rest = whole;
      rest -= half;
      const double score = Spread(half) + Spread(rest);
      if (score > best) {
        best = score;
        *at = i;
      }
    }
    return best;
  }

  bool Split(Box* x, Box* other) const {
    const ColorMoment whole = Volume(*x);
    int cut[3];
    double score[3];
    for (int axis = 0; axis < 3; ++axis) score[axis] = BestCut(*x, axis, whole, &cut[axis]);
    const int axis = score[0] >= score[1] ? (score[0] >= score[2] ? 0 : 2) : (score[1] >= score[2] ? 1 : 2);
    if (cut[axis] < 0) return false;
    *other = *x;
    x->hi[axis] = cut[axis];
    other->lo[axis] = cut[axis];
    return true;
  }

  std::vector<ColorMoment> m_sum;
};

struct Centroid {
  double r, g, b;
};

int Nearest(const std::vector<Centroid>& c, const ColorPoint& p) {
  int best = 0;
  double bestDistance = 1e30;
  for (size_t i = 0; i < c.size(); ++i) {
    const double dr = c[i].r - p.r;
    double d = dr * dr;
    if (d >= bestDistance) continue;
    const double dg = c[i].g - p.g;
    d += dg * dg;
    if (d >= bestDistance) continue;
    const double db = c[i].b - p.b;
    d += db * db;
    if (d < bestDistance) {
      bestDistance = d;
      best = static_cast<int>(i);
    }
  }
  return best;
}

// Weighted k-means rounds over the cell means; entries below `fixedCount` do not move, and an entry that
// wins no color keeps its place.
void Refine(const std::vector<ColorPoint>& points, size_t fixedCount, std::vector<Centroid>* centroids) {
  std::vector<ColorMoment> sums(centroids->size());
  for (int round = 0; round < kKMeansRounds; ++round) {
    std::fill(sums.begin(), sums.end(), ColorMoment{});
    for (const ColorPoint& p : points) {
      ColorMoment& s = sums[Nearest(*centroids, p)];
      s.w += p.weight;
      s.r += p.r * p.weight;
      s.g += p.g * p.weight;
      s.b += p.b * p.weight;
    }
    double moved = 0;
    for (size_t i = fixedCount; i < centroids->size(); ++i) {
      if (sums[i].w <= 0) continue;
      Centroid& c = (*centroids)[i];
      const Centroid n{sums[i].r / sums[i].w, sums[i].g / sums[i].w, sums[i].b / sums[i].w};
      moved = std::max(moved, std::fabs(n.r - c.r) + std::fabs(n.g - c.g) + std::fabs(n.b - c.b));
      c = n;
    }
    if (moved < 0.25) break;  // no entry moves by a visible amount any more
  }
}

uint8_t ToByte(double v) { return static_cast<uint8_t>(std::clamp(std::lround(v), 0L, 255L)); }

}  // namespace

std::vector<RGBQUAD> BuildOptimizedPalette(const ColorHistogram& histogram, int count,
                                           const std::vector<RGBQUAD>& fixed) {
  std::vector<Centroid> centroids;
  for (const RGBQUAD& e : fixed) centroids.push_back(Centroid{double(e.rgbRed), double(e.rgbGreen), double(e.rgbBlue)});
  const int free = count - static_cast<int>(fixed.size());
  if (free > 0) {
    WuCutter cutter(histogram);
    for (const Box& box : cutter.Cut(free)) {
      const ColorMoment m = cutter.Volume(box);
      if (m.w > 0) centroids.push_back(Centroid{m.r / m.w, m.g / m.w, m.b / m.w});
    }
    Refine(histogram.Points(), fixed.size(), &centroids);
  }
  std::vector<RGBQUAD> palette(fixed);
  for (size_t i = fixed.size(); i < centroids.size(); ++i)
    palette.push_back(RGBQUAD{ToByte(centroids[i].b), ToByte(centroids[i].g), ToByte(centroids[i].r), 0});
  return palette;
}

}  // namespace ops
}  // namespace qv
