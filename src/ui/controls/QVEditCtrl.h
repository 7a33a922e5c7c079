/*
 * CQVEditCtrl: the numeric edit box of the dialogs. It subclasses an edit of
 * the template. With SetNumericsOnly(1) it takes digits and one decimal
 * point (and a leading minus after SetAcceptNegative(1)) from the keyboard
 * and from the clipboard, and refuses anything else with a beep, leaving the
 * text as it was. When the user commits the text (Enter, or the focus
 * leaving the box) and it differs from what was last committed or set with
 * SetValue, the parent receives WM_NOTIFY with code kNotifyCommit (1); the
 * dialogs validate and clamp the value there. SetValue never notifies.
 */
#pragma once

#include <string>

#include "Edit.h"

class CQVEditCtrl : public qvfw::CEdit {
 public:
  static constexpr UINT kNotifyCommit = 1;

  void SetNumericsOnly(int numericsOnly) { m_numericsOnly = numericsOnly != 0; }
  int GetNumericsOnly() const { return m_numericsOnly ? 1 : 0; }
  void SetAcceptNegative(int acceptNegative) { m_acceptNegative = acceptNegative != 0; }
  int GetAcceptNegative() const { return m_acceptNegative ? 1 : 0; }

  void SetValue(double value);
  // The number in the box; 0 while it holds no complete number.
  double GetValue() const;

 protected:
  void OnChar(UINT ch, UINT repeat, UINT flags) override;
  void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
  void OnKillFocus(HWND next) override;
  UINT OnGetDlgCode(MSG* msg) override;
  void OnPaste() override;

 private:
  bool AcceptsInsert(const std::wstring& insert) const;
  void Commit();

  bool m_numericsOnly = false;
  bool m_acceptNegative = false;
  std::wstring m_committedText;
};
