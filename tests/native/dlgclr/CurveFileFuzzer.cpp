/*
 * libFuzzer target for one curve file reader (QV_FUZZ_HUE_CURVES picks the hue dialog's format, else the
 * intensity dialog's). Each input is read by a dialog of every table length. Whatever loads must pass the
 * record checks for the dialog's length, and, read at its own length, must write back to exactly the bytes
 * it was read from. The input sits in a buffer of exactly its size, so AddressSanitizer sees any overread.
 */
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "CurveFile.h"

namespace {

const qvdlg::CurveFileFormat& Format() {
  return QV_FUZZ_HUE_CURVES ? qvdlg::kRemapHueCurveFile : qvdlg::kRemapIntensityCurveFile;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::vector<uint8_t> bytes(data, data + size);
  const qvdlg::CurveFileFormat& format = Format();
  for (uint32_t length : {256u, 4096u, 65536u}) {
    const qvdlg::CurveFileContents read = qvdlg::DecodeCurveFile(format, bytes.data(), bytes.size(), length);
    if (read.status != qvdlg::CurveFileStatus::kRead) continue;
    for (int c = 0; c < format.channelCount; ++c) {
      if (qvdlg::CheckCurveRecord(read.records[c], length) != qvdlg::CurveCheck::kValid) __builtin_trap();
    }
    if (read.fileLength != length) continue;
    const auto written = qvdlg::EncodeCurveFile(format, length, read.records.data());
    if (!written || written->size() > bytes.size() || std::memcmp(written->data(), bytes.data(), written->size()))
      __builtin_trap();
  }
  return 0;
}
