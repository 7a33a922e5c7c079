/*
 * Saturation in integer HSV. With value V and chroma d, saturation is d / V; scaling it by
 * s = (1000 + n) / 1000 scales the distance of every channel from V by s, so each channel becomes
 * V - round((V - c) * s), one multiplication and no hue conversion. Only where s would push the saturation
 * past 1 (d * s > V) is the factor V / d instead, which takes a reciprocal.
 */
#include <algorithm>

#include "Hsv.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

class SaturationScale {
 public:
  // The factor in 32.32 fixed point.
  explicit SaturationScale(int change)
      : m_scale(static_cast<uint64_t>(RoundDiv((1000 + change) * (int64_t{1} << 32), 1000))),
        m_scale14(static_cast<int32_t>(RoundDiv((1000 + change) * int64_t{16384}, 1000))) {}

  // 8-bit pixels in planar blocks: both cases computed and selected without branches, the factor in
  // 2.14 fixed point and the full-saturation quotient in single precision (exact to the rounding for
  // 8-bit values).
  void Block(int16_t* __restrict r, int16_t* __restrict g, int16_t* __restrict b, int n) const {
    const int32_t s = m_scale14;
    for (int i = 0; i < n; ++i) {
      const int32_t R = r[i], G = g[i], B = b[i];
      const int32_t v = std::max(R, std::max(G, B));
      const int32_t d = v - std::min(R, std::min(G, B));
      const int32_t scaled = -static_cast<int32_t>(((d * s + 0x2000) >> 14) <= v);
      const float full = static_cast<float>(v) / static_cast<float>(std::max(d, 1));
      r[i] = static_cast<int16_t>(
          v - Pick32(scaled, ((v - R) * s + 0x2000) >> 14, static_cast<int32_t>((v - R) * full + 0.5f)));
      g[i] = static_cast<int16_t>(
          v - Pick32(scaled, ((v - G) * s + 0x2000) >> 14, static_cast<int32_t>((v - G) * full + 0.5f)));
      b[i] = static_cast<int16_t>(
          v - Pick32(scaled, ((v - B) * s + 0x2000) >> 14, static_cast<int32_t>((v - B) * full + 0.5f)));
    }
  }

  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const uint32_t v = static_cast<uint32_t>(Max3(r, g, b));
    const uint32_t d = v - static_cast<uint32_t>(Min3(r, g, b));
    if (Scale(d) <= v) {
      r = static_cast<T>(v - Scale(v - r));
      g = static_cast<T>(v - Scale(v - g));
      b = static_cast<T>(v - Scale(v - b));
      return;
    }
    r = Saturated<T>(r, v, d);
    g = Saturated<T>(g, v, d);
    b = Saturated<T>(b, v, d);
  }

 private:
  uint32_t Scale(uint32_t k) const { return static_cast<uint32_t>((k * m_scale + 0x80000000u) >> 32); }

  // Full saturation: the smallest channel goes to 0, the others keep their place between it and V.
  template <class T>
  T Saturated(T c, uint32_t v, uint32_t d) const {
    const uint64_t n = static_cast<uint64_t>(v - c) * v;
    uint64_t q;
    if (sizeof(T) == 1) {
      q = (n * m_recip[d] + (uint64_t{1} << 31)) >> 32;
    } else {
      q = (n + d / 2) / d;
    }
    return static_cast<T>(v - q);
  }

  uint64_t m_scale;
  int32_t m_scale14;
  const uint64_t* m_recip = Reciprocals().r.data();
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_ChangeBitmapSaturation(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (nChange < -1000 || nChange > 1000) return QV_ERROR_INVALID_PARAMETER;
    if (f.IsGray() || nChange == 0) return QV_SUCCESS;
    return ApplyRgbOp<true>(*pBitmap, f, SaturationScale(nChange));
  });
}
