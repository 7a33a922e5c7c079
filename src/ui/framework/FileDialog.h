/*
 * CFileDialog: the system's open and save dialogs. The filter is written as
 * the dialogs write it, "Curve files (*.crv)|*.crv|All files (*.*)|*.*||",
 * and turned into the double-null list the system wants.
 */
#pragma once

#include <windows.h>

#include <commdlg.h>

#include <string>
#include <vector>

namespace qvfw {

class CWnd;

class CFileDialog {
 public:
  CFileDialog(BOOL openFileDialog, const wchar_t* defaultExtension = nullptr, const wchar_t* fileName = nullptr,
              DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, const wchar_t* filter = nullptr,
              CWnd* parent = nullptr);
  CFileDialog(const CFileDialog&) = delete;
  CFileDialog& operator=(const CFileDialog&) = delete;

  // IDOK when a file was chosen, IDCANCEL otherwise (also on failure).
  INT_PTR DoModal();
  std::wstring GetPathName() const;
  std::wstring GetFileExt() const;

  // The system structure, for callers that set more fields before DoModal.
  OPENFILENAMEW m_ofn{};

  // "a|b||" to "a\0b\0\0"; exposed because the conversion is easy to get wrong.
  static std::vector<wchar_t> MakeFilterList(const wchar_t* filter);

 private:
  BOOL m_bOpenFileDialog;
  std::wstring m_defaultExtension;
  std::vector<wchar_t> m_filter;
  std::vector<wchar_t> m_fileBuffer;
};

}  // namespace qvfw
