/*
 * CQVBitmap: ownership of a preview bitmap and one thin member per effect.
 * Every member refuses to run on a wrapper that holds no allocated bitmap
 * (QV_ERROR_BITMAP_NOT_ALLOCATED) and otherwise passes the kernel's result
 * through, so a dialog can tell the user exactly what failed.
 */
#include "QVBitmap.h"

#include <utility>

#include "AddressCheck.h"
#include "qv/qvimgops.h"

namespace {

constexpr unsigned kNoGamma = 100;
constexpr unsigned kMaxGamma = 1000;

BITMAPHANDLE EmptyDescriptor() {
  BITMAPHANDLE b{};
  b.uStructSize = sizeof(BITMAPHANDLE);
  return b;
}

}  // namespace

CQVBitmap::CQVBitmap() = default;

CQVBitmap::~CQVBitmap() { Free(); }

CQVBitmap::CQVBitmap(CQVBitmap&& other) noexcept
    : m_own(std::move(other.m_own)),
      m_attached(std::exchange(other.m_attached, nullptr)),
      m_paintGamma(other.m_paintGamma),
      m_lastResult(other.m_lastResult) {}

CQVBitmap& CQVBitmap::operator=(CQVBitmap&& other) noexcept {
  if (this != &other) {
    Free();
    m_own = std::move(other.m_own);
    m_attached = std::exchange(other.m_attached, nullptr);
    m_paintGamma = other.m_paintGamma;
    m_lastResult = other.m_lastResult;
  }
  return *this;
}

BITMAPHANDLE* CQVBitmap::GetHandle() {
  if (m_attached) return m_attached;
  if (!m_own) m_own = std::make_unique<BITMAPHANDLE>(EmptyDescriptor());
  return m_own.get();
}

const BITMAPHANDLE* CQVBitmap::GetHandle() const {
  if (m_attached) return m_attached;
  return m_own.get();
}

bool CQVBitmap::IsAllocated() const {
  const BITMAPHANDLE* b = GetHandle();
  return b && qv::IsValidAddress(b, sizeof(BITMAPHANDLE), qv::Access::Read) && (b->uFlags & QV_BMF_ALLOCATED) &&
         b->pData;
}

int CQVBitmap::Attach(BITMAPHANDLE* p) {
  if (!p || !qv::IsValidAddress(p, sizeof(BITMAPHANDLE), qv::Access::Write))
    return Keep(QV_ERROR_INVALID_PARAMETER) == 1;
  Free();
  m_attached = p;
  return 1;
}

BITMAPHANDLE* CQVBitmap::Detach() { return std::exchange(m_attached, nullptr); }

void CQVBitmap::Free() {
  if (m_attached) {
    m_attached = nullptr;
    return;
  }
  if (m_own && (m_own->uFlags & QV_BMF_ALLOCATED)) Q_FreeBitmap(m_own.get(), 0);
  m_own.reset();
}

int CQVBitmap::Keep(int result) {
  m_lastResult = result;
  return result == QV_SUCCESS ? 1 : 0;
}

bool CQVBitmap::Usable() {
  if (IsAllocated()) return true;
  m_lastResult = QV_ERROR_BITMAP_NOT_ALLOCATED;
  return false;
}

int CQVBitmap::TakeOver(BITMAPHANDLE* p) {
  if (!p || !qv::IsValidAddress(p, sizeof(BITMAPHANDLE), qv::Access::Write)) return Keep(QV_ERROR_INVALID_PARAMETER);
  if (p == GetHandle()) return Keep(QV_SUCCESS);
  Free();
  m_own = std::make_unique<BITMAPHANDLE>(*p);
  *p = EmptyDescriptor();
  return Keep(QV_SUCCESS);
}

int CQVBitmap::Copy(const BITMAPHANDLE& src) {
  if (!qv::IsValidAddress(&src, sizeof(BITMAPHANDLE), qv::Access::Read)) return Keep(QV_ERROR_INVALID_PARAMETER);
  if (&src == GetHandle()) return Keep(QV_SUCCESS);
  BITMAPHANDLE copy = EmptyDescriptor();
  const int rc = Q_CopyBitmap(&copy, sizeof(BITMAPHANDLE), &src, 0);
  if (rc != QV_SUCCESS) return Keep(rc);
  Free();
  m_own = std::make_unique<BITMAPHANDLE>(copy);
  return Keep(QV_SUCCESS);
}

