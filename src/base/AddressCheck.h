/*
 * The one pointer probe of every layer that takes pointers from a host: a pointer handed across an export is
 * probed before it is read or written, so that a null, unmapped or read-only pointer becomes an error code
 * instead of an access violation. The caller always says whether it means to read or to write; a probe that
 * silently asked for write access would refuse a host's read-only input.
 */
#pragma once

#include <cstddef>

namespace qv {

enum class Access { Read, Write };

// True when [p, p+bytes) is committed memory the caller may read, or read and write for Access::Write.
// Null is never valid; zero bytes are probed as one.
bool IsValidAddress(const void* p, size_t bytes, Access access);

}  // namespace qv
