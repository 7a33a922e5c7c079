/*
 * CQVColoredGrayDlg: converts a colour image to a tinted gray one. A gray level is formed from red, green and
 * blue colour weights that add up to 1000 (set on a two-marker slider as in the gray scale dialog); three gray
 * weights from -1000 to 1000 say how much of that gray goes back into the red, green and blue channels, each
 * set on its own slider or typed into its edit box. The weight is the source of truth; slider and edit
 * mirror it, and the sync flags keep a write made from code from feeding back.
 */
#pragma once

#include <array>

#include "ColorWeightsSlider.h"
#include "QVEditCtrl.h"
#include "QVGrayFamilyDlg.h"
#include "qv/qvdlgclr.h"

class CQVColoredGrayDlg : public CQVGrayFamilyDlg {
 public:
  CQVColoredGrayDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved);

  // Colour weights outside 0..1000 keep the dialog's, and three that then do not add up to 1000 fall back to
  // 333, 333, 334; gray weights outside -1000..1000 keep the dialog's (0). Never fails.
  int CopyIn(const QVCOLOREDGRAYDLGPARAMS& params);
  // The six weights and the zoom state; the OK run's result.
  int CopyOut(QVCOLOREDGRAYDLGPARAMS& params) const;

  int PrepareEffectBitmap(CQVBitmap& bitmap) override;

 protected:
  int ApplyToCallersBitmap(BITMAPHANDLE* bitmap) override;
  BOOL OnInitDialog() override;
  void SetDialogStrings() override;
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

 private:
  static constexpr int kChannels = 3;  // red, green, blue

  void OnGrayEditChanged(int channel);
  void OnGraySliderChanged(int channel);
  void SetGrayEdit(int channel, int value);

  CQVSliderCtrl m_colorSlider;
  std::array<CQVSliderCtrl, kChannels> m_graySliders;
  std::array<CQVEditCtrl, kChannels> m_grayEdits;
  qvdlg::ColorWeights m_weights = qvdlg::kDefaultWeights;
  std::array<int, kChannels> m_grayFactors{};
  std::array<bool, kChannels> m_editSync{true, true, true};
};
