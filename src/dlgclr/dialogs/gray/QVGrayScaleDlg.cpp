/*
 * The gray scale dialog (see QVGrayScaleDlg.h).
 */
#include "QVGrayScaleDlg.h"

#include "DataExchange.h"
#include "resource.h"

namespace {

constexpr CQVGrayFamilyDlg::Face kFace{IDD_QV_GRAYSCALE, 73, 453, IDC_GRAYSCALE_BEFORE, IDC_GRAYSCALE_AFTER};
constexpr qvdlg::WeightLabels kValueLabels{IDC_GRAYSCALE_RED_VALUE, IDC_GRAYSCALE_GREEN_VALUE,
                                           IDC_GRAYSCALE_BLUE_VALUE};
constexpr unsigned kStringGroup = 454;  // then "Red:", "Green:", "Blue:"

}  // namespace

CQVGrayScaleDlg::CQVGrayScaleDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
    : CQVGrayFamilyDlg(kFace, parent, bitmap, reserved) {}

int CQVGrayScaleDlg::CopyIn(const QVGRAYSCALEDLGPARAMS& params) {
  m_weights = qvdlg::TakeGrayScaleWeights(params.nRedFactor, params.nGreenFactor, params.nBlueFactor);
  TakeCommonFields(params.bZoomToFit, params.uDlgFlags);
  return QV_SUCCESS;
}

int CQVGrayScaleDlg::CopyOut(QVGRAYSCALEDLGPARAMS& params) const {
  params.nRedFactor = m_weights.red;
  params.nGreenFactor = m_weights.green;
  params.nBlueFactor = m_weights.blue;
  params.bZoomToFit = GetZoomToFit();
  return GetProcessResult();
}

int CQVGrayScaleDlg::PrepareEffectBitmap(CQVBitmap& bitmap) {
  return bitmap.GrayScaleBitmapExt(m_weights.red, m_weights.green, m_weights.blue);
}

int CQVGrayScaleDlg::ApplyToCallersBitmap(BITMAPHANDLE* bitmap) {
  return Q_GrayScaleBitmapExt(bitmap, m_weights.red, m_weights.green, m_weights.blue, 0);
}

BOOL CQVGrayScaleDlg::OnInitDialog() {
  CQVGrayFamilyDlg::OnInitDialog();
  qvdlg::InitColorWeightsSlider(m_slider, m_weights);
  qvdlg::ShowColorWeights(m_hWnd, kValueLabels, m_weights);
  return TRUE;
}

void CQVGrayScaleDlg::SetDialogStrings() {
  CQVGrayFamilyDlg::SetDialogStrings();
  SetItemString(IDC_GRAYSCALE_GROUP, kStringGroup);
  SetItemString(IDC_GRAYSCALE_RED_LABEL, kStringGroup + 1);
  SetItemString(IDC_GRAYSCALE_GREEN_LABEL, kStringGroup + 2);
  SetItemString(IDC_GRAYSCALE_BLUE_LABEL, kStringGroup + 3);
}

void CQVGrayScaleDlg::DoDataExchange(qvfw::CDataExchange* pDX) {
  CQVGrayFamilyDlg::DoDataExchange(pDX);
  qvfw::DDX_Control(pDX, IDC_GRAYSCALE_SLIDER, m_slider);
}

BOOL CQVGrayScaleDlg::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header && header->idFrom == IDC_GRAYSCALE_SLIDER && header->code == CQVSliderCtrl::kNotifyMarkerMoved) {
    m_weights = qvdlg::ReadColorWeights(m_slider);
    qvdlg::ShowColorWeights(m_hWnd, kValueLabels, m_weights);
    DoUpdateValues();
    return TRUE;
  }
  return CQVGrayFamilyDlg::OnNotify(wParam, lParam, result);
}
