/*
 * The move-only owner that every GDI and USER handle of the framework lives
 * in. A traits type says how the handle is freed; the owner frees it exactly
 * once, never copies it, and counts it in OwnedHandleCount. The aliases below
 * name the owners the dialogs use: GDI objects (pens, brushes, fonts, bitmaps,
 * palettes, regions), menus, icons and cursors.
 */
#pragma once

#include <windows.h>

#include <utility>

#include "HandleCount.h"

namespace qvfw {

template <typename Traits>
class UniqueHandle {
 public:
  using Handle = typename Traits::Handle;

  UniqueHandle() = default;
  explicit UniqueHandle(Handle handle) { Reset(handle); }
  ~UniqueHandle() { Reset(); }

  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  // Moves hand the handle over as it is; the count does not change.
  UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.m_handle) { other.m_handle = nullptr; }
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) {
      Reset();
      m_handle = other.m_handle;
      other.m_handle = nullptr;
    }
    return *this;
  }

  Handle Get() const { return m_handle; }
  explicit operator bool() const { return m_handle != nullptr; }

  // Frees the held handle (if any) and takes ownership of `handle`.
  void Reset(Handle handle = nullptr) {
    if (m_handle == handle) return;
    if (m_handle) {
      Traits::Free(m_handle);
      detail::CountHandleReleased();
    }
    m_handle = handle;
    if (m_handle) detail::CountHandleAcquired();
  }

  // Gives up ownership without freeing; the caller frees the handle.
  Handle Release() {
    Handle handle = m_handle;
    if (handle) detail::CountHandleReleased();
    m_handle = nullptr;
    return handle;
  }

 private:
  Handle m_handle = nullptr;
};

template <typename T>
struct GdiObjectTraits {
  using Handle = T;
  static void Free(T handle) { ::DeleteObject(handle); }
};

struct MenuTraits {
  using Handle = HMENU;
  static void Free(HMENU handle) { ::DestroyMenu(handle); }
};

struct IconTraits {
  using Handle = HICON;
  static void Free(HICON handle) { ::DestroyIcon(handle); }
};

struct CursorTraits {
  using Handle = HCURSOR;
  static void Free(HCURSOR handle) { ::DestroyCursor(handle); }
};

struct MemoryDCTraits {
  using Handle = HDC;
  static void Free(HDC handle) { ::DeleteDC(handle); }
};

template <typename T>
using UniqueGdiObject = UniqueHandle<GdiObjectTraits<T>>;
using UniquePen = UniqueGdiObject<HPEN>;
using UniqueBrush = UniqueGdiObject<HBRUSH>;
using UniqueFont = UniqueGdiObject<HFONT>;
using UniqueBitmap = UniqueGdiObject<HBITMAP>;
using UniquePalette = UniqueGdiObject<HPALETTE>;
using UniqueRegion = UniqueGdiObject<HRGN>;
using UniqueMenu = UniqueHandle<MenuTraits>;
using UniqueIcon = UniqueHandle<IconTraits>;
using UniqueCursor = UniqueHandle<CursorTraits>;
// A DC from CreateCompatibleDC or CreateDCW, freed with DeleteDC.
using UniqueMemoryDC = UniqueHandle<MemoryDCTraits>;

}  // namespace qvfw
