/*
 * A PNG encoder for 16-bit samples, which the stb writer does not offer: big-endian samples behind a "none"
 * filter byte per row, deflated with stb's zlib compressor, framed in IHDR, IDAT and IEND chunks with their
 * CRCs. This file also holds the one instantiation of the header-only stb writer.
 */
#include <array>
#include <cstdlib>
#include <cstring>

#include "ImageFile.h"

#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>

namespace qv {
namespace {

uint32_t Crc32(const uint8_t* p, size_t n, uint32_t crc = 0) {
  static const std::array<uint32_t, 256> table = [] {
    std::array<uint32_t, 256> t{};
    for (uint32_t i = 0; i < 256; ++i) {
      uint32_t c = i;
      for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[i] = c;
    }
    return t;
  }();
  crc = ~crc;
  for (size_t i = 0; i < n; ++i) crc = table[(crc ^ p[i]) & 0xFF] ^ (crc >> 8);
  return ~crc;
}

void PutBig32(std::vector<uint8_t>& out, uint32_t v) {
  out.push_back(static_cast<uint8_t>(v >> 24));
  out.push_back(static_cast<uint8_t>(v >> 16));
  out.push_back(static_cast<uint8_t>(v >> 8));
  out.push_back(static_cast<uint8_t>(v));
}

void PutChunk(std::vector<uint8_t>& out, const char* type, const uint8_t* data, size_t n) {
  PutBig32(out, static_cast<uint32_t>(n));
  const size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  if (n) out.insert(out.end(), data, data + n);
  PutBig32(out, Crc32(out.data() + start, n + 4));
}

}  // namespace

std::vector<uint8_t> EncodePng16(int width, int height, int channels, const uint16_t* samples) {
  const size_t rowBytes = static_cast<size_t>(width) * channels * 2 + 1;
  const size_t total = rowBytes * static_cast<size_t>(height);
  if (total > static_cast<size_t>(INT32_MAX)) return {};
  std::vector<uint8_t> raw(total);
  for (int y = 0; y < height; ++y) {
    uint8_t* dst = raw.data() + rowBytes * y;
    *dst++ = 0;
    const uint16_t* src = samples + static_cast<size_t>(y) * width * channels;
    for (int i = 0; i < width * channels; ++i) {
      *dst++ = static_cast<uint8_t>(src[i] >> 8);
      *dst++ = static_cast<uint8_t>(src[i]);
    }
  }
  int zlen = 0;
  unsigned char* z = stbi_zlib_compress(raw.data(), static_cast<int>(raw.size()), &zlen, 8);
  if (!z) return {};
  std::vector<uint8_t> out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  uint8_t ihdr[13];
  const uint32_t w = static_cast<uint32_t>(width), h = static_cast<uint32_t>(height);
  const uint8_t be[8] = {uint8_t(w >> 24), uint8_t(w >> 16), uint8_t(w >> 8), uint8_t(w),
                         uint8_t(h >> 24), uint8_t(h >> 16), uint8_t(h >> 8), uint8_t(h)};
  std::memcpy(ihdr, be, 8);
  ihdr[8] = 16;
  ihdr[9] = channels == 1 ? 0 : channels == 3 ? 2 : 6;
  ihdr[10] = ihdr[11] = ihdr[12] = 0;
  PutChunk(out, "IHDR", ihdr, sizeof ihdr);
  PutChunk(out, "IDAT", z, static_cast<size_t>(zlen));
  std::free(z);
  PutChunk(out, "IEND", nullptr, 0);
  return out;
}

}  // namespace qv
