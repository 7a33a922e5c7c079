/*
 * The parameter structure of one dialog call, held as bytes: the catalog's
 * table handles 21 structure types through one shape, and each row's
 * functions read and write their own type through Load and Store (copies,
 * because the structures are packed and may not be aliased in place). A
 * window-level call also needs a lookup table the caller owns; it lives here
 * for as long as the structure that points at it; a copy of the block keeps
 * the bytes, so a copied structure still points at the original's table.
 */
#pragma once

#include <cstddef>
#include <cstring>
#include <vector>

#include "qv/qvbase.h"

namespace qvdemo {

class ParamBlock {
 public:
  static constexpr size_t kCapacity = 256;

  template <typename T>
  T Load() const {
    static_assert(sizeof(T) <= kCapacity, "every dialog structure fits the block");
    T value;
    std::memcpy(&value, m_bytes, sizeof(T));
    return value;
  }

  template <typename T>
  void Store(const T& value) {
    static_assert(sizeof(T) <= kCapacity, "every dialog structure fits the block");
    std::memcpy(m_bytes, &value, sizeof(T));
    m_size = sizeof(T);
  }

  void* Data() { return m_bytes; }
  size_t Size() const { return m_size; }
  bool SameBytes(const ParamBlock& other) const {
    return m_size == other.m_size && std::memcmp(m_bytes, other.m_bytes, m_size) == 0;
  }
  std::vector<RGBQUAD>& Lut() { return m_lut; }

 private:
  alignas(8) unsigned char m_bytes[kCapacity] = {};
  size_t m_size = 0;
  std::vector<RGBQUAD> m_lut;
};

}  // namespace qvdemo
