/*
 * Reading and writing the curve files (see CurveFile.h).
 */
#include "CurveFile.h"

#include <cstring>

#include "ByteReader.h"
#include "ByteWriter.h"

namespace qvdlg {

const CurveFileFormat kRemapIntensityCurveFile{"QUORVELIX Remap Intensity Curve", 31, 4, "qri"};
const CurveFileFormat kRemapHueCurveFile{"QUORVELIX Remap Hue Curve", 25, 3, "qrh"};

namespace {

bool TagMatches(ByteReader& reader, const CurveFileFormat& format) {
  char tag[31] = {};
  if (format.tagLength > sizeof tag || reader.ReadBytes(tag, format.tagLength) != format.tagLength) return false;
  return std::memcmp(tag, format.tag, format.tagLength) == 0;
}

// Mode, factor and count; the count is checked before any point is read.
CurveFileStatus ReadRecord(ByteReader& reader, uint32_t length, CurveRecord& record, CurveCheck& check) {
  uint32_t count = 0;
  if (!reader.ReadU32(record.mode) || !reader.ReadI32(record.factor) || !reader.ReadU32(count))
    return CurveFileStatus::kCutShort;
  if (count < QV_CURVE_MIN_POINTS || count > QV_CURVE_MAX_POINTS) {
    check = CurveCheck::kBadPointCount;
    return CurveFileStatus::kBadRecord;
  }
  record.count = static_cast<int32_t>(count);
  for (uint32_t i = 0; i < count; ++i) {
    int32_t x = 0, y = 0;
    if (!reader.ReadI32(x) || !reader.ReadI32(y)) return CurveFileStatus::kCutShort;
    record.points[i] = {x, y};
  }
  check = CheckCurveRecord(record, length);
  return check == CurveCheck::kValid ? CurveFileStatus::kRead : CurveFileStatus::kBadRecord;
}

}  // namespace

CurveFileContents DecodeCurveFile(const CurveFileFormat& format, const uint8_t* data, size_t size,
                                  uint32_t dialogLength) {
  CurveFileContents contents;
  ByteReader reader(data, size);
  if (!TagMatches(reader, format)) return contents;
  if (!reader.ReadU32(contents.fileLength)) {
    contents.status = CurveFileStatus::kCutShort;
    return contents;
  }
  if (!IsCurveTableLength(contents.fileLength)) {
    contents.status = CurveFileStatus::kBadTableLength;
    return contents;
  }
  const int channels = format.channelCount < kMaxCurveChannels ? format.channelCount : kMaxCurveChannels;
  for (int c = 0; c < channels; ++c) {
    contents.status = ReadRecord(reader, contents.fileLength, contents.records[c], contents.check);
    if (contents.status != CurveFileStatus::kRead) {
      contents.channel = c;
      return contents;
    }
    if (IsCurveTableLength(dialogLength)) RescaleCurveRecord(contents.records[c], contents.fileLength, dialogLength);
  }
  return contents;
}

std::optional<std::vector<uint8_t>> EncodeCurveFile(const CurveFileFormat& format, uint32_t length,
                                                    const CurveRecord* records) {
  if (!IsCurveTableLength(length) || !records || format.channelCount > kMaxCurveChannels) return std::nullopt;
  for (int c = 0; c < format.channelCount; ++c) {
    if (CheckCurveRecord(records[c], length) != CurveCheck::kValid) return std::nullopt;
  }
  ByteWriter writer;
  writer.WriteBytes(format.tag, format.tagLength);
  writer.WriteU32(length);
  for (int c = 0; c < format.channelCount; ++c) {
    const CurveRecord& r = records[c];
    writer.WriteU32(r.mode);
    writer.WriteI32(r.factor);
    writer.WriteU32(static_cast<uint32_t>(r.count));
    for (int i = 0; i < r.count; ++i) {
      writer.WriteI32(r.points[i].x);
      writer.WriteI32(r.points[i].y);
    }
  }
  return writer.Take();
}

}  // namespace qvdlg
