/*
 * Colored gray: a weighted gray level G, then each channel G + G * fact / 1000 (fact -1000..1000), clamped,
 * which tints the gray towards or away from each channel.
 */
#include "GrayWeights.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

class ColoredGray {
 public:
  ColoredGray(GrayWeights w, int red, int green, int blue) : m_w(w), m_fact{red, green, blue} {}
  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const int64_t y = m_w.GrayOf(r, g, b);
    r = Tint<T>(y, m_fact[0]);
    g = Tint<T>(y, m_fact[1]);
    b = Tint<T>(y, m_fact[2]);
  }

 private:
  template <class T>
  static T Tint(int64_t y, int fact) {
    return static_cast<T>(Clamp64(y + RoundDiv(y * fact, 1000), 0, static_cast<T>(~T{0})));
  }

  GrayWeights m_w;
  int m_fact[3];
};

bool IsGrayFactor(int v) { return v >= -1000 && v <= 1000; }

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_ConvertToColoredGray(BITMAPHANDLE* pBitmap, int nRed, int nGreen, int nBlue, int nRedGray,
                                      int nGreenGray, int nBlueGray, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kColorOnly;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    const GrayWeights w{nRed, nGreen, nBlue};
    if (!w.IsValid() || !IsGrayFactor(nRedGray) || !IsGrayFactor(nGreenGray) || !IsGrayFactor(nBlueGray))
      return QV_ERROR_INVALID_PARAMETER;
    return ApplyRgbOp(*pBitmap, f, ColoredGray(w, nRedGray, nGreenGray, nBlueGray));
  });
}
