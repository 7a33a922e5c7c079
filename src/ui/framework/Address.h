/*
 * The framework's pointer probe: a host pointer is checked with this before
 * it is read or written, so an unmapped or read-only pointer becomes an error
 * code instead of an access violation. The probe itself lives with the
 * imaging kernel, which takes host pointers too.
 */
#pragma once

#include <cstddef>

#include "AddressCheck.h"

namespace qvfw {

inline bool IsValidAddress(const void* p, size_t bytes, bool writable = true) {
  return qv::IsValidAddress(p, bytes, writable);
}

}  // namespace qvfw
