/*
 * The modeless dialog the slider tests drive: it binds the window-level
 * slider to its horizontal or its vertical track bar and records every notification it receives, with
 * the marker values the parent reads at that moment.
 */
#pragma once

#include <windows.h>

#include <vector>

#include "Dialog.h"
#include "QVWindowLevelDlgSliderCtrl.h"
#include "SliderHostIds.h"

class SliderHostDialog : public qvfw::CDialog {
 public:
  struct Notification {
    HWND from;
    UINT_PTR id;
    UINT code;
    std::vector<double> values;
  };

  explicit SliderHostDialog(int sliderId) : CDialog(IDD_SLIDER_HOST), m_sliderId(sliderId) {}

  const int m_sliderId;
  CQVWindowLevelDlgSliderCtrl m_slider;
  std::vector<Notification> notifications;

  bool Open();
  void Pump();

 protected:
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};
