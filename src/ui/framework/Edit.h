/*
 * CEdit: a single-line edit box, wrapped for its limit and selection.
 */
#pragma once

#include "Wnd.h"

namespace qvfw {

class CEdit : public CWnd {
 public:
  void SetLimitText(UINT maxCharacters) { SendMessage(EM_LIMITTEXT, maxCharacters); }
  UINT GetLimitText() const { return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT)); }
  void SetSel(int start, int end) { SendMessage(EM_SETSEL, static_cast<WPARAM>(start), end); }
  void GetSel(int& start, int& end) const {
    DWORD first = 0;
    DWORD last = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    start = static_cast<int>(first);
    end = static_cast<int>(last);
  }
  void ReplaceSel(const wchar_t* text, BOOL canUndo = FALSE) {
    SendMessage(EM_REPLACESEL, canUndo, reinterpret_cast<LPARAM>(text));
  }
  void SetReadOnly(BOOL readOnly = TRUE) { SendMessage(EM_SETREADONLY, readOnly); }
};

}  // namespace qvfw
