/*
 * Contrast about the middle value of the format, through one lookup table per call.
 */
#include "ChannelLut.h"
#include "ContrastCurve.h"

extern "C" int Q_ChangeBitmapContrast(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (nChange < -1000 || nChange > 1000) return QV_ERROR_INVALID_PARAMETER;
    return ApplyChannelMap(*pBitmap, f, ContrastCurve(nChange, -1));
  });
}
