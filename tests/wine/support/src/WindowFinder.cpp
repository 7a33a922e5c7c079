/*
 * Finds a step's window. Caption and class lookups prefer the innermost match
 * of the tracked modal stack (a nested dialog with the same caption as its
 * owner wins), then any visible top-level window of this thread, so a window
 * the hook missed is still reachable.
 */
#include "qvdriver/WindowFinder.h"

#include <vector>

namespace qv::test {
namespace {

bool Matches(HWND hwnd, const WindowQuery& query) {
  if (!IsWindowVisible(hwnd)) return false;
  if (query.kind == WindowQuery::Kind::Caption) return WindowCaption(hwnd) == query.text;
  return WindowClass(hwnd) == query.text;
}

BOOL CALLBACK CollectWindow(HWND hwnd, LPARAM param) {
  reinterpret_cast<std::vector<HWND>*>(param)->push_back(hwnd);
  return TRUE;
}

}  // namespace

std::string WindowQuery::Describe() const {
  switch (kind) {
    case Kind::MainDialog: return "the main dialog";
    case Kind::Innermost: return "the innermost modal window";
    case Kind::Caption: return "the window captioned '" + Narrow(text) + "'";
    case Kind::ClassName: return "a window of class '" + Narrow(text) + "'";
  }
  return "an unknown window";
}

HWND FindWindowFor(const WindowQuery& query, const ModalStack& stack) {
  switch (query.kind) {
    case WindowQuery::Kind::MainDialog: return stack.Outermost();
    case WindowQuery::Kind::Innermost: return stack.Innermost();
    default: break;
  }
  for (HWND hwnd : stack.LivingInnermostFirst())
    if (Matches(hwnd, query)) return hwnd;
  std::vector<HWND> all;
  EnumThreadWindows(GetCurrentThreadId(), CollectWindow, reinterpret_cast<LPARAM>(&all));
  for (HWND hwnd : all)
    if (Matches(hwnd, query)) return hwnd;
  return nullptr;
}

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
  int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                  nullptr, nullptr);
  std::string out(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), bytes,
                      nullptr, nullptr);
  return out;
}

}  // namespace qv::test
