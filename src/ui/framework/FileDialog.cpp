/*
 * CFileDialog's set-up and the filter conversion.
 */
#include "FileDialog.h"

#include <cwchar>

#include "Wnd.h"

namespace qvfw {
namespace {
constexpr size_t kPathCapacity = 32768;  // the longest path Windows accepts
}

std::vector<wchar_t> CFileDialog::MakeFilterList(const wchar_t* filter) {
  std::vector<wchar_t> list;
  if (filter) {
    for (const wchar_t* c = filter; *c; ++c) list.push_back(*c == L'|' ? L'\0' : *c);
  }
  // The list ends with two nulls whether or not the text ended with "||".
  while (list.size() < 2 || list[list.size() - 1] != L'\0' || list[list.size() - 2] != L'\0') list.push_back(L'\0');
  return list;
}

CFileDialog::CFileDialog(BOOL openFileDialog, const wchar_t* defaultExtension, const wchar_t* fileName, DWORD flags,
                         const wchar_t* filter, CWnd* parent)
    : m_bOpenFileDialog(openFileDialog),
      m_defaultExtension(defaultExtension ? defaultExtension : L""),
      m_filter(MakeFilterList(filter)),
      m_fileBuffer(kPathCapacity, L'\0') {
  if (fileName) wcsncpy(m_fileBuffer.data(), fileName, kPathCapacity - 1);
  m_ofn.lStructSize = sizeof(m_ofn);
  m_ofn.hwndOwner = parent ? parent->m_hWnd : nullptr;
  m_ofn.lpstrFilter = filter ? m_filter.data() : nullptr;
  m_ofn.nFilterIndex = 1;
  m_ofn.lpstrFile = m_fileBuffer.data();
  m_ofn.nMaxFile = static_cast<DWORD>(kPathCapacity);
  m_ofn.lpstrDefExt = m_defaultExtension.empty() ? nullptr : m_defaultExtension.c_str();
  m_ofn.Flags = flags | OFN_EXPLORER | OFN_NOCHANGEDIR;
  if (openFileDialog) m_ofn.Flags &= ~static_cast<DWORD>(OFN_OVERWRITEPROMPT);
}

INT_PTR CFileDialog::DoModal() {
  const BOOL chosen = m_bOpenFileDialog ? ::GetOpenFileNameW(&m_ofn) : ::GetSaveFileNameW(&m_ofn);
  return chosen ? IDOK : IDCANCEL;
}

std::wstring CFileDialog::GetPathName() const { return std::wstring(m_fileBuffer.data()); }

std::wstring CFileDialog::GetFileExt() const {
  const std::wstring path = GetPathName();
  const size_t dot = path.find_last_of(L'.');
  const size_t slash = path.find_last_of(L"\\/");
  if (dot == std::wstring::npos || (slash != std::wstring::npos && dot < slash)) return std::wstring();
  return path.substr(dot + 1);
}

}  // namespace qvfw
