/*
 * Qvdlgclrx.dll loaded at run time, its dialogs found by export name: a host
 * built against this table keeps working as dialogs are added, and the menu
 * shows exactly the ones the installed library has.
 */
#pragma once

#include <windows.h>

namespace qvdemo {

// Every dialog export takes its owner and a pointer to its own structure.
using DialogCall = int (*)(HWND owner, void* params);

class DialogLibrary {
 public:
  DialogLibrary();
  ~DialogLibrary();
  DialogLibrary(const DialogLibrary&) = delete;
  DialogLibrary& operator=(const DialogLibrary&) = delete;

  bool IsLoaded() const { return m_module != nullptr; }
  // The export, or null when the library lacks it (or is not loaded).
  DialogCall Find(const char* exportName) const;

 private:
  HMODULE m_module;
};

}  // namespace qvdemo
