// Address checks shared by every layer that takes pointers from a host: a pointer handed across an export is
// probed before it is read or written, so that a null, unmapped or read-only pointer becomes an error code
// instead of an access violation. Built as the small static library `qvaddress` so the dialog layers can use
// it without linking the whole imaging core.
#pragma once

#include <cstddef>

namespace qv {

// True when [p, p+bytes) is committed memory readable (and writable when asked). Null is never valid.
bool IsValidAddress(const void* p, size_t bytes, bool writable);

}  // namespace qv
