/*
 * The argument checks shared by the two window-level functions that take a bitmap: a 12 or 16-bit gray
 * bitmap, a bit range inside its samples, and a readable LUT of 1..65536 entries.
 */
#pragma once

#include "AddressCheck.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {

constexpr FormatSet kWindowLevelFormats{false, true, true, false, false, false};

inline int CheckWindowLevelArgs(BITMAPHANDLE* p, unsigned int flags, unsigned int allowedFlags, int lowBit, int highBit,
                                const RGBQUAD* lut, unsigned int length, PixelFormat* f) {
  int rc = BeginOperation(p, flags, allowedFlags, kWindowLevelFormats, f);
  if (rc != QV_SUCCESS) return rc;
  if (f->kind == PixelKind::Gray8) return QV_ERROR_UNSUPPORTED_FORMAT;
  const int sampleBits = f->kind == PixelKind::Gray12 ? 12 : 16;
  if (lowBit < 0 || highBit < lowBit || highBit >= sampleBits) return QV_ERROR_INVALID_PARAMETER;
  if (length < 1 || length > QV_MAX_TABLE_LENGTH ||
      !IsValidAddress(lut, static_cast<size_t>(length) * sizeof(RGBQUAD), Access::Read))
    return QV_ERROR_INVALID_TABLE;
  return QV_SUCCESS;
}

}  // namespace ops
}  // namespace qv
