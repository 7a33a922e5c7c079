/*
 * libFuzzer target for the palette file reader: any input gives a status, the entries it loads are at most
 * 256, and a loaded palette written again reads back to the same entries. The input is copied to a buffer of
 * exactly its size, so AddressSanitizer reports any read past the file's bytes.
 */
#include <cstddef>
#include <cstdint>
#include <vector>

#include "PaletteFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::vector<uint8_t> bytes(data, data + size);
  const qvdlg::PaletteFileContents read = qvdlg::DecodePaletteFile(bytes.data(), bytes.size());
  if (!qvdlg::PaletteFileLoads(read.status)) {
    if (!read.entries.empty()) __builtin_trap();
    return 0;
  }
  if (read.entries.size() > qvdlg::kPaletteFileMaxEntries) __builtin_trap();
  const auto written = qvdlg::EncodePaletteFile(read.entries.data(), static_cast<int>(read.entries.size()));
  if (!written) __builtin_trap();
  const qvdlg::PaletteFileContents again = qvdlg::DecodePaletteFile(written->data(), written->size());
  if (again.entries.size() != read.entries.size()) __builtin_trap();
  for (size_t i = 0; i < read.entries.size(); ++i) {
    const PALETTEENTRY &a = read.entries[i], &b = again.entries[i];
    if (a.peRed != b.peRed || a.peGreen != b.peGreen || a.peBlue != b.peBlue || a.peFlags != b.peFlags)
      __builtin_trap();
  }
  return 0;
}
