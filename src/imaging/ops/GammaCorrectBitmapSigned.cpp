/*
 * Gamma for signed gray images: the curve runs on the magnitude of each sample over 0..M, M being the
 * magnitude of the most negative value (2048 for 12 bits, 32768 for 16), and the sign is kept. One table of
 * 65536 entries indexed by the raw 16-bit word; words outside a 12-bit image's range keep their value.
 * Unsigned formats take the ordinary gamma with the one value for all channels.
 */
#include <vector>

#include "ChannelLut.h"
#include "GammaCurve.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {
namespace {

std::vector<uint16_t> SignedGammaTable(const PixelFormat& f, unsigned int gamma) {
  const int32_t magnitude = f.kind == PixelKind::Gray12 ? 2048 : 32768;
  std::vector<uint16_t> t(65536);
  for (uint32_t w = 0; w < 65536; ++w) {
    const int32_t v = static_cast<int16_t>(static_cast<uint16_t>(w));
    if (v < -magnitude || v >= magnitude) {
      t[w] = static_cast<uint16_t>(w);
      continue;
    }
    const uint32_t a = static_cast<uint32_t>(v < 0 ? -v : v);
    uint32_t m = GammaValue(a, static_cast<uint32_t>(magnitude), gamma);
    int32_t out;
    if (v < 0) {
      out = -static_cast<int32_t>(m);
    } else {
      if (m > static_cast<uint32_t>(magnitude - 1)) m = static_cast<uint32_t>(magnitude - 1);
      out = static_cast<int32_t>(m);
    }
    t[w] = static_cast<uint16_t>(out);
  }
  return t;
}

int ApplySignedGamma(BITMAPHANDLE& b, const PixelFormat& f, unsigned int gamma) {
  const std::vector<uint16_t> t = SignedGammaTable(f, gamma);
  return RunSpans(b, [&](uint8_t* row, int x0, int x1) {
    for (uint8_t* p = row + static_cast<size_t>(x0) * 2; p < row + static_cast<size_t>(x1) * 2; p += 2)
      Store16(p, t[Load16(p)]);
  });
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_GammaCorrectBitmapSigned(BITMAPHANDLE* pBitmap, unsigned int uGamma, unsigned int uFlags) {
  using namespace qv::ops;
  return RunOperation(pBitmap, uFlags, 0, kAllFormats, [&](const qv::PixelFormat& f) {
    if (!IsGammaInRange(uGamma)) return QV_ERROR_INVALID_PARAMETER;
    if (f.isSigned) return ApplySignedGamma(*pBitmap, f, uGamma);
    return ApplyChannelMap(*pBitmap, f, GammaCurve(uGamma, uGamma, uGamma));
  });
}
