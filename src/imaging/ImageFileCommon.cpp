/*
 * File code shared by both platforms: the encoders we carry ourselves (16-bit PNG, which the stb writer lacks
 * and some system PNG encoders write in the wrong byte order; TIFF, for 16-bit gray that not every system
 * encoder keeps and natively, where no TIFF encoder exists), the interleaving of a bitmap into the plain
 * sample arrays every encoder starts from, the signature test that tells a damaged image from a foreign
 * file, and writing bytes to a wide-character path.
 */
#include <cstdio>
#include <string>

#include "ImageFile.h"
#include "PixelConvert.h"
#include "TiffWriter.h"

namespace qv {
namespace {

template <class T>
std::vector<T> Interleave(const BITMAPHANDLE& b, int channels) {
  PixelFormat f{};
  DescribePixelFormat(b, &f);
  std::vector<T> out(static_cast<size_t>(b.nWidth) * b.nHeight * channels);
  std::vector<T> row(static_cast<size_t>(b.nWidth) * 4);
  for (int y = 0; y < b.nHeight; ++y) {
    if constexpr (sizeof(T) == 1)
      ReadRowRgba8(b, f, y, 0, b.nWidth, row.data());
    else
      ReadRowRgba16(b, f, y, 0, b.nWidth, row.data());
    T* dst = out.data() + static_cast<size_t>(y) * b.nWidth * channels;
    for (int x = 0; x < b.nWidth; ++x)
      for (int c = 0; c < channels; ++c) dst[x * channels + c] = row[x * 4 + c];
  }
  return out;
}

#ifndef _WIN32
std::string ToUtf8(const wchar_t* w) {
  std::string out;
  for (; *w; ++w) {
    const uint32_t c = static_cast<uint32_t>(*w);
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}
#endif

}  // namespace

std::vector<uint8_t> InterleaveSamples8(const BITMAPHANDLE& b, int channels) {
  return Interleave<uint8_t>(b, channels);
}

std::vector<uint16_t> InterleaveSamples16(const BITMAPHANDLE& b, int channels) {
  return Interleave<uint16_t>(b, channels);
}

int FileChannels(const BITMAPHANDLE& b) {
  PixelFormat f{};
  DescribePixelFormat(b, &f);
  return f.IsGray() ? 1 : (f.HasAlpha() ? 4 : 3);
}

bool HasWideSamples(const BITMAPHANDLE& b) {
  PixelFormat f{};
  DescribePixelFormat(b, &f);
  return f.bytesPerSample == 2;
}

int EncodeOwnPng16(const BITMAPHANDLE& b, std::vector<uint8_t>* out) {
  const int channels = FileChannels(b);
  *out = EncodePng16(b.nWidth, b.nHeight, channels, InterleaveSamples16(b, channels).data());
  return out->empty() ? QV_ERROR_FILE_WRITE : QV_SUCCESS;
}

int EncodeOwnTiff(const BITMAPHANDLE& b, std::vector<uint8_t>* out) {
  const int channels = FileChannels(b);
  if (HasWideSamples(b))
    *out = EncodeTiff(b.nWidth, b.nHeight, channels, 16, InterleaveSamples16(b, channels).data());
  else
    *out = EncodeTiff(b.nWidth, b.nHeight, channels, 8, InterleaveSamples8(b, channels).data());
  return out->empty() ? QV_ERROR_FILE_WRITE : QV_SUCCESS;
}

bool HasImageSignature(const uint8_t* d, size_t n) {
  if (n < 2) return false;
  if (n >= 4 && d[0] == 0x89 && d[1] == 'P' && d[2] == 'N' && d[3] == 'G') return true;
  if (n >= 4 && ((d[0] == 'I' && d[1] == 'I' && d[2] == 42 && d[3] == 0) ||
                 (d[0] == 'M' && d[1] == 'M' && d[2] == 0 && d[3] == 42)))
    return true;
  if (n >= 4 && d[0] == 'G' && d[1] == 'I' && d[2] == 'F' && d[3] == '8') return true;
  if (d[0] == 'B' && d[1] == 'M') return true;
  if (d[0] == 'P' && (d[1] == '5' || d[1] == '6')) return true;
  return d[0] == 0xFF && d[1] == 0xD8;
}

FILE* OpenFile(const wchar_t* path, bool write) {
#ifdef _WIN32
  return _wfopen(path, write ? L"wb" : L"rb");
#else
  return std::fopen(ToUtf8(path).c_str(), write ? "wb" : "rb");
#endif
}

int WriteBytes(const wchar_t* path, const std::vector<uint8_t>& bytes) {
  FILE* f = OpenFile(path, true);
  if (!f) return QV_ERROR_FILE_WRITE;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  const bool closed = std::fclose(f) == 0;
  return written && closed ? QV_SUCCESS : QV_ERROR_FILE_WRITE;
}

}  // namespace qv
