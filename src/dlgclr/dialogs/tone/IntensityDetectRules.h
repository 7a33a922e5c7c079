/*
 * The value rules of the intensity detect dialog, kept apart from its windows so they are tested natively: the
 * range both bounds share (widened by deep gray images), how a caller's bounds and channel bits come in, how the
 * channel mode and the three channel boxes make the channel bits, and what the preview panes and the colour
 * buttons are given for a bitmap.
 */
#pragma once

#include <cstdint>

#include "ToneMember.h"

namespace qvdlg {

// The channel bits of the effect: a per-channel run tests and recolours each selected channel.
constexpr uint32_t kIntensityRed = 0x001;
constexpr uint32_t kIntensityGreen = 0x010;
constexpr uint32_t kIntensityBlue = 0x100;

// Both bounds start over 0..255 until the bitmap is known.
constexpr ToneRange kIntensityStartRange{0, 255};

// The upper end of both bound ranges for a bitmap. `grayKind` is the kernel's gray test (0 not gray),
// `bitmapFlags` the bitmap's flag word (bit 11, painted through its LUT, counts as gray). A colour image is
// 0..65535 at 48 or 64 bits and 0..255 otherwise; a gray one widens to its 12 or 16 bits and otherwise keeps
// `current`.
int IntensityRangeMaximum(int grayKind, uint32_t bitmapFlags, int bitsPerPixel, int current);

// A caller's bound: itself when inside `range` (unsigned, both ends included), else the range's minimum.
// Low and high are taken independently; low above high stays as given.
int TakeIntensityBound(uint32_t raw, const ToneRange& range);

// The caller's channel bits are read and dropped: the dialog always opens in the intensity mode, so a host
// that stored the last result does not find the colour controls switched on by surprise.
constexpr uint32_t TakeCallerChannel(uint32_t /*raw*/) { return 0; }

// A channel box clicked: its bit set or cleared as the box now shows.
uint32_t WithChannelBit(uint32_t bits, uint32_t bit, bool checked);

// The channel mode picked (the combo entry's item data): the per-channel mode adds the checked boxes' bits to
// `bits`; the intensity mode clears them all.
uint32_t ChannelBitsForMode(uintptr_t modeData, uint32_t bits, bool red, bool green, bool blue);

// The combo entry that shows `bits`: 1 (per channel) for any bit, else 0 (intensity).
constexpr int ChannelModeIndex(uint32_t bits) { return bits != 0 ? 1 : 0; }

// The middle two fields of the preview panes' region settings: 0 for a readable, allocated palette image
// (1 to 8 bits per pixel) of a full handle, 1 for any other bitmap.
int ViewRegionParam(bool readableHandle, bool allocated, int bitsPerPixel);

// Whether the colour buttons offer the image's own palette first (palette images, 12-bit images and 16-bit
// gray ones); otherwise the first palette stays empty and the second is made for the screen.
bool OffersOwnPalette(int bitsPerPixel, uint32_t order);

}  // namespace qvdlg
