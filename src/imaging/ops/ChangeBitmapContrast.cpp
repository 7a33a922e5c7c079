/*
 * Contrast about the middle value of the format (0 for signed gray), through one lookup table per call.
 */
#include "ChannelLut.h"
#include "ContrastCurve.h"

extern "C" int Q_ChangeBitmapContrast(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllFormats;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (nChange < -1000 || nChange > 1000) return QV_ERROR_INVALID_PARAMETER;
    return ApplyChannelMap(*pBitmap, f, ContrastCurve(nChange, -1));
  });
}
