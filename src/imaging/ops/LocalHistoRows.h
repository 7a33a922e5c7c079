/*
 * Pixel rows of every format as the local equalization sees them: up to three planar channels of levels
 * 0..max (255 for 8-bit samples, palettes and 5-6-5; 4095 for 12-bit gray; 65535 for 16-bit samples; signed
 * gray as its levels), read from and written back to a span of a row. Indexed pixels are read through the
 * palette and written as the nearest palette entry; 5-6-5 channels are widened to 8 bits and rounded back;
 * alpha is carried through unchanged. The format switch is made once per span.
 */
#pragma once

#include <cstdint>
#include <vector>

#include "../PixelConvert.h"
#include "OpsCommon.h"

namespace qv {
namespace ops {

class LocalHistoRows {
 public:
  LocalHistoRows(const BITMAPHANDLE& b, const PixelFormat& f) : m_b(b), m_f(f) {}

  bool Gray() const { return m_f.IsGray(); }
  uint32_t Max() const { return ChannelMax(m_f); }

  // Levels of pixels [x0, x1) of row y into c[0..2] (c[0] only for gray), each x1 - x0 long. rgba is scratch
  // of 4 (x1 - x0) samples that Write needs again for the alpha and must get back unchanged.
  void Read(int y, int x0, int x1, uint16_t* const c[3], std::vector<uint16_t>& rgba) const {
    const uint8_t* row = RowPtr(m_b, y);
    const int n = x1 - x0;
    if (m_f.kind == PixelKind::Gray8) {
      for (int i = 0; i < n; ++i) c[0][i] = row[x0 + i];
    } else if (Gray()) {
      for (int i = 0; i < n; ++i) c[0][i] = static_cast<uint16_t>(GrayLevel(m_f, Load16(row + 2 * size_t(x0 + i))));
    } else {
      rgba.resize(static_cast<size_t>(n) * 4);
      if (m_f.bytesPerSample == 2) {
        ReadRowRgba16(m_b, m_f, y, x0, x1, rgba.data());
      } else {
        m_narrow.resize(rgba.size());
        ReadRowRgba8(m_b, m_f, y, x0, x1, m_narrow.data());
        for (size_t i = 0; i < rgba.size(); ++i) rgba[i] = m_narrow[i];
      }
      for (int i = 0; i < n; ++i)
        for (int k = 0; k < 3; ++k) c[k][i] = rgba[4 * static_cast<size_t>(i) + k];
    }
  }

  void Write(int y, int x0, int x1, const uint16_t* const c[3], std::vector<uint16_t>& rgba) const {
    uint8_t* row = RowPtr(m_b, y);
    const int n = x1 - x0;
    if (m_f.kind == PixelKind::Gray8) {
      for (int i = 0; i < n; ++i) row[x0 + i] = static_cast<uint8_t>(c[0][i]);
      return;
    }
    if (Gray()) {
      for (int i = 0; i < n; ++i) Store16(row + 2 * size_t(x0 + i), GrayWord(m_f, c[0][i]));
      return;
    }
    for (int i = 0; i < n; ++i)
      for (int k = 0; k < 3; ++k) rgba[4 * static_cast<size_t>(i) + k] = c[k][i];
    if (m_f.bytesPerSample == 2) {
      WriteRowRgba16(m_b, m_f, y, x0, x1, rgba.data());
      return;
    }
    m_narrow.resize(rgba.size());
    for (size_t i = 0; i < rgba.size(); ++i) m_narrow[i] = static_cast<uint8_t>(rgba[i]);
    WriteRowRgba8(m_b, m_f, y, x0, x1, m_narrow.data());
  }

 private:
  const BITMAPHANDLE& m_b;
  const PixelFormat& m_f;
  mutable std::vector<uint8_t> m_narrow;
};

}  // namespace ops
}  // namespace qv
