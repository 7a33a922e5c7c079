/*
 * Applies a before/after dialog's flag word to its window: shows or hides the views, their labels and the
 * preview toolbar, deletes the toolbar buttons the flags do not keep, switches the zoom keys and live
 * processing, adds the title-bar help button and shows the Help button only when the host gave a callback.
 * Every before/after dialog calls it from OnInitDialog with the positions of its own three toolbar bits; the
 * "Before" and "After" labels are the ones the dialog named to its base.
 */
#pragma once

#include <cstdint>

#include "PreviewFlagPlan.h"
#include "QVBeforeAfterDlg.h"

namespace qvdlg {

void ApplyPreviewFlags(CQVBeforeAfterDlg& dialog, uint32_t flags, const ToolbarBits& bits);

}  // namespace qvdlg
