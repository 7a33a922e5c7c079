/*
 * Pointer checks of the Windows build over VirtualQuery: every region the
 * range touches must be committed, not a guard page, and readable (or
 * writable). A pointer in the first 64 KiB is never valid.
 */
#include "MemoryCheck.h"

#include <windows.h>

#include <cstdint>

namespace qv {
namespace {

constexpr std::uintptr_t kLowestValidAddress = 0x10000;
constexpr DWORD kReadable = PAGE_READONLY | PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READ |
                            PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
constexpr DWORD kWritable = PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;

bool HasAccess(const void* p, std::size_t size, DWORD accessMask) {
  if (!p) return false;
  auto address = reinterpret_cast<std::uintptr_t>(p);
  if (address < kLowestValidAddress) return false;
  if (size == 0) return true;
  const std::uintptr_t end = address + size;
  if (end < address) return false;
  while (address < end) {
    MEMORY_BASIC_INFORMATION info{};
    if (VirtualQuery(reinterpret_cast<const void*>(address), &info, sizeof(info)) == 0) return false;
    if (info.State != MEM_COMMIT) return false;
    if ((info.Protect & (PAGE_GUARD | PAGE_NOACCESS)) != 0) return false;
    if ((info.Protect & accessMask) == 0) return false;
    address = reinterpret_cast<std::uintptr_t>(info.BaseAddress) + info.RegionSize;
  }
  return true;
}

}  // namespace

bool IsReadableMemory(const void* p, std::size_t size) { return HasAccess(p, size, kReadable); }

bool IsWritableMemory(void* p, std::size_t size) { return HasAccess(p, size, kWritable); }

}  // namespace qv
