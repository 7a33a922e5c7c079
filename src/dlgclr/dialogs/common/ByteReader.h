/*
 * A bounds-checked little-endian reader over a file's bytes, for the dialogs' own file formats. It never
 * reads past the end: a read that does not fit takes only the bytes that are there, moves to the end and
 * reports how many it took, so a format can say exactly what a file cut short yields.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace qvdlg {

class ByteReader {
 public:
  ByteReader(const uint8_t* data, size_t size) : m_data(data), m_size(data ? size : 0) {}

  size_t Remaining() const { return m_size - m_offset; }
  bool AtEnd() const { return m_offset == m_size; }

  // Copies up to `count` bytes into `out`; the bytes of `out` beyond those the file held are not touched.
  size_t ReadBytes(void* out, size_t count) {
    const size_t taken = count < Remaining() ? count : Remaining();
    if (taken) std::memcpy(out, m_data + m_offset, taken);
    m_offset += taken;
    return taken;
  }

  // A whole 32-bit little-endian value, or false (and the reader at the end) when fewer than four bytes remain.
  bool ReadU32(uint32_t& value) {
    if (Remaining() < 4) {
      m_offset = m_size;
      return false;
    }
    const uint8_t* p = m_data + m_offset;
    value = static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 | static_cast<uint32_t>(p[2]) << 16 |
            static_cast<uint32_t>(p[3]) << 24;
    m_offset += 4;
    return true;
  }

  bool ReadI32(int32_t& value) {
    uint32_t bits = 0;
    if (!ReadU32(bits)) return false;
    value = static_cast<int32_t>(bits);
    return true;
  }

 private:
  const uint8_t* m_data;
  size_t m_size;
  size_t m_offset = 0;
};

}  // namespace qvdlg
