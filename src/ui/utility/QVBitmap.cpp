/*
 * CQVBitmap: ownership of a preview bitmap and one thin member per effect.
 * Every member refuses to run on a wrapper that holds no allocated bitmap
 * (QV_ERROR_BITMAP_NOT_ALLOCATED) and otherwise passes the kernel's result
 * through, so a dialog can tell the user exactly what failed.
 */
#include "QVBitmap.h"

#include <algorithm>
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

// The largest sample value of the bitmap's samples (colors of indexed
// formats are 8-bit palette entries).
unsigned MaxSample(const BITMAPHANDLE& b) {
  switch (b.nBitsPerPixel) {
    case 12:
      return 4095;
    case 48:
    case 64:
      return 65535;
    case 16:
      return b.uOrder == QV_ORDER_GRAY ? 65535u : 255u;
    default:
      return 255;
  }
}

unsigned Scale(unsigned value8, unsigned maxSample) { return (value8 * maxSample + 127) / 255; }

int NearestPaletteIndex(const BITMAPHANDLE& b, COLORREF color) {
  const int count = std::max(1, std::min(b.nColors > 0 ? b.nColors : (1 << b.nBitsPerPixel), QV_MAX_PALETTE_ENTRIES));
  int best = 0;
  long bestDistance = -1;
  for (int i = 0; i < count; ++i) {
    const RGBQUAD& e = b.Palette[i];
    const long dr = long(e.rgbRed) - GetRValue(color);
    const long dg = long(e.rgbGreen) - GetGValue(color);
    const long db = long(e.rgbBlue) - GetBValue(color);
    const long distance = dr * dr + dg * dg + db * db;
    if (bestDistance < 0 || distance < bestDistance) {
      bestDistance = distance;
      best = i;
    }
  }
  return best;
}

void PutIndex(uint8_t* row, int x, int bits, int index) {
  const int perByte = 8 / bits;
  const int shift = (perByte - 1 - x % perByte) * bits;
  const uint8_t mask = static_cast<uint8_t>(((1 << bits) - 1) << shift);
  uint8_t& byte = row[x / perByte];
  byte = static_cast<uint8_t>((byte & ~mask) | ((index << shift) & mask));
}

void Put16(uint8_t* p, unsigned v) {
  p[0] = static_cast<uint8_t>(v & 0xFF);
  p[1] = static_cast<uint8_t>(v >> 8);
}

