/*
 * The local histogram equalization dialog (see QVLocalHistoEqualizeDlg.h).
 */
#include "QVLocalHistoEqualizeDlg.h"

#include <algorithm>
#include <utility>

#include "AddressCheck.h"
#include "DataExchange.h"
#include "PreviewFlags.h"
#include "QVGeneral.h"
#include "qv/qvimgops.h"
#include "qv/qvkrn.h"
#include "resource.h"

namespace {

constexpr unsigned kDialogId = 78;
constexpr unsigned kStringTitle = 477;
constexpr unsigned kStringApply = 4548;

// Label texts: control id, then string id (OK, Cancel, Help, Before and After come from the base).
constexpr std::pair<int, unsigned> kTexts[] = {
    {IDC_LOCALHISTO_WIDTH_LABEL, 478}, {IDC_LOCALHISTO_HEIGHT_LABEL, 479}, {IDC_LOCALHISTO_SMOOTH_LABEL, 480},
    {IDC_LOCALHISTO_XEXT_LABEL, 481},  {IDC_LOCALHISTO_YEXT_LABEL, 482},   {IDC_LOCALHISTO_SPACE_LABEL, 483},
    {IDC_QV_APPLY, kStringApply},
};

// The colour-space entries: string id, then item data.
constexpr std::pair<unsigned, uint32_t> kColorSpaces[] = {{484, qvdlg::kLheRgb},
                                                          {485, qvdlg::kLheYuv},
                                                          {486, qvdlg::kLheGray}};

// Sets a combo's value and range without telling the dialog, as writing it from code must not count as the
// user's change.
class QuietCombo {
 public:
  explicit QuietCombo(CQVValueCombo& combo) : m_combo(combo), m_flags(combo.GetFlags()) {
    combo.SetFlags(m_flags | CQVValueCombo::FLAGS_NOPARENTNOTIFY);
  }
  ~QuietCombo() { m_combo.SetFlags(m_flags); }
  QuietCombo(const QuietCombo&) = delete;
  QuietCombo& operator=(const QuietCombo&) = delete;

 private:
  CQVValueCombo& m_combo;
  UINT m_flags;
};

}  // namespace

CQVLocalHistoEqualizeDlg::CQVLocalHistoEqualizeDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved)
    : CQVBeforeAfterDlg(IDD_QV_LOCALHISTO, parent, bitmap, kDialogId, reserved, 1) {
  SetPaneLabelIds(IDC_LOCALHISTO_BEFORE, IDC_LOCALHISTO_AFTER);
  DecideLimits();
  m_values = qvdlg::LheDefaults(m_limits);
}

void CQVLocalHistoEqualizeDlg::DecideLimits() {
  BITMAPHANDLE* bitmap = GetBitmap();
  if (!bitmap || !qv::IsValidAddress(bitmap, sizeof(BITMAPHANDLE), qv::Access::Read)) return;
  const bool hasRegion = Q_BitmapHasRgn(bitmap, 0) > 0;
  RECT bounds{};
  if (hasRegion && Q_GetBitmapRgnBounds(bitmap, &bounds, 0) != QV_SUCCESS) bounds = RECT{};
  m_limits = qvdlg::LheLimitsFor(bitmap->nWidth, bitmap->nHeight, hasRegion,
                                 {bounds.left, bounds.top, bounds.right, bounds.bottom});
}

int CQVLocalHistoEqualizeDlg::CopyIn(const QVLOCALHISTOEQUALIZEDLGPARAMS& params) {
  m_values = qvdlg::TakeLheParams(params.nWidth, params.nHeight, params.nXExt, params.nYExt, params.uColorSpace,
                                  params.uSmooth);
  SetZoomToFit(params.bZoomToFit);
  m_uFlags = params.uDlgFlags;
  return QV_SUCCESS;
}

int CQVLocalHistoEqualizeDlg::CopyOut(QVLOCALHISTOEQUALIZEDLGPARAMS& params) const {
  params.nWidth = m_values.width;
  params.nHeight = m_values.height;
  params.nXExt = m_values.xExt;
  params.nYExt = m_values.yExt;
  params.uSmooth = m_values.smooth;
  params.uColorSpace = m_values.colorSpace;
  params.bZoomToFit = GetZoomToFit();
  return m_nProcessResult;
}

