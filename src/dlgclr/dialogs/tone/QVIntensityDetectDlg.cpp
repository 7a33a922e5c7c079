/*
 * The intensity detect dialog (see QVIntensityDetectDlg.h).
 */
#include "QVIntensityDetectDlg.h"

#include <commctrl.h>

#include <utility>

#include "AddressCheck.h"
#include "DataExchange.h"
#include "IntensityDetectRules.h"
#include "PreviewFlags.h"
#include "QVGeneral.h"
#include "QVImageViewer.h"
#include "ToneRules.h"
#include "UniqueDC.h"
#include "qv/qvimgops.h"
#include "qv/qvkrn.h"
#include "resource.h"

namespace {

constexpr unsigned kDialogId = 5;
constexpr unsigned kStringTitle = 1201;
constexpr unsigned kStringIntensityMode = 1207;
constexpr unsigned kStringChannelMode = 1208;
// The edit boxes stay at four digits even when a deep image widens the sliders to 65535.
constexpr UINT kBoundTextLimit = 4;
constexpr uint32_t kRegionMode = 7;

// Label and group texts: control id, then string id (OK, Cancel, Help, Before and After come from the base).
constexpr std::pair<int, unsigned> kTexts[] = {
    {IDC_INTENSITY_LOW_GROUP, 1202}, {IDC_INTENSITY_HIGH_GROUP, 1203}, {IDC_INTENSITY_CHANNEL_LABEL, 1204},
    {IDC_INTENSITY_IN_LABEL, 1205},  {IDC_INTENSITY_OUT_LABEL, 1206},  {IDC_INTENSITY_COLOR_GROUP, 1209},
    {IDC_INTENSITY_RED, 1210},       {IDC_INTENSITY_GREEN, 1211},      {IDC_INTENSITY_BLUE, 1212},
};

constexpr std::pair<int, uint32_t> kChannelBoxes[] = {
    {IDC_INTENSITY_RED, qvdlg::kIntensityRed},
    {IDC_INTENSITY_GREEN, qvdlg::kIntensityGreen},
    {IDC_INTENSITY_BLUE, qvdlg::kIntensityBlue},
};

}  // namespace

CQVIntensityDetectDlg::CQVIntensityDetectDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
    : CQVBeforeAfterDlg(IDD_QV_INTENSITYDETECT, parent, bitmap, kDialogId, reserved, 1) {
  SetPaneLabelIds(IDC_INTENSITY_BEFORE, IDC_INTENSITY_AFTER);
}

int CQVIntensityDetectDlg::CopyIn(const QVINTENSITYDETECTDLGPARAMS& params) {
  // The ranges widen before the bounds are checked, so a 16-bit image keeps a caller's bound of 300.
  ApplyRangeRule();
  m_low.value = qvdlg::TakeIntensityBound(params.uLow, m_low.range);
  m_high.value = qvdlg::TakeIntensityBound(params.uHigh, m_high.range);
  m_uChannel = qvdlg::TakeCallerChannel(params.uChannel);
  m_crIn = params.crInColor;
  m_crOut = params.crOutColor;
  SetZoomToFit(params.bZoomToFit);
  m_uFlags = params.uDlgFlags;
  return QV_SUCCESS;
}

int CQVIntensityDetectDlg::CopyOut(QVINTENSITYDETECTDLGPARAMS& params) const {
  params.uLow = static_cast<uint32_t>(m_low.value);
  params.uHigh = static_cast<uint32_t>(m_high.value);
  params.uChannel = m_uChannel;
  params.crInColor = m_crIn;
  params.crOutColor = m_crOut;
  params.bZoomToFit = GetZoomToFit();
  return m_nProcessResult;
}

int CQVIntensityDetectDlg::PrepareEffectBitmap(CQVBitmap& bitmap) {
  const int result = bitmap.IntensityDetect(static_cast<unsigned>(m_low.value), static_cast<unsigned>(m_high.value),
                                            m_crIn, m_crOut, m_uChannel);
  if (result == 0) return 0;
  m_low.lastPreviewed = m_low.value;
  m_high.lastPreviewed = m_high.value;
  return result;
}

void CQVIntensityDetectDlg::ApplyRangeRule() {
  BITMAPHANDLE* bitmap = GetBitmap();
  if (!bitmap || !qv::IsValidAddress(bitmap, sizeof(BITMAPHANDLE), qv::Access::Read)) return;
  // An error from the gray test (an unallocated bitmap) counts as "not gray".
  const int gray = Q_IsGrayScaleBitmap(bitmap, 0);
  const int maximum = qvdlg::IntensityRangeMaximum(gray > 0 ? gray : 0, bitmap->uFlags, bitmap->nBitsPerPixel,
                                                   m_low.range.maximum);
  m_low.range.maximum = maximum;
  m_high.range.maximum = maximum;
}

