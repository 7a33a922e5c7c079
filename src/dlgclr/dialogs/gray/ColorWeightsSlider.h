/*
 * The colour-weight slider the gray scale and colored gray dialogs share: two markers over 0..1000, red up to
 * the first, green between them, blue the rest, each interval painted in its colour, and three labels that
 * show the weights. The weights are the dialog's; the slider only shows and edits them.
 */
#pragma once

#include "GrayRules.h"
#include "QVSliderCtrl.h"

namespace qvdlg {

// The label ids that show the three weights.
struct WeightLabels {
  int red;
  int green;
  int blue;
};

// Range 0..1000 with a tick every 10, markers at red and red + green.
void InitColorWeightsSlider(CQVSliderCtrl& slider, const ColorWeights& weights);
// The weights the markers stand for, with the dialogs' rounding.
ColorWeights ReadColorWeights(const CQVSliderCtrl& slider);
// Writes the weights into their labels with "%d".
void ShowColorWeights(HWND dialog, const WeightLabels& labels, const ColorWeights& weights);

}  // namespace qvdlg
