/*
 * CQVWindowLevelDlgEditIntervalDlg: the small "Enter a number" dialog in
 * which the user types an exact whole value for one marker of the
 * window-level slider. The slider constructs it, gives it the marker's value
 * (SetValue) and the bounds the marker may take (SetRange), runs it and on
 * IDOK reads GetValue. Values and bounds given before the dialog opens are
 * only stored; they reach the value combo when it opens. OK clamps the typed
 * number into the bounds, the upper bound first, and hands the keyboard focus
 * back to the parent window; Cancel changes nothing.
 */
#pragma once

#include <windows.h>

#include "QVBaseDialog.h"
#include "QVValueCombo.h"

class CQVWindowLevelDlgEditIntervalDlg : public CQVBaseDialog {
 public:
  explicit CQVWindowLevelDlgEditIntervalDlg(qvfw::CWnd* parent = nullptr);

  void SetValue(int value);
  int GetValue();
  void SetRange(int minimum, int maximum);

 protected:
  BOOL OnInitDialog() override;
  void SetDialogStrings() override;
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  void OnOK() override;

 private:
  bool HasCombo() const { return m_valueCombo.GetSafeHwnd() != nullptr; }
  void SetFontOnChildren();

  CQVValueCombo m_valueCombo;
  int m_minimum = 0;
  int m_maximum = 0;
  int m_value = 0;
};
