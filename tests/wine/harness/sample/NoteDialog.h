/*
 * The nested dialog the sample opens from its Note button: one edit, OK and
 * Cancel. It exists so a script can drive a dialog inside a dialog.
 */
#pragma once

#include <windows.h>

#include <string>

namespace qv::sample {

class NoteDialog {
 public:
  NoteDialog(HINSTANCE instance, std::wstring text) : m_instance(instance), m_text(std::move(text)) {}
  INT_PTR DoModal(HWND owner);
  const std::wstring& Text() const { return m_text; }

 private:
  static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

  HINSTANCE m_instance;
  std::wstring m_text;
};

}  // namespace qv::sample
