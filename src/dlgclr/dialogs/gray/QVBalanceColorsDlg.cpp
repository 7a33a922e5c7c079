/*
 * The balance colors dialog (see QVBalanceColorsDlg.h). The controls of the three channels are numbered alike:
 * a channel's group box, its three labels and its three combos follow one another, seven ids a channel.
 */
#include "QVBalanceColorsDlg.h"

#include "DataExchange.h"
#include "GrayRules.h"
#include "resource.h"

namespace {

constexpr CQVGrayFamilyDlg::Face kFace{IDD_QV_BALANCECOLORS, 79, 460, IDC_BALANCE_BEFORE, IDC_BALANCE_AFTER};
constexpr int kIdsPerChannel = IDC_BALANCE_GREEN_GROUP - IDC_BALANCE_RED_GROUP;
constexpr unsigned kStringFirstGroup = 461;  // "Red Weights:", then green and blue
constexpr unsigned kStringFirstLabel = 464;  // "Red:", "Green:", "Blue:"

int ComboId(int weight) { return IDC_BALANCE_RED_TO_RED + (weight / 3) * kIdsPerChannel + weight % 3; }
int LabelId(int weight) { return IDC_BALANCE_RED_RED_LABEL + (weight / 3) * kIdsPerChannel + weight % 3; }

const QVBALANCINGRECORD& RecordOf(const QVBALANCECOLORSDLGPARAMS& params, int channel) {
  return channel == 0 ? params.RedFactor : channel == 1 ? params.GreenFactor : params.BlueFactor;
}

}  // namespace

CQVBalanceColorsDlg::CQVBalanceColorsDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
    : CQVGrayFamilyDlg(kFace, parent, bitmap, reserved) {
  // 0..100 listed in tens, stepped by one.
  for (auto& combo : m_combos) combo = std::make_unique<CQVValueCombo>(0, 100, 10, 1);
}

CQVBalanceColorsDlg::~CQVBalanceColorsDlg() = default;

int CQVBalanceColorsDlg::CopyIn(const QVBALANCECOLORSDLGPARAMS& params) {
  for (int weight = 0; weight < kWeightCount; ++weight) {
    const QVBALANCINGRECORD& record = RecordOf(params, weight / 3);
    const double fractions[3] = {record.fToRed, record.fToGreen, record.fToBlue};
    m_percents[weight] = qvdlg::TakeBalancePercent(fractions[weight % 3]);
  }
  TakeCommonFields(params.bZoomToFit, params.uDlgFlags);
  return QV_SUCCESS;
}

int CQVBalanceColorsDlg::CopyOut(QVBALANCECOLORSDLGPARAMS& params) const {
  const Records records = MakeRecords();
  params.RedFactor = records[0];
  params.GreenFactor = records[1];
  params.BlueFactor = records[2];
  params.bZoomToFit = GetZoomToFit();
  return GetProcessResult();
}

CQVBalanceColorsDlg::Records CQVBalanceColorsDlg::MakeRecords() const {
  return {qvdlg::BalanceRecord(&m_percents[0]), qvdlg::BalanceRecord(&m_percents[3]),
          qvdlg::BalanceRecord(&m_percents[6])};
}

int CQVBalanceColorsDlg::PrepareEffectBitmap(CQVBitmap& bitmap) {
  const Records records = MakeRecords();
  return bitmap.BalanceColors(&records[0], &records[1], &records[2]);
}

int CQVBalanceColorsDlg::ApplyToCallersBitmap(BITMAPHANDLE* bitmap) {
  const Records records = MakeRecords();
  return Q_BalanceColors(bitmap, &records[0], &records[1], &records[2], 0);
}

BOOL CQVBalanceColorsDlg::OnInitDialog() {
  CQVGrayFamilyDlg::OnInitDialog();
  for (int weight = 0; weight < kWeightCount; ++weight)
    m_combos[weight]->SetValue(qvdlg::BalanceComboValue(m_percents[weight]));
  return TRUE;
}

void CQVBalanceColorsDlg::SetDialogStrings() {
  CQVGrayFamilyDlg::SetDialogStrings();
  for (int channel = 0; channel < 3; ++channel)
    SetItemString(IDC_BALANCE_RED_GROUP + channel * kIdsPerChannel, kStringFirstGroup + channel);
  for (int weight = 0; weight < kWeightCount; ++weight) SetItemString(LabelId(weight), kStringFirstLabel + weight % 3);
}

void CQVBalanceColorsDlg::DoDataExchange(qvfw::CDataExchange* pDX) {
  CQVGrayFamilyDlg::DoDataExchange(pDX);
  for (int weight = 0; weight < kWeightCount; ++weight) qvfw::DDX_Control(pDX, ComboId(weight), *m_combos[weight]);
}

BOOL CQVBalanceColorsDlg::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header && header->code == CQVValueCombo::kNotifyValueChanged) {
    for (int weight = 0; weight < kWeightCount; ++weight) {
      if (static_cast<int>(header->idFrom) != ComboId(weight)) continue;
      m_percents[weight] = m_combos[weight]->GetValue();
      DoUpdateValues();
      return TRUE;
    }
  }
  return CQVGrayFamilyDlg::OnNotify(wParam, lParam, result);
}
