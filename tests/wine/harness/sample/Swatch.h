/*
 * The sample dialog's painted swatch: a window class that fills itself with
 * one colour set by the dialog, and reports clicks and wheel turns back to it
 * as a level pick, so pixel read-back and mouse input can be tested.
 */
#pragma once

#include <windows.h>

namespace qv::sample {

constexpr wchar_t kSwatchClass[] = L"QvSampleSwatch";
// Sent to the parent: wParam is the picked level (0..100) from a click, or
// lParam the signed level change of a wheel turn with wParam = -1.
constexpr UINT kSwatchPick = WM_APP + 1;

bool RegisterSwatchClass(HINSTANCE instance);
void SetSwatchColor(HWND swatch, COLORREF color);

}  // namespace qv::sample
