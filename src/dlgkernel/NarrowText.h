/*
 * Widening of the narrow pattern names: from the ANSI code page on Windows,
 * from UTF-8 elsewhere. Invalid byte sequences are refused, not replaced, so a
 * damaged name is reported instead of shown garbled.
 */
#pragma once

#include <cstddef>
#include <string>

namespace qv {

bool NarrowToWide(const char* psz, std::size_t length, std::wstring& out);

}  // namespace qv
