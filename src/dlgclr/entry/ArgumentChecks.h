/*
 * The argument checks every dialog export makes before it opens a window, in their fixed order: readiness of
 * the dialog kernel, the structure pointer (null, unmapped or read-only over the probed size), the exact
 * structure size, then the bitmap the flags demand (allocated, and not of signed samples where refused) -
 * once for QVDLG_AUTO_PROCESS and once more for QVDLG_SHOW_PREVIEW - and last a demanded palette image
 * with a region, which no effect can process (its palette is shared by the pixels inside and outside the
 * region), so the dialog refuses it with the code OK's run would give rather than preview an effect OK
 * cannot apply. The owner window is checked later by the Windows side. Fields are read byte-wise because
 * the structures are packed.
 */
#pragma once

#include <cstdint>

#include "ExportInfo.h"

namespace qvdlg {

// QV_SUCCESS or the first failing check's code. `ready` is the dialog kernel's readiness answer.
int CheckExportArguments(const ExportInfo& info, int ready, const void* params);

// The bitmap test of one demanding flag: QV_SUCCESS, QV_ERROR_BITMAP_NOT_ALLOCATED (null, unreadable or not
// allocated) or QV_ERROR_UNSUPPORTED_BITMAP.
int CheckDemandedBitmap(const void* bitmap, bool refusesSigned);

// True for a readable palette image (1, 2, 4 bits, or 8 bits not gray) whose region is set.
bool IsPaletteImageWithRegion(const void* bitmap);

}  // namespace qvdlg
