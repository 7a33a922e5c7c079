/*
 * The note dialog: shows the current note, hands back the edited one on OK.
 */
#include "NoteDialog.h"

#include "resource.h"

namespace qv::sample {

INT_PTR NoteDialog::DoModal(HWND owner) {
  return DialogBoxParamW(m_instance, MAKEINTRESOURCEW(IDD_SAMPLE_NOTE), owner, DialogProc,
                         reinterpret_cast<LPARAM>(this));
}

INT_PTR CALLBACK NoteDialog::DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
    SetDlgItemTextW(hwnd, IDC_NOTE_EDIT, reinterpret_cast<NoteDialog*>(lParam)->m_text.c_str());
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  auto* self = reinterpret_cast<NoteDialog*>(GetWindowLongPtrW(hwnd, DWLP_USER));
  int id = LOWORD(wParam);
  if (id == IDOK && self) {
    wchar_t text[64] = {};
    GetDlgItemTextW(hwnd, IDC_NOTE_EDIT, text, 64);
    self->m_text = text;
  }
  if (id == IDOK || id == IDCANCEL) EndDialog(hwnd, id);
  return TRUE;
}

}  // namespace qv::sample
