/*
 * Balance colors: every output channel is a weighted mix of the source red, green and blue. Weights become
 * 16.16 fixed point; for 8-bit channels the nine products are tabulated once per call, so a pixel costs
 * nine lookups and three adds.
 */
#include <algorithm>
#include <cmath>
#include <memory>

#include "AddressCheck.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

constexpr int kShift = 16;

int64_t Fixed(double w) { return static_cast<int64_t>(std::llround(w * (1 << kShift))); }

class ChannelMix {
 public:
  // w[out][in]: weight of source channel in (R, G, B) in output channel out.
  explicit ChannelMix(const double (&w)[3][3]) {
    for (int o = 0; o < 3; ++o)
      for (int i = 0; i < 3; ++i) {
        m_w[o][i] = Fixed(w[o][i]);
        for (int v = 0; v < 256; ++v) m_table[o][i][v] = static_cast<int32_t>(v * m_w[o][i]);
        m_w14[o][i] = static_cast<int32_t>(std::llround(w[o][i] * (1 << 14)));
      }
  }

  // 8-bit pixels in planar blocks: weights in 18.14 fixed point (at most 16 x 255 x 3 in magnitude, well
  // inside 32 bits), straight-line code the compiler vectorizes.
  void Block(int16_t* __restrict r, int16_t* __restrict g, int16_t* __restrict b, int n) const {
    const int32_t w00 = m_w14[0][0], w01 = m_w14[0][1], w02 = m_w14[0][2];
    const int32_t w10 = m_w14[1][0], w11 = m_w14[1][1], w12 = m_w14[1][2];
    const int32_t w20 = m_w14[2][0], w21 = m_w14[2][1], w22 = m_w14[2][2];
    for (int i = 0; i < n; ++i) {
      const int32_t R = r[i], G = g[i], B = b[i];
      r[i] = static_cast<int16_t>(std::clamp((R * w00 + G * w01 + B * w02 + 0x2000) >> 14, 0, 255));
      g[i] = static_cast<int16_t>(std::clamp((R * w10 + G * w11 + B * w12 + 0x2000) >> 14, 0, 255));
      b[i] = static_cast<int16_t>(std::clamp((R * w20 + G * w21 + B * w22 + 0x2000) >> 14, 0, 255));
    }
  }

  template <class T>
  void operator()(T& r, T& g, T& b) const {
    int64_t out[3];
    for (int o = 0; o < 3; ++o) {
      if (sizeof(T) == 1) {
        out[o] = int64_t{m_table[o][0][r]} + m_table[o][1][g] + m_table[o][2][b];
      } else {
        out[o] = r * m_w[o][0] + g * m_w[o][1] + b * m_w[o][2];
      }
    }
    const int64_t max = static_cast<T>(~T{0});
    r = static_cast<T>(Clamp64((out[0] + (1 << (kShift - 1))) >> kShift, 0, max));
    g = static_cast<T>(Clamp64((out[1] + (1 << (kShift - 1))) >> kShift, 0, max));
    b = static_cast<T>(Clamp64((out[2] + (1 << (kShift - 1))) >> kShift, 0, max));
  }

 private:
  int64_t m_w[3][3];
  int32_t m_w14[3][3];
  int32_t m_table[3][3][256];
};

// QV_SUCCESS when the record is readable, 28 bytes by its own account, and holds usable weights.
int ReadRecord(const QVBALANCINGRECORD* rec, double (&w)[3]) {
  if (!IsValidAddress(rec, sizeof(QVBALANCINGRECORD), Access::Read)) return QV_ERROR_INVALID_PARAMETER;
  if (rec->uStructSize != sizeof(QVBALANCINGRECORD)) return QV_ERROR_INVALID_STRUCT_SIZE;
  w[0] = rec->fToRed;
  w[1] = rec->fToGreen;
  w[2] = rec->fToBlue;
  for (double v : w)
    if (!std::isfinite(v) || std::fabs(v) > QV_BALANCE_MAX_WEIGHT) return QV_ERROR_INVALID_PARAMETER;
  return QV_SUCCESS;
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_BalanceColors(BITMAPHANDLE* pBitmap, const QVBALANCINGRECORD* pRed, const QVBALANCINGRECORD* pGreen,
                               const QVBALANCINGRECORD* pBlue, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kColorOnly;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    double w[3][3];
    const QVBALANCINGRECORD* recs[3] = {pRed, pGreen, pBlue};
    for (int o = 0; o < 3; ++o) {
      const int rc = ReadRecord(recs[o], w[o]);
      if (rc != QV_SUCCESS) return rc;
    }
    const auto mix = std::make_unique<ChannelMix>(w);
    return ApplyRgbOp<true>(*pBitmap, f, *mix);
  });
}
