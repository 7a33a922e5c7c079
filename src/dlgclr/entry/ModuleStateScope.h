/*
 * The module state switch of every export, as a scope object. Our framework needs no switch for resources:
 * it always loads templates, menus, bitmaps and cursors from the module that contains it, which is this DLL.
 * What a call does change is the thread's framework state: looking up the owner window makes a temporary
 * wrapper object for a window we do not own, and that wrapper must not outlive the call. So the scope records
 * the call with the module object, remembers the export that runs (restoring the outer one when calls nest),
 * and when the outermost export of the thread leaves - on every way out, early error returns included - it
 * frees the thread's temporary wrappers.
 */
#pragma once

class CModuleStateScope {
 public:
  explicit CModuleStateScope(const char* exportName);
  ~CModuleStateScope();
  CModuleStateScope(const CModuleStateScope&) = delete;
  CModuleStateScope& operator=(const CModuleStateScope&) = delete;

 private:
  const char* m_outerExport;
};
