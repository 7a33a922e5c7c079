/*
 * Whether a caller's pointer may be read or written over a given length, so
 * that an unmapped or read-only pointer gives an error code instead of a crash.
 * Windows asks VirtualQuery; the native build (tests only) checks that the
 * pages are mapped.
 */
#ifndef QV_DLGKERNEL_MEMORYCHECK_H
#define QV_DLGKERNEL_MEMORYCHECK_H

#include <cstddef>

namespace qv {

bool IsReadableMemory(const void* p, std::size_t size);
bool IsWritableMemory(void* p, std::size_t size);

// Length of a terminated narrow string of at most maxLength characters, reading
// no byte that is not readable; false when unreadable or not terminated in time.
bool SafeStringLength(const char* psz, std::size_t maxLength, std::size_t* pLength);
bool SafeWideStringLength(const wchar_t* psz, std::size_t maxLength, std::size_t* pLength);

}  // namespace qv

#endif
