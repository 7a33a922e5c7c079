/*
 * Key routing of the value combo's inner edit box.
 */
#include "QVValueComboEdit.h"

#include "Clipboard.h"
#include "NumericText.h"
#include "QVValueCombo.h"

void CQVValueComboEdit::OnChar(UINT ch, UINT repeat, UINT flags) {
  if (ch == L'\r' || ch == L'\n') return;  // committed in OnKeyDown
  if (ch < 0x20) {
    Default();
    return;
  }
  DWORD start = 0;
  DWORD end = 0;
  SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  const std::wstring after = qvctl::TextAfterReplace(GetWindowText(), start, end,
                                                     std::wstring(1, static_cast<wchar_t>(ch)));
  if (!qvctl::IsAcceptableNumericText(after, m_owner.AllowsNegative(), false)) {
    ::MessageBeep(MB_OK);
    return;
  }
  Default();
}

void CQVValueComboEdit::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  const bool dropped = m_owner.GetDroppedState() != FALSE;
  switch (key) {
    case VK_RETURN:
      if (!dropped) {
        m_owner.CommitTyped();
        return;
      }
      break;
    case VK_UP:
    case VK_DOWN:
      if (!dropped) {
        m_owner.StepValue(key == VK_UP ? 1 : -1);
        return;
      }
      break;
    case VK_PRIOR:
    case VK_NEXT:
      if (!dropped) {
        m_owner.PageValue(key == VK_PRIOR ? 1 : -1);
        return;
      }
      break;
    default: break;
  }
  Default();
}

UINT CQVValueComboEdit::OnGetDlgCode(MSG* msg) {
  // The dialog manager turns Enter into the default button; settle the typed
  // value first so the button acts on it.
  if (msg && msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN && !m_owner.GetDroppedState()) {
    m_owner.CommitTyped();
  }
  return static_cast<UINT>(Default());
}

BOOL CQVValueComboEdit::OnMouseWheel(UINT flags, short delta, POINT point) {
  return static_cast<BOOL>(
      m_owner.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(flags, static_cast<WORD>(delta)), MAKELPARAM(point.x, point.y)));
}

void CQVValueComboEdit::OnPaste() {
  const std::wstring pasted = qvfw::ReadClipboardText(m_hWnd);
  DWORD start = 0;
  DWORD end = 0;
  SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  if (pasted.empty() || !qvctl::IsAcceptableNumericText(qvctl::TextAfterReplace(GetWindowText(), start, end, pasted),
                                                        m_owner.AllowsNegative(), false)) {
    ::MessageBeep(MB_OK);
    return;
  }
  Default();
}
