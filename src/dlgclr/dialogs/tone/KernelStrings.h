// The dialog kernel's string ids every colour dialog shows: its buttons and the labels over the preview panes.
#pragma once

namespace qvdlg {

constexpr unsigned kStringOk = 0;
constexpr unsigned kStringCancel = 1;
constexpr unsigned kStringHelp = 2;
constexpr unsigned kStringBefore = 3;
constexpr unsigned kStringAfter = 4;

}  // namespace qvdlg
