/*
 * A move-only owner of one COM interface pointer: released exactly once, never copied.
 */
#pragma once

#include <unknwn.h>

#include <utility>

namespace qv {

template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ~ComPtr() { Reset(); }
  ComPtr(const ComPtr&) = delete;
  ComPtr& operator=(const ComPtr&) = delete;
  ComPtr(ComPtr&& other) noexcept : m_p(std::exchange(other.m_p, nullptr)) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    if (this != &other) {
      Reset();
      m_p = std::exchange(other.m_p, nullptr);
    }
    return *this;
  }

  T* Get() const { return m_p; }
  T* operator->() const { return m_p; }
  explicit operator bool() const { return m_p != nullptr; }
  // For out-parameters: releases what is held and hands out the slot.
  T** Put() {
    Reset();
    return &m_p;
  }
  void Reset() {
    if (m_p) std::exchange(m_p, nullptr)->Release();
  }

 private:
  T* m_p = nullptr;
};

}  // namespace qv
