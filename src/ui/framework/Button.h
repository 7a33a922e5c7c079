/*
 * CButton: push buttons, check boxes and radio buttons of a template, wrapped
 * for their check state.
 */
#pragma once

#include "Wnd.h"

namespace qvfw {

class CButton : public CWnd {
 public:
  int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
  void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
  UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
  // Sends BN_CLICKED to the parent as a real click would.
  void Click() { SendMessage(BM_CLICK); }
};

}  // namespace qvfw
