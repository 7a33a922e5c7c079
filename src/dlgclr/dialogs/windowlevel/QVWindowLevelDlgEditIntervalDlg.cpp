/*
 * CQVWindowLevelDlgEditIntervalDlg: value entry for one slider marker.
 */
#include "QVWindowLevelDlgEditIntervalDlg.h"

#include "EditIntervalValue.h"
#include "qv/qvdlgkrn.h"
#include "resource.h"

namespace {

// The buttons' texts, shared by every dialog of the string table.
constexpr unsigned kStringOk = 0;
constexpr unsigned kStringCancel = 1;

}  // namespace

CQVWindowLevelDlgEditIntervalDlg::CQVWindowLevelDlgEditIntervalDlg(qvfw::CWnd* parent)
    : CQVBaseDialog(IDD_QV_EDITINTERVAL, parent, IDD_QV_EDITINTERVAL) {}

void CQVWindowLevelDlgEditIntervalDlg::SetValue(int value) {
  m_value = value;
  if (HasCombo()) m_valueCombo.SetValue(value);
}

int CQVWindowLevelDlgEditIntervalDlg::GetValue() {
  if (HasCombo()) m_value = m_valueCombo.GetValue();
  return m_value;
}

void CQVWindowLevelDlgEditIntervalDlg::SetRange(int minimum, int maximum) {
  m_minimum = minimum;
  m_maximum = maximum;
  if (HasCombo()) m_valueCombo.SetRange(minimum, maximum);
}

BOOL CQVWindowLevelDlgEditIntervalDlg::OnInitDialog() {
  CQVBaseDialog::OnInitDialog();
  SetFontOnChildren();
  // The combo reports nothing to this dialog; OK reads it.
  m_valueCombo.SetFlags(CQVValueCombo::FLAGS_NOPARENTNOTIFY);
  m_valueCombo.SetRange(m_minimum, m_maximum);
  m_valueCombo.SetValue(m_value);
  return TRUE;
}

void CQVWindowLevelDlgEditIntervalDlg::SetDialogStrings() {
  // A text the string table lacks keeps the template's.
  const struct {
    int controlId;  // 0: the caption
    unsigned stringId;
  } texts[] = {
      {0, QVDLGSTR_EDITINTERVAL_TITLE},
      {IDC_EDITINTERVAL_LABEL, QVDLGSTR_EDITINTERVAL_VALUE},
      {IDOK, kStringOk},
      {IDCANCEL, kStringCancel},
  };
  for (const auto& t : texts) {
    const std::wstring text = GetDlgString(t.stringId);
    if (text.empty()) continue;
    if (t.controlId == 0) {
      SetWindowText(text.c_str());
    } else {
      SetDlgItemText(t.controlId, text.c_str());
    }
  }
}

void CQVWindowLevelDlgEditIntervalDlg::DoDataExchange(qvfw::CDataExchange* pDX) {
  qvfw::DDX_Control(pDX, IDC_EDITINTERVAL_VALUE, m_valueCombo);
}

void CQVWindowLevelDlgEditIntervalDlg::SetFontOnChildren() {
  const HFONT font = Q_DlgGetFont();
  if (!font) return;
  for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
    ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  }
}

void CQVWindowLevelDlgEditIntervalDlg::OnOK() {
  // Text typed but not yet committed (Enter pressed in the box) counts.
  m_valueCombo.CommitTyped();
  m_value = qvwl::ClampIntervalValue(m_valueCombo.GetValue(), m_minimum, m_maximum);
  if (HWND parent = GetParentHwnd()) ::SetFocus(parent);
  EndDialog(IDOK);
}
