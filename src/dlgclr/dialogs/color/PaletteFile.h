/*
 * The palette file (".qvp") as bytes, without a window: the 17-byte ASCII tag "QUORVELIX Palette", a signed
 * 32-bit little-endian entry count and 4 bytes per entry (red, green, blue and the entry's flag byte, kept as
 * it is). The palette editor and the colour-resolution dialog read files through DecodePaletteFile and write
 * them through EncodePaletteFile; opening the file and the message boxes are theirs.
 *
 * Reading is forgiving in the way the editor always was: a count above 256 takes the first 256 entries, a
 * count of 0 or below gives an empty palette, and a file cut short inside the entries still loads, each
 * missing byte repeating the byte of the entry before (zero for the first entry). Only a wrong tag refuses
 * the file. Every case has its own status so a dialog can tell them apart, and no case reads past `size`.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "PaletteTables.h"

namespace qvdlg {

constexpr char kPaletteFileTag[] = "QUORVELIX Palette";
constexpr size_t kPaletteFileTagLength = sizeof kPaletteFileTag - 1;
constexpr int kPaletteFileMaxEntries = 256;
// Bytes after these are never looked at, so a dialog need not read more of a file.
constexpr size_t kPaletteFileMaxBytes = kPaletteFileTagLength + 4 + 4 * kPaletteFileMaxEntries;

// When several apply, the first in this list is reported.
enum class PaletteFileStatus {
  kTagMismatch,       // refused: not a palette file, including a file shorter than the tag
  kTagCaseDiffers,    // refused: the tag matches only when letter case is ignored
  kCountCutShort,     // loads an empty palette: the file ends inside the count
  kEntriesCutShort,   // loads: the file ends before the last counted entry (see above)
  kCountAbove256,     // loads the first 256 entries; the rest of the file is ignored
  kCountNotPositive,  // loads an empty palette: the count is 0 or negative
  kRead,              // loads: a well-formed file (bytes after the last entry are ignored)
};

// Whether the dialog takes the file's entries (replacing its list) or refuses the file and keeps its list.
constexpr bool PaletteFileLoads(PaletteFileStatus status) {
  return status != PaletteFileStatus::kTagMismatch && status != PaletteFileStatus::kTagCaseDiffers;
}

struct PaletteFileContents {
  PaletteFileStatus status;
  std::vector<PALETTEENTRY> entries;  // empty when the file is refused
};

PaletteFileContents DecodePaletteFile(const uint8_t* data, size_t size);

// The file's bytes for `count` entries, or nothing for a count outside 0..256 or null entries with a count.
std::optional<std::vector<uint8_t>> EncodePaletteFile(const PALETTEENTRY* entries, int count);

}  // namespace qvdlg
