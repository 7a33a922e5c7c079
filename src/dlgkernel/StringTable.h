/*
 * The built-in string table: one entry per string id with its English and
 * German text. The table itself lives in StringTableData.cpp; this header is
 * how the store and the tests reach it.
 */
#pragma once

#include <vector>

namespace qv {

struct StringEntry {
  unsigned uId;
  const wchar_t* pszEnglish;
  const wchar_t* pszGerman;
};

// The entry of an id, or null when the table has no text for it.
const StringEntry* FindStringEntry(unsigned id);

// Every id of the table, ascending.
std::vector<unsigned> AllStringIds();

}  // namespace qv
