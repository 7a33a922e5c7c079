/*
 * Gray scale with chosen weights: every channel of a pixel becomes the weighted gray level; the bitmap keeps
 * its bits per pixel. Gray images are gray already and stay as they are.
 */
#include "GrayWeights.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

class GrayScale {
 public:
  explicit GrayScale(GrayWeights w) : m_w(w) {}
  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const T y = static_cast<T>(m_w.GrayOf(r, g, b));
    r = g = b = y;
  }

 private:
  GrayWeights m_w;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_GrayScaleBitmapExt(BITMAPHANDLE* pBitmap, int nRed, int nGreen, int nBlue, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    const GrayWeights w{nRed, nGreen, nBlue};
    if (!w.IsValid()) return QV_ERROR_INVALID_PARAMETER;
    if (f.IsGray()) return QV_SUCCESS;
    return ApplyRgbOp(*pBitmap, f, GrayScale(w));
  });
}
