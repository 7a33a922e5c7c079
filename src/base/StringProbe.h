/*
 * The one bounded string probe: the length of a host's terminated string, read page by page so that a string
 * running into unmapped memory is refused instead of read past. Every export that takes a host's text (a file
 * path, a string-table override, a pattern name) measures it here before it copies it.
 */
#pragma once

#include <cstddef>

namespace qv {

// Stores in *pLength the length of psz (without its terminator) when psz is readable and terminated within
// maxLength + 1 characters, so a string of exactly maxLength characters is accepted. False, with *pLength
// untouched, for null, unreadable or unterminated text. Instantiated for char and wchar_t.
template <class Char>
bool SafeStringLength(const Char* psz, std::size_t maxLength, std::size_t* pLength);

extern template bool SafeStringLength<char>(const char*, std::size_t, std::size_t*);
extern template bool SafeStringLength<wchar_t>(const wchar_t*, std::size_t, std::size_t*);

}  // namespace qv
