/*
 * Keeps C++ exceptions from crossing an export of the three DLLs: the body of every export runs inside
 * Guarded, which turns an allocation failure into QV_ERROR_NO_MEMORY and anything else into the code the
 * export names (each DLL has the one that fits its callers), and leaves a trace of what it caught.
 */
#pragma once

#include <new>

#include "Trace.h"
#include "qv/qverror.h"

namespace qv {

// The code comes first so that the body, a lambda, closes the call and reads as the export's block.
template <class Body>
int Guarded(int failureCode, Body&& body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    TraceCaughtException("an export ran out of memory");
    return QV_ERROR_NO_MEMORY;
  } catch (...) {
    TraceCaughtException("an export failed");
    return failureCode;
  }
}

}  // namespace qv
