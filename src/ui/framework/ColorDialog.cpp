/*
 * CColorDialog's set-up: the initial color is preselected (CC_RGBINIT) and
 * the custom colors start white.
 */
#include "ColorDialog.h"

#include "Wnd.h"

namespace qvfw {

COLORREF* CColorDialog::GetSavedCustomColors() {
  static COLORREF colors[16] = {RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
                                RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
                                RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
                                RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255)};
  return colors;
}

CColorDialog::CColorDialog(COLORREF initial, DWORD flags, CWnd* parent) {
  m_cc.lStructSize = sizeof(m_cc);
  m_cc.hwndOwner = parent ? parent->m_hWnd : nullptr;
  m_cc.rgbResult = initial;
  m_cc.lpCustColors = GetSavedCustomColors();
  m_cc.Flags = flags | CC_RGBINIT;
}

INT_PTR CColorDialog::DoModal() { return ::ChooseColorW(&m_cc) ? IDOK : IDCANCEL; }

}  // namespace qvfw
