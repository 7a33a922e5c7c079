/*
 * The module state switch of the exports (see ModuleStateScope.h).
 */
#include "ModuleStateScope.h"

#include "QVMainApp.h"
#include "Wnd.h"

CModuleStateScope::CModuleStateScope(const char* exportName) : m_outerExport(TheApp().EnterCall(exportName)) {}

CModuleStateScope::~CModuleStateScope() {
  if (TheApp().LeaveCall(m_outerExport) == 0) qvfw::CWnd::DeleteTempMap();
}
