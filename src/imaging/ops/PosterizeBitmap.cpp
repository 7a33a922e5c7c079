/*
 * Posterize: every channel snaps to the nearest of a few evenly spaced levels, through one lookup table. On
 * signed gray the levels span the signed range, both ends included (an odd count puts one on 0).
 */
#include "ChannelLut.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {
namespace {

class PosterizeCurve : public ChannelMap {
 public:
  explicit PosterizeCurve(unsigned int levels) : m_steps(levels - 1) {}
  uint32_t Value(int, uint32_t v, uint32_t max) const override {
    const int64_t k = RoundDiv(static_cast<int64_t>(v) * m_steps, max);
    return static_cast<uint32_t>(RoundDiv(k * max, m_steps));
  }

 private:
  int64_t m_steps;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_PosterizeBitmap(BITMAPHANDLE* pBitmap, unsigned int uLevels, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllFormats;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (uLevels < 2 || uLevels > 64) return QV_ERROR_INVALID_PARAMETER;
    return ApplyChannelMap(*pBitmap, f, PosterizeCurve(uLevels));
  });
}
