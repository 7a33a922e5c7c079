/*
 * The Windows address probe over VirtualQuery: every region overlapping [p, p+bytes) must be committed, not a
 * guard page and readable (writable when asked), so a forged pointer from a host gives an error code rather
 * than an access violation.
 */
#include "AddressCheck.h"

#include <windows.h>

#include <cstdint>

namespace qv {
namespace {

bool ProtectionAllows(DWORD protect, Access access) {
  if (protect & (PAGE_GUARD | PAGE_NOACCESS)) return false;
  const DWORD kWritable = PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
  const DWORD kReadable = kWritable | PAGE_READONLY | PAGE_EXECUTE_READ;
  return (protect & (access == Access::Write ? kWritable : kReadable)) != 0;
}

}  // namespace

bool IsValidAddress(const void* p, size_t bytes, Access access) {
  if (!p) return false;
  uintptr_t cursor = reinterpret_cast<uintptr_t>(p);
  if (bytes == 0) bytes = 1;
  if (cursor > UINTPTR_MAX - bytes) return false;
  const uintptr_t end = cursor + bytes;
  while (cursor < end) {
    MEMORY_BASIC_INFORMATION info{};
    if (VirtualQuery(reinterpret_cast<const void*>(cursor), &info, sizeof info) != sizeof info) return false;
    if (info.State != MEM_COMMIT || !ProtectionAllows(info.Protect, access)) return false;
    const uintptr_t regionEnd = reinterpret_cast<uintptr_t>(info.BaseAddress) + info.RegionSize;
    if (regionEnd <= cursor) return false;
    cursor = regionEnd;
  }
  return true;
}

}  // namespace qv
