/*
 * Window captions and class names as text.
 */
#include "qvdriver/WindowText.h"

namespace qv::test {

std::wstring WindowCaption(HWND hwnd) {
  int length = GetWindowTextLengthW(hwnd);
  std::wstring text(static_cast<size_t>(length) + 1, L'\0');
  int got = GetWindowTextW(hwnd, text.data(), length + 1);
  text.resize(static_cast<size_t>(got > 0 ? got : 0));
  return text;
}

std::wstring WindowClass(HWND hwnd) {
  wchar_t name[256] = {};
  int got = GetClassNameW(hwnd, name, 256);
  return std::wstring(name, static_cast<size_t>(got > 0 ? got : 0));
}

std::string Narrow(const std::wstring& text) {
  if (text.empty()) return {};
  int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), bytes, nullptr, nullptr);
  return out;
}

}  // namespace qv::test
