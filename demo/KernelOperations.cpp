/*
 * Forwarders to the Qvkrnx operations (see the header for why they exist).
 * Each passes the values on unchanged with no flags, so what the demo shows
 * "by calling the operation" is exactly what a host's own call would do.
 */
#include "KernelOperations.h"

#include "qv/qvimgops.h"

namespace qvdemo::kernel {

int Intensity(BITMAPHANDLE* bitmap, int change) { return Q_ChangeBitmapIntensity(bitmap, change, 0); }
int Contrast(BITMAPHANDLE* bitmap, int change) { return Q_ChangeBitmapContrast(bitmap, change, 0); }
int Hue(BITMAPHANDLE* bitmap, int angle) { return Q_ChangeBitmapHue(bitmap, angle, 0); }
int Saturation(BITMAPHANDLE* bitmap, int change) { return Q_ChangeBitmapSaturation(bitmap, change, 0); }
int HistoContrast(BITMAPHANDLE* bitmap, int change) { return Q_HistoContrastBitmap(bitmap, change, 0); }
int Posterize(BITMAPHANDLE* bitmap, unsigned levels) { return Q_PosterizeBitmap(bitmap, levels, 0); }
int Solarize(BITMAPHANDLE* bitmap, unsigned threshold) { return Q_SolarizeBitmap(bitmap, threshold, 0); }

int Gamma(BITMAPHANDLE* bitmap, unsigned red, unsigned green, unsigned blue) {
  return Q_GammaCorrectBitmapExt(bitmap, red, green, blue, 0);
}

int IntensityDetect(BITMAPHANDLE* bitmap, unsigned low, unsigned high, COLORREF in, COLORREF out,
                    unsigned channel) {
  return Q_IntensityDetectBitmap(bitmap, low, high, in, out, channel, 0);
}

int GrayScale(BITMAPHANDLE* bitmap, int red, int green, int blue) {
  return Q_GrayScaleBitmapExt(bitmap, red, green, blue, 0);
}

int ColoredGray(BITMAPHANDLE* bitmap, const int (&weights)[3], const int (&grayFactors)[3]) {
  return Q_ConvertToColoredGray(bitmap, weights[0], weights[1], weights[2], grayFactors[0], grayFactors[1],
                                grayFactors[2], 0);
}

int Balance(BITMAPHANDLE* bitmap, const double (&weights)[3][3]) {
  QVBALANCINGRECORD records[3];
  for (int c = 0; c < 3; ++c) {
    records[c].uStructSize = sizeof(QVBALANCINGRECORD);
    records[c].fToRed = weights[c][0];
    records[c].fToGreen = weights[c][1];
    records[c].fToBlue = weights[c][2];
  }
  return Q_BalanceColors(bitmap, &records[0], &records[1], &records[2], 0);
}

int RemapIntensity(BITMAPHANDLE* bitmap, const unsigned* table, unsigned length, unsigned channel) {
  return Q_RemapBitmapIntensity(bitmap, table, length, channel, 0);
}

int RemapHue(BITMAPHANDLE* bitmap, const unsigned* mask, const unsigned* hue, const unsigned* saturation,
             const unsigned* value, unsigned length) {
  return Q_RemapBitmapHue(bitmap, mask, hue, saturation, value, length, 0);
}

int WindowLevel(BITMAPHANDLE* bitmap, int lowBit, int highBit, const RGBQUAD* lut, unsigned length) {
  return Q_WindowLevel(bitmap, lowBit, highBit, lut, length, QV_WL_PAINT);
}

int FillWindowLevelLut(RGBQUAD* lut, unsigned length, int low, int high, int lowBit, int highBit, int minValue,
                       int maxValue) {
  return Q_WindowLevelFillLUT(lut, length, RGB(0, 0, 0), RGB(255, 255, 255), low, high, lowBit, highBit, minValue,
                              maxValue, 0, QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR);
}

}  // namespace qvdemo::kernel