int CQVLocalHistoEqualizeDlg::PrepareEffectBitmap(CQVBitmap& bitmap) {
  return bitmap.LocalHistoEqualize(m_values.width, m_values.height, m_values.xExt, m_values.yExt, m_values.colorSpace,
                                   m_values.smooth);
}

BOOL CQVLocalHistoEqualizeDlg::OnInitDialog() {
  CQVBeforeAfterDlg::OnInitDialog();
  InitCombos();
  FillColorSpaces();
  qvdlg::ApplyPreviewFlags(*this, m_uFlags, qvdlg::kStandardToolbarBits);
  CQVGeneral::AutoFitControls(m_hWnd, nullptr, nullptr, 0, 1, nullptr, 0, 0);
  if (!GetHelpCallback()) ShiftOkCancelBtns(0);
  return TRUE;
}

// The combos clamp what they cannot show (a negative extension, a smoothing above 9, a window wider than the
// image); the dialog then takes their values, so the preview, the result and the caller's structure hold what
// the user sees.
void CQVLocalHistoEqualizeDlg::InitCombos() {
  m_updatesSuppressed = true;
  QuietCombo quietWidth(m_widthCombo), quietHeight(m_heightCombo), quietX(m_xExtCombo), quietY(m_yExtCombo),
      quietSmooth(m_smoothCombo);

  m_smoothCombo.SetComputationMethod(0);
  const qvdlg::SmoothRange smooth = qvdlg::SmoothRangeFor(m_limits);
  if (smooth.enabled) {
    m_smoothCombo.SetRange(0, smooth.maximum);
  } else {
    m_smoothCombo.EnableWindow(FALSE);
    m_values.smooth = 0;
  }
  m_smoothCombo.SetValue(static_cast<int>(std::min<uint32_t>(m_values.smooth, qvdlg::kLheMaxSmooth)));
  m_values.smooth = static_cast<uint32_t>(m_smoothCombo.GetValue());

  const int lowest = static_cast<int>(m_values.smooth) + 1;
  m_widthCombo.SetRange(std::min(1, m_limits.maxWidth), m_limits.maxWidth);
  m_heightCombo.SetRange(std::min(lowest, m_limits.maxHeight), m_limits.maxHeight);
  m_xExtCombo.SetRange(0, m_limits.maxWidth);
  m_yExtCombo.SetRange(0, m_limits.maxHeight);
  const std::pair<CQVValueCombo*, int*> pairs[] = {{&m_widthCombo, &m_values.width},
                                                   {&m_heightCombo, &m_values.height},
                                                   {&m_xExtCombo, &m_values.xExt},
                                                   {&m_yExtCombo, &m_values.yExt}};
  for (const auto& [combo, value] : pairs) {
    combo->SetValue(*value);
    *value = combo->GetValue();
  }
  m_updatesSuppressed = false;
}

void CQVLocalHistoEqualizeDlg::FillColorSpaces() {
  m_colorSpace.ResetContent();
  int selected = 0;
  for (const auto& [string, space] : kColorSpaces) {
    const int index = m_colorSpace.AddString(GetDlgString(string).c_str());
    m_colorSpace.SetItemData(index, space);
    if (space == m_values.colorSpace) selected = index;
  }
  m_colorSpace.SetCurSel(selected);
}

void CQVLocalHistoEqualizeDlg::SetDialogStrings() {
  CQVBeforeAfterDlg::SetDialogStrings();
  SetTitleString(kStringTitle);
  for (const auto& [control, string] : kTexts) SetItemString(control, string);
}

