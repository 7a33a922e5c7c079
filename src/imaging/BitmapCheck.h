/*
 * The one argument check of every export that takes a bitmap. A host may hand us anything: null, a pointer
 * into freed memory, a descriptor copied from another one whose pixels were freed, a struct of a different
 * version. Each of those is recognised here and turned into its result code, so the exports can read the
 * descriptor and its pixels without further doubt.
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "AddressCheck.h"
#include "qv/qvkrn.h"

namespace qv {

// The one argument check of every export that takes a bitmap: pointer null/unmapped/not writable ->
// QV_ERROR_INVALID_PARAMETER; uStructSize != sizeof(BITMAPHANDLE) -> QV_ERROR_INVALID_STRUCT_SIZE;
// QV_BMF_ALLOCATED clear or pData not a live kernel allocation big enough -> QV_ERROR_BITMAP_NOT_ALLOCATED;
// width/height <= 0 or nBytesPerLine too small / not a multiple of 4 -> QV_ERROR_INVALID_DIMENSIONS;
// unsupported nBitsPerPixel -> QV_ERROR_INVALID_BITS_PER_PIXEL; bad uOrder / palette count / region ->
// QV_ERROR_INVALID_PARAMETER / QV_ERROR_BAD_REGION; a LUT that is not a live kernel allocation of uLUTLength
// entries -> QV_ERROR_INVALID_TABLE. Returns QV_SUCCESS when the bitmap may be used.
int CheckBitmap(const BITMAPHANDLE* p, Access access);

// Only the descriptor itself: the pointer (readable, writable when asked) and uStructSize. For calls that
// accept unallocated descriptors (free, init, region removal).
int CheckDescriptor(const BITMAPHANDLE* p, Access access);

// A caller's descriptor about to be (re)written from scratch: pointer null/unmapped/not writable ->
// QV_ERROR_INVALID_PARAMETER; structSize != sizeof(BITMAPHANDLE) -> QV_ERROR_INVALID_STRUCT_SIZE.
int CheckNewDescriptor(BITMAPHANDLE* p, unsigned int structSize);

// The checks of an export that makes a new bitmap out of another, in their order: pDst and structSize as
// above, flags (none defined), src as CheckBitmap for reading, and pDst == src (QV_ERROR_INVALID_PARAMETER).
int CheckSourceAndNewDescriptor(const BITMAPHANDLE* src, BITMAPHANDLE* dst, unsigned int structSize,
                                unsigned int flags);

// The undefined-bits check of every export's trailing flags word.
inline int CheckFlags(unsigned int flags, unsigned int allowed) {
  return (flags & ~allowed) ? QV_ERROR_INVALID_FLAGS : QV_SUCCESS;
}

inline uint8_t* RowPtr(const BITMAPHANDLE& b, int y) { return b.pData + static_cast<size_t>(y) * b.nBytesPerLine; }

}  // namespace qv
