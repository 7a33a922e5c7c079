/*
 * The modeless dialog the control tests drive: it binds the controls under
 * test, records every WM_NOTIFY and command it receives in order (with the
 * marker and value of a slider's), and can clamp the edit box's value on its
 * commit notification as the dialogs do.
 */
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "ControlsTestIds.h"
#include "Dialog.h"
#include "QVColorPickerCtrl.h"
#include "QVEditCtrl.h"
#include "QVSliderCtrl.h"
#include "QVValueCombo.h"

class ControlsTestDialog : public qvfw::CDialog {
 public:
  // Value combos are built with the test's construction values before the
  // dialog is created.
  ControlsTestDialog(int minimum, int maximum, int listStep, int arrowStep);

  CQVEditCtrl m_edit;
  CQVValueCombo m_combo;
  CQVValueCombo m_realCombo;
  CQVSliderCtrl m_slider;
  CQVColorPickerCtrl m_picker;

  std::vector<std::wstring> log;
  bool clampEdit = false;

  bool Open();
  // Sends each character to `target` as typed.
  static void Type(HWND target, const wchar_t* text);
  HWND ComboEdit() const;
  // Dispatches queued messages, through the dialog manager as a host's loop does.
  void Pump();
  int NotificationsFrom(int id, UINT code = 1) const;

 protected:
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
  void OnOK() override;
};
