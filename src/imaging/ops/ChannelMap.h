/*
 * A per-channel transfer function, the shape shared by every pointwise operation whose channels do not
 * depend on each other (brightness, contrast, posterize, solarize, gamma, remap intensity, the per-channel
 * intensity detect). The operation states its curve once; ApplyChannelMap turns it into lookup tables of
 * the bitmap's sample size and runs them over the pixels.
 */
#pragma once

#include <cstdint>

namespace qv {
namespace ops {

enum Channel { kRed = 0, kGreen = 1, kBlue = 2, kGray = 3 };

class ChannelMap {
 public:
  virtual ~ChannelMap() = default;
  // The new value of v (0..max) in the given channel; the result is clamped to 0..max by the caller.
  virtual uint32_t Value(int channel, uint32_t v, uint32_t max) const = 0;
  // True when red, green and blue share one curve, so one table serves all three.
  virtual bool SameForAllChannels() const { return true; }
};

}  // namespace ops
}  // namespace qv
