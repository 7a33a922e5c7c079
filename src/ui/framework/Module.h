/*
 * The module that holds the framework's code. Templates, menus, bitmaps and
 * strings always load from it: linked into Qvdlgclrx.dll that is the DLL, not
 * the host program that called it, and linked into a test program it is that
 * program.
 */
#pragma once

#include <windows.h>

namespace qvfw {

HINSTANCE ModuleInstance();

}  // namespace qvfw
