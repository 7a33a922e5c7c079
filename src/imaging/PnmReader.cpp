/*
 * A reader for binary PNM (P5 gray, P6 color) of 8 and 16 bits. stb's reader takes 16-bit samples in the
 * wrong byte order and does not notice a file cut short, so PNM is read here: header tokens with comments,
 * maxval 1..65535 (samples scaled to 255 or 65535 when maxval is smaller), big-endian 16-bit samples, and
 * the pixel data must be complete.
 */
#include <cctype>
#include <cstring>

#include "Bitmap.h"
#include "BitmapCheck.h"
#include "PnmReader.h"

namespace qv {
namespace {

class HeaderReader {
 public:
  HeaderReader(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}

  // The next decimal token, skipping white space and comments; false on anything else.
  bool Number(uint32_t* out) {
    SkipSpace();
    if (m_pos >= m_size || !std::isdigit(m_data[m_pos])) return false;
    uint64_t v = 0;
    while (m_pos < m_size && std::isdigit(m_data[m_pos])) {
      v = v * 10 + (m_data[m_pos++] - '0');
      if (v > 0xFFFFFFFFu) return false;
    }
    *out = static_cast<uint32_t>(v);
    return true;
  }

  // Exactly one white-space byte separates the header from the samples.
  bool EndOfHeader() {
    if (m_pos >= m_size || !std::isspace(m_data[m_pos])) return false;
    ++m_pos;
    return true;
  }

  size_t Position() const { return m_pos; }

 private:
  void SkipSpace() {
    while (m_pos < m_size) {
      if (m_data[m_pos] == '#') {
        while (m_pos < m_size && m_data[m_pos] != '\n') ++m_pos;
      } else if (std::isspace(m_data[m_pos])) {
        ++m_pos;
      } else {
        break;
      }
    }
  }

  const uint8_t* m_data;
  size_t m_size;
  size_t m_pos = 2;
};

}  // namespace

bool IsPnm(const std::vector<uint8_t>& d) { return d.size() >= 2 && d[0] == 'P' && (d[1] == '5' || d[1] == '6'); }

int DecodePnm(const std::vector<uint8_t>& d, uint64_t maxPixels, BITMAPHANDLE* out) {
  const int channels = d[1] == '5' ? 1 : 3;
  HeaderReader header(d.data(), d.size());
  uint32_t w = 0, h = 0, maxval = 0;
  if (!header.Number(&w) || !header.Number(&h) || !header.Number(&maxval) || !header.EndOfHeader())
    return QV_ERROR_FILE_CORRUPT;
  if (w == 0 || h == 0 || maxval == 0 || maxval > 65535 || static_cast<uint64_t>(w) * h > maxPixels)
    return QV_ERROR_FILE_CORRUPT;
  const bool wide = maxval > 255;
  const uint64_t bytes = static_cast<uint64_t>(w) * h * channels * (wide ? 2 : 1);
  if (d.size() - header.Position() < bytes) return QV_ERROR_FILE_CORRUPT;
  const int bits = channels * (wide ? 16 : 8);
  BITMAPHANDLE b;
  const int rc = CreateBlankBitmap(static_cast<int>(w), static_cast<int>(h), bits,
                                   channels == 1 ? QV_ORDER_GRAY : (wide ? QV_ORDER_RGB : QV_ORDER_BGR), false, &b);
  if (rc != QV_SUCCESS) return rc;
  const uint32_t full = wide ? 65535 : 255;
  const uint8_t* src = d.data() + header.Position();
  for (uint32_t y = 0; y < h; ++y) {
    uint8_t* row = RowPtr(b, static_cast<int>(y));
    for (uint32_t i = 0; i < w * channels; ++i) {
      uint32_t v = wide ? (src[0] << 8) | src[1] : src[0];
      src += wide ? 2 : 1;
      v = v >= maxval ? full : (v * full + maxval / 2) / maxval;
      // 8-bit color is kept in BGR order, like every 24-bit bitmap the loader makes.
      const uint32_t at = (channels == 3 && !wide) ? (i / 3) * 3 + (2 - i % 3) : i;
      if (wide) {
        row[2 * at] = static_cast<uint8_t>(v);
        row[2 * at + 1] = static_cast<uint8_t>(v >> 8);
      } else {
        row[at] = static_cast<uint8_t>(v);
      }
    }
  }
  *out = b;
  return QV_SUCCESS;
}

}  // namespace qv
