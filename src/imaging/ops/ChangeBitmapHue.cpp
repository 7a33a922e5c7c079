// Hue rotation in integer HSV: value and chroma of each pixel stay, only the hue turns, so gray pixels are
// left exactly as they are. Gray images have no hue and are left unchanged.
#include "../ExportGuard.h"
#include "Hsv.h"
#include "OpsCommon.h"
#include "RgbPixels.h"

namespace qv {
namespace ops {
namespace {

class HueRotation {
 public:
  explicit HueRotation(int angle) {
    int32_t turn = static_cast<int32_t>(RoundDiv(static_cast<int64_t>(angle) * kHueSector, 60)) % kHueCircle;
    if (turn < 0) turn += kHueCircle;
    m_turn = turn;
  }

  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const int32_t v = Max3(r, g, b);
    const int32_t d = v - Min3(r, g, b);
    if (d == 0) return;
    int32_t h = HueOf<T>(r, g, b, v, d) + m_turn;
    if (h >= kHueCircle) h -= kHueCircle;
    FromHsv<T>(h, v, d, r, g, b);
  }

 private:
  int32_t m_turn;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_ChangeBitmapHue(BITMAPHANDLE* pBitmap, int nAngle, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return qv::Guarded([&] {
    qv::PixelFormat f;
    int rc = BeginOperation(pBitmap, uFlags, 0, kFormats, &f);
    if (rc != QV_SUCCESS) return rc;
    if (nAngle < -360 || nAngle > 360) return QV_ERROR_INVALID_PARAMETER;
    if (f.IsGray()) return QV_SUCCESS;
    return ApplyRgbOp(*pBitmap, f, HueRotation(nAngle));
  });
}
