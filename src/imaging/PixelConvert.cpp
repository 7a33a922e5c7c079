/*
 * Row conversion between every stored format and the 8/16-bit RGBA working rows. The format switch is made
 * once per row; the loops inside are plain per-pixel code the compiler can keep tight.
 */
#include "PixelConvert.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "Bitmap.h"
#include "BitmapCheck.h"

namespace qv {
namespace {

inline uint16_t Load16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }
inline void Store16(uint8_t* p, uint32_t v) {
  p[0] = static_cast<uint8_t>(v);
  p[1] = static_cast<uint8_t>(v >> 8);
}
inline uint16_t Widen(uint32_t v8) { return static_cast<uint16_t>(v8 * 257); }
inline uint8_t Narrow(uint32_t v16) { return static_cast<uint8_t>((v16 * 255 + 32767) / 65535); }
inline uint16_t Scale12To16(uint32_t v) {
  return static_cast<uint16_t>((std::min<uint32_t>(v, 4095) * 65535 + 2047) / 4095);
}
inline uint32_t Scale16To12(uint32_t v) { return (v * 4095 + 32767) / 65535; }

int PaletteSize(const BITMAPHANDLE& b, const PixelFormat& f) {
  const int full = 1 << std::min(f.bitsPerPixel, 8);
  return b.nColors > 0 ? std::min(b.nColors, full) : full;
}

int IndexAt(const uint8_t* row, const PixelFormat& f, int x) {
  switch (f.kind) {
    case PixelKind::Indexed1: return (row[x >> 3] >> (7 - (x & 7))) & 1;
    case PixelKind::Indexed2: return (row[x >> 2] >> (6 - 2 * (x & 3))) & 3;
    case PixelKind::Indexed4: return (row[x >> 1] >> (4 - 4 * (x & 1))) & 15;
    default: return row[x];
  }
}

void StoreIndex(uint8_t* row, const PixelFormat& f, int x, int index) {
  switch (f.kind) {
    case PixelKind::Indexed1: {
      const int shift = 7 - (x & 7);
      row[x >> 3] = static_cast<uint8_t>((row[x >> 3] & ~(1 << shift)) | ((index & 1) << shift));
      break;
    }
    case PixelKind::Indexed2: {
      const int shift = 6 - 2 * (x & 3);
      row[x >> 2] = static_cast<uint8_t>((row[x >> 2] & ~(3 << shift)) | ((index & 3) << shift));
      break;
    }
    case PixelKind::Indexed4: {
      const int shift = 4 - 4 * (x & 1);
      row[x >> 1] = static_cast<uint8_t>((row[x >> 1] & ~(15 << shift)) | ((index & 15) << shift));
      break;
    }
    default: row[x] = static_cast<uint8_t>(index); break;
  }
}

// The nearest palette entry (squared RGB distance), remembering the last answer because runs of equal colors
// are common.
class NearestEntry {
 public:
  NearestEntry(const BITMAPHANDLE& b, int count) : m_palette(b.Palette), m_count(count) {}
  int Find(uint8_t r, uint8_t g, uint8_t blue) {
    const uint32_t key = (uint32_t{r} << 16) | (uint32_t{g} << 8) | blue;
    if (key == m_lastKey) return m_lastIndex;
    int best = 0;
    int bestDist = 1 << 30;
    for (int i = 0; i < m_count; ++i) {
      const int dr = m_palette[i].rgbRed - r, dg = m_palette[i].rgbGreen - g, db = m_palette[i].rgbBlue - blue;
      const int d = dr * dr + dg * dg + db * db;
      if (d < bestDist) {
        bestDist = d;
        best = i;
        if (d == 0) break;
      }
    }
    m_lastKey = key;
    m_lastIndex = best;
    return best;
  }

