/*
 * ModuleInstance asks Windows which module contains one of its own functions,
 * which is the only answer that is right both in a DLL and in a program.
 */
#include "Module.h"

namespace qvfw {

HINSTANCE ModuleInstance() {
  static const HINSTANCE instance = [] {
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(&ModuleInstance), &module);
    return static_cast<HINSTANCE>(module);
  }();
  return instance;
}

}  // namespace qvfw
