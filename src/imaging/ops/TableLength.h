/*
 * The table-length rule of the table-driven operations: one entry per sample value of the format, so 256
 * for palettes, 8-bit gray, 5-6-5 and 8-bit color, 4096 for 12-bit gray and 65536 for 16-bit gray and
 * 16-bit color samples. A caller's table must have exactly that many readable entries.
 */
#pragma once

#include "AddressCheck.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {

inline unsigned int SampleTableLength(const PixelFormat& f) { return ChannelMax(f) + 1; }

// QV_ERROR_INVALID_TABLE for a null or unreadable table or a length that does not match the samples.
inline int CheckSampleTable(const PixelFormat& f, const unsigned int* table, unsigned int length) {
  if (length != SampleTableLength(f)) return QV_ERROR_INVALID_TABLE;
  if (!IsValidAddress(table, static_cast<size_t>(length) * sizeof(unsigned int), Access::Read))
    return QV_ERROR_INVALID_TABLE;
  return QV_SUCCESS;
}

}  // namespace ops
}  // namespace qv
