/*
 * Which window a script step acts on: the outermost dialog the call opened,
 * the innermost modal window, or a window of this thread found by its caption
 * or window class (a message box "Confirm", the common colour dialog
 * "#32770"). Steps wait until their window appears, so a step aimed at a
 * nested modal runs only once that modal is up.
 */
#pragma once

#include <string>

namespace qv::test {

struct WindowQuery {
  enum class Kind { MainDialog, Innermost, Caption, ClassName };
  Kind kind = Kind::MainDialog;
  std::wstring text;

  static WindowQuery Main() { return {}; }
  static WindowQuery Top() { return {Kind::Innermost, {}}; }
  static WindowQuery ByCaption(std::wstring caption) { return {Kind::Caption, std::move(caption)}; }
  static WindowQuery ByClass(std::wstring className) { return {Kind::ClassName, std::move(className)}; }

  // "the main dialog", "window 'Confirm'", for failure messages.
  std::string Describe() const;
};

}  // namespace qv::test
