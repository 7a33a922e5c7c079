/*
 * Builds and reads the test images: formats, deterministic contents (a xorshift stream plus the extreme
 * values in the first pixels) and a per-pixel decoder written from the format description.
 */
#include "TestImage.h"

#include <cstring>
#include <stdexcept>

namespace opstest {
namespace {

uint32_t Next(uint32_t& s) {
  s ^= s << 13;
  s ^= s >> 17;
  s ^= s << 5;
  return s;
}

uint16_t Word(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }

}  // namespace

const std::vector<Format>& UnsignedFormats() {
  static const std::vector<Format> formats = {
      {"Indexed1", 1, QV_ORDER_RGB, false}, {"Indexed4", 4, QV_ORDER_BGR, false}, {"Indexed8", 8, QV_ORDER_BGR, false},
      {"Gray8", 8, QV_ORDER_GRAY, false},   {"Gray12", 12, QV_ORDER_GRAY, false}, {"Gray16", 16, QV_ORDER_GRAY, false},
      {"Bgr565", 16, QV_ORDER_BGR, false},  {"Rgb565", 16, QV_ORDER_RGB, false},  {"Bgr24", 24, QV_ORDER_BGR, false},
      {"Rgb24", 24, QV_ORDER_RGB, false},   {"Bgra32", 32, QV_ORDER_BGR, false},  {"Rgb48", 48, QV_ORDER_RGB, false},
      {"Bgra64", 64, QV_ORDER_BGR, false},
  };
  return formats;
}

const std::vector<Format>& AllFormats() {
  static const std::vector<Format> formats = [] {
    std::vector<Format> f = UnsignedFormats();
    f.push_back({"SignedGray12", 12, QV_ORDER_GRAY, true});
    f.push_back({"SignedGray16", 16, QV_ORDER_GRAY, true});
    return f;
  }();
  return formats;
}

TestBitmap::TestBitmap(const Format& f, int width, int height, uint32_t seed) : m_f(f) {
  uint32_t s = seed * 2654435761u + 12345u;
  std::vector<RGBQUAD> palette;
  if (f.bits <= 8 && f.order != QV_ORDER_GRAY) {
    palette.resize(1u << f.bits);
    for (auto& q : palette) {
      const uint32_t r = Next(s);
      q.rgbRed = static_cast<uint8_t>(r);
      q.rgbGreen = static_cast<uint8_t>(r >> 8);
      q.rgbBlue = static_cast<uint8_t>(r >> 16);
      q.rgbReserved = 0;
    }
  }
  const int rc = Q_CreateBitmap(m_b.get(), sizeof(BITMAPHANDLE), width, height, f.bits, f.order,
                                palette.empty() ? nullptr : palette.data(), static_cast<int>(palette.size()),
                                f.isSigned ? QV_BMF_SIGNED : 0);
  if (rc != QV_SUCCESS) throw std::runtime_error("Q_CreateBitmap failed");
  for (int y = 0; y < height; ++y) {
    uint8_t* row = m_b->pData + static_cast<size_t>(y) * m_b->nBytesPerLine;
    for (int i = 0; i < m_b->nBytesPerLine; ++i) row[i] = static_cast<uint8_t>(Next(s) >> 7);
    if (f.bits == 12) {
      for (int x = 0; x < width; ++x) {
        uint32_t v = Word(row + 2 * x) & 0x0FFF;
        if (f.isSigned && v >= 2048) v |= 0xF000;
        row[2 * x] = static_cast<uint8_t>(v);
        row[2 * x + 1] = static_cast<uint8_t>(v >> 8);
      }
    }
  }
  // The extremes of every sample: all bits clear in the first pixel, all set (or the largest value) next.
  const int bytesPerPixel = f.bits >= 8 ? f.bits / 8 + (f.bits == 12 ? 1 : 0) : 1;
  if (width >= 2) {
    std::memset(m_b->pData, 0, bytesPerPixel);
    std::memset(m_b->pData + (f.bits >= 8 ? bytesPerPixel : 0), 0xFF, bytesPerPixel);
    if (f.bits == 12) {
      const uint16_t top = f.isSigned ? 0x07FF : 0x0FFF;
      m_b->pData[2] = static_cast<uint8_t>(top);
      m_b->pData[3] = static_cast<uint8_t>(top >> 8);
    }
  }
}

bool TestBitmap::IsIndexed() const { return m_f.bits <= 8 && m_f.order != QV_ORDER_GRAY; }
bool TestBitmap::IsGray() const { return m_f.order == QV_ORDER_GRAY; }
bool TestBitmap::Is565() const { return m_f.bits == 16 && m_f.order != QV_ORDER_GRAY; }

uint32_t TestBitmap::Max() const {
  if (m_f.bits == 12) return 4095;
  if ((m_f.bits == 16 && IsGray()) || m_f.bits >= 48) return 65535;
  return 255;
}

uint32_t TestBitmap::Raw(int x, int y) const {
  const uint8_t* row = m_b->pData + static_cast<size_t>(y) * m_b->nBytesPerLine;
  if (m_f.bits < 8) {
    const size_t bit = static_cast<size_t>(x) * m_f.bits;
    return (row[bit / 8] >> (8 - m_f.bits - bit % 8)) & ((1u << m_f.bits) - 1);
  }
  if (m_f.bits == 8) return row[x];
  return Word(row + 2 * static_cast<size_t>(x));
}

void TestBitmap::SetGray(int x, int y, uint32_t v) {
  uint8_t* row = m_b->pData + static_cast<size_t>(y) * m_b->nBytesPerLine;
  if (m_f.bits == 8) {
    row[x] = static_cast<uint8_t>(v);
  } else {
    row[2 * x] = static_cast<uint8_t>(v);
    row[2 * x + 1] = static_cast<uint8_t>(v >> 8);
  }
}

void TestBitmap::Get(int x, int y, uint32_t c[3]) const {
  const uint8_t* row = m_b->pData + static_cast<size_t>(y) * m_b->nBytesPerLine;
  const bool bgr = m_f.order == QV_ORDER_BGR;
  if (IsIndexed()) {
    const RGBQUAD& q = m_b->Palette[Raw(x, y)];
    c[0] = q.rgbRed;
    c[1] = q.rgbGreen;
    c[2] = q.rgbBlue;
  } else if (IsGray()) {
    c[0] = c[1] = c[2] = Raw(x, y);
  } else if (Is565()) {
    const uint32_t w = Raw(x, y);
    const uint32_t lo = Widen(w & 31, 5), g = Widen((w >> 5) & 63, 6), hi = Widen(w >> 11, 5);
    c[0] = bgr ? hi : lo;
    c[1] = g;
    c[2] = bgr ? lo : hi;
  } else if (m_f.bits <= 32) {
    const uint8_t* p = row + static_cast<size_t>(x) * (m_f.bits / 8);
    c[0] = p[bgr ? 2 : 0];
    c[1] = p[1];
    c[2] = p[bgr ? 0 : 2];
  } else {
    const uint8_t* p = row + static_cast<size_t>(x) * (m_f.bits / 8);
    c[0] = Word(p + (bgr ? 4 : 0));
    c[1] = Word(p + 2);
    c[2] = Word(p + (bgr ? 0 : 4));
  }
}

std::vector<uint8_t> TestBitmap::Pixels() const {
  return std::vector<uint8_t>(m_b->pData, m_b->pData + static_cast<size_t>(m_b->nBytesPerLine) * m_b->nHeight);
}

std::vector<uint8_t> TestBitmap::PixelBytes(int x, int y) const {
  const uint8_t* row = m_b->pData + static_cast<size_t>(y) * m_b->nBytesPerLine;
  const int bytes = m_f.bits == 12 ? 2 : m_f.bits / 8;
  if (bytes == 0) return {row[static_cast<size_t>(x) * m_f.bits / 8]};
  return std::vector<uint8_t>(row + static_cast<size_t>(x) * bytes, row + static_cast<size_t>(x + 1) * bytes);
}

Snapshot::Snapshot(const TestBitmap& t)
    : pixels(t.Pixels()), palette(t.b().Palette, t.b().Palette + QV_MAX_PALETTE_ENTRIES) {}

uint32_t Widen(uint32_t field, int bits) {
  return bits == 5 ? (field << 3) | (field >> 2) : (field << 2) | (field >> 4);
}

uint32_t Quantize(uint32_t v8, int bits) {
  const uint32_t fieldMax = (1u << bits) - 1;
  return Widen(static_cast<uint32_t>(RoundHalfUp(v8 * static_cast<double>(fieldMax) / 255.0)), bits);
}

}  // namespace opstest
