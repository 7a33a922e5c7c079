/*
 * Local histogram equalization against a brute-force reference on small images: for every tile the window's
 * pixels are counted afresh, each pixel's tile weights are found by measuring its smoothing span against
 * every tile, and the result is compared per pixel. Rows cover every format family, tiles that do not divide
 * the image, extensions larger than the image, smoothing 0 and 9 (also wider than the tiles), the three
 * colour spaces and regions.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>
#include <vector>

#include "TestImage.h"

namespace opstest {
namespace {

struct Lhe {
  const char* format;
  int tw, th, ex, ey;
  unsigned space, smooth;
  int region;  // 0 none, 1 rectangle, 2 mask with holes
};

Format Find(const char* name) {
  for (const Format& f : AllFormats())
    if (std::string(f.name) == name) return f;
  ADD_FAILURE() << name;
  return AllFormats()[0];
}

int64_t RoundDivUp(int64_t num, int64_t den) { return (2 * num + den) / (2 * den); }

// The reference: levels of each pixel, mapping tables per tile, weights per pixel, all by direct counting.
class Reference {
 public:
  Reference(const TestBitmap& t, const Lhe& c, const RECT& area, const std::vector<uint8_t>& inside)
      : m_t(t), m_c(c), m_area(area), m_inside(inside) {
    m_w = area.right - area.left;
    m_h = area.bottom - area.top;
    m_max = t.Max();
    m_binned = m_max == 65535;
    m_perChannel = !t.IsGray() && c.space == QV_LHE_RGB;
  }

  // Expected RGB (gray: [0]) of pixel (x, y) of the area.
  void Expected(int x, int y, uint32_t out[3]) {
    uint32_t v[3];
    Levels(x, y, v);
    const uint32_t luma = Luma(v);
    uint32_t mapped[3];
    for (int c = 0; c < (m_perChannel ? 3 : 1); ++c) {
      const uint32_t value = m_t.IsGray() || m_perChannel ? v[c] : luma;
      uint64_t acc = 0, den = 0;
      for (const auto& [ty, wy] : Weights(y, m_h, m_c.th))
        for (const auto& [tx, wx] : Weights(x, m_w, m_c.tw)) {
          acc += static_cast<uint64_t>(wy) * wx * Map(tx, ty, c, value);
          den += static_cast<uint64_t>(wy) * wx;
        }
      mapped[c] = static_cast<uint32_t>((2 * acc + den) / (2 * den));
    }
    if (m_t.IsGray()) {
      out[0] = mapped[0];
    } else if (m_perChannel) {
      std::copy(mapped, mapped + 3, out);
    } else if (m_c.space == QV_LHE_YUV) {
      for (int c = 0; c < 3; ++c)
        out[c] = static_cast<uint32_t>(std::clamp<int64_t>(int64_t{v[c]} + mapped[0] - luma, 0, m_max));
    } else {
      out[0] = out[1] = out[2] = mapped[0];
    }
  }

  void Levels(int x, int y, uint32_t v[3]) const {
    m_t.Get(m_area.left + x, m_area.top + y, v);
    if (m_t.format().isSigned) v[0] = static_cast<uint32_t>(static_cast<int16_t>(v[0]) + (m_max + 1) / 2);
  }

 private:
  uint32_t Luma(const uint32_t v[3]) const { return (299 * v[0] + 587 * v[1] + 114 * v[2] + 500) / 1000; }

  uint32_t Key(int x, int y, int c) const {
    uint32_t v[3];
    Levels(x, y, v);
    const uint32_t value = m_t.IsGray() || m_perChannel ? v[c] : Luma(v);
    return m_binned ? value >> 4 : value;
  }

  // Tiles within reach of position p and their overlap, in half positions, with [p + 1/2 - s, p + 1/2 + s].
  std::vector<std::pair<int, int>> Weights(int p, int length, int tile) const {
    const int s = static_cast<int>(m_c.smooth), tiles = static_cast<int>((int64_t{length} + tile - 1) / tile);
    if (s == 0) return {{p / tile, 1}};
    std::vector<std::pair<int, int>> w;
    for (int j = 0; j < tiles; ++j) {
      const int64_t lo = j == 0 ? -1000000 : 2 * int64_t{j} * tile;
      const int64_t hi = j == tiles - 1 ? 1000000 : 2 * (int64_t{j} + 1) * tile;
      const int64_t overlap = std::min<int64_t>(hi, 2 * p + 1 + 2 * s) - std::max<int64_t>(lo, 2 * p + 1 - 2 * s);
      if (overlap > 0) w.push_back({j, static_cast<int>(overlap)});
    }
    return w;
  }

  uint32_t Map(int tx, int ty, int c, uint32_t value) {
    const auto key = std::make_tuple(tx, ty, c);
    auto it = m_hist.find(key);
    if (it == m_hist.end()) {
      std::vector<uint64_t> h(m_binned ? 4096 : m_max + 1, 0);
      const int x0 = std::max(0, tx * m_c.tw - m_c.ex), x1 = std::min<int64_t>(m_w, int64_t{tx + 1} * m_c.tw + m_c.ex);
      const int y0 = std::max(0, ty * m_c.th - m_c.ey), y1 = std::min<int64_t>(m_h, int64_t{ty + 1} * m_c.th + m_c.ey);
      for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x)
          if (m_inside[y * m_w + x]) ++h[Key(x, y, c)];
      it = m_hist.emplace(key, std::move(h)).first;
    }
    const std::vector<uint64_t>& h = it->second;
    uint64_t n = 0;
    for (uint64_t count : h) n += count;
    if (n == 0) return value;
    const uint32_t k = m_binned ? value >> 4 : value;
    uint64_t below = 0;
    for (uint32_t i = 0; i < k; ++i) below += h[i];
    if (!m_binned) return static_cast<uint32_t>(RoundDivUp(int64_t{m_max} * (2 * below + h[k]), 2 * n));
    const int64_t e0 = RoundDivUp(int64_t{m_max} * below, n), e1 = RoundDivUp(int64_t{m_max} * (below + h[k]), n);
    return static_cast<uint32_t>(e0 + ((e1 - e0) * (2 * (value & 15) + 1) + 16) / 32);
  }

  const TestBitmap& m_t;
  Lhe m_c;
  RECT m_area;
  const std::vector<uint8_t>& m_inside;
  int m_w = 0, m_h = 0;
  uint32_t m_max = 255;
  bool m_binned = false, m_perChannel = false;
  std::map<std::tuple<int, int, int>, std::vector<uint64_t>> m_hist;
};

uint32_t Distance(const RGBQUAD& q, const uint32_t c[3]) {
  const int dr = q.rgbRed - int(c[0]), dg = q.rgbGreen - int(c[1]), db = q.rgbBlue - int(c[2]);
  return dr * dr + dg * dg + db * db;
}

TEST(LocalHistoEqualize, MatchesABruteForceLocalHistogram) {
  const Lhe cases[] = {
      {"Gray8", 7, 5, 0, 0, QV_LHE_GRAY, 0, 0},       {"Gray8", 8, 4, 3, 2, QV_LHE_RGB, 2, 0},
      {"Gray8", 1, 1, 0, 0, QV_LHE_GRAY, 9, 0},       {"Gray8", 6, 4, 2, 2, QV_LHE_YUV, 2, 2},
      {"Gray12", 10, 6, 100, 100, QV_LHE_GRAY, 0, 0}, {"SignedGray12", 4, 13, 1, 0, QV_LHE_GRAY, 3, 0},
      {"Gray16", 16, 16, 0, 0, QV_LHE_GRAY, 9, 0},    {"SignedGray16", 9, 4, 2, 1, QV_LHE_GRAY, 3, 0},
      {"Bgr24", 6, 5, 1, 1, QV_LHE_RGB, 1, 0},        {"Rgb24", 12, 7, 0, 0, QV_LHE_YUV, 4, 1},
      {"Bgra32", 5, 3, 2, 0, QV_LHE_GRAY, 2, 0},      {"Rgb48", 11, 4, 3, 3, QV_LHE_RGB, 9, 0},
      {"Bgra64", 2, 3, 2, 2, QV_LHE_YUV, 0, 2},       {"Bgr565", 7, 7, 1, 1, QV_LHE_RGB, 2, 0},
      {"Rgb565", 20, 6, 0, 3, QV_LHE_YUV, 1, 0},      {"Indexed4", 8, 8, 0, 0, QV_LHE_GRAY, 1, 0},
      {"Indexed8", 41, 13, 0, 0, QV_LHE_RGB, 0, 0},   {"Gray8", INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, 4, 9, 0},
  };
  const int w = 41, h = 13;
  for (const Lhe& c : cases) {
    const Format f = Find(c.format);
    TestBitmap before(f, w, h, 11), after(f, w, h, 11);
    RECT area{0, 0, w, h};
    std::vector<uint8_t> mask;
    if (c.region == 1) {
      area = RECT{3, 2, 40, 11};
      ASSERT_EQ(Q_SetBitmapRgnRect(after.get(), &area, 0), QV_SUCCESS);
    } else if (c.region == 2) {
      area = RECT{0, 1, w, 12};
      mask.resize(static_cast<size_t>(w) * 11);
      for (size_t i = 0; i < mask.size(); ++i) mask[i] = (i * 7 % 5) < 3;
      ASSERT_EQ(Q_SetBitmapRgnMask(after.get(), &area, mask.data(), w, 0), QV_SUCCESS);
    }
    const int aw = area.right - area.left, ah = area.bottom - area.top;
    std::vector<uint8_t> inside(static_cast<size_t>(aw) * ah, 1);
    if (!mask.empty()) inside = mask;
    const std::string what = std::string(c.format) + " tile " + std::to_string(c.tw) + "x" + std::to_string(c.th) +
                             " ext " + std::to_string(c.ex) + "," + std::to_string(c.ey) + " space " +
                             std::to_string(c.space) + " smooth " + std::to_string(c.smooth) + " region " +
                             std::to_string(c.region);
    ASSERT_EQ(Q_LocalHistoEqualizeBitmap(after.get(), c.tw, c.th, c.ex, c.ey, c.space, c.smooth, 0), QV_SUCCESS)
        << what;
    Reference ref(before, c, area, inside);
    int bad = 0;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        const int ax = x - area.left, ay = y - area.top;
        const bool in = ax >= 0 && ax < aw && ay >= 0 && ay < ah && inside[ay * aw + ax];
        if (!in || before.HasAlpha()) {
          const auto pb = before.PixelBytes(x, y), pa = after.PixelBytes(x, y);
          const size_t keep = in ? pb.size() / 4 * 3 : 0;  // outside: every byte; inside: the alpha
          if (!std::equal(pb.begin() + keep, pb.end(), pa.begin() + keep) && ++bad <= 3)
            ADD_FAILURE() << what << ": bytes changed that must stay at " << x << "," << y;
          if (!in) continue;
        }
        uint32_t expected[3] = {0, 0, 0}, got[3];
        ref.Expected(ax, ay, expected);
        after.Get(x, y, got);
        if (f.isSigned) got[0] = static_cast<uint32_t>(static_cast<int16_t>(got[0]) + (before.Max() + 1) / 2);
        bool same = true;
        if (before.IsIndexed()) {
          uint32_t best = ~0u;
          for (int i = 0; i < (1 << f.bits); ++i) best = std::min(best, Distance(before.b().Palette[i], expected));
          same = Distance(before.b().Palette[after.Raw(x, y)], expected) == best;
        } else {
          for (int k = 0; k < (before.IsGray() ? 1 : 3); ++k) {
            const int bits = k == 1 ? 6 : 5;
            const uint32_t e = before.Is565() ? Quantize(expected[k], bits) : expected[k];
            same = same && got[k] == e;
          }
        }
        if (!same && ++bad <= 3)
          ADD_FAILURE() << what << " at " << x << "," << y << ": got " << got[0] << "," << got[1] << "," << got[2]
                        << " expected " << expected[0] << "," << expected[1] << "," << expected[2];
      }
  }
}

}  // namespace
}  // namespace opstest
