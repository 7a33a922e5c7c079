/*
 * The module object (see QVMainApp.h). The per-thread bookkeeping is thread_local because each export runs
 * entirely in its caller's thread; two threads calling at once do not share it.
 */
#include "QVMainApp.h"

#include "Module.h"

namespace {

struct ThreadCalls {
  int depth = 0;
  const char* current = nullptr;
};

thread_local ThreadCalls t_calls;

CQVMainApp g_app;

}  // namespace

HINSTANCE CQVMainApp::GetResourceHandle() const { return qvfw::ModuleInstance(); }

const char* CQVMainApp::EnterCall(const char* exportName) {
  const char* outer = t_calls.current;
  t_calls.current = exportName;
  ++t_calls.depth;
  return outer;
}

int CQVMainApp::LeaveCall(const char* outerExport) {
  t_calls.current = outerExport;
  return --t_calls.depth;
}

const char* CQVMainApp::CurrentExport() const { return t_calls.current; }

CQVMainApp& TheApp() { return g_app; }
