/*
 * The effect of each single-value dialog, once on a preview copy through CQVBitmap and once on the caller's
 * bitmap in place through the kernel's operation, with the same value, so that the preview shows what OK
 * produces.
 */
#pragma once

#include "QVBitmap.h"
#include "ToneMember.h"

namespace qvdlg {

// The CQVBitmap member's result: nonzero on success. Histogram contrast runs about `median`, the median
// intensity of the caller's bitmap (or its region): the copy is a reduction or a crop, whose own median
// would give another curve than OK applies.
int ApplyPreviewEffect(CQVBitmap& bitmap, ToneEffect effect, int value, int median);
// The operation's own result code (QV_SUCCESS or an error).
int ApplyEffectInPlace(BITMAPHANDLE* bitmap, ToneEffect effect, int value);

}  // namespace qvdlg
