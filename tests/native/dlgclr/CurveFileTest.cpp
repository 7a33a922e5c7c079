/*
 * The curve files of both curve dialogs: exact layout, byte-identical round trips at every table length,
 * loading into a dialog of another length, and each damaged file mapped to the status that decides between
 * leaving the dialog alone (wrong tag) and resetting every curve.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ByteWriter.h"
#include "CurveFile.h"

namespace qvdlg {
namespace {

using Bytes = std::vector<uint8_t>;

// As written: `count` need not match the points that follow.
struct RawRecord {
  uint32_t mode;
  int32_t factor;
  uint32_t count;
  std::vector<POINT> points;
};

Bytes File(const std::string& tag, uint32_t length, const std::vector<RawRecord>& records) {
  ByteWriter w;
  w.WriteBytes(tag.data(), tag.size());
  w.WriteU32(length);
  for (const RawRecord& r : records) {
    w.WriteU32(r.mode);
    w.WriteI32(r.factor);
    w.WriteU32(r.count);
    for (const POINT& p : r.points) {
      w.WriteI32(p.x);
      w.WriteI32(p.y);
    }
  }
  return w.Take();
}

// Four records for `length`: a bent curve, straight lines, an exponential and a logarithm.
std::vector<CurveRecord> Shaped(uint32_t length) {
  const int32_t e = static_cast<int32_t>(length - 1);
  const RawRecord raw[4] = {{1, 1, 3, {{0, 0}, {e / 4, e / 2}, {e, e}}},
                            {4, 1, 4, {{0, e}, {1, 7}, {e - 1, 3}, {e, 0}}},
                            {2, -37, 2, {{0, 5}, {e, e}}},
                            {3, 100, 2, {{0, 0}, {e, e / 3}}}};
  std::vector<CurveRecord> records(4);
  for (int c = 0; c < 4; ++c) {
    records[c].mode = raw[c].mode;
    records[c].factor = raw[c].factor;
    for (const POINT& p : raw[c].points) records[c].points[records[c].count++] = p;
  }
  return records;
}

Bytes Cut(Bytes file, size_t size) {
  file.resize(size);
  return file;
}

std::string Text(const CurveRecord& r) {
  std::string s = std::to_string(r.mode) + "/" + std::to_string(r.factor) + ":";
  for (int i = 0; i < r.count; ++i) s += std::to_string(r.points[i].x) + "," + std::to_string(r.points[i].y) + " ";
  return s;
}

// Round trips at every length are left to the fuzz targets, which write back whatever loads and compare bytes.
TEST(CurveFile, WritesTheExactLayoutAndOnlyRecordsTheReaderAccepts) {
  const std::vector<CurveRecord> small = Shaped(256);
  EXPECT_EQ(EncodeCurveFile(kRemapHueCurveFile, 256, small.data()),
            File("QUORVELIX Remap Hue Curve", 256,
                 {{1, 1, 3, {{0, 0}, {63, 127}, {255, 255}}},
                  {4, 1, 4, {{0, 255}, {1, 7}, {254, 3}, {255, 0}}},
                  {2, -37, 2, {{0, 5}, {255, 255}}}}));
  std::vector<CurveRecord> bad = Shaped(256);
  EXPECT_FALSE(EncodeCurveFile(kRemapIntensityCurveFile, 1000, bad.data()));
  EXPECT_FALSE(EncodeCurveFile(kRemapIntensityCurveFile, 4096, bad.data())) << "records of another length";
  bad[3].factor = -1;
  EXPECT_FALSE(EncodeCurveFile(kRemapIntensityCurveFile, 256, bad.data()));
  EXPECT_TRUE(EncodeCurveFile(kRemapHueCurveFile, 256, bad.data())) << "the hue file holds three records";
}

TEST(CurveFile, ADialogOfAnotherLengthGetsThePointsRescaled) {
  const std::vector<CurveRecord> small = Shaped(256);
  const Bytes up = *EncodeCurveFile(kRemapIntensityCurveFile, 256, small.data());
  const CurveFileContents big = DecodeCurveFile(kRemapIntensityCurveFile, up.data(), up.size(), 65536);
  ASSERT_EQ(big.status, CurveFileStatus::kRead);
  EXPECT_EQ(Text(big.records[0]), "1/1:0,0 16191,32639 65535,65535 ") << "every coordinate times 257";
  EXPECT_EQ(Text(big.records[3]), "3/100:0,0 65535,21845 ");
}

TEST(CurveFile, DamagedFilesLeaveTheDialogAloneOnlyForAWrongTag) {
  const std::string tag = kRemapIntensityCurveFile.tag;
  const RawRecord ok{1, 1, 2, {{0, 0}, {255, 255}}};
  using S = CurveFileStatus;
  struct Case {
    Bytes file;
    CurveFileStatus status;
    CurveCheck check;
    int channel;
  };
  const Case cases[] = {
      {File(tag, 256, {ok, ok, ok, ok}), S::kRead, CurveCheck::kValid, -1},
      {File("quorvelix remap intensity curve", 256, {ok, ok, ok, ok}), S::kTagMismatch, CurveCheck::kValid, -1},
      {File(kRemapHueCurveFile.tag, 256, {ok, ok, ok}), S::kTagMismatch, CurveCheck::kValid, -1},
      {File(tag, 255, {ok, ok, ok, ok}), S::kBadTableLength, CurveCheck::kValid, -1},
      {File(tag, 65535, {}), S::kBadTableLength, CurveCheck::kValid, -1},
      // The count is refused before any point is read, so the missing points do not matter.
      {File(tag, 256, {{1, 1, 33, {}}}), S::kBadRecord, CurveCheck::kBadPointCount, 0},
      {File(tag, 256, {{1, 1, 0xFFFFFFFFu, {}}}), S::kBadRecord, CurveCheck::kBadPointCount, 0},
      {File(tag, 256, {ok, ok, {3, -1, 2, {{0, 0}, {255, 255}}}}), S::kBadRecord, CurveCheck::kFactorOutOfRange, 2},
      {File(tag, 256, {ok, ok, ok, {1, 1, 2, {{1, 0}, {255, 255}}}}), S::kBadRecord, CurveCheck::kFirstXNotZero, 3},
      {Cut(File(tag, 256, {ok, ok, ok, ok}), 30), S::kTagMismatch, CurveCheck::kValid, -1},
      {Cut(File(tag, 256, {ok, ok, ok, ok}), 31), S::kCutShort, CurveCheck::kValid, -1},
      {Cut(File(tag, 256, {ok, ok, ok, ok}), 35 + 4 * 28 - 1), S::kCutShort, CurveCheck::kValid, 3},
  };
  for (const Case& c : cases) {
    const CurveFileContents read = DecodeCurveFile(kRemapIntensityCurveFile, c.file.data(), c.file.size(), 256);
    EXPECT_EQ(read.status, c.status) << "case " << &c - cases;
    EXPECT_EQ(read.check, c.check) << "case " << &c - cases;
    EXPECT_EQ(read.channel, c.channel) << "case " << &c - cases;
    EXPECT_EQ(CurveFileResetsAll(read.status), c.status != S::kRead && c.status != S::kTagMismatch);
  }
}

}  // namespace
}  // namespace qvdlg
