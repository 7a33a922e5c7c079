/*
 * Tracks the windows of a driven call by CBT activation and destruction, and
 * tears them down when a script is stuck so the call can return.
 */
#include "qvdriver/ModalStack.h"

#include <algorithm>

namespace qv::test {
namespace {

BOOL CALLBACK CollectVisible(HWND hwnd, LPARAM param) {
  if (IsWindowVisible(hwnd)) reinterpret_cast<std::vector<HWND>*>(param)->push_back(hwnd);
  return TRUE;
}

// The thread's visible top-level windows, for a stuck call whose window never
// became active and so never reached the stack.
std::vector<HWND> VisibleThreadWindows() {
  std::vector<HWND> windows;
  EnumThreadWindows(GetCurrentThreadId(), CollectVisible, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

bool IsDialogWindow(HWND hwnd) {
  wchar_t name[16] = {};
  GetClassNameW(hwnd, name, 16);
  return wcscmp(name, L"#32770") == 0;
}

}  // namespace

void ModalStack::OnActivate(HWND hwnd) {
  if (!hwnd || std::find(m_windows.begin(), m_windows.end(), hwnd) != m_windows.end()) return;
  m_windows.push_back(hwnd);
  m_everSeen = true;
}

void ModalStack::OnDestroy(HWND hwnd) {
  m_windows.erase(std::remove(m_windows.begin(), m_windows.end(), hwnd), m_windows.end());
}

std::vector<HWND> ModalStack::LivingInnermostFirst() const {
  std::vector<HWND> out;
  for (auto it = m_windows.rbegin(); it != m_windows.rend(); ++it)
    if (IsWindow(*it) && IsWindowVisible(*it)) out.push_back(*it);
  return out;
}

HWND ModalStack::Outermost() const {
  auto living = LivingInnermostFirst();
  return living.empty() ? nullptr : living.back();
}

HWND ModalStack::Innermost() const {
  auto living = LivingInnermostFirst();
  return living.empty() ? nullptr : living.front();
}

void ModalStack::EndAll(bool force) const {
  if (force) {
    // A window hidden by EndDialog whose loop never ended is still here.
    // Destroying reaches the CBT hook, which edits the list, so walk a copy.
    std::vector<HWND> all(m_windows.rbegin(), m_windows.rend());
    for (HWND hwnd : all)
      if (IsWindow(hwnd)) DestroyWindow(hwnd);
    return;
  }
  std::vector<HWND> living = LivingInnermostFirst();
  if (living.empty()) living = VisibleThreadWindows();
  for (HWND hwnd : living) {
    if (IsDialogWindow(hwnd)) {
      // EndDialog only flags the modal loop; each loop ends once control
      // returns to it, so flagging innermost first unwinds the whole stack.
      EndDialog(hwnd, IDCANCEL);
    } else {
      PostMessageW(hwnd, WM_CLOSE, 0, 0);
    }
  }
}

}  // namespace qv::test
