/*
 * A bitmap under construction by an operation that changes a bitmap's format: the new descriptor is built
 * beside the caller's and its memory is released unless the operation hands it on, so a failure or an
 * abort part of the way leaves nothing behind.
 */
#pragma once

#include "../Bitmap.h"
#include "qv/qvkrn.h"

namespace qv {
namespace ops {

class PendingBitmap {
 public:
  PendingBitmap() = default;
  ~PendingBitmap() {
    if (m_b.pData) ReleaseBitmapMemory(&m_b);
  }
  PendingBitmap(const PendingBitmap&) = delete;
  PendingBitmap& operator=(const PendingBitmap&) = delete;

  BITMAPHANDLE* get() { return &m_b; }

  // Puts the finished bitmap into *target, releasing what *target owned when it is the source itself
  // (in place); another target is overwritten without being freed, as Q_CopyBitmap does.
  void HandOver(BITMAPHANDLE* source, BITMAPHANDLE* target) {
    if (target == source) ReleaseBitmapMemory(source);
    *target = m_b;
    m_b = BITMAPHANDLE{};
  }

 private:
  BITMAPHANDLE m_b{};
};

}  // namespace ops
}  // namespace qv
