/*
 * The DDX helpers. Each reads or writes one control through plain messages,
 * so they work on any control of the dialog, wrapped or not.
 */
#include "DataExchange.h"

#include <cerrno>
#include <climits>
#include <cwchar>
#include <cwctype>
#include <string>

#include "Wnd.h"

namespace qvfw {

void CDataExchange::Fail(int controlId) {
  m_failed = true;
  if (m_pDlgWnd && m_pDlgWnd->m_hWnd) {
    if (HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, controlId)) ::SetFocus(control);
  }
}

namespace {
// Once an exchange has failed the rest is skipped, so a refused OK changes
// no member that comes after the offending control.
HWND DialogItem(CDataExchange* pDX, int id) {
  if (!pDX || pDX->Failed() || !pDX->m_pDlgWnd || !pDX->m_pDlgWnd->m_hWnd) return nullptr;
  return ::GetDlgItem(pDX->m_pDlgWnd->m_hWnd, id);
}

// Whole numbers only, with optional surrounding blanks and sign; anything
// else (including values beyond int) is refused rather than truncated.
bool ParseInt(const std::wstring& text, int& value) {
  const wchar_t* begin = text.c_str();
  wchar_t* end = nullptr;
  errno = 0;
  const long long parsed = std::wcstoll(begin, &end, 10);
  if (end == begin || errno == ERANGE) return false;
  while (*end && std::iswspace(*end)) ++end;
  if (*end) return false;
  if (parsed < INT_MIN || parsed > INT_MAX) return false;
  value = static_cast<int>(parsed);
  return true;
}
}  // namespace

void DDX_Control(CDataExchange* pDX, int id, CWnd& control) {
  if (control.m_hWnd || !pDX || pDX->Failed() || !pDX->m_pDlgWnd) return;
  if (!control.SubclassDlgItem(static_cast<UINT>(id), pDX->m_pDlgWnd)) pDX->Fail(id);
}

void DDX_Check(CDataExchange* pDX, int id, int& value) {
  HWND item = DialogItem(pDX, id);
  if (!item) return;
  if (pDX->m_bSaveAndValidate) {
    value = static_cast<int>(::SendMessageW(item, BM_GETCHECK, 0, 0));
  } else {
    const int state = (value >= 0 && value <= 2) ? value : 0;
    ::SendMessageW(item, BM_SETCHECK, static_cast<WPARAM>(state), 0);
  }
}

void DDX_Text(CDataExchange* pDX, int id, int& value) {
  HWND item = DialogItem(pDX, id);
  if (!item) return;
  if (pDX->m_bSaveAndValidate) {
    const CWnd* wrapper = CWnd::FromHandle(item);
    int parsed = 0;
    if (wrapper && ParseInt(wrapper->GetWindowText(), parsed)) {
      value = parsed;
    } else {
      pDX->Fail(id);
    }
  } else {
    ::SetWindowTextW(item, std::to_wstring(value).c_str());
  }
}

void DDX_CBIndex(CDataExchange* pDX, int id, int& index) {
  HWND item = DialogItem(pDX, id);
  if (!item) return;
  if (pDX->m_bSaveAndValidate) {
    index = static_cast<int>(::SendMessageW(item, CB_GETCURSEL, 0, 0));
  } else {
    ::SendMessageW(item, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  }
}

}  // namespace qvfw
