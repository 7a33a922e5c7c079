/*
 * Move-only owners for the few Windows handles the dialog driver holds: a CBT
 * hook, a thread timer, a memory DC, a GDI object, a COM apartment and a COM
 * interface pointer. Each releases exactly once, so a failing step or an early
 * return never leaks a hook that would outlive the test.
 */
#pragma once

#include <windows.h>
#include <objbase.h>

#include <utility>

namespace qv::test {

// A handle with a release function; the traits give the empty value and how
// to close. Copying is forbidden so there is always one owner.
template <typename Traits>
class UniqueHandle {
 public:
  using Handle = typename Traits::Handle;
  UniqueHandle() = default;
  explicit UniqueHandle(Handle h) : m_handle(h) {}
  UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  ~UniqueHandle() { Reset(); }

  Handle Get() const { return m_handle; }
  explicit operator bool() const { return m_handle != Traits::Empty(); }
  Handle Release() { return std::exchange(m_handle, Traits::Empty()); }
  void Reset(Handle h = Traits::Empty()) {
    if (m_handle != Traits::Empty()) Traits::Close(m_handle);
    m_handle = h;
  }

 private:
  Handle m_handle = Traits::Empty();
};

struct HookTraits {
  using Handle = HHOOK;
  static Handle Empty() { return nullptr; }
  static void Close(Handle h) { UnhookWindowsHookEx(h); }
};
struct ThreadTimerTraits {
  using Handle = UINT_PTR;
  static Handle Empty() { return 0; }
  static void Close(Handle h) { KillTimer(nullptr, h); }
};
struct MemoryDcTraits {
  using Handle = HDC;
  static Handle Empty() { return nullptr; }
  static void Close(Handle h) { DeleteDC(h); }
};
struct GdiObjectTraits {
  using Handle = HGDIOBJ;
  static Handle Empty() { return nullptr; }
  static void Close(Handle h) { DeleteObject(h); }
};

using UniqueHook = UniqueHandle<HookTraits>;
using UniqueThreadTimer = UniqueHandle<ThreadTimerTraits>;
using UniqueMemoryDc = UniqueHandle<MemoryDcTraits>;
using UniqueGdiObject = UniqueHandle<GdiObjectTraits>;

// A window DC obtained with GetWindowDC/GetDC goes back with ReleaseDC and
// needs its window, so it is not a plain traits handle.
class WindowDc {
 public:
  WindowDc(HWND hwnd, bool withFrame) : m_hwnd(hwnd), m_dc(withFrame ? GetWindowDC(hwnd) : GetDC(hwnd)) {}
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  ~WindowDc() {
    if (m_dc) ReleaseDC(m_hwnd, m_dc);
  }
  HDC Get() const { return m_dc; }

 private:
  HWND m_hwnd;
  HDC m_dc;
};

// Selects an object into a DC for a scope and puts the previous one back.
class SelectedObject {
 public:
  SelectedObject(HDC dc, HGDIOBJ obj) : m_dc(dc), m_old(SelectObject(dc, obj)) {}
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;
  ~SelectedObject() {
    if (m_old && m_old != HGDI_ERROR) SelectObject(m_dc, m_old);
  }

 private:
  HDC m_dc;
  HGDIOBJ m_old;
};

// COM for the calling thread; balanced only when this object initialised it.
class ComApartment {
 public:
  ComApartment() : m_hr(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() {
    if (SUCCEEDED(m_hr)) CoUninitialize();
  }
  // RPC_E_CHANGED_MODE still leaves COM usable on this thread.
  bool Usable() const { return SUCCEEDED(m_hr) || m_hr == RPC_E_CHANGED_MODE; }

 private:
  HRESULT m_hr;
};

// The smallest COM pointer owner the PNG writer needs.
template <typename T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(const ComPtr&) = delete;
  ComPtr& operator=(const ComPtr&) = delete;
  ComPtr(ComPtr&& other) noexcept : m_ptr(std::exchange(other.m_ptr, nullptr)) {}
  ~ComPtr() {
    if (m_ptr) m_ptr->Release();
  }
  T* Get() const { return m_ptr; }
  T* operator->() const { return m_ptr; }
  T** Put() {
    if (m_ptr) m_ptr->Release();
    m_ptr = nullptr;
    return &m_ptr;
  }

 private:
  T* m_ptr = nullptr;
};

}  // namespace qv::test
