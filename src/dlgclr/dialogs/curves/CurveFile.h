/*
 * The curve files of the two curve dialogs as bytes, without a window. Both share one layout, little-endian
 * and without padding: an ASCII tag without terminator ("QUORVELIX Remap Intensity Curve" for ".qri",
 * "QUORVELIX Remap Hue Curve" for ".qrh"), the u32 table length of the dialog that wrote it (256, 4096 or
 * 65536), then one record per channel (four for intensity: all, red, green, blue; three for hue: hue,
 * saturation, value), each a u32 mode, an i32 factor, a u32 point count and the points as i32 x, i32 y.
 *
 * A file is read whole or not at all: the first record that fails its checks stops the reading, and the
 * dialog resets every curve (it may already have shown the earlier ones). Only a wrong tag leaves the
 * dialog as it was. A record written for another table length is rescaled to the dialog's (CurveRecord.h).
 */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "CurveRecord.h"

namespace qvdlg {

struct CurveFileFormat {
  const char* tag;
  size_t tagLength;
  int channelCount;
  const char* extension;
};

extern const CurveFileFormat kRemapIntensityCurveFile;
extern const CurveFileFormat kRemapHueCurveFile;

constexpr int kMaxCurveChannels = 4;
// Bytes after these are never looked at: the longest tag, the length and four records of 32 points.
constexpr size_t kCurveFileMaxBytes = 31 + 4 + kMaxCurveChannels * (12 + 8 * QV_CURVE_MAX_POINTS);

enum class CurveFileStatus {
  kRead,
  kTagMismatch,     // not this dialog's file, including a file shorter than the tag: the dialog stays as it was
  kBadTableLength,  // the length is not 256, 4096 or 65536
  kCutShort,        // the file ends inside the length or a record
  kBadRecord,       // a record fails its checks; `check` says which
};

// Whether the dialog shows its invalid-contents message and resets every curve.
constexpr bool CurveFileResetsAll(CurveFileStatus status) {
  return status != CurveFileStatus::kRead && status != CurveFileStatus::kTagMismatch;
}

struct CurveFileContents {
  CurveFileStatus status = CurveFileStatus::kTagMismatch;
  CurveCheck check = CurveCheck::kValid;  // for kBadRecord
  int channel = -1;                       // the record that failed, for kCutShort and kBadRecord
  uint32_t fileLength = 0;
  std::array<CurveRecord, kMaxCurveChannels> records{};  // the first channelCount, for kRead
};

// Reads a file for a dialog whose tables have `dialogLength` entries (256, 4096 or 65536; any other value
// keeps the file's coordinates as they are). Never reads past `size`.
CurveFileContents DecodeCurveFile(const CurveFileFormat& format, const uint8_t* data, size_t size,
                                  uint32_t dialogLength);

// The file's bytes for the format's channelCount records, or nothing when the length is not a table length
// or a record would not pass the reader's checks, so every file written loads back.
std::optional<std::vector<uint8_t>> EncodeCurveFile(const CurveFileFormat& format, uint32_t length,
                                                    const CurveRecord* records);

}  // namespace qvdlg
