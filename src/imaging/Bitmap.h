/*
 * Kernel-owned memory for pixels and side tables (LUT, region mask). Every block is registered with its size,
 * so a descriptor's pointers can be proven to be live kernel allocations of sufficient size before use: a
 * forged, stale or already freed pointer is then an error code, never a crash or a double free.
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "qv/qvkrn.h"

namespace qv {

// Allocates pixel memory that CheckBitmap will accept (a live, registered kernel allocation), zero-filled.
uint8_t* AllocatePixels(size_t bytes);   // null on failure
bool FreePixels(uint8_t* p);             // false when p is not a live kernel allocation
size_t AllocationSize(const void* p);    // 0 when p is not a live kernel allocation

// Releases everything the descriptor owns (pixels, LUT, mask) and clears the fields that referred to it.
// The descriptor must already have passed CheckDescriptor.
void ReleaseBitmapMemory(BITMAPHANDLE* p);

// Deep copy of a checked bitmap into *dst (pixels, LUT and region mask get fresh allocations). *dst is
// overwritten without being freed. QV_ERROR_NO_MEMORY leaves *dst untouched.
int DeepCopyBitmap(const BITMAPHANDLE& src, BITMAPHANDLE* dst);

// A descriptor of the given geometry with fresh zeroed pixels, ready for CheckBitmap. Order and signedness
// are taken as given; the palette is left empty.
int CreateBlankBitmap(int width, int height, int bitsPerPixel, uint32_t order, bool isSigned, BITMAPHANDLE* out);

}  // namespace qv
