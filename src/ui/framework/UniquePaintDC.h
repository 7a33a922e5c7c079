/*
 * BeginPaint/EndPaint as a scope: construct it first thing in a WM_PAINT
 * handler; the destructor ends the paint even when the handler returns early,
 * so the update region is always validated. Neither copyable nor movable,
 * because EndPaint must run in the handler that began the paint.
 */
#pragma once

#include <windows.h>

#include "HandleCount.h"

namespace qvfw {

class UniquePaintDC {
 public:
  explicit UniquePaintDC(HWND window) : m_window(window) {
    m_dc = ::BeginPaint(window, &m_ps);
    if (m_dc) detail::CountHandleAcquired();
  }
  ~UniquePaintDC() {
    if (m_dc) detail::CountHandleReleased();
    ::EndPaint(m_window, &m_ps);
  }
  UniquePaintDC(const UniquePaintDC&) = delete;
  UniquePaintDC& operator=(const UniquePaintDC&) = delete;

  HDC Get() const { return m_dc; }
  const RECT& PaintRect() const { return m_ps.rcPaint; }
  bool EraseBackground() const { return m_ps.fErase != FALSE; }

 private:
  HWND m_window;
  HDC m_dc = nullptr;
  PAINTSTRUCT m_ps{};
};

}  // namespace qvfw
