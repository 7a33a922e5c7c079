/*
 * The edit box inside a CQVValueCombo. The combo box owns it; this wrapper
 * routes its keys to the combo: digits (and a leading minus when the range
 * goes below zero) are the only characters taken, the up and down arrows
 * and the mouse wheel step the value, Page Up and Page Down step by the list
 * step, and Enter commits what was typed.
 */
#pragma once

#include "Wnd.h"

class CQVValueCombo;

class CQVValueComboEdit : public qvfw::CWnd {
 public:
  explicit CQVValueComboEdit(CQVValueCombo& owner) : m_owner(owner) {}

 protected:
  void OnChar(UINT ch, UINT repeat, UINT flags) override;
  void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
  UINT OnGetDlgCode(MSG* msg) override;
  BOOL OnMouseWheel(UINT flags, short delta, POINT point) override;
  void OnPaste() override;

 private:
  CQVValueCombo& m_owner;
};
