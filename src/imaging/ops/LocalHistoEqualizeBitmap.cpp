/*
 * The local histogram equalization export: its argument checks, in the order the header states, then the
 * tile engine of LocalHistoEqualizer.cpp.
 */
#include "LocalHistoEqualizer.h"

namespace qv {
namespace ops {
namespace {

bool IsColorSpace(unsigned int space) { return space == QV_LHE_RGB || space == QV_LHE_YUV || space == QV_LHE_GRAY; }

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_LocalHistoEqualizeBitmap(BITMAPHANDLE* pBitmap, int nWidth, int nHeight, int nXExt, int nYExt,
                                          unsigned int uColorSpace, unsigned int uSmooth, unsigned int uFlags) {
  using namespace qv::ops;
  return RunOperation(pBitmap, uFlags, 0, kAllFormats, [&](const qv::PixelFormat& f) {
    if (nWidth <= 0 || nHeight <= 0 || nXExt < 0 || nYExt < 0) return QV_ERROR_INVALID_PARAMETER;
    if (!IsColorSpace(uColorSpace) || uSmooth > QV_LHE_MAX_SMOOTH) return QV_ERROR_INVALID_PARAMETER;
    return LocalHistoEqualize(*pBitmap, f, LocalHistoParams{nWidth, nHeight, nXExt, nYExt, uColorSpace, uSmooth});
  });
}
