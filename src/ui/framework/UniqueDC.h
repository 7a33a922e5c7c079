/*
 * Owner of a window's device context taken with GetDC or GetWindowDC. Unlike a
 * memory DC it must go back with ReleaseDC to the window it came from, so the
 * owner keeps the window beside the handle. Move-only.
 */
#pragma once

#include <windows.h>

#include "HandleCount.h"

namespace qvfw {

class UniqueDC {
 public:
  UniqueDC() = default;
  // Takes the client-area DC of `window` (GetDC; null gives the screen DC).
  explicit UniqueDC(HWND window) : m_window(window), m_dc(::GetDC(window)) {
    if (m_dc) detail::CountHandleAcquired();
  }
  ~UniqueDC() { Reset(); }

  UniqueDC(const UniqueDC&) = delete;
  UniqueDC& operator=(const UniqueDC&) = delete;
  UniqueDC(UniqueDC&& other) noexcept : m_window(other.m_window), m_dc(other.m_dc) {
    other.m_dc = nullptr;
    other.m_window = nullptr;
  }
  UniqueDC& operator=(UniqueDC&& other) noexcept {
    if (this != &other) {
      Reset();
      m_window = other.m_window;
      m_dc = other.m_dc;
      other.m_dc = nullptr;
      other.m_window = nullptr;
    }
    return *this;
  }

  HDC Get() const { return m_dc; }
  explicit operator bool() const { return m_dc != nullptr; }

  void Reset() {
    if (m_dc) {
      ::ReleaseDC(m_window, m_dc);
      detail::CountHandleReleased();
    }
    m_dc = nullptr;
    m_window = nullptr;
  }

 private:
  HWND m_window = nullptr;
  HDC m_dc = nullptr;
};

}  // namespace qvfw
