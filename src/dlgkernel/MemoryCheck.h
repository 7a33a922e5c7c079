/*
 * Whether a caller's pointer may be read or written over a given length, so
 * that an unmapped or read-only pointer gives an error code instead of a crash
 * (the imaging kernel's address probe), and the length of a caller's string
 * read page by page without running into unmapped memory.
 */
#ifndef QV_DLGKERNEL_MEMORYCHECK_H
#define QV_DLGKERNEL_MEMORYCHECK_H

#include <cstddef>

#include "AddressCheck.h"

namespace qv {

inline bool IsReadableMemory(const void* p, std::size_t size) { return IsValidAddress(p, size, false); }
inline bool IsWritableMemory(void* p, std::size_t size) { return IsValidAddress(p, size, true); }

// Length of a terminated narrow string of at most maxLength characters, reading
// no byte that is not readable; false when unreadable or not terminated in time.
bool SafeStringLength(const char* psz, std::size_t maxLength, std::size_t* pLength);
bool SafeWideStringLength(const wchar_t* psz, std::size_t maxLength, std::size_t* pLength);

}  // namespace qv

#endif
