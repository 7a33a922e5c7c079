// Saturation in integer HSV. With value V and chroma d, saturation is d / V; scaling it by (1000 + n) / 1000
// (at most 1) scales the distance of every channel from V by the same factor, so each channel becomes
// V - (V - c) * d' / d without converting hue at all.
#include "../ExportGuard.h"
#include "Hsv.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

class SaturationScale {
 public:
  explicit SaturationScale(int change) : m_scale(static_cast<uint32_t>(RoundDiv((1000 + change) * int64_t{65536}, 1000))) {}

  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const uint32_t v = static_cast<uint32_t>(Max3(r, g, b));
    const uint32_t d = v - static_cast<uint32_t>(Min3(r, g, b));
    if (d == 0) return;
    uint64_t dNew = (static_cast<uint64_t>(d) * m_scale + 0x8000) >> 16;
    if (dNew > v) dNew = v;
    if (dNew == d) return;
    r = Scaled<T>(r, v, d, dNew);
    g = Scaled<T>(g, v, d, dNew);
    b = Scaled<T>(b, v, d, dNew);
  }

 private:
  template <class T>
  static T Scaled(T c, uint32_t v, uint32_t d, uint64_t dNew) {
    const uint64_t n = static_cast<uint64_t>(v - c) * dNew;
    uint64_t q;
    if (sizeof(T) == 1) {
      q = (n * Reciprocals().r[d] + (uint64_t{1} << 31)) >> 32;
    } else {
      q = (n + d / 2) / d;
    }
    return static_cast<T>(v - q);
  }

  uint32_t m_scale;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_ChangeBitmapSaturation(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return qv::Guarded([&] {
    qv::PixelFormat f;
    int rc = BeginOperation(pBitmap, uFlags, 0, kFormats, &f);
    if (rc != QV_SUCCESS) return rc;
    if (nChange < -1000 || nChange > 1000) return QV_ERROR_INVALID_PARAMETER;
    if (f.IsGray() || nChange == 0) return QV_SUCCESS;
    return ApplyRgbOp(*pBitmap, f, SaturationScale(nChange));
  });
}