BOOL CQVIntensityDetectDlg::OnInitDialog() {
  CQVBeforeAfterDlg::OnInitDialog();
  ApplyRangeRule();

  BITMAPHANDLE* bitmap = GetBitmap();
  if (bitmap) {
    const bool readable = qv::IsValidAddress(bitmap, sizeof(BITMAPHANDLE), qv::Access::Read);
    const int param = qvdlg::ViewRegionParam(readable, readable && (bitmap->uFlags & QV_BMF_ALLOCATED) != 0,
                                             readable ? bitmap->nBitsPerPixel : 0);
    const QVVIEWREGIONSETTINGS settings{kRegionMode, param, param, 0};
    GetBeforeView().SetViewRegionSettings(settings);
    GetAfterView().SetViewRegionSettings(settings);
  }

  InitBound(m_low);
  InitBound(m_high);

  for (const auto& [id, bit] : kChannelBoxes) {
    const bool set = (m_uChannel & bit) != 0;
    CheckDlgButton(id, set ? BST_CHECKED : BST_UNCHECKED);
    m_uChannel = qvdlg::WithChannelBit(m_uChannel, bit, set);
  }
  m_channelMode.SetCurSel(qvdlg::ChannelModeIndex(m_uChannel));
  EnableColorControls(m_uChannel != 0);

  InitPickerPalettes();
  m_inPicker.SetRGB(m_crIn);
  m_outPicker.SetRGB(m_crOut);

  qvdlg::ApplyPreviewFlags(*this, m_uFlags, qvdlg::kStandardToolbarBits);
  CQVGeneral::AutoFitControls(m_hWnd, nullptr, nullptr, 0, 1, nullptr, 0, 0);
  if (!GetHelpCallback()) ShiftOkCancelBtns(0);
  return TRUE;
}

void CQVIntensityDetectDlg::InitBound(Bound& bound) {
  bound.slider.SetRange(bound.range.minimum, bound.range.maximum, TRUE);
  bound.slider.SetPos(bound.value);
  bound.slider.SetTicFreq(0);
  bound.edit.SetNumericsOnly(1);
  bound.edit.SetAcceptNegative(0);
  bound.edit.SetLimitText(kBoundTextLimit);
  SetBoundEdit(bound, bound.value);
}

// The colour buttons offer the image's own colours: its palette when it has one that means something (palette,
// 12-bit and 16-bit gray images), else a palette made for painting it on the screen.
void CQVIntensityDetectDlg::InitPickerPalettes() {
  BITMAPHANDLE* bitmap = GetBitmap();
  if (!bitmap || !qv::IsValidAddress(bitmap, sizeof(BITMAPHANDLE), qv::Access::Read)) return;
  if (qvdlg::OffersOwnPalette(bitmap->nBitsPerPixel, bitmap->uOrder)) {
    HPALETTE own = nullptr;
    if (Q_GetBitmapPalette(bitmap, &own, 0) == QV_SUCCESS) m_ownPalette.Attach(own);
  }
  if (!m_ownPalette.GetSafeHandle()) {
    qvfw::UniqueDC screen(nullptr);
    HPALETTE made = nullptr;
    if (Q_CreatePaintPalette(screen.Get(), bitmap, &made, 0) == QV_SUCCESS) m_screenPalette.Attach(made);
  }
  qvfw::CPalette* first = m_ownPalette.GetSafeHandle() ? &m_ownPalette : nullptr;
  qvfw::CPalette* second = m_screenPalette.GetSafeHandle() ? &m_screenPalette : nullptr;
  m_inPicker.SetPalette(first, second);
  m_outPicker.SetPalette(first, second);
}

void CQVIntensityDetectDlg::SetDialogStrings() {
  CQVBeforeAfterDlg::SetDialogStrings();
  SetTitleString(kStringTitle);
  for (const auto& [control, string] : kTexts) SetItemString(control, string);
  m_channelMode.ResetContent();
  m_channelMode.SetItemData(m_channelMode.AddString(GetDlgString(kStringIntensityMode).c_str()), 0);
  m_channelMode.SetItemData(m_channelMode.AddString(GetDlgString(kStringChannelMode).c_str()), 1);
}

void CQVIntensityDetectDlg::DoDataExchange(qvfw::CDataExchange* pDX) {
  CQVBeforeAfterDlg::DoDataExchange(pDX);
  qvfw::DDX_Control(pDX, IDC_INTENSITY_LOW_EDIT, m_low.edit);
  qvfw::DDX_Control(pDX, IDC_INTENSITY_LOW_SLIDER, m_low.slider);
  qvfw::DDX_Control(pDX, IDC_INTENSITY_HIGH_EDIT, m_high.edit);
  qvfw::DDX_Control(pDX, IDC_INTENSITY_HIGH_SLIDER, m_high.slider);
  qvfw::DDX_Control(pDX, IDC_INTENSITY_CHANNEL, m_channelMode);
  qvfw::DDX_Control(pDX, IDC_INTENSITY_IN_COLOR, m_inPicker);
  qvfw::DDX_Control(pDX, IDC_INTENSITY_OUT_COLOR, m_outPicker);
}

void CQVIntensityDetectDlg::OnOK() {
  if (!PreEndDialog(1)) return;
  if (m_uFlags & QVDLG_AUTO_PROCESS)
    m_nProcessResult = Q_IntensityDetectBitmap(GetBitmap(), static_cast<unsigned>(m_low.value),
                                               static_cast<unsigned>(m_high.value), m_crIn, m_crOut, m_uChannel, 0);
  CQVBeforeAfterDlg::OnOK();
}

