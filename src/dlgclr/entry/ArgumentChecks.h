/*
 * The argument checks every dialog export makes before it opens a window, in their fixed order: readiness of
 * the dialog kernel, the structure pointer (null, unmapped or read-only over the probed size), the exact
 * structure size, then the bitmap the flags demand (allocated, and not of signed samples where refused) -
 * once for QVDLG_AUTO_PROCESS and once more for QVDLG_SHOW_PREVIEW. The owner window is checked later by
 * the Windows side. Fields are read byte-wise because the structures are packed.
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

}  // namespace qvdlg
