/*
 * Resolves the test output folder from the executable's own path, not the
 * current directory, so a test run from anywhere writes to the same place.
 */
#include "qvdriver/TestOutput.h"

#include <vector>

#include "qvdriver/Capture.h"
#include "qvdriver/PngFile.h"

namespace qv::test {
namespace {

std::wstring ExecutableFolder() {
  std::vector<wchar_t> buffer(MAX_PATH);
  for (;;) {
    DWORD got = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (got == 0) return L".";
    if (got < buffer.size()) break;
    buffer.resize(buffer.size() * 2);
  }
  std::wstring path(buffer.data());
  size_t slash = path.find_last_of(L"\\/");
  return slash == std::wstring::npos ? L"." : path.substr(0, slash);
}

std::wstring Widen(const std::string& text) {
  if (text.empty()) return {};
  int count = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
  std::wstring out(static_cast<size_t>(count), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), count);
  return out;
}

}  // namespace

std::wstring TestOutputFile(const std::string& testName, const std::wstring& fileName) {
  std::wstring joined = ExecutableFolder() + L"\\..\\test-output\\" + Widen(testName) + L"\\" + fileName;
  wchar_t full[4096];
  DWORD got = GetFullPathNameW(joined.c_str(), 4096, full, nullptr);
  return got > 0 && got < 4096 ? std::wstring(full) : joined;
}

Outcome SaveTestScreenshot(HWND window, const std::string& testName, const std::wstring& fileName) {
  Image image = CaptureWindow(window);
  if (image.Empty()) return Outcome::Fail("the window to screenshot is gone or has no area");
  return SavePng(image, TestOutputFile(testName, fileName));
}

}  // namespace qv::test
