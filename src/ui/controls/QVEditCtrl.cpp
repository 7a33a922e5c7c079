/*
 * CQVEditCtrl's filtering and commit notification. Typed characters and
 * pasted text are judged by the text the box would hold afterwards, so a
 * minus is refused anywhere but in front and a second decimal point is
 * refused even when it is pasted inside other digits.
 */
#include "QVEditCtrl.h"

#include <vector>

#include "Clipboard.h"
#include "NumericText.h"
#include "ParentNotify.h"

void CQVEditCtrl::SetValue(double value) {
  const std::wstring text = qvctl::FormatNumber(value);
  m_committedText = text;
  SetWindowText(text.c_str());
}

double CQVEditCtrl::GetValue() const {
  double value = 0;
  return qvctl::ParseNumber(GetWindowText(), value) ? value : 0.0;
}

bool CQVEditCtrl::AcceptsInsert(const std::wstring& insert) const {
  if (!m_numericsOnly) return true;
  int start = 0;
  int end = 0;
  GetSel(start, end);
  const std::wstring after = qvctl::TextAfterReplace(GetWindowText(), static_cast<size_t>(start),
                                                     static_cast<size_t>(end), insert);
  return qvctl::IsAcceptableNumericText(after, m_acceptNegative, true);
}

void CQVEditCtrl::OnChar(UINT ch, UINT repeat, UINT flags) {
  if (ch == L'\r' || ch == L'\n') return;  // Enter commits in OnKeyDown; a single-line box would only beep
  if (ch < 0x20) {
    Default();  // backspace and the clipboard shortcuts
    return;
  }
  if (!AcceptsInsert(std::wstring(1, static_cast<wchar_t>(ch)))) {
    ::MessageBeep(MB_OK);
    return;
  }
  Default();
}

void CQVEditCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  if (key == VK_RETURN) {
    Commit();
    return;
  }
  Default();
}

void CQVEditCtrl::OnKillFocus(HWND next) {
  Default();
  Commit();
}

// Inside a dialog the dialog manager takes Enter for the default button and
// the box never sees the key; commit here so the value is settled before
// the button acts on it.
UINT CQVEditCtrl::OnGetDlgCode(MSG* msg) {
  if (msg && msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN) Commit();
  return static_cast<UINT>(Default());
}

void CQVEditCtrl::OnPaste() {
  if (!m_numericsOnly) {
    Default();
    return;
  }
  const std::wstring pasted = qvfw::ReadClipboardText(m_hWnd);
  if (pasted.empty()) return;
  if (!AcceptsInsert(pasted)) {
    ::MessageBeep(MB_OK);
    return;
  }
  Default();
}

void CQVEditCtrl::Commit() {
  if (!m_hWnd) return;
  const std::wstring text = GetWindowText();
  if (text == m_committedText) return;
  m_committedText = text;
  qvctl::NotifyParent(m_hWnd, kNotifyCommit);
}
