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
uint8_t* AllocatePixels(size_t bytes);  // null on failure
bool FreePixels(uint8_t* p);            // false when p is not a live kernel allocation
size_t AllocationSize(const void* p);   // 0 when p is not a live kernel allocation

// Releases everything the descriptor owns (pixels, LUT, mask) and clears the fields that referred to it.
// The descriptor must already have passed CheckDescriptor.
void ReleaseBitmapMemory(BITMAPHANDLE* p);

// Deep copy of a checked bitmap into *dst (pixels, LUT and region mask get fresh allocations). *dst is
// overwritten without being freed. QV_ERROR_NO_MEMORY leaves *dst untouched.
int DeepCopyBitmap(const BITMAPHANDLE& src, BITMAPHANDLE* dst);

// The one size rule of every bitmap the kernel makes, whichever export or reader asks: width and height of
// at least 1 (else QV_ERROR_INVALID_DIMENSIONS) and at most QV_MAX_BITMAP_SIDE (else QV_ERROR_IMAGE_TOO_LARGE).
// With sides of at most 2^18 pixels a row of 64-bit pixels stays below 2 MB, so row sizes fit an int32 and
// the largest bitmap (2^39 bytes) stays far from what size_t and ptrdiff_t address; no other byte limit is
// needed, and an allocation that fails below it is QV_ERROR_NO_MEMORY.
constexpr int32_t kMaxBitmapSide = QV_MAX_BITMAP_SIDE;
static_assert(kMaxBitmapSide == 1 << 18, "the reasoning above is for 2^18");
int CheckBitmapSize(int width, int height);

// Fills *out (overwritten without being freed) with a descriptor of the given geometry and format without
// pixel memory: rows of the smallest size, nHighBit the top sample bit, a gray ramp palette for indexed
// formats. Checks the size rule, then the format; *out is untouched on an error.
int DescribeNewBitmap(int width, int height, int bitsPerPixel, uint32_t order, bool isSigned, BITMAPHANDLE* out);

// Gives a described descriptor (size rule and format checked again: a host may have changed the fields)
// zeroed pixel memory of nBytesPerLine x nHeight and sets QV_BMF_ALLOCATED; untouched on an error.
int AllocateBitmapPixels(BITMAPHANDLE* b);

// DescribeNewBitmap and AllocateBitmapPixels in one step: the way every export and reader makes a bitmap.
int CreateBlankBitmap(int width, int height, int bitsPerPixel, uint32_t order, bool isSigned, BITMAPHANDLE* out);

// A fresh kernel block holding a copy of `bytes` bytes at src; null when src is null or memory runs out.
uint8_t* DuplicateBlock(const void* src, size_t bytes);

}  // namespace qv
