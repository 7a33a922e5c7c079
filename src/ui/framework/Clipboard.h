/*
 * The clipboard's Unicode text, for controls that filter what is pasted into
 * them before the edit control sees it.
 */
#pragma once

#include <windows.h>

#include <string>

namespace qvfw {

// The clipboard's text (CF_UNICODETEXT), or an empty string when it holds none
// or cannot be opened by `owner` right now.
std::wstring ReadClipboardText(HWND owner);

}  // namespace qvfw