 private:
  const RGBQUAD* m_palette;
  int m_count;
  uint32_t m_lastKey = 0xFFFFFFFFu;
  int m_lastIndex = 0;
};

// The stored gray sample mapped to the unsigned 0..max range.
inline uint32_t UnsignedGray(const uint8_t* row, const PixelFormat& f, int x) {
  const uint16_t raw = Load16(row + 2 * x);
  if (f.kind == PixelKind::Gray12) {
    if (!f.isSigned) return std::min<uint32_t>(raw, 4095);
    const int s = std::clamp<int>(static_cast<int16_t>(raw), -2048, 2047);
    return static_cast<uint32_t>(s + 2048);
  }
  return f.isSigned ? static_cast<uint32_t>(static_cast<int16_t>(raw) + 32768) : raw;
}

inline void StoreGray(uint8_t* row, const PixelFormat& f, int x, uint32_t unsignedValue) {
  if (f.kind == PixelKind::Gray12) {
    const uint32_t v = std::min<uint32_t>(unsignedValue, 4095);
    Store16(row + 2 * x, f.isSigned ? static_cast<uint16_t>(static_cast<int16_t>(static_cast<int>(v) - 2048)) : v);
  } else {
    Store16(row + 2 * x, f.isSigned ? static_cast<uint16_t>(unsignedValue ^ 0x8000u) : unsignedValue);
  }
}

// 5-6-5 layout: with BGR order blue sits in the low five bits (the Windows layout), with RGB order red does.
inline void Unpack565(uint16_t v, bool bgr, uint32_t* r, uint32_t* g, uint32_t* blue) {
  const uint32_t low = v & 31, mid = (v >> 5) & 63, high = (v >> 11) & 31;
  const uint32_t low8 = (low << 3) | (low >> 2), mid8 = (mid << 2) | (mid >> 4), high8 = (high << 3) | (high >> 2);
  *g = mid8;
  *r = bgr ? high8 : low8;
  *blue = bgr ? low8 : high8;
}

inline uint16_t Pack565(uint32_t r, uint32_t g, uint32_t blue, bool bgr) {
  const uint32_t r5 = (r * 31 + 127) / 255, g6 = (g * 63 + 127) / 255, b5 = (blue * 31 + 127) / 255;
  return static_cast<uint16_t>(bgr ? (r5 << 11) | (g6 << 5) | b5 : (b5 << 11) | (g6 << 5) | r5);
}

// Reads one pixel as 16-bit RGBA; the row-level functions below use it for every format, with 8-bit
// shortcuts where the data already is 8 bits.
inline void ReadPixel16(const BITMAPHANDLE& b, const PixelFormat& f, const uint8_t* row, int x, uint16_t* o) {
  switch (f.kind) {
    case PixelKind::Indexed1:
    case PixelKind::Indexed2:
    case PixelKind::Indexed4:
    case PixelKind::Indexed8: {
      const RGBQUAD& c = b.Palette[IndexAt(row, f, x)];
      o[0] = Widen(c.rgbRed);
      o[1] = Widen(c.rgbGreen);
      o[2] = Widen(c.rgbBlue);
      o[3] = 65535;
      break;
    }
    case PixelKind::Gray8:
      o[0] = o[1] = o[2] = Widen(row[x]);
      o[3] = 65535;
      break;
    case PixelKind::Gray12:
      o[0] = o[1] = o[2] = Scale12To16(UnsignedGray(row, f, x));
      o[3] = 65535;
      break;
    case PixelKind::Gray16:
      o[0] = o[1] = o[2] = static_cast<uint16_t>(UnsignedGray(row, f, x));
      o[3] = 65535;
      break;
    case PixelKind::Rgb565: {
      uint32_t r, g, bl;
      Unpack565(Load16(row + 2 * x), f.bgr, &r, &g, &bl);
      o[0] = Widen(r);
      o[1] = Widen(g);
      o[2] = Widen(bl);
      o[3] = 65535;
      break;
    }
    case PixelKind::Color24:
    case PixelKind::Color32: {
      const uint8_t* p = row + static_cast<size_t>(x) * f.channels;
      o[0] = Widen(f.bgr ? p[2] : p[0]);
      o[1] = Widen(p[1]);
      o[2] = Widen(f.bgr ? p[0] : p[2]);
      o[3] = f.channels == 4 ? Widen(p[3]) : 65535;
      break;
    }
    case PixelKind::Color48:
    case PixelKind::Color64: {
      const uint8_t* p = row + static_cast<size_t>(x) * f.channels * 2;
      o[0] = Load16(f.bgr ? p + 4 : p);
      o[1] = Load16(p + 2);
      o[2] = Load16(f.bgr ? p : p + 4);
      o[3] = f.channels == 4 ? Load16(p + 6) : 65535;
      break;
    }
  }
}

}  // namespace

