/*
 * The writing side of ByteReader: appends raw bytes and little-endian 32-bit values to a growing buffer, so
 * a file's bytes are the same on every host whatever its own byte order.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace qvdlg {

class ByteWriter {
 public:
  void WriteBytes(const void* data, size_t count) {
    const auto* p = static_cast<const uint8_t*>(data);
    m_bytes.insert(m_bytes.end(), p, p + count);
  }

  void WriteU32(uint32_t value) {
    const uint8_t le[4] = {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
                           static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 24)};
    WriteBytes(le, sizeof le);
  }

  void WriteI32(int32_t value) { WriteU32(static_cast<uint32_t>(value)); }

  std::vector<uint8_t> Take() { return std::move(m_bytes); }

 private:
  std::vector<uint8_t> m_bytes;
};

}  // namespace qvdlg
