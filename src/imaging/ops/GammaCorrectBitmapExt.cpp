/*
 * Gamma per channel through lookup tables built once per call.
 */
#include "ChannelLut.h"
#include "GammaCurve.h"
#include "OpsCommon.h"

extern "C" int Q_GammaCorrectBitmapExt(BITMAPHANDLE* pBitmap, unsigned int uRed, unsigned int uGreen,
                                       unsigned int uBlue, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (!IsGammaInRange(uRed) || !IsGammaInRange(uGreen) || !IsGammaInRange(uBlue)) return QV_ERROR_INVALID_PARAMETER;
    return ApplyChannelMap(*pBitmap, f, GammaCurve(uRed, uGreen, uBlue));
  });
}
