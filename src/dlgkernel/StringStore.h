/*
 * The strings the dialogs read: the built-in text of the current language
 * unless the host has overridden that id. One process-wide store guarded by a
 * mutex, because a host may localise from one thread while a dialog runs on
 * another.
 */
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace qv {

enum class Language : unsigned { English = 0, German = 1 };

class StringStore {
 public:
  static StringStore& Instance();

  // The text of an id as the dialogs see it, or nothing when the id is unknown.
  std::optional<std::wstring> Text(unsigned id) const;
  void SetOverride(unsigned id, std::wstring text);
  void ClearOverride(unsigned id);
  void SetLanguage(Language language);
  Language CurrentLanguage() const;

 private:
  StringStore() = default;

  mutable std::mutex m_mutex;
  Language m_language = Language::English;
  std::map<unsigned, std::wstring> m_overrides;
};

}  // namespace qv
