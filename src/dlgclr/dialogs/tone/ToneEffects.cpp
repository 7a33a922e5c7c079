/*
 * The effects of the single-value dialogs (see ToneEffects.h). Posterize and solarize take unsigned values;
 * their ranges never go below zero, so the conversion is exact.
 */
#include "ToneEffects.h"

#include "qv/qverror.h"
#include "qv/qvimgops.h"

namespace qvdlg {

int ApplyPreviewEffect(CQVBitmap& bitmap, ToneEffect effect, int value, int median) {
  switch (effect) {
    case ToneEffect::kBrightness: return bitmap.Brightness(value);
    case ToneEffect::kContrast: return bitmap.Contrast(value);
    case ToneEffect::kHue: return bitmap.Hue(value);
    case ToneEffect::kSaturation: return bitmap.Saturation(value);
    case ToneEffect::kHistoContrast: return bitmap.HistoContrast(value, median);
    case ToneEffect::kPosterize: return bitmap.Posterize(static_cast<unsigned>(value));
    case ToneEffect::kSolarize: return bitmap.Solarize(static_cast<unsigned>(value));
  }
  return 0;
}

int ApplyEffectInPlace(BITMAPHANDLE* bitmap, ToneEffect effect, int value) {
  switch (effect) {
    case ToneEffect::kBrightness: return Q_ChangeBitmapIntensity(bitmap, value, 0);
    case ToneEffect::kContrast: return Q_ChangeBitmapContrast(bitmap, value, 0);
    case ToneEffect::kHue: return Q_ChangeBitmapHue(bitmap, value, 0);
    case ToneEffect::kSaturation: return Q_ChangeBitmapSaturation(bitmap, value, 0);
    case ToneEffect::kHistoContrast: return Q_HistoContrastBitmap(bitmap, value, 0);
    case ToneEffect::kPosterize: return Q_PosterizeBitmap(bitmap, static_cast<unsigned>(value), 0);
    case ToneEffect::kSolarize: return Q_SolarizeBitmap(bitmap, static_cast<unsigned>(value), 0);
  }
  return QV_ERROR_INVALID_PARAMETER;
}

}  // namespace qvdlg
