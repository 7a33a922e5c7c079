/*
 * The recording host of the slider tests.
 */
#include "SliderHostDialog.h"

bool SliderHostDialog::Open() {
  if (!Create(IDD_SLIDER_HOST)) return false;
  ::ShowWindow(m_hWnd, SW_SHOW);
  Pump();
  return true;
}

void SliderHostDialog::Pump() {
  MSG msg;
  while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
    if (m_hWnd && ::IsDialogMessageW(m_hWnd, &msg)) continue;
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
}

void SliderHostDialog::DoDataExchange(qvfw::CDataExchange* pDX) { qvfw::DDX_Control(pDX, m_sliderId, m_slider); }

BOOL SliderHostDialog::OnNotify(WPARAM, LPARAM lParam, LRESULT*) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  Notification n{header->hwndFrom, header->idFrom, header->code, {}};
  if (header->hwndFrom == m_slider.m_hWnd) {
    n.values.resize(static_cast<size_t>(m_slider.GetMarkerCount()));
    m_slider.GetMarkerValues(n.values.data());
  }
  notifications.push_back(std::move(n));
  return TRUE;
}