void CQVIntensityDetectDlg::EnableColorControls(bool enable) {
  const int ids[] = {IDC_INTENSITY_COLOR_GROUP, IDC_INTENSITY_IN_LABEL, IDC_INTENSITY_OUT_LABEL,
                     IDC_INTENSITY_RED,         IDC_INTENSITY_GREEN,    IDC_INTENSITY_BLUE,
                     IDC_INTENSITY_IN_COLOR,    IDC_INTENSITY_OUT_COLOR};
  for (int id : ids) ::EnableWindow(GetDlgItemHandle(id), enable ? TRUE : FALSE);
}

void CQVIntensityDetectDlg::SetBoundEdit(Bound& bound, int value) {
  bound.editSync = 0;
  bound.edit.SetValue(value);
  bound.editSync = 1;
}

void CQVIntensityDetectDlg::OnBoundSlider(Bound& bound) {
  if (!bound.slider.GetSafeHwnd()) return;
  const int position = bound.slider.GetPos();
  if (position == bound.value) return;
  bound.value = position;
  SetBoundEdit(bound, position);
  DoUpdateValues();
}

void CQVIntensityDetectDlg::OnBoundEdit(Bound& bound) {
  if (!bound.editSync) return;
  const auto typed = qvdlg::TypedValueToTake(bound.edit.GetValue(), bound.value, bound.range);
  if (!typed) return;
  bound.value = *typed;
  DoUpdateValues();
  bound.slider.SetPos(bound.value);
}

void CQVIntensityDetectDlg::OnBoundValidate(Bound& bound) {
  const auto clamped = qvdlg::CommittedValueToWrite(bound.edit.GetValue(), bound.range);
  if (clamped) bound.edit.SetValue(*clamped);
}

void CQVIntensityDetectDlg::OnChannelModeChanged() {
  const int selected = m_channelMode.GetCurSel();
  const DWORD_PTR mode = selected >= 0 ? m_channelMode.GetItemData(selected) : 0;
  m_uChannel = qvdlg::ChannelBitsForMode(mode, m_uChannel, IsDlgButtonChecked(IDC_INTENSITY_RED) == BST_CHECKED,
                                         IsDlgButtonChecked(IDC_INTENSITY_GREEN) == BST_CHECKED,
                                         IsDlgButtonChecked(IDC_INTENSITY_BLUE) == BST_CHECKED);
  EnableColorControls(mode != 0);
  DoUpdateValues();
}

void CQVIntensityDetectDlg::OnChannelBoxClicked(int boxId, uint32_t bit) {
  m_uChannel = qvdlg::WithChannelBit(m_uChannel, bit, IsDlgButtonChecked(boxId) == BST_CHECKED);
  DoUpdateValues();
}

void CQVIntensityDetectDlg::OnColorChanged(CQVColorPickerCtrl& picker, COLORREF& stored) {
  const COLORREF color = picker.GetRGBColorRef();
  if (color == stored) return;
  stored = color;
  DoUpdateValues();
}

void CQVIntensityDetectDlg::OnHScroll(UINT code, UINT position, qvfw::CWnd* scrollBar) {
  OnBoundSlider(m_low);
  OnBoundSlider(m_high);
  CQVBeforeAfterDlg::OnHScroll(code, position, scrollBar);
}

BOOL CQVIntensityDetectDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
  const int id = LOWORD(wParam);
  const UINT code = HIWORD(wParam);
  if (code == EN_CHANGE && (id == IDC_INTENSITY_LOW_EDIT || id == IDC_INTENSITY_HIGH_EDIT)) {
    OnBoundEdit(id == IDC_INTENSITY_LOW_EDIT ? m_low : m_high);
    return TRUE;
  }
  if (code == CBN_SELCHANGE && id == IDC_INTENSITY_CHANNEL) {
    OnChannelModeChanged();
    return TRUE;
  }
  if (code == BN_CLICKED) {
    for (const auto& [boxId, bit] : kChannelBoxes) {
      if (id != boxId) continue;
      OnChannelBoxClicked(boxId, bit);
      return TRUE;
    }
  }
  return CQVBeforeAfterDlg::OnCommand(wParam, lParam);
}

BOOL CQVIntensityDetectDlg::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header && header->code == CQVEditCtrl::kNotifyCommit) {
    switch (header->idFrom) {
      case IDC_INTENSITY_LOW_EDIT: OnBoundValidate(m_low); return TRUE;
      case IDC_INTENSITY_HIGH_EDIT: OnBoundValidate(m_high); return TRUE;
      case IDC_INTENSITY_IN_COLOR: OnColorChanged(m_inPicker, m_crIn); return TRUE;
      case IDC_INTENSITY_OUT_COLOR: OnColorChanged(m_outPicker, m_crOut); return TRUE;
      default: break;
    }
  }
  return CQVBeforeAfterDlg::OnNotify(wParam, lParam, result);
}
