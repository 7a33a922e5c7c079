/*
 * CQVBaseDialog: strings from the dialog kernel, the host's help callback and
 * the process-wide position point.
 */
#include "QVBaseDialog.h"

#include <vector>

#include "AddressCheck.h"
#include "qv/qvdlgkrn.h"

namespace {

// Process-wide by design: the host sets it once for the next dialog; calls
// from several threads at once are not supported.
POINT* g_positionPoint = nullptr;

}  // namespace

CQVBaseDialog::CQVBaseDialog(UINT templateId, qvfw::CWnd* parent, unsigned dialogId)
    : qvfw::CDialog(templateId, parent), m_dialogId(dialogId) {}

std::wstring CQVBaseDialog::GetDlgString(unsigned id) {
  std::wstring text;
  FindDlgString(id, &text);
  return text;
}

bool CQVBaseDialog::FindDlgString(unsigned id, std::wstring* text) {
  unsigned length = 0;
  if (Q_DlgGetStringLen(id, &length) != QV_SUCCESS) return false;
  std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1, L'\0');
  if (Q_DlgGetString(id, buffer.data(), length + 1) != QV_SUCCESS) return false;
  text->assign(buffer.data());
  return true;
}

void CQVBaseDialog::SetItemString(int controlId, unsigned stringId) {
  std::wstring text;
  if (controlId == 0 || !GetDlgItemHandle(controlId) || !FindDlgString(stringId, &text)) return;
  SetDlgItemText(controlId, text.c_str());
}

void CQVBaseDialog::SetTitleString(unsigned stringId) {
  std::wstring text;
  if (FindDlgString(stringId, &text)) SetWindowText(text.c_str());
}

int CQVBaseDialog::SetHelpCallback(pQVHELPCALLBACK callback) {
  m_helpCallback = callback;
  return QV_SUCCESS;
}

int CQVBaseDialog::SetHelpCallBackUserData(void* userData) {
  m_helpUserData = userData;
  return QV_SUCCESS;
}

POINT* CQVBaseDialog::SetPositionPoint(POINT* point) {
  POINT* previous = g_positionPoint;
  g_positionPoint = point;
  return previous;
}

POINT* CQVBaseDialog::GetPositionPoint() { return g_positionPoint; }

BOOL CQVBaseDialog::OnInitDialog() {
  const BOOL result = qvfw::CDialog::OnInitDialog();
  SetDialogStrings();
  PlaceAtPositionPoint();
  return result;
}

void CQVBaseDialog::SetDialogStrings() {
  SetItemString(IDOK, kStringOk);
  SetItemString(IDCANCEL, kStringCancel);
  SetItemString(kHelpButtonId, kStringHelp);
}

void CQVBaseDialog::PlaceAtPositionPoint() {
  // The host's point is read now, at opening; one that cannot be read is
  // treated as none rather than trusted.
  POINT* point = g_positionPoint;
  if (point && !qv::IsValidAddress(point, sizeof(POINT), qv::Access::Read)) point = nullptr;
  if (point) {
    const POINT copy = *point;
    Q_DlgPlaceWindow(m_hWnd, &copy);
  } else {
    Q_DlgPlaceWindow(m_hWnd, nullptr);
  }
}

void CQVBaseDialog::ShiftOkCancelBtns(int mode) {
  if (mode != 0) return;
  HWND help = GetDlgItemHandle(kHelpButtonId);
  HWND ok = GetDlgItemHandle(IDOK);
  HWND cancel = GetDlgItemHandle(IDCANCEL);
  if (!help || !ok || !cancel) return;
  auto rectOf = [this](HWND child) {
    RECT r{};
    ::GetWindowRect(child, &r);
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&r), 2);
    return r;
  };
  const RECT helpRect = rectOf(help);
  const RECT okRect = rectOf(ok);
  const RECT cancelRect = rectOf(cancel);
  // The button nearer the Help button (further right, or further down in a
  // column) takes its place; the other moves by the same step.
  const bool cancelIsLast = cancelRect.left > okRect.left ||
                            (cancelRect.left == okRect.left && cancelRect.top > okRect.top);
  const RECT& last = cancelIsLast ? cancelRect : okRect;
  const int dx = helpRect.left - last.left;
  const int dy = helpRect.top - last.top;
  if (dx == 0 && dy == 0) return;
  for (const auto& [button, r] : {std::pair<HWND, RECT>{ok, okRect}, std::pair<HWND, RECT>{cancel, cancelRect}})
    ::SetWindowPos(button, nullptr, r.left + dx, r.top + dy, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool CQVBaseDialog::CallHelp(int controlId) {
  if (!m_helpCallback) return false;
  m_helpCallback(m_dialogId, controlId, m_helpUserData);
  return true;
}

BOOL CQVBaseDialog::OnCommand(WPARAM wParam, LPARAM lParam) {
  if (LOWORD(wParam) == kHelpButtonId && HIWORD(wParam) == BN_CLICKED) {
    CallHelp(0);
    return TRUE;
  }
  return qvfw::CDialog::OnCommand(wParam, lParam);
}

BOOL CQVBaseDialog::OnHelpInfo(HELPINFO* info) {
  if (!info || info->iContextType != HELPINFO_WINDOW) return TRUE;
  // Help asked over the dialog itself (not a control) is help for the dialog.
  const HWND item = static_cast<HWND>(info->hItemHandle);
  const int controlId = item && item != m_hWnd && ::GetParent(item) == m_hWnd ? info->iCtrlId : 0;
  CallHelp(controlId);
  return TRUE;
}

BOOL CQVBaseDialog::PreTranslateMessage(MSG* msg) {
  if (msg->message != WM_KEYDOWN || msg->wParam != VK_F1 || !m_helpCallback)
    return qvfw::CDialog::PreTranslateMessage(msg);
  // The control is the dialog's direct child that holds the focused window
  // (the edit inside a combo box counts as the combo box).
  HWND control = msg->hwnd;
  while (control && ::GetParent(control) != m_hWnd) {
    if (control == m_hWnd) break;
    control = ::GetParent(control);
  }
  if (!control || (control != m_hWnd && ::GetParent(control) != m_hWnd)) return FALSE;
  CallHelp(control == m_hWnd ? 0 : ::GetDlgCtrlID(control));
  return TRUE;
}
