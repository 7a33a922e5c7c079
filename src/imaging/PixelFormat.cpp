/*
 * Maps the descriptor's bits per pixel, order and signed flag to a PixelFormat, and computes row sizes with
 * overflow checks. Every combination the kernel accepts is decided here and nowhere else.
 */
#include "PixelFormat.h"

namespace qv {
namespace {

PixelFormat Make(PixelKind kind, int bpp, int channels, int bytesPerSample, bool bgr, bool isSigned,
                 uint32_t maxValue) {
  return PixelFormat{kind, bpp, channels, bytesPerSample, bgr, isSigned, maxValue};
}

}  // namespace

int DescribePixelFormat(int bitsPerPixel, uint32_t order, bool isSigned, PixelFormat* out) {
  if (order > QV_ORDER_GRAY) return QV_ERROR_INVALID_PARAMETER;
  const bool gray = order == QV_ORDER_GRAY;
  const bool bgr = order == QV_ORDER_BGR;
  switch (bitsPerPixel) {
    case 1:
    case 2:
    case 4:
    case 8: break;
    case 12:
    case 16:
    case 24:
    case 32:
    case 48:
    case 64: break;
    default: return QV_ERROR_INVALID_BITS_PER_PIXEL;
  }
  const bool signedAllowed = gray && (bitsPerPixel == 12 || bitsPerPixel == 16);
  if (isSigned && !signedAllowed) return QV_ERROR_UNSUPPORTED_FORMAT;
  switch (bitsPerPixel) {
    case 1: *out = Make(PixelKind::Indexed1, 1, 1, 0, false, false, 255); break;
    case 2: *out = Make(PixelKind::Indexed2, 2, 1, 0, false, false, 255); break;
    case 4: *out = Make(PixelKind::Indexed4, 4, 1, 0, false, false, 255); break;
    case 8:
      *out = gray ? Make(PixelKind::Gray8, 8, 1, 1, false, false, 255)
                  : Make(PixelKind::Indexed8, 8, 1, 1, false, false, 255);
      break;
    case 12:
      if (!gray) return QV_ERROR_UNSUPPORTED_FORMAT;
      *out = Make(PixelKind::Gray12, 12, 1, 2, false, isSigned, 4095);
      break;
    case 16:
      *out = gray ? Make(PixelKind::Gray16, 16, 1, 2, false, isSigned, 65535)
                  : Make(PixelKind::Rgb565, 16, 3, 0, bgr, false, 255);
      break;
    case 24:
    case 32:
    case 48:
    case 64: {
      if (gray) return QV_ERROR_UNSUPPORTED_FORMAT;
      const int sample = bitsPerPixel >= 48 ? 2 : 1;
      const int channels = bitsPerPixel / (8 * sample);
      const PixelKind kind = bitsPerPixel == 24   ? PixelKind::Color24
                             : bitsPerPixel == 32 ? PixelKind::Color32
                             : bitsPerPixel == 48 ? PixelKind::Color48
                                                  : PixelKind::Color64;
      *out = Make(kind, bitsPerPixel, channels, sample, bgr, false, sample == 2 ? 65535u : 255u);
      break;
    }
  }
  return QV_SUCCESS;
}

int DescribePixelFormat(const BITMAPHANDLE& b, PixelFormat* out) {
  return DescribePixelFormat(b.nBitsPerPixel, b.uOrder, (b.uFlags & QV_BMF_SIGNED) != 0, out);
}

int32_t MinBytesPerLine(int32_t width, int bitsPerPixel) {
  if (width <= 0 || bitsPerPixel <= 0) return 0;
  const int storedBits = bitsPerPixel == 12 ? 16 : bitsPerPixel;
  const uint64_t bits = static_cast<uint64_t>(width) * static_cast<uint64_t>(storedBits);
  const uint64_t bytes = ((bits + 31) / 32) * 4;
  return bytes > static_cast<uint64_t>(INT32_MAX) ? 0 : static_cast<int32_t>(bytes);
}

}  // namespace qv