int CQVBitmap::CreateEmptyBitmap(int bitsPerPixel, int width, int height, int /*unused*/, COLORREF fill) {
  // 8 and 12 bits are gray, 16 bits 5-6-5 colour; fewer than 8 bits get the kernel's gray ramp palette.
  const unsigned order = bitsPerPixel == 8 || bitsPerPixel == 12 ? QV_ORDER_GRAY : QV_ORDER_BGR;
  BITMAPHANDLE created = EmptyDescriptor();
  int rc = Q_CreateBitmap(&created, sizeof(BITMAPHANDLE), width, height, bitsPerPixel, order, nullptr, 0, 0);
  if (rc != QV_SUCCESS) return Keep(rc);
  rc = Q_FillBitmap(&created, fill, 0);
  if (rc != QV_SUCCESS) {
    Q_FreeBitmap(&created, 0);
    return Keep(rc);
  }
  Free();
  m_own = std::make_unique<BITMAPHANDLE>(created);
  return Keep(QV_SUCCESS);
}

int CQVBitmap::PutPixelColor(int x, int y, COLORREF color) {
  return Usable() ? Keep(Q_PutPixelColor(GetHandle(), x, y, color, 0)) : 0;
}

void CQVBitmap::SetPaintGamma(unsigned gamma) { m_paintGamma = gamma >= 1 && gamma <= kMaxGamma ? gamma : kNoGamma; }

int CQVBitmap::Paint(HDC dc, const RECT* src, const RECT* srcClip, const RECT* dst, const RECT* dstClip,
                     unsigned flags) {
  if (!Usable()) return 0;
  const BITMAPHANDLE* b = GetHandle();
  RECT source = src ? *src : RECT{0, 0, b->nWidth, b->nHeight};
  RECT target = dst ? *dst : source;
  if (source.right <= source.left || source.bottom <= source.top) return Keep(QV_ERROR_INVALID_PARAMETER);
  if (srcClip) {
    // Keep only the clipped part of the source and the matching part of the
    // destination, so the scale stays the same.
    RECT clipped;
    if (!IntersectRect(&clipped, &source, srcClip)) return Keep(QV_SUCCESS);
    const double sx = double(target.right - target.left) / (source.right - source.left);
    const double sy = double(target.bottom - target.top) / (source.bottom - source.top);
    target = RECT{target.left + int((clipped.left - source.left) * sx),
                  target.top + int((clipped.top - source.top) * sy),
                  target.left + int((clipped.right - source.left) * sx),
                  target.top + int((clipped.bottom - source.top) * sy)};
    source = clipped;
  }
  const int saved = SaveDC(dc);
  if (dstClip) IntersectClipRect(dc, dstClip->left, dstClip->top, dstClip->right, dstClip->bottom);
  int rc;
  if (m_paintGamma != kNoGamma) {
    BITMAPHANDLE shown = EmptyDescriptor();
    rc = Q_CopyBitmap(&shown, sizeof(BITMAPHANDLE), b, 0);
    if (rc == QV_SUCCESS) {
      rc = Q_GammaCorrectBitmapExt(&shown, m_paintGamma, m_paintGamma, m_paintGamma, 0);
      if (rc == QV_SUCCESS) rc = Q_PaintBitmap(dc, &shown, &source, &target, flags);
      Q_FreeBitmap(&shown, 0);
    }
  } else {
    rc = Q_PaintBitmap(dc, b, &source, &target, flags);
  }
  if (saved) RestoreDC(dc, saved);
  return Keep(rc);
}

int CQVBitmap::Brightness(int change) { return Usable() ? Keep(Q_ChangeBitmapIntensity(GetHandle(), change, 0)) : 0; }

int CQVBitmap::Contrast(int change) { return Usable() ? Keep(Q_ChangeBitmapContrast(GetHandle(), change, 0)) : 0; }

