/*
 * The colored gray dialog (see QVColoredGrayDlg.h). The three gray-weight rows are numbered alike: slider and
 * edit of a channel follow one another, two ids a channel.
 */
#include "QVColoredGrayDlg.h"

#include "DataExchange.h"
#include "resource.h"

namespace {

constexpr CQVGrayFamilyDlg::Face kFace{IDD_QV_COLOREDGRAY, 74, 398, IDC_COLOREDGRAY_BEFORE, IDC_COLOREDGRAY_AFTER};
constexpr qvdlg::WeightLabels kValueLabels{IDC_COLOREDGRAY_RED_VALUE, IDC_COLOREDGRAY_GREEN_VALUE,
                                           IDC_COLOREDGRAY_BLUE_VALUE};
constexpr int kIdsPerChannel = IDC_COLOREDGRAY_GREEN_GRAY_SLIDER - IDC_COLOREDGRAY_RED_GRAY_SLIDER;
// Strings: the colour group box and its three labels, then the gray group box and its three labels.
constexpr unsigned kStringColorGroup = 399;
constexpr unsigned kStringGrayGroup = 403;
constexpr unsigned long kChannelColors[3] = {0x0000FF, 0x00FF00, 0xFF0000};  // COLORREFs of red, green, blue
constexpr int kTickFrequency = 10;

int SliderId(int channel) { return IDC_COLOREDGRAY_RED_GRAY_SLIDER + channel * kIdsPerChannel; }
int EditId(int channel) { return IDC_COLOREDGRAY_RED_GRAY_EDIT + channel * kIdsPerChannel; }

}  // namespace

CQVColoredGrayDlg::CQVColoredGrayDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
    : CQVGrayFamilyDlg(kFace, parent, bitmap, reserved) {}

int CQVColoredGrayDlg::CopyIn(const QVCOLOREDGRAYDLGPARAMS& params) {
  m_weights = qvdlg::TakeColoredGrayWeights(params.nRedFactor, params.nGreenFactor, params.nBlueFactor, m_weights);
  const int32_t factors[kChannels] = {params.nRedGrayFactor, params.nGreenGrayFactor, params.nBlueGrayFactor};
  for (int channel = 0; channel < kChannels; ++channel)
    m_grayFactors[channel] = qvdlg::TakeGrayFactor(factors[channel], m_grayFactors[channel]);
  TakeCommonFields(params.bZoomToFit, params.uDlgFlags);
  return QV_SUCCESS;
}

int CQVColoredGrayDlg::CopyOut(QVCOLOREDGRAYDLGPARAMS& params) const {
  params.nRedFactor = m_weights.red;
  params.nGreenFactor = m_weights.green;
  params.nBlueFactor = m_weights.blue;
  params.nRedGrayFactor = m_grayFactors[0];
  params.nGreenGrayFactor = m_grayFactors[1];
  params.nBlueGrayFactor = m_grayFactors[2];
  params.bZoomToFit = GetZoomToFit();
  return GetProcessResult();
}

int CQVColoredGrayDlg::PrepareEffectBitmap(CQVBitmap& bitmap) {
  return bitmap.ConvertToColoredGray(m_weights.red, m_weights.green, m_weights.blue, m_grayFactors[0], m_grayFactors[1],
                                     m_grayFactors[2]);
}

int CQVColoredGrayDlg::ApplyToCallersBitmap(BITMAPHANDLE* bitmap) {
  return Q_ConvertToColoredGray(bitmap, m_weights.red, m_weights.green, m_weights.blue, m_grayFactors[0],
                                m_grayFactors[1], m_grayFactors[2], 0);
}

BOOL CQVColoredGrayDlg::OnInitDialog() {
  CQVGrayFamilyDlg::OnInitDialog();
  qvdlg::InitColorWeightsSlider(m_colorSlider, m_weights);
  qvdlg::ShowColorWeights(m_hWnd, kValueLabels, m_weights);
  const UINT grayStyles = CQVSliderCtrl::SHOW_INTEGERS | CQVSliderCtrl::DISPLAY_COLORS |
                          CQVSliderCtrl::PREVENT_CROSSING | CQVSliderCtrl::DISPLAY_TICS;
  for (int channel = 0; channel < kChannels; ++channel) {
    double marker = m_grayFactors[channel];
    unsigned long colors[2] = {kChannelColors[channel], kChannelColors[channel]};
    m_graySliders[channel].Init(-qvdlg::kGrayFactorLimit, qvdlg::kGrayFactorLimit, kTickFrequency, 1, &marker, colors,
                                static_cast<int>(grayStyles), nullptr);
    m_grayEdits[channel].SetNumericsOnly(1);
    m_grayEdits[channel].SetAcceptNegative(1);
    m_grayEdits[channel].SetLimitText(5);  // "-1000"
    SetGrayEdit(channel, m_grayFactors[channel]);
  }
  return TRUE;
}