// Writes the color into one pixel of an allocated, checked bitmap.
void WritePixel(BITMAPHANDLE& b, int x, int y, COLORREF color) {
  uint8_t* row = b.pData + static_cast<size_t>(y) * static_cast<size_t>(b.nBytesPerLine);
  const unsigned r = GetRValue(color), g = GetGValue(color), bl = GetBValue(color);
  const bool rgb = b.uOrder == QV_ORDER_RGB;
  const unsigned gray = (r * 299 + g * 587 + bl * 114 + 500) / 1000;
  const unsigned maxSample = MaxSample(b);
  switch (b.nBitsPerPixel) {
    case 1:
    case 2:
    case 4:
      PutIndex(row, x, b.nBitsPerPixel, NearestPaletteIndex(b, color));
      break;
    case 8:
      row[x] = static_cast<uint8_t>(b.uOrder == QV_ORDER_GRAY ? gray : NearestPaletteIndex(b, color));
      break;
    case 12:
    case 16:
      if (b.uOrder == QV_ORDER_GRAY) {
        unsigned v = Scale(gray, maxSample);
        if (b.uFlags & QV_BMF_SIGNED) v = Scale(gray, maxSample / 2);
        Put16(row + 2 * x, v);
      } else {
        Put16(row + 2 * x, ((r >> 3) << 11) | ((g >> 2) << 5) | (bl >> 3));
      }
      break;
    case 24:
    case 32: {
      uint8_t* p = row + x * (b.nBitsPerPixel / 8);
      p[0] = static_cast<uint8_t>(rgb ? r : bl);
      p[1] = static_cast<uint8_t>(g);
      p[2] = static_cast<uint8_t>(rgb ? bl : r);
      if (b.nBitsPerPixel == 32) p[3] = 255;
      break;
    }
    case 48:
    case 64: {
      uint8_t* p = row + x * (b.nBitsPerPixel / 8);
      Put16(p, Scale(rgb ? r : bl, maxSample));
      Put16(p + 2, Scale(g, maxSample));
      Put16(p + 4, Scale(rgb ? bl : r, maxSample));
      if (b.nBitsPerPixel == 64) Put16(p + 6, maxSample);
      break;
    }
    default:
      break;
  }
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
  const bool indexed = bitsPerPixel >= 1 && bitsPerPixel <= 8;
  const unsigned order = bitsPerPixel == 8 || bitsPerPixel == 12 ? QV_ORDER_GRAY : QV_ORDER_BGR;
  RGBQUAD palette[QV_MAX_PALETTE_ENTRIES] = {};
  const int colors = indexed ? (1 << bitsPerPixel) : 0;
  for (int i = 0; i < colors; ++i) {
    const BYTE v = static_cast<BYTE>(colors > 1 ? i * 255 / (colors - 1) : 0);
    palette[i] = RGBQUAD{v, v, v, 0};
  }
  BITMAPHANDLE created = EmptyDescriptor();
  const int rc = Q_CreateBitmap(&created, sizeof(BITMAPHANDLE), width, height, bitsPerPixel,
                                bitsPerPixel < 8 ? QV_ORDER_BGR : order, indexed ? palette : nullptr, colors, 0);
  if (rc != QV_SUCCESS) return Keep(rc);
  Free();
  m_own = std::make_unique<BITMAPHANDLE>(created);
  // Fill the first row pixel by pixel, then copy it down: every format's
  // packing is handled once, and large fills stay cheap.
  for (int x = 0; x < width; ++x) WritePixel(*m_own, x, 0, fill);
  for (int y = 1; y < height; ++y)
    std::copy_n(m_own->pData, m_own->nBytesPerLine, m_own->pData + static_cast<size_t>(y) * m_own->nBytesPerLine);
  return Keep(QV_SUCCESS);
}

int CQVBitmap::PutPixelColor(int x, int y, COLORREF color) {
  if (!Usable()) return 0;
  BITMAPHANDLE& b = *GetHandle();
  if (x < 0 || y < 0 || x >= b.nWidth || y >= b.nHeight) return Keep(QV_ERROR_INVALID_PARAMETER);
  if (Q_IsValidBitmap(&b, 0) != QV_SUCCESS) return Keep(QV_ERROR_INVALID_PARAMETER);
  WritePixel(b, x, y, color);
  return Keep(QV_SUCCESS);
}

void CQVBitmap::SetPaintGamma(unsigned gamma) {
  m_paintGamma = gamma >= 1 && gamma <= kMaxGamma ? gamma : kNoGamma;
}

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
    target = RECT{target.left + int((clipped.left - source.left) * sx), target.top + int((clipped.top - source.top) * sy),
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

int CQVBitmap::Saturation(int change) {
  return Usable() ? Keep(Q_ChangeBitmapSaturation(GetHandle(), change, 0)) : 0;
}

int CQVBitmap::HistoContrast(int change) {
  return Usable() ? Keep(Q_HistoContrastBitmap(GetHandle(), change, 0)) : 0;
}

int CQVBitmap::Posterize(unsigned levels) { return Usable() ? Keep(Q_PosterizeBitmap(GetHandle(), levels, 0)) : 0; }

int CQVBitmap::Solarize(unsigned threshold) {
  return Usable() ? Keep(Q_SolarizeBitmap(GetHandle(), threshold, 0)) : 0;
}

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
