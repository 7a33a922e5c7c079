/*
 * Window captions and class names as text, for the driver's failure messages
 * and control checks.
 */
#pragma once

#include <windows.h>

#include <string>

namespace qv::test {

std::wstring WindowCaption(HWND hwnd);
std::wstring WindowClass(HWND hwnd);

// Narrow text for messages (UTF-8).
std::string Narrow(const std::wstring& text);

}  // namespace qv::test
