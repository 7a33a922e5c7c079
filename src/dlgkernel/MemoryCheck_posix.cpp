/*
 * Pointer checks of the native build: a pointer in the first 64 KiB is never
 * valid, and every page of the range must be mapped (msync refuses unmapped
 * pages with ENOMEM). Page protection is not examined here; the Windows build
 * checks it through VirtualQuery.
 */
#include "MemoryCheck.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace qv {
namespace {

constexpr std::uintptr_t kLowestValidAddress = 0x10000;

bool IsMapped(const void* p, std::size_t size) {
  if (!p) return false;
  auto begin = reinterpret_cast<std::uintptr_t>(p);
  if (begin < kLowestValidAddress) return false;
  if (size == 0) return true;
  if (begin + size < begin) return false;
  const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  std::uintptr_t first = begin & ~(pageSize - 1);
  std::uintptr_t end = begin + size;
  return msync(reinterpret_cast<void*>(first), end - first, MS_ASYNC) == 0;
}

}  // namespace

bool IsReadableMemory(const void* p, std::size_t size) { return IsMapped(p, size); }

bool IsWritableMemory(void* p, std::size_t size) { return IsMapped(p, size); }

}  // namespace qv
