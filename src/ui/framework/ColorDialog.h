/*
 * CColorDialog: the system's color chooser. The sixteen custom colors are
 * kept for the process, so what the user mixed is offered again next time.
 */
#pragma once

#include <windows.h>

#include <commdlg.h>

namespace qvfw {

class CWnd;

class CColorDialog {
 public:
  explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parent = nullptr);
  CColorDialog(const CColorDialog&) = delete;
  CColorDialog& operator=(const CColorDialog&) = delete;

  INT_PTR DoModal();
  COLORREF GetColor() const { return m_cc.rgbResult; }
  static COLORREF* GetSavedCustomColors();

  CHOOSECOLORW m_cc{};
};

}  // namespace qvfw
