/*
 * A test's own bitmap: a zeroed descriptor that is freed through the kernel when the test leaves its scope.
 * Every test helper that owns a kernel bitmap holds one of these.
 */
#pragma once

#include <cstring>

#include "qv/qvkrn.h"

namespace qvtest {

class OwnedBitmap {
 public:
  OwnedBitmap() { std::memset(&m_b, 0, sizeof m_b); }
  ~OwnedBitmap() {
    if (m_b.uFlags & QV_BMF_ALLOCATED) Q_FreeBitmap(&m_b, 0);
  }
  OwnedBitmap(const OwnedBitmap&) = delete;
  OwnedBitmap& operator=(const OwnedBitmap&) = delete;
  BITMAPHANDLE* get() { return &m_b; }
  const BITMAPHANDLE* get() const { return &m_b; }
  BITMAPHANDLE* operator->() { return &m_b; }
  const BITMAPHANDLE* operator->() const { return &m_b; }
  BITMAPHANDLE& operator*() { return m_b; }
  const BITMAPHANDLE& operator*() const { return m_b; }

 private:
  BITMAPHANDLE m_b;
};

}  // namespace qvtest
