/*
 * The shared implementation of the single-value dialogs (see QVToneDlg.h).
 */
#include "QVToneDlg.h"

#include <commctrl.h>

#include "AddressCheck.h"
#include "DataExchange.h"
#include "PreviewFlags.h"
#include "QVGeneral.h"
#include "ToneEffects.h"
#include "ToneRules.h"
#include "qv/qvdlgclr.h"
#include "qv/qvkrn.h"

CQVToneDlg::CQVToneDlg(qvdlg::ToneEffect effect, qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
    : CQVBeforeAfterDlg(qvdlg::ToneMemberOf(effect).templateId, parent, bitmap, qvdlg::ToneMemberOf(effect).dialogId,
                        reserved, 1),
      m_member(qvdlg::ToneMemberOf(effect)),
      m_nValue(m_member.defaultValue),
      m_nRangeMin(m_member.range.minimum),
      m_nRangeMax(m_member.range.maximum) {
  SetPaneLabelIds(m_member.beforeLabelId, m_member.afterLabelId);
}

int CQVToneDlg::CopyIn(int32_t zoomToFit, uint32_t valueBits, uint32_t flags) {
  // Solarize's range is still 0..255 here; the bitmap widens it only when the dialog opens.
  m_nValue = qvdlg::TakeCallerValue(m_member, GetRange(), qvdlg::WidenField(m_member, valueBits));
  SetZoomToFit(zoomToFit);
  m_uFlags = flags;
  return QV_SUCCESS;
}

CQVToneDlg::Output CQVToneDlg::CopyOut() const { return {GetZoomToFit(), static_cast<uint32_t>(m_nValue)}; }

int CQVToneDlg::MedianOfCallersBitmap() {
  if (!m_bMedianAsked && m_member.effect == qvdlg::ToneEffect::kHistoContrast) {
    m_bMedianAsked = true;
    int median = -1;
    if (Q_GetBitmapMedianIntensity(GetBitmap(), &median, 0) == QV_SUCCESS) m_nMedian = median;
  }
  return m_nMedian;
}

int CQVToneDlg::PrepareEffectBitmap(CQVBitmap& bitmap) {
  const int result = qvdlg::ApplyPreviewEffect(bitmap, m_member.effect, m_nValue, MedianOfCallersBitmap());
  if (result == 0) return 0;
  m_nLastValue = m_nValue;
  return result;
}

void CQVToneDlg::DecideRangeFromBitmap() {
  BITMAPHANDLE* bitmap = GetBitmap();
  if (!bitmap || !qv::IsValidAddress(bitmap, sizeof(BITMAPHANDLE), qv::Access::Read)) return;
  const qvdlg::ToneRange range = qvdlg::SolarizeRangeFor(Q_IsGrayScaleBitmap(bitmap, 0), bitmap->uFlags,
                                                         bitmap->nBitsPerPixel);
  m_nRangeMin = range.minimum;
  m_nRangeMax = range.maximum;
}

BOOL CQVToneDlg::OnInitDialog() {
  CQVBeforeAfterDlg::OnInitDialog();
  if (m_member.effect == qvdlg::ToneEffect::kSolarize) DecideRangeFromBitmap();

  m_slider.SetRange(m_nRangeMin, m_nRangeMax, TRUE);
  m_slider.SetPos(m_nValue);
  if (m_member.setTickFrequency) m_slider.SetTicFreq(0);

  m_edit.SetNumericsOnly(1);
  m_edit.SetAcceptNegative(m_member.acceptNegative ? 1 : 0);
  m_edit.SetLimitText(static_cast<UINT>(m_member.textLimit));
  SetEditValue(m_nValue);

  qvdlg::ApplyPreviewFlags(*this, m_uFlags, qvdlg::kStandardToolbarBits);
  CQVGeneral::AutoFitControls(m_hWnd, nullptr, nullptr, 0, 1, nullptr, 0, 0);
  if (!GetHelpCallback()) ShiftOkCancelBtns(0);
  return TRUE;
}

void CQVToneDlg::SetDialogStrings() {
  CQVBeforeAfterDlg::SetDialogStrings();
  SetTitleString(m_member.titleString);
  SetItemString(m_member.groupId, m_member.groupString);
}

void CQVToneDlg::DoDataExchange(qvfw::CDataExchange* pDX) {
  CQVBeforeAfterDlg::DoDataExchange(pDX);
  qvfw::DDX_Control(pDX, m_member.editId, m_edit);
  qvfw::DDX_Control(pDX, m_member.sliderId, m_slider);
  qvfw::DDX_Control(pDX, IDOK, m_okButton);
  qvfw::DDX_Control(pDX, IDCANCEL, m_cancelButton);
}

void CQVToneDlg::OnOK() {
  if (!PreEndDialog(1)) return;
  if (m_uFlags & QVDLG_AUTO_PROCESS)
    m_nProcessResult = qvdlg::ApplyEffectInPlace(GetBitmap(), m_member.effect, m_nValue);
  CQVBeforeAfterDlg::OnOK();
}

void CQVToneDlg::SetEditValue(int value) {
  m_bEditSync = 0;
  m_edit.SetValue(value);
  m_bEditSync = 1;
}

void CQVToneDlg::OnHScroll(UINT code, UINT position, qvfw::CWnd* scrollBar) {
  OnSliderChanged();
  CQVBeforeAfterDlg::OnHScroll(code, position, scrollBar);
}

void CQVToneDlg::OnSliderChanged() {
  if (!m_slider.GetSafeHwnd()) return;
  const int position = m_slider.GetPos();
  if (position == m_nValue) return;
  m_bEditSync = 0;
  m_nValue = position;
  m_edit.SetValue(m_nValue);
  DoUpdateValues();
  m_bEditSync = 1;
}

void CQVToneDlg::OnEditChanged() {
  if (!m_bEditSync) return;
  const auto typed = qvdlg::TypedValueToTake(m_edit.GetValue(), m_nValue, GetRange());
  if (!typed) return;
  m_nValue = *typed;
  if (m_member.sliderBeforeUpdate) {
    m_slider.SetPos(m_nValue);
    DoUpdateValues();
  } else {
    DoUpdateValues();
    m_slider.SetPos(m_nValue);
  }
}

void CQVToneDlg::OnEditValidate() {
  const auto bound = qvdlg::CommittedValueToWrite(m_edit.GetValue(), GetRange());
  if (bound) m_edit.SetValue(*bound);
}

BOOL CQVToneDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
  if (HIWORD(wParam) == EN_CHANGE && static_cast<int>(LOWORD(wParam)) == m_member.editId) {
    OnEditChanged();
    return TRUE;
  }
  return CQVBeforeAfterDlg::OnCommand(wParam, lParam);
}

BOOL CQVToneDlg::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header && header->code == CQVEditCtrl::kNotifyCommit && static_cast<int>(header->idFrom) == m_member.editId) {
    OnEditValidate();
    return TRUE;
  }
  return CQVBeforeAfterDlg::OnNotify(wParam, lParam, result);
}
