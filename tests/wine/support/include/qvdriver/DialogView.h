/*
 * Acting on and reading back a dialog's controls by template id, the way a
 * user's input reaches them: a trackbar moved as a drag sends it, text typed
 * into an edit (raising EN_CHANGE), button clicks, keys and mouse messages at
 * client points. Controls are found by id anywhere below the dialog, so controls in
 * child panes are reachable too. Actions answer with an Outcome naming the
 * missing or unsuitable control; read-backs answer std::nullopt for a
 * control that does not exist.
 */
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <utility>

#include "qvdriver/Image.h"
#include "qvdriver/Outcome.h"

namespace qv::test {

class DialogView {
 public:
  explicit DialogView(HWND dialog) : m_dialog(dialog) {}
  HWND Handle() const { return m_dialog; }
  // The control with this id anywhere below the dialog, or nullptr.
  HWND Control(int id) const;

  // --- actions
  Outcome SetTrackbar(int id, int pos) const;
  Outcome SetEditText(int id, const std::wstring& text) const;
  // Moves the focus into the edit and on to the next tab stop, as leaving a
  // field does, so EN_KILLFOCUS commits the value.
  Outcome CommitEdit(int id) const;
  // BM_CLICK: returns after the click's handler, including any nested modal
  // it runs (later steps act on that modal meanwhile).
  Outcome Click(int id) const;
  // CB_SETCURSEL then CBN_SELCHANGE to the parent, as a user's pick sends it.
  Outcome SelectComboIndex(int id, int index) const;
  Outcome SelectComboText(int id, const std::wstring& text) const;
  // Clicks a check box until it shows the wanted state.
  Outcome SetCheck(int id, bool checked) const;
  // Focuses the control and sends it the key's WM_KEYDOWN, WM_CHAR and WM_KEYUP directly (the effect is
  // there when the call returns, unlike PostKey).
  Outcome PressKey(int id, UINT virtualKey) const;
  // Focuses the control and posts WM_KEYDOWN and WM_KEYUP to it, so the key
  // goes through the modal loop as typed input does: the dialog manager turns
  // Enter into the default button, Escape into Cancel, Tab into the next
  // control, and the loop's TranslateMessage makes the WM_CHAR. The effect is
  // visible from the next step on.
  Outcome PostKey(int id, UINT virtualKey) const;
  // Left-button mouse messages at a point in the control's client area; id 0 means the
  // dialog itself.
  Outcome MouseDown(int id, POINT pt) const;
  Outcome MouseMove(int id, POINT pt, bool leftHeld = false) const;
  Outcome MouseUp(int id, POINT pt) const;
  Outcome MouseWheel(int id, POINT pt, int delta) const;
  // WM_COMMAND IDOK / IDCANCEL as the buttons send it.
  Outcome Ok() const { return Command(IDOK); }
  Outcome Cancel() const { return Command(IDCANCEL); }
  Outcome Command(int id) const;

  // --- read-backs of the dialog itself
  std::wstring Caption() const;
  LONG_PTR ExStyle() const { return GetWindowLongPtrW(m_dialog, GWL_EXSTYLE); }
  int FocusedId() const;

  // --- read-backs of controls
  std::optional<std::wstring> Text(int id) const;
  std::optional<bool> Visible(int id) const;
  std::optional<bool> Enabled(int id) const;
  std::optional<int> CheckState(int id) const;  // BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE
  std::optional<int> ComboSelection(int id) const;
  std::optional<int> ComboCount(int id) const;
  std::optional<int> TrackbarPos(int id) const;
  std::optional<std::pair<int, int>> TrackbarRange(int id) const;
  std::optional<int> ToolbarButtonCount(int id) const;
  std::optional<Image> Pixels(int id) const;

 private:
  Outcome Missing(int id) const;
  Outcome Mouse(int id, UINT message, WPARAM keys, POINT pt) const;
  HWND m_dialog;
};

}  // namespace qv::test