int32_t ReadGraySample(const BITMAPHANDLE& b, const PixelFormat& f, int x, int y) {
  const uint8_t* row = RowPtr(b, y);
  if (f.kind == PixelKind::Gray8) return row[x];
  const uint16_t raw = Load16(row + 2 * x);
  return f.isSigned ? static_cast<int16_t>(raw) : raw;
}

void ReadRowGray(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, uint16_t* out) {
  const uint8_t* row = RowPtr(b, y);
  if (f.kind == PixelKind::Gray8) {
    for (int x = x0; x < x1; ++x) *out++ = row[x];
    return;
  }
  for (int x = x0; x < x1; ++x) *out++ = static_cast<uint16_t>(UnsignedGray(row, f, x));
}

void WriteRowGray(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint16_t* in) {
  uint8_t* row = RowPtr(b, y);
  if (f.kind == PixelKind::Gray8) {
    for (int x = x0; x < x1; ++x) row[x] = static_cast<uint8_t>(*in++);
    return;
  }
  for (int x = x0; x < x1; ++x) StoreGray(row, f, x, *in++);
}

void ReadRowRgba16(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, uint16_t* out) {
  const uint8_t* row = RowPtr(b, y);
  for (int x = x0; x < x1; ++x, out += 4) ReadPixel16(b, f, row, x, out);
}

void ReadRowRgba8(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, uint8_t* out) {
  const uint8_t* row = RowPtr(b, y);
  switch (f.kind) {
    case PixelKind::Indexed1:
    case PixelKind::Indexed2:
    case PixelKind::Indexed4:
    case PixelKind::Indexed8:
      for (int x = x0; x < x1; ++x, out += 4) {
        const RGBQUAD& c = b.Palette[IndexAt(row, f, x)];
        out[0] = c.rgbRed;
        out[1] = c.rgbGreen;
        out[2] = c.rgbBlue;
        out[3] = 255;
      }
      return;
    case PixelKind::Gray8:
      for (int x = x0; x < x1; ++x, out += 4) {
        out[0] = out[1] = out[2] = row[x];
        out[3] = 255;
      }
      return;
    case PixelKind::Color24:
    case PixelKind::Color32: {
      const int n = f.channels, ri = f.bgr ? 2 : 0, bi = f.bgr ? 0 : 2;
      for (int x = x0; x < x1; ++x, out += 4) {
        const uint8_t* p = row + static_cast<size_t>(x) * n;
        out[0] = p[ri];
        out[1] = p[1];
        out[2] = p[bi];
        out[3] = n == 4 ? p[3] : 255;
      }
      return;
    }
    default: {
      uint16_t px[4] = {0, 0, 0, 0};
      for (int x = x0; x < x1; ++x, out += 4) {
        ReadPixel16(b, f, row, x, px);
        out[0] = Narrow(px[0]);
        out[1] = Narrow(px[1]);
        out[2] = Narrow(px[2]);
        out[3] = Narrow(px[3]);
      }
    }
  }
}

