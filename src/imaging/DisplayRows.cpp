/*
 * Display conversion of every pixel format. The gray table maps each possible 16-bit word to its display
 * color, folding sign extension, bit selection and the LUT into one look-up.
 */
#include "DisplayRows.h"

#include <algorithm>

#include "BitmapCheck.h"
#include "PixelConvert.h"

namespace qv {
namespace {

inline uint32_t Gray(uint32_t v) { return v * 0x010101u; }

}  // namespace

DisplayRows::DisplayRows(const BITMAPHANDLE& b) : m_b(b) {
  DescribePixelFormat(b, &m_format);
  if (m_format.IsIndexed()) {
    for (int i = 0; i < 256; ++i) m_palette[i] = PackColor(b.Palette[i]);
  }
  const bool lut = (b.uFlags & QV_BMF_USELUT) && b.pLUT && b.uLUTLength > 0;
  if (m_format.kind == PixelKind::Gray12 || m_format.kind == PixelKind::Gray16 ||
      (m_format.kind == PixelKind::Gray8 && lut))
    BuildGrayTable();
}

void DisplayRows::BuildGrayTable() {
  const int storedBits = m_format.kind == PixelKind::Gray12 ? 12 : m_format.kind == PixelKind::Gray8 ? 8 : 16;
  const bool validBits = m_b.nLowBit >= 0 && m_b.nLowBit <= m_b.nHighBit && m_b.nHighBit < storedBits;
  m_lowBit = validBits ? m_b.nLowBit : 0;
  m_highBit = validBits ? m_b.nHighBit : storedBits - 1;
  const bool useLut = (m_b.uFlags & QV_BMF_USELUT) && m_b.pLUT && m_b.uLUTLength > 0;
  const uint32_t words = storedBits == 8 ? 256 : 65536;
  m_grayTable.resize(words);
  for (uint32_t word = 0; word < words; ++word) {
    int32_t sample;
    if (m_format.isSigned) {
      sample = static_cast<int16_t>(word);
      if (storedBits == 12) sample = std::clamp(sample, -2048, 2047);
    } else {
      sample = static_cast<int32_t>(storedBits == 12 ? std::min<uint32_t>(word, 4095) : word);
    }
    m_grayTable[word] = useLut ? LutColor(sample) : ReducedGray(sample);
  }
}

// The LUT entry for a sample's bits low..high; a negative signed value v sits at index length + v.
uint32_t DisplayRows::LutColor(int32_t sample) const {
  const int bits = m_highBit - m_lowBit + 1;
  int64_t index;
  if (m_format.isSigned) {
    index = sample >> m_lowBit;
    const int64_t half = int64_t{1} << (bits - 1);
    index = std::clamp<int64_t>(index, -half, half - 1);
    if (index < 0) index += m_b.uLUTLength;
  } else {
    index = (static_cast<uint32_t>(sample) & ((uint32_t{2} << m_highBit) - 1)) >> m_lowBit;
  }
  index = std::clamp<int64_t>(index, 0, static_cast<int64_t>(m_b.uLUTLength) - 1);
  return PackColor(m_b.pLUT[index]);
}

// The significant bits low..high scaled to 0..255 (signed samples offset so that the lowest value is black).
uint32_t DisplayRows::ReducedGray(int32_t sample) const {
  const int bits = m_highBit - m_lowBit + 1;
  const uint32_t top = (uint32_t{1} << bits) - 1;
  uint32_t v;
  if (m_format.isSigned) {
    const int64_t half = int64_t{1} << (bits - 1);
    v = static_cast<uint32_t>(std::clamp<int64_t>(sample >> m_lowBit, -half, half - 1) + half);
  } else {
    v = (static_cast<uint32_t>(sample) >> m_lowBit) & top;
  }
  return Gray(bits > 8 ? v >> (bits - 8) : (v * 255 + top / 2) / top);
}

void DisplayRows::Convert(int y, int x0, int x1, uint32_t* out) const {
  const uint8_t* row = RowPtr(m_b, y);
  switch (m_format.kind) {
    case PixelKind::Indexed8:
      for (int x = x0; x < x1; ++x) *out++ = m_palette[row[x]];
      return;
    case PixelKind::Gray8:
      if (!m_grayTable.empty()) {
        for (int x = x0; x < x1; ++x) *out++ = m_grayTable[row[x]];
      } else {
        for (int x = x0; x < x1; ++x) *out++ = Gray(row[x]);
      }
      return;
    case PixelKind::Gray12:
    case PixelKind::Gray16:
      for (int x = x0; x < x1; ++x) *out++ = m_grayTable[row[2 * x] | (row[2 * x + 1] << 8)];
      return;
    case PixelKind::Color24:
    case PixelKind::Color32: {
      const int n = m_format.channels, ri = m_format.bgr ? 2 : 0, bi = m_format.bgr ? 0 : 2;
      const uint8_t* p = row + static_cast<size_t>(x0) * n;
      for (int x = x0; x < x1; ++x, p += n) *out++ = (uint32_t{p[ri]} << 16) | (uint32_t{p[1]} << 8) | p[bi];
      return;
    }
    case PixelKind::Indexed1:
    case PixelKind::Indexed2:
    case PixelKind::Indexed4: {
      const int bpp = m_format.bitsPerPixel, perByte = 8 / bpp, mask = (1 << bpp) - 1;
      for (int x = x0; x < x1; ++x) {
        const int shift = 8 - bpp * (x % perByte + 1);
        *out++ = m_palette[(row[x / perByte] >> shift) & mask];
      }
      return;
    }
    default: {
      uint8_t rgba[4 * 64];
      for (int x = x0; x < x1; x += 64) {
        const int n = std::min(64, x1 - x);
        ReadRowRgba8(m_b, m_format, y, x, x + n, rgba);
        for (int i = 0; i < n; ++i)
          *out++ = (uint32_t{rgba[4 * i]} << 16) | (uint32_t{rgba[4 * i + 1]} << 8) | rgba[4 * i + 2];
      }
    }
  }
}

}  // namespace qv
