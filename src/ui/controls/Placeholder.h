/*
 * Taking over a placeholder of a dialog template: a control created by code
 * stands where the template put a stand-in (a static, a track bar), with its
 * id, rectangle, place in the tab order, font, visibility and enabled state,
 * and the stand-in goes.
 */
#pragma once

#include <windows.h>

namespace qvctl {

struct Placeholder {
  HWND window = nullptr;
  RECT rect{};                   // in the parent's client coordinates
  DWORD visibleAndDisabled = 0;  // the WS_VISIBLE and WS_DISABLED bits the control takes
  HFONT font = nullptr;
};

// False when the parent has no child with this id.
bool FindPlaceholder(HWND parent, UINT id, Placeholder& placeholder);
// Puts `control` where the placeholder is in the tab order, gives it the
// placeholder's font and destroys the placeholder.
void ReplacePlaceholder(const Placeholder& placeholder, HWND control);

}  // namespace qvctl
