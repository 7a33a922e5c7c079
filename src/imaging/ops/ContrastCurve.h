/*
 * The contrast curve shared by the contrast and histogram-contrast operations: values are pushed away from
 * (or pulled towards) a center. n >= 0 stretches by 1000 / (1000 - n), clamped, and 1000 becomes a threshold
 * at the center; n < 0 compresses by (1000 + n) / 1000, and -1000 leaves only the center.
 */
#pragma once

#include "ChannelMap.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {

class ContrastCurve : public ChannelMap {
 public:
  // center < 0 means the middle of each format, (max + 1) / 2.
  ContrastCurve(int change, int64_t center) : m_change(change), m_center(center) {}

  uint32_t Value(int, uint32_t v, uint32_t max) const override {
    const int64_t c = m_center < 0 ? (static_cast<int64_t>(max) + 1) / 2 : m_center;
    const int64_t d = static_cast<int64_t>(v) - c;
    int64_t out;
    if (m_change >= 1000) {
      out = d >= 0 ? max : 0;
    } else if (m_change >= 0) {
      out = c + RoundDiv(d * 1000, 1000 - m_change);
    } else {
      out = c + RoundDiv(d * (1000 + m_change), 1000);
    }
    return static_cast<uint32_t>(Clamp64(out, 0, max));
  }

 private:
  int m_change;
  int64_t m_center;
};

}  // namespace ops
}  // namespace qv
