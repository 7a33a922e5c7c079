/*
 * The per-export data of the entry sequence. Only hue and saturation refuse bitmaps of signed samples among
 * the single-value dialogs; the others process them. The gray conversions and the colour balance mix colour
 * channels, which signed samples do not have, so they refuse them.
 */
#include "ExportInfo.h"

#include "resource.h"

namespace qvdlg {
namespace {

// clang-format off
constexpr ExportInfo kExports[kExportCount] = {
  // name                  size probe flags signed bitmap template              dialog id
  {"Q_DlgBrightness",     48,  48,   20,   false, true,  IDD_QV_BRIGHTNESS,    19},
  {"Q_DlgContrast",       48,  48,   20,   false, true,  IDD_QV_CONTRAST,      20},
  {"Q_DlgHue",            48,  48,   20,   true,  true,  IDD_QV_HUE,           21},
  {"Q_DlgSaturation",     48,  48,   20,   true,  true,  IDD_QV_SATURATION,    22},
  {"Q_DlgHistoContrast",  48,  48,   20,   false, true,  IDD_QV_HISTOCONTRAST, 25},
  {"Q_DlgPosterize",      48,  48,   20,   false, true,  IDD_QV_POSTERIZE,     24},
  {"Q_DlgSolarize",       48,  48,   20,   false, true,  IDD_QV_SOLARIZE,      18},
  {"Q_DlgBalanceColors",  128, 128,  100,  true,  true,  IDD_QV_BALANCECOLORS, 79},
  {"Q_DlgGrayScale",      56,  56,   28,   true,  true,  IDD_QV_GRAYSCALE,     73},
  {"Q_DlgColoredGray",    68,  68,   40,   true,  true,  IDD_QV_COLOREDGRAY,   74},
  {"Q_DlgIntensityDetect", 64, 64,   36,   true,  true,  IDD_QV_INTENSITYDETECT, 5},
  {"Q_DlgLocalHistoEqualize", 68, 68, 40,   true,  true,  IDD_QV_LOCALHISTO,    78},
};
// clang-format on

}  // namespace

const ExportInfo& ExportInfoOf(ExportId id) { return kExports[static_cast<int>(id)]; }

}  // namespace qvdlg
