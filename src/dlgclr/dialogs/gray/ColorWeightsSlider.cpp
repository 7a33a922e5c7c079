/*
 * The colour-weight slider of the gray conversion dialogs (see ColorWeightsSlider.h).
 */
#include "ColorWeightsSlider.h"

#include <string>

namespace qvdlg {
namespace {

constexpr int kTickFrequency = 10;

void SetNumber(HWND dialog, int id, int value) { ::SetDlgItemTextW(dialog, id, std::to_wstring(value).c_str()); }

}  // namespace

void InitColorWeightsSlider(CQVSliderCtrl& slider, const ColorWeights& weights) {
  double markers[2] = {static_cast<double>(weights.red), static_cast<double>(weights.red + weights.green)};
  // COLORREFs: the intervals are red, green and blue.
  unsigned long colors[3] = {0x0000FF, 0x00FF00, 0xFF0000};
  const UINT styles = CQVSliderCtrl::SHOW_INTEGERS | CQVSliderCtrl::DISPLAY_COLORS | CQVSliderCtrl::DISPLAY_VALUES |
                      CQVSliderCtrl::PREVENT_CROSSING | CQVSliderCtrl::DISPLAY_TICS | CQVSliderCtrl::ALLOW_SET_POS;
  slider.Init(0.0, kWeightTotal, kTickFrequency, 2, markers, colors, static_cast<int>(styles), nullptr);
}

ColorWeights ReadColorWeights(const CQVSliderCtrl& slider) {
  double first = 0;
  double second = 0;
  slider.GetMarkerValue(0, first);
  slider.GetMarkerValue(1, second);
  return WeightsFromMarkers(first, second);
}

void ShowColorWeights(HWND dialog, const WeightLabels& labels, const ColorWeights& weights) {
  SetNumber(dialog, labels.red, weights.red);
  SetNumber(dialog, labels.green, weights.green);
  SetNumber(dialog, labels.blue, weights.blue);
}

}  // namespace qvdlg
