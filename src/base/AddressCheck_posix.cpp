/*
 * The native address probe. Linux has no VirtualQuery, so every call reads the mappings and their
 * permissions from /proc/self/maps; that costs tens of microseconds, which is why the probe is used only for
 * what crosses an export (descriptors, records, tables), never per pixel. A pointer inside a run of
 * mappings with the needed permission bits is valid.
 */
#include "AddressCheck.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace qv {
namespace {

struct MapRange {
  uintptr_t begin;
  uintptr_t end;
  bool readable;
  bool writable;
};

// Walks /proc/self/maps and checks that [begin, end) is covered by consecutive readable (and writable when
// asked) mappings.
bool CoveredByMappings(uintptr_t begin, uintptr_t end, Access access) {
  FILE* f = std::fopen("/proc/self/maps", "r");
  if (!f) return false;
  char line[512];
  uintptr_t cursor = begin;
  bool ok = false;
  while (std::fgets(line, sizeof line, f)) {
    unsigned long long lo = 0, hi = 0;
    char perms[8] = {};
    if (std::sscanf(line, "%llx-%llx %7s", &lo, &hi, perms) != 3) continue;
    MapRange r{static_cast<uintptr_t>(lo), static_cast<uintptr_t>(hi), perms[0] == 'r', perms[1] == 'w'};
    if (cursor < r.begin || cursor >= r.end) continue;
    if (!r.readable || (access == Access::Write && !r.writable)) break;
    cursor = r.end;
    if (cursor >= end) {
      ok = true;
      break;
    }
  }
  std::fclose(f);
  return ok;
}

}  // namespace

bool IsValidAddress(const void* p, size_t bytes, Access access) {
  if (!p) return false;
  const uintptr_t begin = reinterpret_cast<uintptr_t>(p);
  if (bytes == 0) bytes = 1;
  if (begin > UINTPTR_MAX - bytes) return false;
  return CoveredByMappings(begin, begin + bytes, access);
}

}  // namespace qv
