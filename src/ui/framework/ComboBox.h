/*
 * CComboBox: a combo box of a template, wrapped for its list, selection and
 * item data.
 */
#pragma once

#include <string>
#include <vector>

#include "Wnd.h"

namespace qvfw {

class CComboBox : public CWnd {
 public:
  int AddString(const wchar_t* text) {
    return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)));
  }
  int InsertString(int index, const wchar_t* text) {
    return static_cast<int>(SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
  }
  int DeleteString(int index) { return static_cast<int>(SendMessage(CB_DELETESTRING, static_cast<WPARAM>(index))); }
  void ResetContent() { SendMessage(CB_RESETCONTENT); }
  int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
  int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
  int SetCurSel(int index) { return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(index))); }
  DWORD_PTR GetItemData(int index) const {
    return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(index)));
  }
  int SetItemData(int index, DWORD_PTR data) {
    return static_cast<int>(SendMessage(CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data)));
  }
  int FindStringExact(int startAfter, const wchar_t* text) const {
    return static_cast<int>(
        SendMessage(CB_FINDSTRINGEXACT, static_cast<WPARAM>(startAfter), reinterpret_cast<LPARAM>(text)));
  }
  std::wstring GetLBText(int index) const {
    const LRESULT length = SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    if (length == CB_ERR || length < 0) return std::wstring();
    std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1);
    const LRESULT copied = SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(index),
                                       reinterpret_cast<LPARAM>(buffer.data()));
    return copied == CB_ERR ? std::wstring() : std::wstring(buffer.data(), static_cast<size_t>(copied));
  }
  BOOL GetDroppedState() const { return static_cast<BOOL>(SendMessage(CB_GETDROPPEDSTATE)); }
  void ShowDropDown(BOOL show = TRUE) { SendMessage(CB_SHOWDROPDOWN, show); }
  void LimitText(int maxCharacters) { SendMessage(CB_LIMITTEXT, static_cast<WPARAM>(maxCharacters)); }
};

}  // namespace qvfw
