/*
 * The portable part of the pointer checks: walking a narrow string page by page
 * so that a name running into unmapped memory is refused, not read past.
 */
#include "MemoryCheck.h"

#include <cstdint>

namespace qv {
namespace {
constexpr std::uintptr_t kPageSize = 4096;

template <typename Char>
bool MeasureString(const Char* psz, std::size_t maxLength, std::size_t* pLength) {
  if (!psz) return false;
  std::size_t length = 0;
  const Char* p = psz;
  while (length <= maxLength) {
    // Check up to the end of the current page at once, then scan it.
    std::uintptr_t address = reinterpret_cast<std::uintptr_t>(p);
    std::size_t bytes = static_cast<std::size_t>(kPageSize - address % kPageSize);
    std::size_t chunk = bytes < sizeof(Char) ? 1 : bytes / sizeof(Char);
    if (!IsReadableMemory(p, chunk * sizeof(Char))) return false;
    for (std::size_t i = 0; i < chunk; ++i, ++p, ++length) {
      if (*p == Char(0)) {
        *pLength = length;
        return true;
      }
      if (length == maxLength) return false;
    }
  }
  return false;
}

}  // namespace

bool SafeStringLength(const char* psz, std::size_t maxLength, std::size_t* pLength) {
  return MeasureString(psz, maxLength, pLength);
}

bool SafeWideStringLength(const wchar_t* psz, std::size_t maxLength, std::size_t* pLength) {
  return MeasureString(psz, maxLength, pLength);
}

}  // namespace qv
