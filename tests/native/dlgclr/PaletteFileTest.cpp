// The palette file: exact bytes, byte-identical round trips for every size up to the limit, and each kind of
// damaged file mapped to its own status with the entries the editor loads from it.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "ByteWriter.h"
#include "PaletteFile.h"

namespace qvdlg {
namespace {

using Bytes = std::vector<uint8_t>;

std::vector<PALETTEENTRY> Ramp(int n) {
  std::vector<PALETTEENTRY> entries;
  for (int i = 0; i < n; ++i)
    entries.push_back(PALETTEENTRY{static_cast<uint8_t>(i), static_cast<uint8_t>(255 - i),
                                   static_cast<uint8_t>(i * 7), static_cast<uint8_t>(i % 3)});
  return entries;
}

Bytes File(const std::string& tag, int32_t count, int entriesPresent) {
  ByteWriter w;
  w.WriteBytes(tag.data(), tag.size());
  w.WriteI32(count);
  for (const PALETTEENTRY& e : Ramp(entriesPresent)) w.WriteBytes(&e, 4);
  return w.Take();
}

std::string Text(const std::vector<PALETTEENTRY>& p) {
  std::string s;
  for (const PALETTEENTRY& e : p)
    s += std::to_string(e.peRed) + "," + std::to_string(e.peGreen) + "," + std::to_string(e.peBlue) + "," +
         std::to_string(e.peFlags) + " ";
  return s;
}

TEST(PaletteFile, WritesTagLittleEndianCountAndEntryBytesInOrder) {
  const PALETTEENTRY entries[2] = {{1, 2, 3, 4}, {250, 251, 252, 253}};
  const Bytes expected = {'Q', 'U', 'O', 'R', 'V', 'E', 'L', 'I', 'X', ' ', 'P', 'a', 'l', 'e', 't', 't', 'e',
                          2,   0,   0,   0,   1,   2,   3,   4,   250, 251, 252, 253};
  EXPECT_EQ(EncodePaletteFile(entries, 2), expected);
}

TEST(PaletteFile, EverySizeRoundTripsByteForByte) {
  for (int n : {1, 2, 3, 255, 256}) {
    const std::vector<PALETTEENTRY> entries = Ramp(n);
    const auto bytes = EncodePaletteFile(entries.data(), n);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 21u + 4u * n);
    const PaletteFileContents read = DecodePaletteFile(bytes->data(), bytes->size());
    EXPECT_EQ(read.status, PaletteFileStatus::kRead) << n;
    EXPECT_EQ(Text(read.entries), Text(entries)) << n;
    EXPECT_EQ(EncodePaletteFile(read.entries.data(), n), bytes) << n;
  }
  const auto empty = EncodePaletteFile(nullptr, 0);
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->size(), 21u);
  EXPECT_EQ(DecodePaletteFile(empty->data(), empty->size()).status, PaletteFileStatus::kCountNotPositive);
}

TEST(PaletteFile, TheWriterRefusesWhatTheEditorCannotHold) {
  const std::vector<PALETTEENTRY> entries = Ramp(257);
  EXPECT_FALSE(EncodePaletteFile(entries.data(), 257));
  EXPECT_FALSE(EncodePaletteFile(entries.data(), -1));
  EXPECT_FALSE(EncodePaletteFile(nullptr, 1));
}

TEST(PaletteFile, DamagedFilesGetTheirOwnStatusAndTheDocumentedEntries) {
  const std::string tag = kPaletteFileTag;
  Bytes trailing = File(tag, 2, 2);
  trailing.insert(trailing.end(), {9, 9, 9, 9, 9});
  struct Case {
    const char* name;
    Bytes file;
    PaletteFileStatus status;
    size_t entries;
  };
  const Case cases[] = {
      {"count 300 with 300 entries", File(tag, 300, 300), PaletteFileStatus::kCountAbove256, 256},
      {"count 257", File(tag, 257, 257), PaletteFileStatus::kCountAbove256, 256},
      {"count 256", File(tag, 256, 256), PaletteFileStatus::kRead, 256},
      {"count 300 but only 10 entries", File(tag, 300, 10), PaletteFileStatus::kEntriesCutShort, 256},
      {"count 0", File(tag, 0, 3), PaletteFileStatus::kCountNotPositive, 0},
      {"count -1", File(tag, -1, 3), PaletteFileStatus::kCountNotPositive, 0},
      {"count INT_MIN", File(tag, INT_MIN, 0), PaletteFileStatus::kCountNotPositive, 0},
      {"bytes after the last entry", trailing, PaletteFileStatus::kRead, 2},
      {"tag in other case", File("QUORVELIX PALETTE", 2, 2), PaletteFileStatus::kTagCaseDiffers, 0},
      {"tag all lower case", File("quorvelix palette", 2, 2), PaletteFileStatus::kTagCaseDiffers, 0},
      {"one letter differs", File("QUORVELIX Palettf", 2, 2), PaletteFileStatus::kTagMismatch, 0},
      {"a terminator inside the tag", File(std::string("QUORVELIX Pal\0tte", 17), 2, 2),
       PaletteFileStatus::kTagMismatch, 0},
      {"empty file", Bytes{}, PaletteFileStatus::kTagMismatch, 0},
  };
  for (const Case& c : cases) {
    const PaletteFileContents read = DecodePaletteFile(c.file.data(), c.file.size());
    EXPECT_EQ(read.status, c.status) << c.name;
    EXPECT_EQ(read.entries.size(), c.entries) << c.name;
    EXPECT_EQ(PaletteFileLoads(read.status), c.status != PaletteFileStatus::kTagMismatch &&
                                                 c.status != PaletteFileStatus::kTagCaseDiffers)
        << c.name;
  }
  const Bytes over = File(tag, 300, 300);
  const PaletteFileContents read = DecodePaletteFile(over.data(), over.size());
  EXPECT_EQ(Text({read.entries.back()}), Text({Ramp(256).back()})) << "the first 256 entries, in order";
}

// Cutting a valid three-entry file at every length: the tag goes first, then the count, then each entry
// byte by byte, a missing byte repeating the entry before's byte at that place.
TEST(PaletteFile, CutAtEveryLengthNeverReadsPastTheEnd) {
  const std::vector<PALETTEENTRY> entries = {{10, 20, 30, 1}, {40, 50, 60, 2}, {70, 80, 90, 3}};
  const Bytes full = *EncodePaletteFile(entries.data(), 3);
  for (size_t size = 0; size <= full.size(); ++size) {
    const Bytes cut(full.begin(), full.begin() + static_cast<std::ptrdiff_t>(size));
    const PaletteFileContents read = DecodePaletteFile(cut.data(), cut.size());
    SCOPED_TRACE(size);
    if (size < 17) {
      EXPECT_EQ(read.status, PaletteFileStatus::kTagMismatch);
    } else if (size < 21) {
      EXPECT_EQ(read.status, PaletteFileStatus::kCountCutShort);
      EXPECT_TRUE(read.entries.empty());
    } else {
      EXPECT_EQ(read.status, size == full.size() ? PaletteFileStatus::kRead : PaletteFileStatus::kEntriesCutShort);
      uint8_t buffer[4] = {};
      std::string expected;
      for (size_t i = 0; i < 3; ++i) {
        for (size_t b = 0; b < 4; ++b) {
          if (21 + 4 * i + b < size) buffer[b] = full[21 + 4 * i + b];
        }
        expected += Text({PALETTEENTRY{buffer[0], buffer[1], buffer[2], buffer[3]}});
      }
      EXPECT_EQ(Text(read.entries), expected);
    }
  }
}

}  // namespace
}  // namespace qvdlg
