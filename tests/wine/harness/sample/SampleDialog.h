/*
 * The sample dialog: a level (trackbar and edit kept in step), a channel
 * choice, an apply check box, a swatch showing the result, a Reset button that
 * asks through a message box, a Note button that opens a nested dialog, and a
 * standard colour and save-file dialogs opened from Color and File buttons, a menu and a toolbar with the menu's commands (a right click on the toolbar
 * sets the middle level). OK writes the values back; Cancel leaves the caller's structure alone.
 */
#pragma once

#include <windows.h>

#include "QvSampleDlg.h"

namespace qv::sample {

class SampleDialog {
 public:
  SampleDialog(HINSTANCE instance, const QVSAMPLEDLGPARAMS& initial) : m_instance(instance), m_values(initial) {}
  // IDOK or IDCANCEL; -1 when the template could not be loaded.
  INT_PTR DoModal(HWND owner);
  const QVSAMPLEDLGPARAMS& Values() const { return m_values; }

 private:
  static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnInitDialog();
  void OnCommand(int id, int code);
  void OnScroll(HWND control);
  void OnSwatchPick(WPARAM level, LPARAM delta);
  void OnNotify(const NMHDR& header);
  void CreateToolbar();
  void OnReset();
  void OnNote();
  void OnColor();
  void OnFile();
  void SetLevel(int level, bool updateEdit);
  void UpdateSwatch();

  HINSTANCE m_instance;
  QVSAMPLEDLGPARAMS m_values;
  HWND m_hwnd = nullptr;
  bool m_settingEdit = false;
  COLORREF m_color = RGB(255, 255, 255);
  COLORREF m_customColors[16] = {};
};

}  // namespace qv::sample
