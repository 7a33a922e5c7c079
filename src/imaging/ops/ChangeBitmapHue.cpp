/*
 * Hue rotation in integer HSV without a division per pixel. With value v, smallest channel m and chroma
 * d = v - m, the hue times d is an integer: sector s (0..5) and position x (0..d-1) inside it. Turning by
 * an angle adds whole sectors plus round(d * t) for the fraction t of a sector, carrying into the next
 * sector past d; v, m and d stay, so gray pixels are left exactly as they are. Gray images have no hue and
 * are left unchanged.
 */
#include <algorithm>

#include "Hsv.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

class HueRotation {
 public:
  explicit HueRotation(int angle) {
    // The turn in sixths of a circle: whole sectors plus a 32-bit fraction of one.
    int64_t turn = RoundDiv(static_cast<int64_t>(angle) * (int64_t{1} << 32), 60) % (int64_t{6} << 32);
    if (turn < 0) turn += int64_t{6} << 32;
    m_sectors = static_cast<int32_t>(turn >> 32);
    m_fraction = static_cast<uint64_t>(turn & 0xFFFFFFFF);
    // The block kernel's 16-bit fraction; a fraction that rounds up to a whole sector becomes one.
    m_fraction16 = static_cast<int32_t>((m_fraction + 0x8000) >> 16);
    m_sectors16 = m_sectors;
    if (m_fraction16 == 0x10000) {
      m_fraction16 = 0;
      m_sectors16 = (m_sectors16 + 1) % 6;
    }
  }

  // 8-bit pixels in planar blocks: the same steps as below with selects only, in 16-bit lanes.
  void Block(int16_t* __restrict r, int16_t* __restrict g, int16_t* __restrict b, int n) const {
    const uint16_t frac = static_cast<uint16_t>(m_fraction16);
    const int16_t sectors = static_cast<int16_t>(m_sectors16 + 6);
    for (int i = 0; i < n; ++i) {
      const int16_t R = r[i], G = g[i], B = b[i];
      const int16_t v = std::max(R, std::max(G, B));
      const int16_t m = std::min(R, std::min(G, B));
      const int16_t d = static_cast<int16_t>(v - m);
      const int16_t isR = MaskOf(v == R), isG = static_cast<int16_t>(~isR & MaskOf(v == G));
      const int16_t num = Pick(isR, static_cast<int16_t>(G - B),
                               Pick(isG, static_cast<int16_t>(B - R), static_cast<int16_t>(R - G)));
      const int16_t negative = static_cast<int16_t>(num >> 15);
      // round(d * frac / 65536): the high half of the product plus the top bit of the low half.
      const uint32_t prod = static_cast<uint32_t>(static_cast<uint16_t>(d)) * frac;
      const int16_t turn = static_cast<int16_t>((prod >> 16) + ((prod >> 15) & 1));
      int16_t x = static_cast<int16_t>(num + (d & negative) + turn);
      const int16_t carry = MaskOf(x >= d);
      x = static_cast<int16_t>(x - (d & carry));
      int16_t sector = static_cast<int16_t>(Pick(isR, 0, Pick(isG, 2, 4)) + negative + sectors - carry);
      sector = static_cast<int16_t>(sector - Pick(MaskOf(sector >= 12), 12, Pick(MaskOf(sector >= 6), 6, 0)));
      const int16_t up = static_cast<int16_t>(m + x), down = static_cast<int16_t>(v - x);
      const int16_t s0 = MaskOf(sector == 0), s1 = MaskOf(sector == 1), s2 = MaskOf(sector == 2);
      const int16_t s3 = MaskOf(sector == 3), s4 = MaskOf(sector == 4), s5 = MaskOf(sector == 5);
      const int16_t gray = MaskOf(d == 0);
      r[i] = Pick(gray, R, Pick(static_cast<int16_t>(s0 | s5), v, Pick(s1, down, Pick(s4, up, m))));
      g[i] = Pick(gray, G, Pick(static_cast<int16_t>(s1 | s2), v, Pick(s0, up, Pick(s3, down, m))));
      b[i] = Pick(gray, B, Pick(static_cast<int16_t>(s3 | s4), v, Pick(s2, up, Pick(s5, down, m))));
    }
  }

  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const int32_t v = Max3(r, g, b);
    const int32_t m = Min3(r, g, b);
    const int32_t d = v - m;
    if (d == 0) return;
    // Hue times d: base sector 0, 2 or 4 by the largest channel, plus a signed offset in -d..d.
    const int which = v == r ? 0 : (v == g ? 1 : 2);
    const int32_t num = which == 0 ? g - b : (which == 1 ? b - r : r - g);
    int32_t sector = 2 * which - (num < 0 ? 1 : 0);
    int32_t x = num < 0 ? d + num : num;
    x += static_cast<int32_t>((static_cast<uint64_t>(d) * m_fraction + 0x80000000u) >> 32);
    const int32_t carry = x >= d ? 1 : 0;
    x -= carry * d;
    sector += m_sectors + carry + 6;
    sector -= 6 * (sector >= 6) + 6 * (sector >= 12);
    // Selects rather than a table: each sector puts v, m, m + x or v - x on each channel.
    const int32_t up = m + x, down = v - x;
    const int32_t rr = (sector == 0 || sector == 5) ? v : (sector == 1 ? down : (sector == 4 ? up : m));
    const int32_t gg = (sector == 1 || sector == 2) ? v : (sector == 0 ? up : (sector == 3 ? down : m));
    const int32_t bb = (sector == 3 || sector == 4) ? v : (sector == 2 ? up : (sector == 5 ? down : m));
    r = static_cast<T>(rr);
    g = static_cast<T>(gg);
    b = static_cast<T>(bb);
  }

 private:
  int32_t m_sectors = 0;
  uint64_t m_fraction = 0;
  int32_t m_sectors16 = 0;
  int32_t m_fraction16 = 0;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_ChangeBitmapHue(BITMAPHANDLE* pBitmap, int nAngle, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (nAngle < -360 || nAngle > 360) return QV_ERROR_INVALID_PARAMETER;
    if (f.IsGray()) return QV_SUCCESS;
    return ApplyRgbOp<true>(*pBitmap, f, HueRotation(nAngle));
  });
}