void CQVLocalHistoEqualizeDlg::DoDataExchange(qvfw::CDataExchange* pDX) {
  CQVBeforeAfterDlg::DoDataExchange(pDX);
  qvfw::DDX_Control(pDX, IDC_LOCALHISTO_WIDTH, m_widthCombo);
  qvfw::DDX_Control(pDX, IDC_LOCALHISTO_HEIGHT, m_heightCombo);
  qvfw::DDX_Control(pDX, IDC_LOCALHISTO_SMOOTH, m_smoothCombo);
  qvfw::DDX_Control(pDX, IDC_LOCALHISTO_XEXT, m_xExtCombo);
  qvfw::DDX_Control(pDX, IDC_LOCALHISTO_YEXT, m_yExtCombo);
  qvfw::DDX_Control(pDX, IDC_LOCALHISTO_SPACE, m_colorSpace);
  qvfw::DDX_Control(pDX, IDOK, m_okButton);
  qvfw::DDX_Control(pDX, IDCANCEL, m_cancelButton);
}

void CQVLocalHistoEqualizeDlg::OnOK() {
  if (!PreEndDialog(1)) return;
  if (m_uFlags & QVDLG_AUTO_PROCESS)
    m_nProcessResult = Q_LocalHistoEqualizeBitmap(GetBitmap(), m_values.width, m_values.height, m_values.xExt,
                                                  m_values.yExt, m_values.colorSpace, m_values.smooth, 0);
  CQVBeforeAfterDlg::OnOK();
}

void CQVLocalHistoEqualizeDlg::UpdateUnlessSuppressed() {
  if (!m_updatesSuppressed) DoUpdateValues();
}

void CQVLocalHistoEqualizeDlg::OnWindowValueChanged(CQVValueCombo& combo, int& stored) {
  const int value = combo.GetValue();
  if (value == stored) return;
  stored = value;
  UpdateUnlessSuppressed();
}

void CQVLocalHistoEqualizeDlg::OnSmoothChanged() {
  const uint32_t smooth = static_cast<uint32_t>(m_smoothCombo.GetValue());
  if (smooth == m_values.smooth) return;
  m_values.smooth = smooth;
  const qvdlg::SmoothChange change = qvdlg::ApplySmoothChange(smooth, m_values.width, m_values.height);
  m_values.width = change.width;
  m_values.height = change.height;
  QuietCombo quietWidth(m_widthCombo), quietHeight(m_heightCombo);
  if (change.writeHeightBox) m_heightCombo.SetValue(change.heightBoxValue);
  const int lowest = static_cast<int>(smooth) + 1;
  m_widthCombo.SetRange(std::min(lowest, m_limits.maxWidth), m_limits.maxWidth);
  m_heightCombo.SetRange(std::min(lowest, m_limits.maxHeight), m_limits.maxHeight);
  UpdateUnlessSuppressed();
}

void CQVLocalHistoEqualizeDlg::OnColorSpaceChanged() {
  const int selected = m_colorSpace.GetCurSel();
  if (selected < 0) return;
  m_values.colorSpace = static_cast<uint32_t>(m_colorSpace.GetItemData(selected));
  UpdateUnlessSuppressed();
}

BOOL CQVLocalHistoEqualizeDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
  if (HIWORD(wParam) == CBN_SELCHANGE && LOWORD(wParam) == IDC_LOCALHISTO_SPACE) {
    OnColorSpaceChanged();
    return TRUE;
  }
  return CQVBeforeAfterDlg::OnCommand(wParam, lParam);
}

BOOL CQVLocalHistoEqualizeDlg::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header && header->code == CQVValueCombo::kNotifyValueChanged) {
    switch (header->idFrom) {
      case IDC_LOCALHISTO_WIDTH: OnWindowValueChanged(m_widthCombo, m_values.width); return TRUE;
      case IDC_LOCALHISTO_HEIGHT: OnWindowValueChanged(m_heightCombo, m_values.height); return TRUE;
      case IDC_LOCALHISTO_XEXT: OnWindowValueChanged(m_xExtCombo, m_values.xExt); return TRUE;
      case IDC_LOCALHISTO_YEXT: OnWindowValueChanged(m_yExtCombo, m_values.yExt); return TRUE;
      case IDC_LOCALHISTO_SMOOTH: OnSmoothChanged(); return TRUE;
      default: break;
    }
  }
  return CQVBeforeAfterDlg::OnNotify(wParam, lParam, result);
}
