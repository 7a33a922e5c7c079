/*
 * The process-wide string store: resolves an id to the host's override or the
 * built-in text of the current language.
 */
#include "StringStore.h"

#include "StringTable.h"

namespace qv {

StringStore& StringStore::Instance() {
  static StringStore store;
  return store;
}

std::optional<std::wstring> StringStore::Text(unsigned id) const {
  std::lock_guard<std::mutex> lock(m_mutex);
  auto it = m_overrides.find(id);
  if (it != m_overrides.end()) return it->second;
  const StringEntry* entry = FindStringEntry(id);
  if (!entry) return std::nullopt;
  return std::wstring(m_language == Language::German ? entry->pszGerman : entry->pszEnglish);
}

void StringStore::SetOverride(unsigned id, std::wstring text) {
  std::lock_guard<std::mutex> lock(m_mutex);
  m_overrides[id] = std::move(text);
}

void StringStore::ClearOverride(unsigned id) {
  std::lock_guard<std::mutex> lock(m_mutex);
  m_overrides.erase(id);
}

void StringStore::SetLanguage(Language language) {
  std::lock_guard<std::mutex> lock(m_mutex);
  m_language = language;
}

Language StringStore::CurrentLanguage() const {
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_language;
}

}  // namespace qv
