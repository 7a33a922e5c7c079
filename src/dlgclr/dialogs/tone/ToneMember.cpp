/*
 * The table of the seven single-value dialogs. Out-of-range caller values become the range minimum, not the
 * nearer end (a brightness of 5000 comes in as -1000); solarize's range here is the one it starts with, which
 * the bitmap may widen when the dialog opens.
 */
#include "ToneMember.h"

#include "resource.h"

namespace qvdlg {
namespace {

// clang-format off
constexpr ToneMember kMembers[kToneMemberCount] = {
  // effect                     template               id  signed range          def  fb     neg   lim tick   sliderFirst title group slider                    edit                    group                    before                    after
  {ToneEffect::kBrightness,    IDD_QV_BRIGHTNESS,     19, true,  {-1000, 1000}, 0,   -1000, true,  5, true,  false, 1217, 1218, IDC_BRIGHTNESS_SLIDER,    IDC_BRIGHTNESS_EDIT,    IDC_BRIGHTNESS_GROUP,    IDC_BRIGHTNESS_BEFORE,    IDC_BRIGHTNESS_AFTER},
  {ToneEffect::kContrast,      IDD_QV_CONTRAST,       20, true,  {-1000, 1000}, 0,   -1000, true,  5, true,  false, 1219, 1220, IDC_CONTRAST_SLIDER,      IDC_CONTRAST_EDIT,      IDC_CONTRAST_GROUP,      IDC_CONTRAST_BEFORE,      IDC_CONTRAST_AFTER},
  {ToneEffect::kHue,           IDD_QV_HUE,            21, true,  {-180, 180},   0,   -180,  true,  5, true,  false, 1221, 1222, IDC_HUE_SLIDER,           IDC_HUE_EDIT,           IDC_HUE_GROUP,           IDC_HUE_BEFORE,           IDC_HUE_AFTER},
  {ToneEffect::kSaturation,    IDD_QV_SATURATION,     22, true,  {-1000, 1000}, 0,   -1000, true,  5, true,  false, 1223, 1224, IDC_SATURATION_SLIDER,    IDC_SATURATION_EDIT,    IDC_SATURATION_GROUP,    IDC_SATURATION_BEFORE,    IDC_SATURATION_AFTER},
  {ToneEffect::kHistoContrast, IDD_QV_HISTOCONTRAST,  25, true,  {-1000, 1000}, 0,   -1000, true,  5, true,  false, 1294, 1295, IDC_HISTOCONTRAST_SLIDER, IDC_HISTOCONTRAST_EDIT, IDC_HISTOCONTRAST_GROUP, IDC_HISTOCONTRAST_BEFORE, IDC_HISTOCONTRAST_AFTER},
  {ToneEffect::kPosterize,     IDD_QV_POSTERIZE,      24, false, {2, 64},       2,   2,     false, 3, false, true,  1215, 1216, IDC_POSTERIZE_SLIDER,     IDC_POSTERIZE_EDIT,     IDC_POSTERIZE_GROUP,     IDC_POSTERIZE_BEFORE,     IDC_POSTERIZE_AFTER},
  {ToneEffect::kSolarize,      IDD_QV_SOLARIZE,       18, false, {0, 255},      0,   0,     false, 4, false, false, 1213, 1214, IDC_SOLARIZE_SLIDER,      IDC_SOLARIZE_EDIT,      IDC_SOLARIZE_GROUP,      IDC_SOLARIZE_BEFORE,      IDC_SOLARIZE_AFTER},
};
// clang-format on

}  // namespace

const ToneMember& ToneMemberOf(ToneEffect effect) { return kMembers[static_cast<int>(effect)]; }

const ToneMember* ToneMembers() { return kMembers; }

}  // namespace qvdlg
