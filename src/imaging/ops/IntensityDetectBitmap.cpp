/*
 * Intensity detect. Without channel bits each pixel becomes white when its intensity (gray value or
 * luminance) lies in [low, high] and black otherwise; with channel bits each selected channel takes the
 * matching channel of the "in" or "out" color by its own value, which is a per-channel table. Low above
 * high leaves nothing inside.
 */
#include "ChannelLut.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

constexpr unsigned int kChannelBits = QV_CHANNEL_RED | QV_CHANNEL_GREEN | QV_CHANNEL_BLUE;

// A 0..255 color component on the scale 0..max.
uint32_t Scale(uint32_t c, uint32_t max) { return static_cast<uint32_t>(RoundDiv(int64_t{c} * max, 255)); }

// Per-channel form: the selected channels test their own value.
class ChannelDetect : public ChannelMap {
 public:
  ChannelDetect(uint32_t low, uint32_t high, COLORREF in, COLORREF out, unsigned int channels)
      : m_low(low), m_high(high), m_in(in), m_out(out), m_channels(channels) {}

  uint32_t Value(int channel, uint32_t v, uint32_t max) const override {
    static const unsigned int kBit[3] = {QV_CHANNEL_RED, QV_CHANNEL_GREEN, QV_CHANNEL_BLUE};
    const bool inside = v >= m_low && v <= m_high;
    const COLORREF c = inside ? m_in : m_out;
    if (channel == kGray) return Scale(Luminance(RedOf(c), GreenOf(c), BlueOf(c)), max);
    if (!(m_channels & kBit[channel])) return v;
    const uint32_t comp = channel == kRed ? RedOf(c) : (channel == kGreen ? GreenOf(c) : BlueOf(c));
    return Scale(comp, max);
  }
  bool SameForAllChannels() const override { return false; }

 private:
  uint32_t m_low, m_high;
  COLORREF m_in, m_out;
  unsigned int m_channels;
};

// Gray images without channel bits: white inside, black outside.
class GrayDetect : public ChannelMap {
 public:
  GrayDetect(uint32_t low, uint32_t high) : m_low(low), m_high(high) {}
  uint32_t Value(int, uint32_t v, uint32_t max) const override { return v >= m_low && v <= m_high ? max : 0; }

 private:
  uint32_t m_low, m_high;
};

// Color pixels without channel bits: the luminance decides.
class LuminanceDetect {
 public:
  LuminanceDetect(uint32_t low, uint32_t high) : m_low(low), m_high(high) {}
  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const uint32_t y = Luminance(r, g, b);
    const T v = (y >= m_low && y <= m_high) ? static_cast<T>(~T{0}) : T{0};
    r = g = b = v;
  }

 private:
  uint32_t m_low, m_high;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_IntensityDetectBitmap(BITMAPHANDLE* pBitmap, unsigned int uLow, unsigned int uHigh, COLORREF crIn,
                                       COLORREF crOut, unsigned int uChannel, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    const uint32_t max = ChannelMax(f);
    if (uLow > max || uHigh > max || (uChannel & ~kChannelBits)) return QV_ERROR_INVALID_PARAMETER;
    if (uChannel != 0) return ApplyChannelMap(*pBitmap, f, ChannelDetect(uLow, uHigh, crIn, crOut, uChannel));
    if (f.IsGray()) return ApplyChannelMap(*pBitmap, f, GrayDetect(uLow, uHigh));
    return ApplyRgbOp(*pBitmap, f, LuminanceDetect(uLow, uHigh));
  });
}
