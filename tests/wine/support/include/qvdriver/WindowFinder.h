/*
 * Looks up the window a step targets among the visible top-level windows of
 * the calling thread (the thread that runs the modal loops).
 */
#pragma once

#include <windows.h>

#include <string>

#include "qvdriver/ModalStack.h"
#include "qvdriver/WindowQuery.h"

namespace qv::test {

HWND FindWindowFor(const WindowQuery& query, const ModalStack& stack);

// The window's caption and class name, for traces and checks.
std::wstring WindowCaption(HWND hwnd);
std::wstring WindowClass(HWND hwnd);

// Narrow text for messages (UTF-8).
std::string Narrow(const std::wstring& text);

}  // namespace qv::test
