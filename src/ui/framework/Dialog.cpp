/*
 * CDialog's creation, hooking and default commands. The dialog procedure
 * itself only hooks the object at WM_INITDIALOG and answers FALSE to
 * everything else; the subclass installed there sees every later message
 * first and passes what it leaves to DefDlgProc, which comes back here
 * with FALSE for the dialog manager's default treatment.
 */
#include "Dialog.h"

#include <commctrl.h>

#include <vector>

#include "Module.h"
#include "Trace.h"

namespace qvfw {
namespace {

// The modal dialogs running on this thread, innermost last; the message
// filter offers messages to the innermost one.
std::vector<CDialog*>& ModalStack() {
  thread_local std::vector<CDialog*> stack;
  return stack;
}

// Keeps a modal dialog on the stack and the thread's filter hook installed
// for the length of DoModal; the outermost one also frees the temporary
// window wrappers on the way out.
class ModalScope {
 public:
  ModalScope(CDialog* dialog, HOOKPROC filter) {
    auto& stack = ModalStack();
    stack.push_back(dialog);
    if (stack.size() == 1) {
      Hook() = ::SetWindowsHookExW(WH_MSGFILTER, filter, nullptr, ::GetCurrentThreadId());
    }
  }
  ~ModalScope() {
    auto& stack = ModalStack();
    stack.pop_back();
    if (stack.empty()) {
      if (Hook()) ::UnhookWindowsHookEx(Hook());
      Hook() = nullptr;
      CWnd::DeleteTempMap();
    }
  }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

  static HHOOK& Hook() {
    thread_local HHOOK hook = nullptr;
    return hook;
  }
};

}  // namespace

CDialog::CDialog(UINT templateId, CWnd* parent)
    : m_nIDTemplate(templateId), m_hWndParent(parent ? parent->m_hWnd : nullptr) {
  m_userDataIndex = DWLP_USER;
}

CDialog::~CDialog() {
  if (!m_hWnd) return;
  HWND window = m_hWnd;
  Detach();
  if (!m_modal) ::DestroyWindow(window);
}

INT_PTR CDialog::DoModal() {
  if (m_hWnd) return -1;
  m_modal = true;
  INT_PTR result = -1;
  {
    ModalScope scope(this, &CDialog::MessageFilterProc);
    result = ::DialogBoxParamW(ModuleInstance(), MAKEINTRESOURCEW(m_nIDTemplate), m_hWndParent, &CDialog::DialogProc,
                               reinterpret_cast<LPARAM>(this));
  }
  m_modal = false;
  return result;
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) {
  if (m_hWnd) return FALSE;
  m_nIDTemplate = templateId;
  if (parent) m_hWndParent = parent->m_hWnd;
  m_modal = false;
  HWND window = ::CreateDialogParamW(ModuleInstance(), MAKEINTRESOURCEW(templateId), m_hWndParent, &CDialog::DialogProc,
                                     reinterpret_cast<LPARAM>(this));
  return window ? TRUE : FALSE;
}

bool CDialog::HookDialog(HWND window) { return HookSubclass(window); }

INT_PTR CALLBACK CDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_INITDIALOG) return FALSE;
  auto* dialog = reinterpret_cast<CDialog*>(lParam);
  if (!dialog || !dialog->HookDialog(window)) {
    // Without its object the dialog cannot work; close it at once.
    ::EndDialog(window, -1);
    return FALSE;
  }
  return dialog->Dispatch(message, wParam, lParam);
}

LRESULT CALLBACK CDialog::MessageFilterProc(int code, WPARAM wParam, LPARAM lParam) {
  if (code == MSGF_DIALOGBOX && !ModalStack().empty()) {
    CDialog* dialog = ModalStack().back();
    auto* msg = reinterpret_cast<MSG*>(lParam);
    try {
      if (dialog->m_hWnd && msg && dialog->PreTranslateMessage(msg)) return 1;
    } catch (...) {
      // A failing shortcut handler must not break the dialog's loop.
      qv::TraceCaughtException("a dialog's shortcut handler failed");
    }
  }
  return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

BOOL CDialog::PreTranslateMessage(MSG*) { return FALSE; }

// A modeless dialog has no loop to end; it is hidden and its owner decides
// when to destroy it.
void CDialog::EndDialog(int result) {
  m_endResult = result;
  if (!m_hWnd) return;
  if (m_modal) {
    ::EndDialog(m_hWnd, result);
  } else {
    ::ShowWindow(m_hWnd, SW_HIDE);
  }
}

BOOL CDialog::UpdateData(BOOL saveAndValidate) {
  CDataExchange exchange(this, saveAndValidate);
  DoDataExchange(&exchange);
  return exchange.Failed() ? FALSE : TRUE;
}

BOOL CDialog::OnInitDialog() {
  UpdateData(FALSE);
  return TRUE;
}

void CDialog::OnOK() {
  if (!UpdateData(TRUE)) return;
  EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange*) {}

LRESULT CDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) return OnInitDialog();
  return CWnd::WindowProc(message, wParam, lParam);
}

BOOL CDialog::OnCommand(WPARAM wParam, LPARAM) {
  // Only buttons and accelerators (notification code 0 or 1) close a dialog;
  // an edit's notification that happens to carry id 1 must not.
  if (HIWORD(wParam) > 1) return FALSE;
  switch (LOWORD(wParam)) {
    case IDOK: OnOK(); return TRUE;
    case IDCANCEL: OnCancel(); return TRUE;
    default: return FALSE;
  }
}

}  // namespace qvfw
