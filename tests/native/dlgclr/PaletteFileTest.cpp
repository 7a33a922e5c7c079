/*
 * The palette file: exact bytes, byte-identical round trips up to the 256-entry limit, and each kind of
 * damaged file mapped to its own status with the entries the editor loads from it.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ByteWriter.h"
#include "PaletteFile.h"

namespace qvdlg {
namespace {

using Bytes = std::vector<uint8_t>;

std::vector<PALETTEENTRY> Ramp(int n) {
  std::vector<PALETTEENTRY> entries;
  for (int i = 0; i < n; ++i) entries.push_back({uint8_t(i), uint8_t(255 - i), uint8_t(i * 7), uint8_t(i % 3)});
  return entries;
}

Bytes File(const std::string& tag, int32_t count, int entriesPresent) {
  ByteWriter w;
  w.WriteBytes(tag.data(), tag.size());
  w.WriteI32(count);
  for (const PALETTEENTRY& e : Ramp(entriesPresent)) w.WriteBytes(&e, 4);
  return w.Take();
}

Bytes Cut(Bytes file, size_t size) {
  file.resize(size);
  return file;
}

Bytes Flat(const std::vector<PALETTEENTRY>& entries) {
  Bytes b;
  for (const PALETTEENTRY& e : entries) b.insert(b.end(), {e.peRed, e.peGreen, e.peBlue, e.peFlags});
  return b;
}

TEST(PaletteFile, WritesExactBytesAndReadsThemBackForEverySize) {
  const std::vector<PALETTEENTRY> two = {{1, 2, 3, 4}, {250, 251, 252, 253}};
  const std::string tag = "QUORVELIX Palette";
  Bytes expected(tag.begin(), tag.end());
  expected.insert(expected.end(), {2, 0, 0, 0, 1, 2, 3, 4, 250, 251, 252, 253});
  EXPECT_EQ(EncodePaletteFile(two.data(), 2), expected);
  for (int n : {0, 1, 255, 256}) {
    const std::vector<PALETTEENTRY> entries = Ramp(n);
    const auto bytes = EncodePaletteFile(entries.data(), n);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 21u + 4u * n);
    const PaletteFileContents read = DecodePaletteFile(bytes->data(), bytes->size());
    EXPECT_EQ(read.status, n ? PaletteFileStatus::kRead : PaletteFileStatus::kCountNotPositive);
    EXPECT_EQ(Flat(read.entries), Flat(entries)) << n;
    EXPECT_EQ(EncodePaletteFile(read.entries.data(), n), bytes) << n;
  }
  EXPECT_FALSE(EncodePaletteFile(Ramp(257).data(), 257));
  EXPECT_FALSE(EncodePaletteFile(two.data(), -1));
  EXPECT_FALSE(EncodePaletteFile(nullptr, 1));
}

TEST(PaletteFile, DamagedFilesGetTheirOwnStatusAndTheDocumentedEntries) {
  const std::string tag = kPaletteFileTag;
  Bytes trailing = File(tag, 2, 2);
  trailing.push_back(9);
  struct Case {
    Bytes file;
    PaletteFileStatus status;
    size_t entries;
  };
  using S = PaletteFileStatus;
  const Case cases[] = {
      {File(tag, 300, 300), S::kCountAbove256, 256},
      {File(tag, 256, 256), S::kRead, 256},
      {File(tag, 300, 10), S::kEntriesCutShort, 256},
      {File(tag, 0, 3), S::kCountNotPositive, 0},
      {File(tag, -1, 3), S::kCountNotPositive, 0},
      {trailing, S::kRead, 2},
      {File("QUORVELIX PALETTE", 2, 2), S::kTagCaseDiffers, 0},
      {File("QUORVELIX Palettf", 2, 2), S::kTagMismatch, 0},
      {File(std::string("QUORVELIX Pal\0tte", 17), 2, 2), S::kTagMismatch, 0},
      {Cut(File(tag, 3, 3), 16), S::kTagMismatch, 0},
      {Cut(File(tag, 3, 3), 20), S::kCountCutShort, 0},
      {Cut(File(tag, 3, 3), 27), S::kEntriesCutShort, 3},
  };
  for (const Case& c : cases) {
    const PaletteFileContents read = DecodePaletteFile(c.file.data(), c.file.size());
    EXPECT_EQ(read.status, c.status) << "case " << &c - cases;
    EXPECT_EQ(read.entries.size(), c.entries) << "case " << &c - cases;
    EXPECT_EQ(PaletteFileLoads(read.status), c.status != S::kTagMismatch && c.status != S::kTagCaseDiffers);
  }
  const Bytes over = File(tag, 300, 300);
  EXPECT_EQ(Flat({DecodePaletteFile(over.data(), over.size()).entries.back()}), Flat({Ramp(256).back()}));
  // A missing byte repeats the byte the entry before had at that place.
  const Bytes cut = Cut(File(tag, 3, 3), 27);
  EXPECT_EQ(Flat(DecodePaletteFile(cut.data(), cut.size()).entries), (Bytes{0, 255, 0, 0, 1, 254, 0, 0, 1, 254, 0, 0}));
}

}  // namespace
}  // namespace qvdlg