void CQVColoredGrayDlg::SetDialogStrings() {
  CQVGrayFamilyDlg::SetDialogStrings();
  SetItemString(IDC_COLOREDGRAY_COLOR_GROUP, kStringColorGroup);
  SetItemString(IDC_COLOREDGRAY_GRAY_GROUP, kStringGrayGroup);
  const int colorLabels[kChannels] = {IDC_COLOREDGRAY_RED_LABEL, IDC_COLOREDGRAY_GREEN_LABEL,
                                      IDC_COLOREDGRAY_BLUE_LABEL};
  const int grayLabels[kChannels] = {IDC_COLOREDGRAY_RED_GRAY_LABEL, IDC_COLOREDGRAY_GREEN_GRAY_LABEL,
                                     IDC_COLOREDGRAY_BLUE_GRAY_LABEL};
  for (int channel = 0; channel < kChannels; ++channel) {
    SetItemString(colorLabels[channel], kStringColorGroup + 1 + channel);
    SetItemString(grayLabels[channel], kStringGrayGroup + 1 + channel);
  }
}

void CQVColoredGrayDlg::DoDataExchange(qvfw::CDataExchange* pDX) {
  CQVGrayFamilyDlg::DoDataExchange(pDX);
  qvfw::DDX_Control(pDX, IDC_COLOREDGRAY_COLOR_SLIDER, m_colorSlider);
  for (int channel = 0; channel < kChannels; ++channel) {
    qvfw::DDX_Control(pDX, SliderId(channel), m_graySliders[channel]);
    qvfw::DDX_Control(pDX, EditId(channel), m_grayEdits[channel]);
  }
}

void CQVColoredGrayDlg::SetGrayEdit(int channel, int value) {
  m_editSync[channel] = false;
  m_grayEdits[channel].SetValue(value);
  m_editSync[channel] = true;
}

void CQVColoredGrayDlg::OnGrayEditChanged(int channel) {
  if (!m_editSync[channel]) return;
  const double typed = m_grayEdits[channel].GetValue();
  const int value = qvdlg::ClampTypedGrayFactor(typed);
  // "1500" becomes "1000" in the box at once; a partly typed "-" stays until it means a number.
  if (typed != value) SetGrayEdit(channel, value);
  if (value == m_grayFactors[channel]) return;
  m_grayFactors[channel] = value;
  m_graySliders[channel].SetMarkerValue(0, value);  // programmatic: the slider does not notify
  DoUpdateValues();
}

void CQVColoredGrayDlg::OnGraySliderChanged(int channel) {
  double marker = 0;
  if (!m_graySliders[channel].GetMarkerValue(0, marker)) return;
  if (marker < -qvdlg::kGrayFactorLimit || marker > qvdlg::kGrayFactorLimit) return;
  m_grayFactors[channel] = static_cast<int>(marker);
  SetGrayEdit(channel, m_grayFactors[channel]);
  DoUpdateValues();
}

BOOL CQVColoredGrayDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
  if (HIWORD(wParam) == EN_CHANGE) {
    for (int channel = 0; channel < kChannels; ++channel) {
      if (static_cast<int>(LOWORD(wParam)) != EditId(channel)) continue;
      OnGrayEditChanged(channel);
      return TRUE;
    }
  }
  return CQVGrayFamilyDlg::OnCommand(wParam, lParam);
}

BOOL CQVColoredGrayDlg::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header && header->code == CQVSliderCtrl::kNotifyMarkerMoved) {
    if (header->idFrom == IDC_COLOREDGRAY_COLOR_SLIDER) {
      m_weights = qvdlg::ReadColorWeights(m_colorSlider);
      qvdlg::ShowColorWeights(m_hWnd, kValueLabels, m_weights);
      DoUpdateValues();
      return TRUE;
    }
    for (int channel = 0; channel < kChannels; ++channel) {
      if (static_cast<int>(header->idFrom) != SliderId(channel)) continue;
      OnGraySliderChanged(channel);
      return TRUE;
    }
  }
  return CQVGrayFamilyDlg::OnNotify(wParam, lParam, result);
}
