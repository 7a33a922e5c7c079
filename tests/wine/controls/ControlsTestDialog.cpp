/*
 * The recording dialog of the control tests.
 */
#include "ControlsTestDialog.h"

#include <algorithm>

ControlsTestDialog::ControlsTestDialog(int minimum, int maximum, int listStep, int arrowStep)
    : CDialog(IDD_CONTROLS_TEST), m_combo(minimum, maximum, listStep, arrowStep), m_realCombo(0, 4, 1, 0) {}

bool ControlsTestDialog::Open() {
  if (!Create(IDD_CONTROLS_TEST)) return false;
  Pump();
  return true;
}

void ControlsTestDialog::Type(HWND target, const wchar_t* text) {
  for (const wchar_t* c = text; *c; ++c) ::SendMessageW(target, WM_CHAR, *c, 1);
}

HWND ControlsTestDialog::ComboEdit() const {
  COMBOBOXINFO info{};
  info.cbSize = sizeof(info);
  ::GetComboBoxInfo(m_combo.m_hWnd, &info);
  return info.hwndItem;
}

void ControlsTestDialog::Pump() {
  MSG msg;
  while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
    if (m_hWnd && ::IsDialogMessageW(m_hWnd, &msg)) continue;
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
}

int ControlsTestDialog::NotificationsFrom(int id, UINT code) const {
  const std::wstring entry = L"notify " + std::to_wstring(id) + L" " + std::to_wstring(code);
  return static_cast<int>(std::count_if(log.begin(), log.end(), [&entry](const std::wstring& line) {
    return line.compare(0, entry.size(), entry) == 0 && (line.size() == entry.size() || line[entry.size()] == L' ');
  }));
}

void ControlsTestDialog::DoDataExchange(qvfw::CDataExchange* pDX) {
  qvfw::DDX_Control(pDX, IDC_CT_NUMBER, m_edit);
  qvfw::DDX_Control(pDX, IDC_CT_PLACEHOLDER, m_combo);
  qvfw::DDX_Control(pDX, IDC_CT_REALCOMBO, m_realCombo);
  qvfw::DDX_Control(pDX, IDC_CT_SLIDER, m_slider);
  qvfw::DDX_Control(pDX, IDC_CT_PICKER, m_picker);
}

BOOL ControlsTestDialog::OnNotify(WPARAM, LPARAM lParam, LRESULT*) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  std::wstring entry = L"notify " + std::to_wstring(header->idFrom) + L" " + std::to_wstring(header->code);
  if (header->idFrom == IDC_CT_SLIDER && header->code == CQVSliderCtrl::kNotifyMarkerMoved) {
    const auto* moved = reinterpret_cast<const NMQVSLIDER*>(lParam);
    entry += L" " + std::to_wstring(moved->iMarker) + L"=" + std::to_wstring(static_cast<int>(moved->dValue));
  }
  log.push_back(entry);
  if (clampEdit && header->idFrom == IDC_CT_NUMBER && header->code == CQVEditCtrl::kNotifyCommit) {
    const double value = m_edit.GetValue();
    if (value > 1000) m_edit.SetValue(1000);
    if (value < -1000) m_edit.SetValue(-1000);
  }
  return TRUE;
}

void ControlsTestDialog::OnOK() { log.push_back(L"ok"); }
