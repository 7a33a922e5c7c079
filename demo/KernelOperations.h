/*
 * The Qvkrnx operations the demo runs with the values a dialog returned,
 * reachable without qvimgops.h. The dialog table compiles against the
 * dialog header alone, which has in some versions defined the balancing
 * record as well (two definitions in one source do not compile); these
 * forwarders include only the operations header.
 */
#ifndef QVDEMO_KERNELOPERATIONS_H
#define QVDEMO_KERNELOPERATIONS_H

#include "qv/qvkrn.h"

namespace qvdemo::kernel {

int Intensity(BITMAPHANDLE* bitmap, int change);
int Contrast(BITMAPHANDLE* bitmap, int change);
int Hue(BITMAPHANDLE* bitmap, int angle);
int Saturation(BITMAPHANDLE* bitmap, int change);
int HistoContrast(BITMAPHANDLE* bitmap, int change);
int Posterize(BITMAPHANDLE* bitmap, unsigned levels);
int Solarize(BITMAPHANDLE* bitmap, unsigned threshold);
int Gamma(BITMAPHANDLE* bitmap, unsigned red, unsigned green, unsigned blue);
int IntensityDetect(BITMAPHANDLE* bitmap, unsigned low, unsigned high, COLORREF in, COLORREF out, unsigned channel);
int GrayScale(BITMAPHANDLE* bitmap, int red, int green, int blue);
int ColoredGray(BITMAPHANDLE* bitmap, const int (&weights)[3], const int (&grayFactors)[3]);
// weights[c] are the source red, green and blue weights of output channel c.
int Balance(BITMAPHANDLE* bitmap, const double (&weights)[3][3]);
int RemapIntensity(BITMAPHANDLE* bitmap, const unsigned* table, unsigned length, unsigned channel);
int RemapHue(BITMAPHANDLE* bitmap, const unsigned* mask, const unsigned* hue, const unsigned* saturation,
             const unsigned* value, unsigned length);
int WindowLevel(BITMAPHANDLE* bitmap, int lowBit, int highBit, const RGBQUAD* lut, unsigned length);
int FillWindowLevelLut(RGBQUAD* lut, unsigned length, int low, int high, int lowBit, int highBit, int minValue,
                       int maxValue);

}  // namespace qvdemo::kernel

#endif
