/*
 * Reading and writing palette files (see PaletteFile.h).
 */
#include "PaletteFile.h"

#include <cctype>
#include <cstring>

#include "ByteReader.h"
#include "ByteWriter.h"

namespace qvdlg {
namespace {

bool SameIgnoringCase(const char* a, const char* b, size_t n) {
  for (size_t i = 0; i < n; ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i]))) return false;
  }
  return true;
}

PaletteFileStatus CheckTag(ByteReader& reader) {
  char tag[kPaletteFileTagLength] = {};
  if (reader.ReadBytes(tag, sizeof tag) != sizeof tag) return PaletteFileStatus::kTagMismatch;
  if (std::memcmp(tag, kPaletteFileTag, sizeof tag) == 0) return PaletteFileStatus::kRead;
  return SameIgnoringCase(tag, kPaletteFileTag, sizeof tag) ? PaletteFileStatus::kTagCaseDiffers
                                                            : PaletteFileStatus::kTagMismatch;
}

// Reads `count` entries through one 4-byte buffer that keeps its bytes between reads, which is what makes a
// missing byte repeat the entry before. True when every byte was there.
bool ReadEntries(ByteReader& reader, int count, std::vector<PALETTEENTRY>& entries) {
  uint8_t buffer[4] = {};
  bool complete = true;
  entries.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    if (reader.ReadBytes(buffer, sizeof buffer) != sizeof buffer) complete = false;
    entries.push_back(PALETTEENTRY{buffer[0], buffer[1], buffer[2], buffer[3]});
  }
  return complete;
}

}  // namespace

PaletteFileContents DecodePaletteFile(const uint8_t* data, size_t size) {
  ByteReader reader(data, size);
  PaletteFileContents contents{CheckTag(reader), {}};
  if (contents.status != PaletteFileStatus::kRead) return contents;
  int32_t count = 0;
  if (!reader.ReadI32(count)) {
    contents.status = PaletteFileStatus::kCountCutShort;
    return contents;
  }
  if (count <= 0) {
    contents.status = PaletteFileStatus::kCountNotPositive;
    return contents;
  }
  const bool above = count > kPaletteFileMaxEntries;
  if (!ReadEntries(reader, above ? kPaletteFileMaxEntries : count, contents.entries))
    contents.status = PaletteFileStatus::kEntriesCutShort;
  else if (above)
    contents.status = PaletteFileStatus::kCountAbove256;
  return contents;
}

std::optional<std::vector<uint8_t>> EncodePaletteFile(const PALETTEENTRY* entries, int count) {
  if (count < 0 || count > kPaletteFileMaxEntries || (count > 0 && !entries)) return std::nullopt;
  ByteWriter writer;
  writer.WriteBytes(kPaletteFileTag, kPaletteFileTagLength);
  writer.WriteI32(count);
  for (int i = 0; i < count; ++i) {
    const uint8_t bytes[4] = {entries[i].peRed, entries[i].peGreen, entries[i].peBlue, entries[i].peFlags};
    writer.WriteBytes(bytes, sizeof bytes);
  }
  return writer.Take();
}

}  // namespace qvdlg
