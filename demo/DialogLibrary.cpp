/*
 * Loads the dialog library by name from the program's folder search order,
 * as a host that links it late would, and frees it when the demo ends.
 */
#include "DialogLibrary.h"

namespace qvdemo {

DialogLibrary::DialogLibrary() : m_module(LoadLibraryW(L"Qvdlgclrx.dll")) {}

DialogLibrary::~DialogLibrary() {
  if (m_module != nullptr) FreeLibrary(m_module);
}

DialogCall DialogLibrary::Find(const char* exportName) const {
  if (m_module == nullptr || exportName == nullptr) return nullptr;
  FARPROC proc = GetProcAddress(m_module, exportName);
  // FARPROC is a generic function pointer; the export's real type is the dialog signature.
  return reinterpret_cast<DialogCall>(reinterpret_cast<void*>(proc));
}

}  // namespace qvdemo
