/*
 * Native image files: PNG, BMP (and JPEG) read through Debian's header-only stb, PNM through our own reader,
 * keeping 16-bit PNG and PNM samples as 16-bit gray or 48/64-bit color; PNG (8 and 16 bits), BMP, PNM (8 and
 * 16 bits), JPEG and TIFF written. stb reads a cut-short BMP as if the missing rows were black, so BMP sizes are
 * checked against the header before decoding.
 */
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "Bitmap.h"
#include "BitmapCheck.h"
#include "ImageFile.h"
#include "PixelConvert.h"
#include "PnmReader.h"

#define STBI_NO_STDIO
#define STBI_NO_HDR
#define STBI_NO_LINEAR
#define STB_IMAGE_IMPLEMENTATION
#include <stb_image.h>
#define STBI_WRITE_NO_STDIO
#include <stb_image_write.h>

namespace qv {
namespace {

struct FileCloser {
  void operator()(FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<FILE, FileCloser>;

struct StbFree {
  void operator()(void* p) const { stbi_image_free(p); }
};

int ReadWholeFile(const wchar_t* path, std::vector<uint8_t>* bytes) {
  File f(OpenFile(path, false));
  if (!f) return QV_ERROR_FILE_NOT_FOUND;
  if (std::fseek(f.get(), 0, SEEK_END) != 0) return QV_ERROR_FILE_NOT_FOUND;
  const long size = std::ftell(f.get());
  if (size < 0 || std::fseek(f.get(), 0, SEEK_SET) != 0) return QV_ERROR_FILE_NOT_FOUND;
  if (size == 0 || size > INT32_MAX) return QV_ERROR_FILE_FORMAT;
  bytes->resize(static_cast<size_t>(size));
  if (std::fread(bytes->data(), 1, bytes->size(), f.get()) != bytes->size()) return QV_ERROR_FILE_CORRUPT;
  return QV_SUCCESS;
}

uint32_t LittleEndian(const uint8_t* p, int n) {
  uint32_t v = 0;
  for (int i = n - 1; i >= 0; --i) v = (v << 8) | p[i];
  return v;
}

// An uncompressed BMP must hold all the rows its header promises.
bool BmpIsComplete(const std::vector<uint8_t>& d) {
  if (d.size() < 2 || d[0] != 'B' || d[1] != 'M') return true;  // not a BMP: nothing to check here
  if (d.size() < 54) return false;
  const uint32_t offset = LittleEndian(&d[10], 4);
  const int32_t width = static_cast<int32_t>(LittleEndian(&d[18], 4));
  const int32_t height = static_cast<int32_t>(LittleEndian(&d[22], 4));
  const uint32_t bpp = LittleEndian(&d[28], 2), compression = LittleEndian(&d[30], 4);
  if (compression != 0 && compression != 3) return true;  // run-length data: stb checks as it decodes
  const uint64_t rowBytes = ((static_cast<uint64_t>(width < 0 ? -int64_t{width} : width) * bpp + 31) / 32) * 4;
  const uint64_t rows = static_cast<uint64_t>(height < 0 ? -int64_t{height} : height);
  return uint64_t{offset} + rowBytes * rows <= d.size();
}

template <class T>
void CopySamples(const T* src, int channels, BITMAPHANDLE* b) {
  const bool color = channels >= 3;
  const int outChannels = channels == 4 ? 4 : (color ? 3 : 1);
  const bool swap = color && sizeof(T) == 1;  // 8-bit color is kept in BGR order
  for (int y = 0; y < b->nHeight; ++y) {
    T* row = reinterpret_cast<T*>(RowPtr(*b, y));
    const T* s = src + static_cast<size_t>(y) * b->nWidth * channels;
    for (int x = 0; x < b->nWidth; ++x, s += channels, row += outChannels) {
      for (int c = 0; c < outChannels; ++c) row[c] = s[c];
      if (swap) std::swap(row[0], row[2]);
    }
  }
}

int DecodeBytes(const std::vector<uint8_t>& d, BITMAPHANDLE* out) {
  if (IsPnm(d)) return DecodePnm(d, kMaxFilePixels, out);
  if (d.size() >= 4 && ((d[0] == 'I' && d[1] == 'I') || (d[0] == 'M' && d[1] == 'M')))
    return QV_ERROR_FILE_FORMAT;  // TIFF is written here but read only on Windows
  const int len = static_cast<int>(d.size());
  int w = 0, h = 0, comp = 0;
  if (!stbi_info_from_memory(d.data(), len, &w, &h, &comp))
    return HasImageSignature(d.data(), d.size()) ? QV_ERROR_FILE_CORRUPT : QV_ERROR_FILE_FORMAT;
  if (w <= 0 || h <= 0 || static_cast<uint64_t>(w) * static_cast<uint64_t>(h) > kMaxFilePixels)
    return QV_ERROR_FILE_CORRUPT;
  if (!BmpIsComplete(d)) return QV_ERROR_FILE_CORRUPT;
  const bool wide = stbi_is_16_bit_from_memory(d.data(), len) != 0;
  const int want = comp == 2 ? 1 : comp;  // gray with alpha keeps its gray only
  int rw = 0, rh = 0, rc = 0;
  std::unique_ptr<void, StbFree> pixels(
      wide ? static_cast<void*>(stbi_load_16_from_memory(d.data(), len, &rw, &rh, &rc, want))
           : static_cast<void*>(stbi_load_from_memory(d.data(), len, &rw, &rh, &rc, want)));
  if (!pixels || rw != w || rh != h) return QV_ERROR_FILE_CORRUPT;
  const int bits = (want == 1 ? 8 : want * 8) * (wide ? 2 : 1);
  const uint32_t order = want == 1 ? QV_ORDER_GRAY : (wide ? QV_ORDER_RGB : QV_ORDER_BGR);
  BITMAPHANDLE b;
  const int result = CreateBlankBitmap(w, h, bits, order, false, &b);
  if (result != QV_SUCCESS) return result;
  if (wide)
    CopySamples(static_cast<const uint16_t*>(pixels.get()), want, &b);
  else
    CopySamples(static_cast<const uint8_t*>(pixels.get()), want, &b);
  *out = b;
  return QV_SUCCESS;
}

void AppendBytes(void* context, void* data, int size) {
  auto* out = static_cast<std::vector<uint8_t>*>(context);
  const auto* p = static_cast<const uint8_t*>(data);
  out->insert(out->end(), p, p + size);
}

std::vector<uint8_t> EncodePnm(const BITMAPHANDLE& b, int channels, bool wide) {
  const std::string header = std::string(channels == 1 ? "P5\n" : "P6\n") + std::to_string(b.nWidth) + " " +
                             std::to_string(b.nHeight) + "\n" + (wide ? "65535\n" : "255\n");
  std::vector<uint8_t> out(header.begin(), header.end());
  if (wide) {
    for (uint16_t v : InterleaveSamples16(b, channels)) {
      out.push_back(static_cast<uint8_t>(v >> 8));
      out.push_back(static_cast<uint8_t>(v));
    }
  } else {
    const auto samples = InterleaveSamples8(b, channels);
    out.insert(out.end(), samples.begin(), samples.end());
  }
  return out;
}

int Encode(const BITMAPHANDLE& b, unsigned int format, std::vector<uint8_t>* out) {
  PixelFormat f{};
  DescribePixelFormat(b, &f);
  const bool wide = f.bytesPerSample == 2;
  const int channels = f.IsGray() ? 1 : (f.HasAlpha() ? 4 : 3);
  const int w = b.nWidth, h = b.nHeight;
  switch (format) {
    case QV_FILE_PNG:
      if (wide) return EncodeOwnPng16(b, out);
      return stbi_write_png_to_func(AppendBytes, out, w, h, channels, InterleaveSamples8(b, channels).data(),
                                    w * channels)
                 ? QV_SUCCESS
                 : QV_ERROR_FILE_WRITE;
    case QV_FILE_BMP:
      return stbi_write_bmp_to_func(AppendBytes, out, w, h, channels, InterleaveSamples8(b, channels).data())
                 ? QV_SUCCESS
                 : QV_ERROR_FILE_WRITE;
    case QV_FILE_JPEG: {
      const int c = channels == 4 ? 3 : channels;
      return stbi_write_jpg_to_func(AppendBytes, out, w, h, c, InterleaveSamples8(b, c).data(), 90)
                 ? QV_SUCCESS
                 : QV_ERROR_FILE_WRITE;
    }
    case QV_FILE_TIFF: return EncodeOwnTiff(b, out);
    case QV_FILE_PNM: *out = EncodePnm(b, channels == 4 ? 3 : channels, wide); return QV_SUCCESS;
    default: return QV_ERROR_FILE_FORMAT;
  }
}

}  // namespace

int DecodeImageBytes(const std::vector<uint8_t>& bytes, BITMAPHANDLE* out) {
  if (bytes.empty() || bytes.size() > INT32_MAX) return QV_ERROR_FILE_FORMAT;
  return DecodeBytes(bytes, out);
}

int ReadImageFile(const wchar_t* path, BITMAPHANDLE* out) {
  std::vector<uint8_t> bytes;
  const int rc = ReadWholeFile(path, &bytes);
  return rc == QV_SUCCESS ? DecodeBytes(bytes, out) : rc;
}

int WriteImageFile(const wchar_t* path, const BITMAPHANDLE& b, unsigned int format) {
  std::vector<uint8_t> bytes;
  const int rc = Encode(b, format, &bytes);
  if (rc != QV_SUCCESS) return rc;
  return WriteBytes(path, bytes);
}

}  // namespace qv