void WriteRowRgba16(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint16_t* in) {
  uint8_t* row = RowPtr(b, y);
  switch (f.kind) {
    case PixelKind::Indexed1:
    case PixelKind::Indexed2:
    case PixelKind::Indexed4:
    case PixelKind::Indexed8: {
      NearestEntry nearest(b, PaletteSize(b, f));
      for (int x = x0; x < x1; ++x, in += 4)
        StoreIndex(row, f, x, nearest.Find(Narrow(in[0]), Narrow(in[1]), Narrow(in[2])));
      return;
    }
    case PixelKind::Gray8:
      for (int x = x0; x < x1; ++x, in += 4) row[x] = Narrow(Luminance(in[0], in[1], in[2]));
      return;
    case PixelKind::Gray12:
      for (int x = x0; x < x1; ++x, in += 4) StoreGray(row, f, x, Scale16To12(Luminance(in[0], in[1], in[2])));
      return;
    case PixelKind::Gray16:
      for (int x = x0; x < x1; ++x, in += 4) StoreGray(row, f, x, Luminance(in[0], in[1], in[2]));
      return;
    case PixelKind::Rgb565:
      for (int x = x0; x < x1; ++x, in += 4)
        Store16(row + 2 * x, Pack565(Narrow(in[0]), Narrow(in[1]), Narrow(in[2]), f.bgr));
      return;
    case PixelKind::Color24:
    case PixelKind::Color32: {
      const int n = f.channels, ri = f.bgr ? 2 : 0, bi = f.bgr ? 0 : 2;
      for (int x = x0; x < x1; ++x, in += 4) {
        uint8_t* p = row + static_cast<size_t>(x) * n;
        p[ri] = Narrow(in[0]);
        p[1] = Narrow(in[1]);
        p[bi] = Narrow(in[2]);
        if (n == 4) p[3] = Narrow(in[3]);
      }
      return;
    }
    case PixelKind::Color48:
    case PixelKind::Color64: {
      const int n = f.channels, ri = f.bgr ? 4 : 0, bi = f.bgr ? 0 : 4;
      for (int x = x0; x < x1; ++x, in += 4) {
        uint8_t* p = row + static_cast<size_t>(x) * n * 2;
        Store16(p + ri, in[0]);
        Store16(p + 2, in[1]);
        Store16(p + bi, in[2]);
        if (n == 4) Store16(p + 6, in[3]);
      }
      return;
    }
  }
}

void WriteRowIndices(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint8_t* indices) {
  uint8_t* row = RowPtr(b, y);
  for (int x = x0; x < x1; ++x) StoreIndex(row, f, x, *indices++);
}

void WriteRowRgba8(const BITMAPHANDLE& b, const PixelFormat& f, int y, int x0, int x1, const uint8_t* in) {
  uint8_t* row = RowPtr(b, y);
  switch (f.kind) {
    case PixelKind::Gray8:
      for (int x = x0; x < x1; ++x, in += 4) row[x] = static_cast<uint8_t>(Luminance(in[0], in[1], in[2]));
      return;
    case PixelKind::Color24:
    case PixelKind::Color32: {
      const int n = f.channels, ri = f.bgr ? 2 : 0, bi = f.bgr ? 0 : 2;
      for (int x = x0; x < x1; ++x, in += 4) {
        uint8_t* p = row + static_cast<size_t>(x) * n;
        p[ri] = in[0];
        p[1] = in[1];
        p[bi] = in[2];
        if (n == 4) p[3] = in[3];
      }
      return;
    }
    default: {
      std::vector<uint16_t> wide(static_cast<size_t>(x1 - x0) * 4);
      for (size_t i = 0; i < wide.size(); ++i) wide[i] = Widen(in[i]);
      WriteRowRgba16(b, f, y, x0, x1, wide.data());
    }
  }
}

int ConvertBitmap(const BITMAPHANDLE& src, int bitsPerPixel, uint32_t order, bool isSigned, BITMAPHANDLE* dst) {
  PixelFormat sf{}, df{};
  int rc = DescribePixelFormat(src, &sf);
  if (rc != QV_SUCCESS) return rc;
  std::vector<uint16_t> row(static_cast<size_t>(src.nWidth) * 4);
  BITMAPHANDLE out;
  rc = CreateBlankBitmap(src.nWidth, src.nHeight, bitsPerPixel, order, isSigned, &out);
  if (rc != QV_SUCCESS) return rc;
  DescribePixelFormat(out, &df);
  if (df.IsIndexed()) {
    const int room = 1 << df.bitsPerPixel;
    if (sf.IsIndexed()) {
      out.nColors = std::min(PaletteSize(src, sf), room);
      std::memcpy(out.Palette, src.Palette, sizeof(RGBQUAD) * out.nColors);
    } else {
      for (int i = 0; i < room; ++i) {
        const uint8_t v = static_cast<uint8_t>(i * 255 / (room - 1));
        out.Palette[i] = RGBQUAD{v, v, v, 0};
      }
      out.nColors = room;
    }
  }
  out.nXResolution = src.nXResolution;
  out.nYResolution = src.nYResolution;
  for (int y = 0; y < src.nHeight; ++y) {
    ReadRowRgba16(src, sf, y, 0, src.nWidth, row.data());
    WriteRowRgba16(out, df, y, 0, src.nWidth, row.data());
  }
  *dst = out;
  return QV_SUCCESS;
}

}  // namespace qv