int CQVBitmap::Hue(int angle) { return Usable() ? Keep(Q_ChangeBitmapHue(GetHandle(), angle, 0)) : 0; }

int CQVBitmap::Saturation(int change) { return Usable() ? Keep(Q_ChangeBitmapSaturation(GetHandle(), change, 0)) : 0; }

int CQVBitmap::HistoContrast(int change) { return Usable() ? Keep(Q_HistoContrastBitmap(GetHandle(), change, 0)) : 0; }

int CQVBitmap::HistoContrast(int change, int median) {
  return Usable() ? Keep(Q_HistoContrastBitmapExt(GetHandle(), change, median, 0)) : 0;
}

int CQVBitmap::Posterize(unsigned levels) { return Usable() ? Keep(Q_PosterizeBitmap(GetHandle(), levels, 0)) : 0; }

int CQVBitmap::Solarize(unsigned threshold) { return Usable() ? Keep(Q_SolarizeBitmap(GetHandle(), threshold, 0)) : 0; }

int CQVBitmap::GammaAdjustment(unsigned red, unsigned green, unsigned blue) {
  return Usable() ? Keep(Q_GammaCorrectBitmapExt(GetHandle(), red, green, blue, 0)) : 0;
}

int CQVBitmap::GammaAdjustmentSigned(unsigned gamma) {
  return Usable() ? Keep(Q_GammaCorrectBitmapSigned(GetHandle(), gamma, 0)) : 0;
}

int CQVBitmap::IntensityDetect(unsigned low, unsigned high, unsigned long inColor, unsigned long outColor,
                               unsigned channel) {
  if (!Usable()) return 0;
  return Keep(Q_IntensityDetectBitmap(GetHandle(), low, high, static_cast<COLORREF>(inColor),
                                      static_cast<COLORREF>(outColor), channel, 0));
}

int CQVBitmap::GrayScaleBitmapExt(int red, int green, int blue) {
  return Usable() ? Keep(Q_GrayScaleBitmapExt(GetHandle(), red, green, blue, 0)) : 0;
}

int CQVBitmap::ConvertToColoredGray(int red, int green, int blue, int redGray, int greenGray, int blueGray) {
  if (!Usable()) return 0;
  return Keep(Q_ConvertToColoredGray(GetHandle(), red, green, blue, redGray, greenGray, blueGray, 0));
}

int CQVBitmap::BalanceColors(const QVBALANCINGRECORD* red, const QVBALANCINGRECORD* green,
                             const QVBALANCINGRECORD* blue) {
  return Usable() ? Keep(Q_BalanceColors(GetHandle(), red, green, blue, 0)) : 0;
}

int CQVBitmap::RemapBitmapIntensity(unsigned* table, unsigned length, unsigned channel) {
  return Usable() ? Keep(Q_RemapBitmapIntensity(GetHandle(), table, length, channel, 0)) : 0;
}

int CQVBitmap::RemapBitmapHue(unsigned* mask, unsigned* hue, unsigned* saturation, unsigned* value, unsigned length) {
  return Usable() ? Keep(Q_RemapBitmapHue(GetHandle(), mask, hue, saturation, value, length, 0)) : 0;
}

int CQVBitmap::ColorRes(int bitsPerPixel, unsigned long flags, HPALETTE palette, unsigned colors) {
  if (!Usable()) return 0;
  BITMAPHANDLE* b = GetHandle();
  return Keep(Q_ColorResBitmap(b, b, sizeof(BITMAPHANDLE), bitsPerPixel, static_cast<unsigned>(flags), nullptr, palette,
                               colors, nullptr, nullptr));
}

int CQVBitmap::HalfTone(unsigned type, int angle, unsigned dimension, HBITMAPLIST patterns) {
  return Usable() ? Keep(Q_HalfToneBitmap(GetHandle(), type, angle, dimension, patterns, 0)) : 0;
}

int CQVBitmap::LocalHistoEqualize(int width, int height, int xExt, int yExt, unsigned colorSpace, unsigned smooth) {
  if (!Usable()) return 0;
  return Keep(Q_LocalHistoEqualizeBitmap(GetHandle(), width, height, xExt, yExt, colorSpace, smooth, 0));
}
