/*
 * The value rules of the intensity detect dialog (see IntensityDetectRules.h).
 */
#include "IntensityDetectRules.h"

#include "qv/qvkrn.h"

namespace qvdlg {

int IntensityRangeMaximum(int grayKind, uint32_t bitmapFlags, int bitsPerPixel, int current) {
  const bool treatAsGray = grayKind != 0 || (bitmapFlags & QV_BMF_USELUT) != 0;
  if (!treatAsGray) return bitsPerPixel == 48 || bitsPerPixel == 64 ? 65535 : 255;
  if (bitsPerPixel == 12) return 4095;
  if (bitsPerPixel == 16) return 65535;
  return current;
}

int TakeIntensityBound(uint32_t raw, const ToneRange& range) {
  return range.Contains(static_cast<int64_t>(raw)) ? static_cast<int>(raw) : range.minimum;
}

uint32_t WithChannelBit(uint32_t bits, uint32_t bit, bool checked) { return checked ? bits | bit : bits & ~bit; }

uint32_t ChannelBitsForMode(uintptr_t modeData, uint32_t bits, bool red, bool green, bool blue) {
  if (modeData == 0) return 0;
  if (red) bits |= kIntensityRed;
  if (green) bits |= kIntensityGreen;
  if (blue) bits |= kIntensityBlue;
  return bits;
}

int ViewRegionParam(bool readableHandle, bool allocated, int bitsPerPixel) {
  return readableHandle && allocated && bitsPerPixel >= 1 && bitsPerPixel <= 8 ? 0 : 1;
}

bool OffersOwnPalette(int bitsPerPixel, uint32_t order) {
  return bitsPerPixel <= 8 || bitsPerPixel == 12 || (bitsPerPixel == 16 && order == QV_ORDER_GRAY);
}

}  // namespace qvdlg
