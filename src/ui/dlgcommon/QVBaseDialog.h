/*
 * CQVBaseDialog: what every dialog of the library shares. Its texts come
 * from the dialog kernel's string table (GetDlgString), so a host that
 * overrides a string sees it in every dialog. It makes the host's help
 * callback: the Help button (9) reports control 0, F1 or the title-bar "?"
 * over a control report that control's id, both with the dialog's id and the
 * host's user data. The position point is process-wide: the last point set
 * before a dialog opens decides where it opens (through Q_DlgPlaceWindow,
 * which keeps the dialog whole on its monitor; no point centres it on its
 * owner). OK, Cancel and Help get their texts here, once for every dialog;
 * a control whose text the kernel lacks keeps its template text.
 */
#pragma once

#include <windows.h>

#include <string>

#include "Dialog.h"

// The host's help callback (the same type the dialog parameter header
// declares; repeated so this header stands alone).
typedef void (*pQVHELPCALLBACK)(unsigned int uDlgId, int nCtrlId, void* pUserData);

class CQVBaseDialog : public qvfw::CDialog {
 public:
  static constexpr int kHelpButtonId = 9;
  // Kernel string ids every dialog shares.
  static constexpr unsigned kStringOk = 0;
  static constexpr unsigned kStringCancel = 1;
  static constexpr unsigned kStringHelp = 2;
  static constexpr unsigned kStringBefore = 3;
  static constexpr unsigned kStringAfter = 4;

  CQVBaseDialog(UINT templateId, qvfw::CWnd* parent, unsigned dialogId);

  // The dialog kernel's text for `id`, or "" when it has none.
  static std::wstring GetDlgString(unsigned id);
  // False when the kernel has no text for `id` (an id missing from the
  // table, or from the language in use); *text is then left alone.
  static bool FindDlgString(unsigned id, std::wstring* text);

  int SetHelpCallback(pQVHELPCALLBACK callback);
  int SetHelpCallBackUserData(void* userData);
  pQVHELPCALLBACK GetHelpCallback() const { return m_helpCallback; }
  void* GetHelpCallBackUserData() const { return m_helpUserData; }

  // Process-wide; returns the previous point. The point is read (not copied)
  // when a dialog opens, so it must stay valid until then.
  static POINT* SetPositionPoint(POINT* point);
  static POINT* GetPositionPoint();

  unsigned GetDialogId() const { return m_dialogId; }

  // F1 over a control asks for that control's help.
  BOOL PreTranslateMessage(MSG* msg) override;

 protected:
  // Sets the texts (SetDialogStrings), then places the dialog.
  BOOL OnInitDialog() override;
  // Base: OK, Cancel and Help. The dialogs add their own texts here.
  virtual void SetDialogStrings();
  // Set a control's text (id 0: none) or the title from the kernel,
  // keeping the template text when the kernel has none.
  void SetItemString(int controlId, unsigned stringId);
  void SetTitleString(unsigned stringId);
  // With the Help button hidden, OK and Cancel move right so that the last
  // of them takes the Help button's place (mode 0, the only one used).
  void ShiftOkCancelBtns(int mode);

  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
  BOOL OnHelpInfo(HELPINFO* info) override;

  // Calls the host's callback, if any; false when there is none.
  bool CallHelp(int controlId);

 private:
  void PlaceAtPositionPoint();

  unsigned m_dialogId;
  pQVHELPCALLBACK m_helpCallback = nullptr;
  void* m_helpUserData = nullptr;
};
