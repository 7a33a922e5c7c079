/*
 * Runs a ChannelMap over a bitmap through lookup tables built once per call: 256 entries per channel for
 * 8-bit samples, palettes and 5-6-5 channels; 65536 16-bit entries for 12/16-bit gray and 48/64-bit color
 * (entries past a 12-bit image's 4095 keep their value, so stray bits in a sample never index past a table).
 * Signed gray runs through the same curve on its levels (OpsCommon.h: GrayLevel), so a curve written for
 * 0..max works on -32768..32767 (or -2048..2047) with the range's ends and middle where a user expects them.
 * The row kernel is chosen once from the format; alpha and pixels outside the region are never written.
 */
#pragma once

#include "../PixelFormat.h"
#include "ChannelMap.h"
#include "qv/qvkrn.h"

namespace qv {
namespace ops {

// The bitmap has passed BeginOperation (any format).
int ApplyChannelMap(BITMAPHANDLE& b, const PixelFormat& f, const ChannelMap& map);

}  // namespace ops
}  // namespace qv
