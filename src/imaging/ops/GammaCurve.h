/*
 * The gamma curve v = max * (v / max)^(100 / gamma), gamma given times 100; one per channel, the gray
 * channel following red. Shared by the unsigned and the signed gamma operations.
 */
#pragma once

#include <cmath>

#include "ChannelMap.h"

namespace qv {
namespace ops {

inline uint32_t GammaValue(uint32_t v, uint32_t max, unsigned int gamma) {
  const double x = static_cast<double>(v) / max;
  const double y = static_cast<double>(max) * std::pow(x, 100.0 / gamma);
  const double r = std::floor(y + 0.5);
  return r > max ? max : static_cast<uint32_t>(r);
}

class GammaCurve : public ChannelMap {
 public:
  GammaCurve(unsigned int red, unsigned int green, unsigned int blue) : m_gamma{red, green, blue} {}
  uint32_t Value(int channel, uint32_t v, uint32_t max) const override {
    return GammaValue(v, max, m_gamma[channel == kGray ? kRed : channel]);
  }
  bool SameForAllChannels() const override { return m_gamma[0] == m_gamma[1] && m_gamma[1] == m_gamma[2]; }

 private:
  unsigned int m_gamma[3];
};

inline bool IsGammaInRange(unsigned int gamma) { return gamma >= 1 && gamma <= 1000; }

}  // namespace ops
}  // namespace qv
