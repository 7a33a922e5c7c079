/*
 * CDialog: a dialog from a template of this module. DoModal runs it modally
 * (DialogBoxParamW with ModuleInstance(), so a DLL never looks for the
 * template in its host); Create makes it modeless. At WM_INITDIALOG the object
 * is mapped (DWLP_USER) and the dialog window is subclassed, so from then on
 * every message comes through WindowProc like any other window's, and
 * Default() hands it to the dialog manager.
 *
 * While a modal dialog runs, each message of its loop is first offered to
 * PreTranslateMessage (a message-filter hook), which is where keyboard
 * shortcuts that the dialog manager would otherwise eat are caught.
 */
#pragma once

#include <windows.h>

#include "DataExchange.h"
#include "Wnd.h"

namespace qvfw {

class CDialog : public CWnd {
 public:
  explicit CDialog(UINT templateId, CWnd* parent = nullptr);
  ~CDialog() override;

  // IDOK, IDCANCEL or the value given to EndDialog; -1 when the dialog could
  // not be created.
  virtual INT_PTR DoModal();
  // Creates the dialog modeless; the caller pumps messages.
  BOOL Create(UINT templateId, CWnd* parent = nullptr);
  void EndDialog(int result);
  BOOL UpdateData(BOOL saveAndValidate = TRUE);

  UINT GetTemplateId() const { return m_nIDTemplate; }
  HWND GetParentHwnd() const { return m_hWndParent; }
  bool IsModal() const { return m_modal; }
  // The value given to EndDialog (also kept for modeless dialogs).
  int GetEndResult() const { return m_endResult; }

  virtual BOOL PreTranslateMessage(MSG* msg);

 protected:
  virtual BOOL OnInitDialog();
  virtual void OnOK();
  virtual void OnCancel();
  virtual void DoDataExchange(CDataExchange* pDX);

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

 private:
  static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK MessageFilterProc(int code, WPARAM wParam, LPARAM lParam);
  bool HookDialog(HWND window);

  UINT m_nIDTemplate;
  HWND m_hWndParent;
  bool m_modal = false;
  int m_endResult = 0;
};

}  // namespace qvfw
