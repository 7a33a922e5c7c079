/*
 * How a 12/16-bit gray sample finds its window-level LUT entry: bits low..high of the sample form the value
 * (sign-extended from that width for signed data); a non-negative value v sits at entry v and a negative one
 * at entry length + v. Values the table cannot hold take its nearest entry of the same sign, so no sample
 * can index past the table.
 */
#pragma once

#include <cstdint>

namespace qv {
namespace ops {

class WindowLevelIndex {
 public:
  WindowLevelIndex(int lowBit, int highBit, bool isSigned, uint32_t length)
      : m_low(lowBit), m_bits(highBit - lowBit + 1), m_signed(isSigned), m_length(length) {
    m_mask = m_bits >= 32 ? 0xFFFFFFFFu : (1u << m_bits) - 1;
  }

  uint32_t operator()(uint32_t sample) const {
    const uint32_t u = (sample >> m_low) & m_mask;
    if (!m_signed) return u < m_length ? u : m_length - 1;
    const uint32_t half = m_length / 2;
    const int32_t v = (u & (1u << (m_bits - 1))) ? static_cast<int32_t>(u) - (1 << m_bits) : static_cast<int32_t>(u);
    if (v >= 0) {
      const uint32_t top = half > 0 ? half - 1 : 0;
      return static_cast<uint32_t>(v) < top ? static_cast<uint32_t>(v) : top;
    }
    const int64_t i = static_cast<int64_t>(m_length) + v;
    return i >= static_cast<int64_t>(half) ? static_cast<uint32_t>(i) : half;
  }

 private:
  int m_low;
  int m_bits;
  bool m_signed;
  uint32_t m_length;
  uint32_t m_mask;
};

}  // namespace ops
}  // namespace qv
