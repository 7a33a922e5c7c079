/*
 * CQVGrayScaleDlg: turns a colour image into a gray one with red, green and blue weights that always add up
 * to 1000. One slider with two markers sets them: the first marker is the red weight, the gap between the two
 * the green weight, the rest up to 1000 the blue weight; three labels show the numbers.
 */
#pragma once

#include "ColorWeightsSlider.h"
#include "QVGrayFamilyDlg.h"
#include "qv/qvdlgclr.h"

class CQVGrayScaleDlg : public CQVGrayFamilyDlg {
 public:
  CQVGrayScaleDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved);

  // Weights that are not each 0..1000 and together 1000 leave the defaults 333, 333, 334. Never fails.
  int CopyIn(const QVGRAYSCALEDLGPARAMS& params);
  // The weights and the zoom state; the OK run's result.
  int CopyOut(QVGRAYSCALEDLGPARAMS& params) const;

  int PrepareEffectBitmap(CQVBitmap& bitmap) override;

 protected:
  int ApplyToCallersBitmap(BITMAPHANDLE* bitmap) override;
  BOOL OnInitDialog() override;
  void SetDialogStrings() override;
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

 private:
  CQVSliderCtrl m_slider;
  qvdlg::ColorWeights m_weights = qvdlg::kDefaultWeights;
};
