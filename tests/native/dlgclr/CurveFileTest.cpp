// The curve files of both curve dialogs: exact layout, byte-identical round trips at every table length,
// loading into a dialog of another length, and each damaged file mapped to the status that decides between
// leaving the dialog alone (wrong tag) and resetting every curve.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ByteWriter.h"
#include "CurveFile.h"

namespace qvdlg {
namespace {

using Bytes = std::vector<uint8_t>;

struct PlainRecord {
  uint32_t mode;
  int32_t factor;
  uint32_t count;  // as written, whatever the points
  std::vector<POINT> points;
};

PlainRecord Line(uint32_t length) { return {QV_CURVE_MODE_POINTS, 1, 2, {{0, 0}, {int32_t(length - 1), int32_t(length - 1)}}}; }

Bytes File(const std::string& tag, uint32_t length, const std::vector<PlainRecord>& records) {
  ByteWriter w;
  w.WriteBytes(tag.data(), tag.size());
  w.WriteU32(length);
  for (const PlainRecord& r : records) {
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
  std::vector<CurveRecord> records(4);
  const PlainRecord plain[4] = {{1, 1, 3, {{0, 0}, {e / 4, e / 2}, {e, e}}},
                                {4, 1, 4, {{0, e}, {1, 7}, {e - 1, 3}, {e, 0}}},
                                {2, -37, 2, {{0, 5}, {e, e}}},
                                {3, 100, 2, {{0, 0}, {e, e / 3}}}};
  for (int c = 0; c < 4; ++c) {
    records[c].mode = plain[c].mode;
    records[c].factor = plain[c].factor;
    for (const POINT& p : plain[c].points) records[c].points[records[c].count++] = p;
  }
  return records;
}

std::string Text(const CurveRecord& r) {
  std::string s = std::to_string(r.mode) + "/" + std::to_string(r.factor) + ":";
  for (int i = 0; i < r.count; ++i) s += "(" + std::to_string(r.points[i].x) + "," + std::to_string(r.points[i].y) + ")";
  return s;
}

TEST(CurveFile, LayoutIsTagLengthThenRecordsLittleEndian) {
  const std::vector<CurveRecord> records = Shaped(256);
  const Bytes bytes = *EncodeCurveFile(kRemapHueCurveFile, 256, records.data());
  ASSERT_EQ(bytes.size(), 25u + 4u + (12 + 3 * 8) + (12 + 4 * 8) + (12 + 2 * 8));
  EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 25), "QUORVELIX Remap Hue Curve");
  const Bytes head(bytes.begin() + 25, bytes.begin() + 29 + 12 + 8 + 8);
  const Bytes expected = {0, 1, 0, 0, /* mode */ 1, 0, 0, 0, /* factor */ 1, 0, 0, 0, /* count */ 3, 0, 0, 0,
                          /* (0,0) */ 0, 0, 0, 0, 0, 0, 0, 0, /* (63,127) */ 63, 0, 0, 0, 127, 0, 0, 0};
  EXPECT_EQ(head, expected);
}

TEST(CurveFile, EveryFormatAndLengthRoundTripsByteForByte) {
  for (const CurveFileFormat* format : {&kRemapIntensityCurveFile, &kRemapHueCurveFile}) {
    for (uint32_t length : {256u, 4096u, 65536u}) {
      SCOPED_TRACE(std::string(format->extension) + " " + std::to_string(length));
      const std::vector<CurveRecord> records = Shaped(length);
      const auto bytes = EncodeCurveFile(*format, length, records.data());
      ASSERT_TRUE(bytes);
      const CurveFileContents read = DecodeCurveFile(*format, bytes->data(), bytes->size(), length);
      ASSERT_EQ(read.status, CurveFileStatus::kRead);
      EXPECT_EQ(read.fileLength, length);
      for (int c = 0; c < format->channelCount; ++c) EXPECT_EQ(Text(read.records[c]), Text(records[c]));
      EXPECT_EQ(EncodeCurveFile(*format, length, read.records.data()), bytes);
    }
  }
}

TEST(CurveFile, ADialogOfAnotherLengthGetsThePointsRescaled) {
  const std::vector<CurveRecord> small = Shaped(256);
  const Bytes up = *EncodeCurveFile(kRemapIntensityCurveFile, 256, small.data());
  const CurveFileContents big = DecodeCurveFile(kRemapIntensityCurveFile, up.data(), up.size(), 65536);
  ASSERT_EQ(big.status, CurveFileStatus::kRead);
  EXPECT_EQ(big.fileLength, 256u);
  EXPECT_EQ(Text(big.records[0]), "1/1:(0,0)(16191,32639)(65535,65535)") << "every coordinate times 257";
  EXPECT_EQ(Text(big.records[3]), "3/100:(0,0)(65535,21845)") << "mode and factor unchanged";

  std::vector<CurveRecord> wide = Shaped(65536);
  wide[0].points[1] = {32768, 32768};
  const Bytes down = *EncodeCurveFile(kRemapIntensityCurveFile, 65536, wide.data());
  const CurveFileContents narrow = DecodeCurveFile(kRemapIntensityCurveFile, down.data(), down.size(), 256);
  ASSERT_EQ(narrow.status, CurveFileStatus::kRead);
  EXPECT_EQ(Text(narrow.records[0]), "1/1:(0,0)(127,127)(255,255)");
  EXPECT_EQ(Text(narrow.records[1]), "4/1:(0,255)(254,0)(255,0)") << "x 1 fell onto x 0 and gave way";
}

TEST(CurveFile, DamagedFilesAreSortedIntoLeaveAloneAndResetAll) {
  const std::string tag = kRemapIntensityCurveFile.tag;
  const PlainRecord ok = Line(256);
  struct Case {
    const char* name;
    Bytes file;
    CurveFileStatus status;
    CurveCheck check;
    int channel;
  };
  const Case cases[] = {
      {"valid", File(tag, 256, {ok, ok, ok, ok}), CurveFileStatus::kRead, CurveCheck::kValid, -1},
      {"tag in lower case", File("quorvelix remap intensity curve", 256, {ok, ok, ok, ok}),
       CurveFileStatus::kTagMismatch, CurveCheck::kValid, -1},
      {"the hue dialog's file", File(kRemapHueCurveFile.tag, 256, {ok, ok, ok}), CurveFileStatus::kTagMismatch,
       CurveCheck::kValid, -1},
      {"length 255", File(tag, 255, {ok, ok, ok, ok}), CurveFileStatus::kBadTableLength, CurveCheck::kValid, -1},
      {"length 0", File(tag, 0, {}), CurveFileStatus::kBadTableLength, CurveCheck::kValid, -1},
      {"length 65535", File(tag, 65535, {}), CurveFileStatus::kBadTableLength, CurveCheck::kValid, -1},
      {"33 points, refused before any point is read", File(tag, 256, {{1, 1, 33, {}}}), CurveFileStatus::kBadRecord,
       CurveCheck::kBadPointCount, 0},
      {"count 1", File(tag, 256, {{1, 1, 1, {{0, 0}}}}), CurveFileStatus::kBadRecord, CurveCheck::kBadPointCount, 0},
      {"count 2^32 - 1", File(tag, 256, {{1, 1, 0xFFFFFFFFu, {}}}), CurveFileStatus::kBadRecord,
       CurveCheck::kBadPointCount, 0},
      {"first x 1", File(tag, 256, {{1, 1, 2, {{1, 0}, {255, 255}}}}), CurveFileStatus::kBadRecord,
       CurveCheck::kFirstXNotZero, 0},
      {"last x not the end", File(tag, 256, {ok, {1, 1, 2, {{0, 0}, {200, 255}}}}), CurveFileStatus::kBadRecord,
       CurveCheck::kLastXNotEnd, 1},
      {"logarithm factor -1", File(tag, 256, {ok, ok, {3, -1, 2, {{0, 0}, {255, 255}}}}),
       CurveFileStatus::kBadRecord, CurveCheck::kFactorOutOfRange, 2},
      {"y beyond the table in the last channel", File(tag, 256, {ok, ok, ok, {1, 1, 2, {{0, 0}, {255, 256}}}}),
       CurveFileStatus::kBadRecord, CurveCheck::kPointOutOfRange, 3},
      {"only three records", File(tag, 256, {ok, ok, ok}), CurveFileStatus::kCutShort, CurveCheck::kValid, 3},
  };
  for (const Case& c : cases) {
    const CurveFileContents read = DecodeCurveFile(kRemapIntensityCurveFile, c.file.data(), c.file.size(), 256);
    EXPECT_EQ(read.status, c.status) << c.name;
    EXPECT_EQ(read.check, c.check) << c.name;
    EXPECT_EQ(read.channel, c.channel) << c.name;
    EXPECT_EQ(CurveFileResetsAll(read.status),
              c.status != CurveFileStatus::kRead && c.status != CurveFileStatus::kTagMismatch)
        << c.name;
  }
}

TEST(CurveFile, CutAtEveryLengthIsATagMismatchInsideTheTagAndResetsAllAfterIt) {
  for (const CurveFileFormat* format : {&kRemapIntensityCurveFile, &kRemapHueCurveFile}) {
    const std::vector<CurveRecord> records = Shaped(4096);
    const Bytes full = *EncodeCurveFile(*format, 4096, records.data());
    for (size_t size = 0; size < full.size(); ++size) {
      const Bytes cut(full.begin(), full.begin() + static_cast<std::ptrdiff_t>(size));
      const CurveFileContents read = DecodeCurveFile(*format, cut.data(), cut.size(), 4096);
      EXPECT_EQ(read.status, size < format->tagLength ? CurveFileStatus::kTagMismatch : CurveFileStatus::kCutShort)
          << format->extension << " cut at " << size;
    }
  }
}

TEST(CurveFile, TheWriterRefusesWhatTheReaderWouldRefuse) {
  std::vector<CurveRecord> records = Shaped(256);
  EXPECT_FALSE(EncodeCurveFile(kRemapIntensityCurveFile, 1000, records.data()));
  EXPECT_FALSE(EncodeCurveFile(kRemapIntensityCurveFile, 4096, records.data())) << "records of another length";
  EXPECT_FALSE(EncodeCurveFile(kRemapIntensityCurveFile, 256, nullptr));
  records[3].factor = -1;
  EXPECT_FALSE(EncodeCurveFile(kRemapIntensityCurveFile, 256, records.data()));
  EXPECT_TRUE(EncodeCurveFile(kRemapHueCurveFile, 256, records.data())) << "the hue file holds three records";
}

}  // namespace
}  // namespace qvdlg
