// Keeps C++ exceptions from crossing an export: the body of every export runs inside Guarded, which turns an
// allocation failure into QV_ERROR_NO_MEMORY and anything else into QV_ERROR_PLATFORM.
#pragma once

#include <new>

#include "qv/qverror.h"

namespace qv {

template <class F>
int Guarded(F&& body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return QV_ERROR_NO_MEMORY;
  } catch (...) {
    return QV_ERROR_PLATFORM;
  }
}

}  // namespace qv
