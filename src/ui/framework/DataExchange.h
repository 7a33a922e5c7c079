/*
 * Dialog data exchange: DoDataExchange lists, once, how the dialog's members
 * relate to its controls, and UpdateData runs that list in either direction.
 * Loading (m_bSaveAndValidate false) writes members into controls; saving
 * reads controls back and may fail, which keeps the dialog open with the
 * offending control focused. Saving stops at the first failing control:
 * members exchanged before it keep their new values, later ones are left
 * alone.
 */
#pragma once

#include <windows.h>

namespace qvfw {

class CWnd;

class CDataExchange {
 public:
  CDataExchange(CWnd* dialog, BOOL saveAndValidate) : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate) {}

  CWnd* m_pDlgWnd;
  BOOL m_bSaveAndValidate;

  // Marks the exchange as failed and focuses the control that caused it.
  void Fail(int controlId);
  bool Failed() const { return m_failed; }

 private:
  bool m_failed = false;
};

// Binds `control` to the dialog's child `id` the first time it runs (a
// control that already has a window is left as it is).
void DDX_Control(CDataExchange* pDX, int id, CWnd& control);
// A check box or radio button and an int: 0 unchecked, 1 checked, 2
// indeterminate.
void DDX_Check(CDataExchange* pDX, int id, int& value);
// An edit box and a whole number; saving fails on text that is not one.
void DDX_Text(CDataExchange* pDX, int id, int& value);
// A combo box's selected index (-1 for none).
void DDX_CBIndex(CDataExchange* pDX, int id, int& index);

}  // namespace qvfw
