/*
 * Solarize: channel values at or above the threshold are inverted, through one lookup table. The threshold
 * is in the channel's own scale (0..255 for palettes and 5-6-5, up to 65535 for 16-bit samples). On signed
 * gray it counts from the range's minimum, as the solarize dialog's slider runs 0..4095 or 0..65535 over a
 * signed 12/16-bit image; inversion mirrors about the range's middle (-32768 <-> 32767, 0 <-> -1).
 */
#include "ChannelLut.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {
namespace {

class SolarizeCurve : public ChannelMap {
 public:
  explicit SolarizeCurve(uint32_t threshold) : m_threshold(threshold) {}
  uint32_t Value(int, uint32_t v, uint32_t max) const override { return v >= m_threshold ? max - v : v; }

 private:
  uint32_t m_threshold;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_SolarizeBitmap(BITMAPHANDLE* pBitmap, unsigned int uThreshold, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllFormats;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (uThreshold > ChannelMax(f)) return QV_ERROR_INVALID_PARAMETER;
    return ApplyChannelMap(*pBitmap, f, SolarizeCurve(uThreshold));
  });
}
