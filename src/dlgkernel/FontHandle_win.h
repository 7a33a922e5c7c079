/*
 * A move-only owner of a GDI font the kernel created; deletes it on release.
 */
#pragma once

#include <windows.h>

namespace qv {

class FontHandle {
 public:
  FontHandle() = default;
  explicit FontHandle(HFONT hFont) : m_hFont(hFont) {}
  ~FontHandle() { Reset(); }
  FontHandle(FontHandle&& other) noexcept : m_hFont(other.m_hFont) { other.m_hFont = nullptr; }
  FontHandle& operator=(FontHandle&& other) noexcept {
    if (this != &other) {
      Reset();
      m_hFont = other.m_hFont;
      other.m_hFont = nullptr;
    }
    return *this;
  }
  FontHandle(const FontHandle&) = delete;
  FontHandle& operator=(const FontHandle&) = delete;

  HFONT Get() const { return m_hFont; }
  void Reset() {
    if (m_hFont) DeleteObject(m_hFont);
    m_hFont = nullptr;
  }

 private:
  HFONT m_hFont = nullptr;
};

}  // namespace qv
