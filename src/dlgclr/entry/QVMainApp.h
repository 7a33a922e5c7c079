/*
 * CQVMainApp: the library's one module object. It adds no behaviour; it knows the module whose resources every
 * dialog loads (the framework always loads from the module that contains it, which is this DLL) and counts the
 * exports running on the calling thread, so that the outermost one can tidy the thread's framework state on
 * its way out.
 */
#pragma once

#include <windows.h>

class CQVMainApp {
 public:
  CQVMainApp() = default;
  CQVMainApp(const CQVMainApp&) = delete;
  CQVMainApp& operator=(const CQVMainApp&) = delete;

  HINSTANCE GetResourceHandle() const;

  // Export calls in progress on this thread (nested when a dialog's help callback opens another dialog).
  // EnterCall answers the export that was running before (null for the outermost call); LeaveCall takes it
  // back and answers the depth left.
  const char* EnterCall(const char* exportName);
  int LeaveCall(const char* outerExport);
  // The export the calling thread is running now, or null outside any.
  const char* CurrentExport() const;
};

// The global instance.
CQVMainApp& TheApp();
