/*
 * Remap hue: hue, saturation and value of each pixel, each scaled to a table index 0..length-1, go through
 * the caller's tables where the mask selects the pixel's hue. Integer HSV throughout; a pixel whose three
 * indices come back unchanged is not rewritten, so identity tables leave the image byte for byte as it was.
 */
#include "AddressCheck.h"
#include "ChannelLut.h"
#include "Hsv.h"
#include "OpsCommon.h"
#include "RgbPixels.h"
#include "TableLength.h"

namespace qv {
namespace ops {
namespace {

struct HueTables {
  const unsigned int* mask;
  const unsigned int* hue;
  const unsigned int* sat;
  const unsigned int* val;
  uint32_t last;  // length - 1

  uint32_t Map(const unsigned int* t, uint32_t i) const {
    if (!t) return i;
    return t[i] > last ? last : t[i];
  }
  bool Selected(uint32_t h) const { return !mask || mask[h] != 0; }
};

class HueRemap {
 public:
  explicit HueRemap(const HueTables& t) : m_t(t) {}

  template <class T>
  void operator()(T& r, T& g, T& b) const {
    const int64_t max = static_cast<T>(~T{0});
    const int64_t last = m_t.last;
    const int32_t v = Max3(r, g, b);
    const int32_t d = v - Min3(r, g, b);
    const int32_t h = d == 0 ? 0 : HueOf<T>(r, g, b, v, d, m_recip);
    const uint32_t hi = static_cast<uint32_t>(RoundDiv(int64_t{h} * last, kHueCircle));
    if (!m_t.Selected(hi)) return;
    const uint32_t si = v == 0 ? 0 : static_cast<uint32_t>(RoundDiv(int64_t{d} * last, v));
    const uint32_t vi = static_cast<uint32_t>(RoundDiv(int64_t{v} * last, max));
    const uint32_t hn = m_t.Map(m_t.hue, hi), sn = m_t.Map(m_t.sat, si), vn = m_t.Map(m_t.val, vi);
    if (hn == hi && sn == si && vn == vi) return;
    const int64_t vOut = RoundDiv(int64_t{vn} * max, last);
    const int64_t dOut = RoundDiv(vOut * sn, last);
    int64_t hOut = RoundDiv(int64_t{hn} * kHueCircle, last);
    if (hOut >= kHueCircle) hOut -= kHueCircle;
    FromHsv<T>(static_cast<int32_t>(hOut), static_cast<int32_t>(vOut), static_cast<int32_t>(dOut), r, g, b);
  }

 private:
  HueTables m_t;
  const uint64_t* m_recip = Reciprocals().r.data();
};

// Gray images: hue and saturation are 0, so only the value table applies, where the mask selects hue 0.
class GrayValueRemap : public ChannelMap {
 public:
  explicit GrayValueRemap(const HueTables& t) : m_t(t) {}
  uint32_t Value(int, uint32_t v, uint32_t) const override { return m_t.Map(m_t.val, v); }

 private:
  HueTables m_t;
};

bool IsReadableTable(const unsigned int* t, unsigned int length) {
  return !t || IsValidAddress(t, static_cast<size_t>(length) * sizeof(unsigned int), Access::Read);
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_RemapBitmapHue(BITMAPHANDLE* pBitmap, const unsigned int* pMask, const unsigned int* pHue,
                                const unsigned int* pSat, const unsigned int* pVal, unsigned int uLength,
                                unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (uLength != SampleTableLength(f)) return QV_ERROR_INVALID_TABLE;
    for (const unsigned int* t : {pMask, pHue, pSat, pVal})
      if (!IsReadableTable(t, uLength)) return QV_ERROR_INVALID_TABLE;
    const HueTables tables{pMask, pHue, pSat, pVal, uLength - 1};
    if (f.IsGray()) {
      if (!tables.Selected(0) || !pVal) return QV_SUCCESS;
      return ApplyChannelMap(*pBitmap, f, GrayValueRemap(tables));
    }
    return ApplyRgbOp(*pBitmap, f, HueRemap(tables));
  });
}
