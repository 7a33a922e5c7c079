/*
 * Brightness: each channel moves towards white (n > 0) or black (n < 0) by n thousandths of the way, through
 * one lookup table per call. Signed gray moves towards its range's maximum or minimum.
 */
#include "ChannelLut.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {
namespace {

constexpr FormatSet kFormats = kAllFormats;

class IntensityCurve : public ChannelMap {
 public:
  explicit IntensityCurve(int change) : m_change(change) {}
  uint32_t Value(int, uint32_t v, uint32_t max) const override {
    if (m_change >= 0) return v + static_cast<uint32_t>(RoundDiv(static_cast<int64_t>(max - v) * m_change, 1000));
    return static_cast<uint32_t>(RoundDiv(static_cast<int64_t>(v) * (1000 + m_change), 1000));
  }

 private:
  int m_change;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_ChangeBitmapIntensity(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags) {
  using namespace qv::ops;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (nChange < -1000 || nChange > 1000) return QV_ERROR_INVALID_PARAMETER;
    return ApplyChannelMap(*pBitmap, f, IntensityCurve(nChange));
  });
}
