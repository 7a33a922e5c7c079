/*
 * Baseline TIFF: header, the sample data as one strip, then the image file directory with the tags a
 * reader needs (size, samples, photometric interpretation, strip location, resolution).
 */
#include "TiffWriter.h"

#include <cstring>

namespace qv {
namespace {

class LittleEndianWriter {
 public:
  explicit LittleEndianWriter(std::vector<uint8_t>* out) : m_out(out) {}
  void U16(uint32_t v) {
    m_out->push_back(static_cast<uint8_t>(v));
    m_out->push_back(static_cast<uint8_t>(v >> 8));
  }
  void U32(uint32_t v) {
    U16(v & 0xFFFF);
    U16(v >> 16);
  }
  // One directory entry whose value fits the four value bytes.
  void Entry(uint16_t tag, uint16_t type, uint32_t count, uint32_t value) {
    U16(tag);
    U16(type);
    U32(count);
    if (type == kShort && count == 1) {
      U16(value);
      U16(0);
    } else {
      U32(value);
    }
  }
  static constexpr uint16_t kShort = 3;
  static constexpr uint16_t kLong = 4;
  static constexpr uint16_t kRational = 5;

 private:
  std::vector<uint8_t>* m_out;
};

}  // namespace

std::vector<uint8_t> EncodeTiff(int width, int height, int channels, int bitsPerSample, const void* samples) {
  const uint64_t dataBytes = static_cast<uint64_t>(width) * height * channels * (bitsPerSample / 8);
  if (width <= 0 || height <= 0 || dataBytes > 0xF0000000u) return {};
  std::vector<uint8_t> out = {'I', 'I', 42, 0};
  LittleEndianWriter w(&out);
  w.U32(8);  // the directory follows the data; patched below
  const size_t dataAt = out.size();
  out.resize(dataAt + dataBytes);
  std::memcpy(out.data() + dataAt, samples, dataBytes);  // little-endian host: samples are already in file order
  if (out.size() % 2) out.push_back(0);
  const uint32_t bitsAt = static_cast<uint32_t>(out.size());
  for (int c = 0; c < channels; ++c) w.U16(static_cast<uint32_t>(bitsPerSample));
  const uint32_t resolutionAt = static_cast<uint32_t>(out.size());
  w.U32(96);
  w.U32(1);
  const uint32_t ifdAt = static_cast<uint32_t>(out.size());
  std::memcpy(out.data() + 4, &ifdAt, 4);
  using W = LittleEndianWriter;
  const bool alpha = channels == 4;
  const uint16_t entries = alpha ? 14 : 13;
  w.U16(entries);
  w.Entry(256, W::kLong, 1, static_cast<uint32_t>(width));
  w.Entry(257, W::kLong, 1, static_cast<uint32_t>(height));
  if (channels == 1)
    w.Entry(258, W::kShort, 1, static_cast<uint32_t>(bitsPerSample));
  else
    w.Entry(258, W::kShort, static_cast<uint32_t>(channels), bitsAt);
  w.Entry(259, W::kShort, 1, 1);                      // no compression
  w.Entry(262, W::kShort, 1, channels == 1 ? 1 : 2);  // black is zero / RGB
  w.Entry(273, W::kLong, 1, static_cast<uint32_t>(dataAt));
  w.Entry(277, W::kShort, 1, static_cast<uint32_t>(channels));
  w.Entry(278, W::kLong, 1, static_cast<uint32_t>(height));
  w.Entry(279, W::kLong, 1, static_cast<uint32_t>(dataBytes));
  w.Entry(282, W::kRational, 1, resolutionAt);
  w.Entry(283, W::kRational, 1, resolutionAt);
  w.Entry(284, W::kShort, 1, 1);             // samples of a pixel stored together
  w.Entry(296, W::kShort, 1, 2);             // resolution in inches
  if (alpha) w.Entry(338, W::kShort, 1, 2);  // the fourth sample is unassociated alpha
  w.U32(0);
  return out;
}

}  // namespace qv
