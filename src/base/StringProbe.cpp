/*
 * The bounded string probe. The address probe is asked once per page the string touches, not once per
 * character: on Linux each probe reads the process's mappings, and a page is the unit memory is mapped in.
 */
#include "StringProbe.h"

#include <cstdint>

#include "AddressCheck.h"

namespace qv {
namespace {

constexpr std::uintptr_t kPageSize = 4096;

}  // namespace

template <class Char>
bool SafeStringLength(const Char* psz, std::size_t maxLength, std::size_t* pLength) {
  if (!psz) return false;
  std::size_t length = 0;
  const Char* p = psz;
  for (;;) {
    // Probe up to the end of the current page at once (at least one whole character), then scan it.
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(p);
    const std::size_t bytes = static_cast<std::size_t>(kPageSize - address % kPageSize);
    const std::size_t chunk = bytes < sizeof(Char) ? 1 : bytes / sizeof(Char);
    if (!IsValidAddress(p, chunk * sizeof(Char), Access::Read)) return false;
    for (std::size_t i = 0; i < chunk; ++i, ++p, ++length) {
      if (*p == Char(0)) {
        *pLength = length;
        return true;
      }
      if (length == maxLength) return false;
    }
  }
}

template bool SafeStringLength<char>(const char*, std::size_t, std::size_t*);
template bool SafeStringLength<wchar_t>(const wchar_t*, std::size_t, std::size_t*);

}  // namespace qv
