/*
 * The windows a driven call has brought up, in the order they first became
 * active. Modal windows are created after their owners, so this order is the
 * nesting order: the first living entry is the outermost dialog, the last is
 * the innermost modal. The watchdog ends them innermost first.
 */
#pragma once

#include <windows.h>

#include <vector>

namespace qv::test {

class ModalStack {
 public:
  void OnActivate(HWND hwnd);
  void OnDestroy(HWND hwnd);

  // The outermost / innermost window that still exists and is visible.
  HWND Outermost() const;
  HWND Innermost() const;
  // Living windows, innermost first.
  std::vector<HWND> LivingInnermostFirst() const;
  bool AnySeen() const { return m_everSeen; }
  bool AnyAlive() const { return !LivingInnermostFirst().empty(); }

  // Ends every living window, innermost first: EndDialog for dialogs, WM_CLOSE
  // for anything else. When none was tracked, the thread's visible top-level
  // windows are ended instead. With `force` the windows are destroyed outright, for a
  // dialog whose own code refuses to close.
  void EndAll(bool force) const;

 private:
  std::vector<HWND> m_windows;
  bool m_everSeen = false;
};

}  // namespace qv::test
