/*
 * Halftoning: each pixel's darkness against a screen's threshold, or, for user patterns, the pattern of the
 * pixel's brightness level at the pixel's place in the pattern grid. The 1-bit result is built beside the
 * source and swapped in when complete. Types 0 and 1 keep their own cell size (the dimension is not theirs
 * to set): 8 pixels for the print screen, 16 for the Bayer screen. The angle only turns types 0, 1, 4 and 6;
 * square, round, random and pattern screens stay on the pixel grid, where their cells fit exactly.
 */
#include <algorithm>
#include <vector>

#include "../Bitmap.h"
#include "../BitmapList.h"
#include "../PixelConvert.h"
#include "HalftoneScreen.h"
#include "OpsCommon.h"
#include "PendingBitmap.h"

namespace qv {
namespace ops {
namespace {

constexpr int kPrintPeriod = 8;
constexpr int kBayerSize = 16;

// The patterns of type 7 as bits (1 = white), count patterns of d x d, darkest first.
class PatternSet {
 public:
  int Load(HBITMAPLIST list, int d) {
    BitmapList* l = BitmapList::Lookup(list);
    if (!l) return QV_ERROR_INVALID_HANDLE;
    m_d = d;
    m_count = d * d + 1;
    if (static_cast<int>(l->Count()) < m_count) return QV_ERROR_INVALID_PARAMETER;
    m_white.resize(static_cast<size_t>(m_count) * d * d);
    std::vector<uint16_t> row(static_cast<size_t>(d) * 4);
    for (int k = 0; k < m_count; ++k) {
      BITMAPHANDLE copy{};
      int rc = l->Get(static_cast<unsigned>(k), &copy);
      if (rc != QV_SUCCESS) return rc;
      PixelFormat f{};
      rc = copy.nWidth == d && copy.nHeight == d ? DescribePixelFormat(copy, &f) : QV_ERROR_INVALID_PARAMETER;
      for (int y = 0; rc == QV_SUCCESS && y < d; ++y) {
        ReadRowRgba16(copy, f, y, 0, d, row.data());
        for (int x = 0; x < d; ++x)
          m_white[(static_cast<size_t>(k) * d + y) * d + x] =
              Luminance(row[4 * x], row[4 * x + 1], row[4 * x + 2]) >= 128 * 257 ? 1 : 0;
      }
      ReleaseBitmapMemory(&copy);
      if (rc != QV_SUCCESS) return rc;
    }
    return QV_SUCCESS;
  }

  uint8_t White(uint32_t luminance16, int x, int y) const {
    const int k = static_cast<int>(static_cast<uint64_t>(luminance16) * m_count / 65536);
    return m_white[(static_cast<size_t>(k) * m_d + y % m_d) * m_d + x % m_d];
  }

 private:
  int m_d = 0;
  int m_count = 0;
  std::vector<uint8_t> m_white;
};

HalftoneScreen MakeScreen(unsigned type, int angle, int d) {
  switch (type) {
    case QV_HALFTONE_PRINT: return HalftoneScreen::MakeSpot(Spot::Euclidean, kPrintPeriod, angle);
    case QV_HALFTONE_VIEW: return HalftoneScreen::MakeMatrix(BayerMatrix(kBayerSize), kBayerSize, angle);
    case QV_HALFTONE_SQUARE: return HalftoneScreen::MakeSpot(Spot::Square, d, 0);
    case QV_HALFTONE_ROUND: return HalftoneScreen::MakeSpot(Spot::Round, d, 0);
    case QV_HALFTONE_ELLIPTICAL: return HalftoneScreen::MakeSpot(Spot::Elliptical, d, angle);
    case QV_HALFTONE_LINES: return HalftoneScreen::MakeSpot(Spot::Line, d, angle);
    default: return HalftoneScreen::MakeRandom(d / 2);
  }
}

int Halftone(const BITMAPHANDLE& src, const PixelFormat& sf, unsigned type, int angle, int d,
             const PatternSet& patterns, BITMAPHANDLE* out) {
  int rc = CreateBlankBitmap(src.nWidth, src.nHeight, 1, QV_ORDER_BGR, false, out);
  if (rc != QV_SUCCESS) return rc;
  out->Palette[0] = RGBQUAD{0, 0, 0, 0};
  out->Palette[1] = RGBQUAD{255, 255, 255, 0};
  out->nColors = 2;
  out->nXResolution = src.nXResolution;
  out->nYResolution = src.nYResolution;
  PixelFormat df{};
  DescribePixelFormat(*out, &df);
  const HalftoneScreen screen = MakeScreen(type, angle, d);
  return ParallelRows(0, src.nHeight, [&](int y0, int y1) {
    const size_t w = static_cast<size_t>(src.nWidth);
    std::vector<uint16_t> rgba(w * 4), thresholds(w);
    std::vector<uint8_t> bits(w);
    for (int y = y0; y < y1; ++y) {
      ReadRowRgba16(src, sf, y, 0, src.nWidth, rgba.data());
      if (type != QV_HALFTONE_USER) screen.Row(y, src.nWidth, thresholds.data());
      for (int x = 0; x < src.nWidth; ++x) {
        const uint32_t lum = Luminance(rgba[4 * x], rgba[4 * x + 1], rgba[4 * x + 2]);
        bits[x] = type == QV_HALFTONE_USER ? patterns.White(lum, x, y) : (65535 - lum > thresholds[x] ? 0 : 1);
      }
      WriteRowIndices(*out, df, y, 0, src.nWidth, bits.data());
    }
  });
}

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_HalfToneBitmap(BITMAPHANDLE* pBitmap, unsigned int uType, int nAngle, unsigned int uDimension,
                                HBITMAPLIST hPatterns, unsigned int uFlags) {
  using namespace qv;
  using namespace qv::ops;
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(pBitmap, Access::Write);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (uType > QV_HALFTONE_USER || nAngle < -QV_HALFTONE_MAX_ANGLE || nAngle > QV_HALFTONE_MAX_ANGLE ||
        uDimension < QV_HALFTONE_MIN_DIMENSION || uDimension > QV_HALFTONE_MAX_DIMENSION)
      return QV_ERROR_INVALID_PARAMETER;
    const int d = static_cast<int>(uDimension);
    PatternSet patterns;
    if (uType == QV_HALFTONE_USER && (rc = patterns.Load(hPatterns, d)) != QV_SUCCESS) return rc;
    PixelFormat sf{};
    rc = DescribePixelFormat(*pBitmap, &sf);
    if (rc != QV_SUCCESS) return rc;
    PendingBitmap out;
    rc = Halftone(*pBitmap, sf, uType, nAngle, d, patterns, out.get());
    if (rc == QV_SUCCESS) out.HandOver(pBitmap, pBitmap);
    return rc;
  });
}
