/*
 * Selects a GDI object into a DC for the length of a scope and puts the
 * previous object back at its end, so an owned pen or bitmap is never deleted
 * while still selected. SelectPaletteScope does the same for palettes, which
 * have their own selection call.
 */
#pragma once

#include <windows.h>

namespace qvfw {

class SelectObjectScope {
 public:
  SelectObjectScope(HDC dc, HGDIOBJ object)
      : m_dc(dc), m_previous(dc && object ? ::SelectObject(dc, object) : nullptr) {}
  ~SelectObjectScope() {
    if (m_previous && m_previous != HGDI_ERROR) ::SelectObject(m_dc, m_previous);
  }
  SelectObjectScope(const SelectObjectScope&) = delete;
  SelectObjectScope& operator=(const SelectObjectScope&) = delete;

  // The object that was selected before; null when the selection failed.
  HGDIOBJ Previous() const { return m_previous == HGDI_ERROR ? nullptr : m_previous; }

 private:
  HDC m_dc;
  HGDIOBJ m_previous;
};

class SelectPaletteScope {
 public:
  SelectPaletteScope(HDC dc, HPALETTE palette, bool forceBackground)
      : m_dc(dc), m_previous(dc && palette ? ::SelectPalette(dc, palette, forceBackground) : nullptr) {
    if (m_previous) ::RealizePalette(dc);
  }
  ~SelectPaletteScope() {
    if (m_previous) ::SelectPalette(m_dc, m_previous, TRUE);
  }
  SelectPaletteScope(const SelectPaletteScope&) = delete;
  SelectPaletteScope& operator=(const SelectPaletteScope&) = delete;

 private:
  HDC m_dc;
  HPALETTE m_previous;
};

}  // namespace qvfw
