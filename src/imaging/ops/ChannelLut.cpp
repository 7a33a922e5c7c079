/*
 * Lookup-table application for the per-channel operations. Tables are built once per call from the
 * operation's ChannelMap; the row kernel for the format is picked before the row loop starts, so the inner
 * loops are plain table lookups without format tests.
 */
#include "ChannelLut.h"

#include <array>
#include <vector>

#include "OpsCommon.h"

#ifdef QV_OPS_AVX2_CLONE
#include <immintrin.h>
#endif

namespace qv {
namespace ops {
namespace {

using Table8 = std::array<uint8_t, 256>;

Table8 Build8(const ChannelMap& map, int channel) {
  Table8 t{};
  for (uint32_t v = 0; v < 256; ++v) {
    const uint32_t r = map.Value(channel, v, 255);
    t[v] = static_cast<uint8_t>(r > 255 ? 255 : r);
  }
  return t;
}

std::vector<uint16_t> Build16(const ChannelMap& map, int channel, uint32_t max) {
  std::vector<uint16_t> t(65536);
  for (uint32_t v = 0; v < 65536; ++v) {
    if (v > max) {
      t[v] = static_cast<uint16_t>(v);
      continue;
    }
    const uint32_t r = map.Value(channel, v, max);
    t[v] = static_cast<uint16_t>(r > max ? max : r);
  }
  return t;
}

// A table indexed by the stored word of a signed gray image: the map sees the sample's level (see GrayLevel)
// and its result goes back to a signed word. Words outside a 12-bit image's range keep their value.
std::vector<uint16_t> BuildSigned16(const ChannelMap& map, const PixelFormat& f) {
  std::vector<uint16_t> t(65536);
  const int32_t offset = static_cast<int32_t>(SignedOffset(f));
  for (uint32_t w = 0; w < 65536; ++w) {
    const int32_t level = static_cast<int16_t>(w) + offset;
    if (level < 0 || static_cast<uint32_t>(level) > f.maxValue) {
      t[w] = static_cast<uint16_t>(w);
      continue;
    }
    const uint32_t r = map.Value(kGray, static_cast<uint32_t>(level), f.maxValue);
    t[w] = GrayWord(f, r > f.maxValue ? f.maxValue : r);
  }
  return t;
}

// One table over a run of bytes (gray, or 24-bit color whose channels share a curve).
void SpanFlat(uint8_t* p, size_t n, const uint8_t* t) {
  size_t i = 0;
  for (; i + 4 <= n; i += 4) {
    const uint8_t a = t[p[i]], b = t[p[i + 1]], c = t[p[i + 2]], d = t[p[i + 3]];
    p[i] = a;
    p[i + 1] = b;
    p[i + 2] = c;
    p[i + 3] = d;
  }
  for (; i < n; ++i) p[i] = t[p[i]];
}

#ifdef QV_OPS_AVX2_CLONE
// One table over a run of bytes, 32 at a time: the table is sixteen 16-entry slices; for slice k the
// bytes whose high nibble is k become 0..15 (index ^ k << 4) and every other byte 16 or more, which a
// saturating add of 0x70 turns into a byte with its top bit set, for which the shuffle yields zero. With
// kKeepAlpha every fourth byte (the alpha of 32-bit pixels starting at p) keeps its value.
template <bool kKeepAlpha>
__attribute__((target("avx2"))) void SpanFlatAvx2(uint8_t* p, size_t n, const uint8_t* t) {
  __m256i slices[16];
  for (int k = 0; k < 16; ++k)
    slices[k] = _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(t + 16 * k)));
  const __m256i bias = _mm256_set1_epi8(0x70);
  const __m256i alpha = _mm256_set1_epi32(static_cast<int>(0xFF000000u));
  size_t i = 0;
  for (; i + 32 <= n; i += 32) {
    const __m256i index = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + i));
    __m256i out = _mm256_setzero_si256();
    for (int k = 0; k < 16; ++k) {
      const __m256i local = _mm256_adds_epu8(_mm256_xor_si256(index, _mm256_set1_epi8(static_cast<char>(k << 4))),
                                             bias);
      out = _mm256_or_si256(out, _mm256_shuffle_epi8(slices[k], local));
    }
    if (kKeepAlpha) out = _mm256_blendv_epi8(out, index, alpha);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p + i), out);
  }
  for (; i < n; ++i)
    if (!kKeepAlpha || i % 4 != 3) p[i] = t[p[i]];
}
#endif

// One table over a run of bytes, through the AVX2 copy when the processor has it.
template <bool kKeepAlpha>
void SpanFlatBest(uint8_t* p, size_t n, const uint8_t* t) {
#ifdef QV_OPS_AVX2_CLONE
  if (HasAvx2()) return SpanFlatAvx2<kKeepAlpha>(p, n, t);
#endif
  if (!kKeepAlpha) return SpanFlat(p, n, t);
  for (size_t i = 0; i < n; i += 4) {
    p[i] = t[p[i]];
    p[i + 1] = t[p[i + 1]];
    p[i + 2] = t[p[i + 2]];
  }
}

// Three tables, one per byte position of a pixel of kStep bytes; a fourth byte (alpha) is skipped.
template <int kStep>
void Span8(uint8_t* row, int x0, int x1, const uint8_t* t0, const uint8_t* t1, const uint8_t* t2) {
  uint8_t* p = row + static_cast<size_t>(x0) * kStep;
  uint8_t* const end = row + static_cast<size_t>(x1) * kStep;
  for (; p < end; p += kStep) {
    const uint8_t a = t0[p[0]], b = t1[p[1]], c = t2[p[2]];
    p[0] = a;
    p[1] = b;
    p[2] = c;
  }
}

template <int kSamples>
void Span16(uint8_t* row, int x0, int x1, const uint16_t* t0, const uint16_t* t1, const uint16_t* t2) {
  uint8_t* p = row + static_cast<size_t>(x0) * kSamples * 2;
  uint8_t* const end = row + static_cast<size_t>(x1) * kSamples * 2;
  for (; p < end; p += kSamples * 2) {
    Store16(p, t0[Load16(p)]);
    if (kSamples > 1) {
      Store16(p + 2, t1[Load16(p + 2)]);
      Store16(p + 4, t2[Load16(p + 4)]);
    }
  }
}

// 5-6-5 channels go through the 8-bit curve: expanded to 8 bits, mapped, and rounded back.
std::array<uint16_t, 64> FieldTable(const Table8& t, int bits) {
  std::array<uint16_t, 64> out{};
  const uint32_t fieldMax = (1u << bits) - 1;
  for (uint32_t v = 0; v <= fieldMax; ++v) {
    const uint32_t wide = bits == 5 ? (v << 3) | (v >> 2) : (v << 2) | (v >> 4);
    out[v] = static_cast<uint16_t>((t[wide] * fieldMax + 127) / 255);
  }
  return out;
}

int Apply565(BITMAPHANDLE& b, const PixelFormat& f, const Table8 (&t)[3]) {
  // BGR order keeps blue in the low five bits, RGB order red.
  const auto low = FieldTable(f.bgr ? t[kBlue] : t[kRed], 5);
  const auto mid = FieldTable(t[kGreen], 6);
  const auto high = FieldTable(f.bgr ? t[kRed] : t[kBlue], 5);
  return RunSpans(b, [&](uint8_t* row, int x0, int x1) {
    for (int x = x0; x < x1; ++x) {
      uint8_t* p = row + static_cast<size_t>(x) * 2;
      const uint16_t w = Load16(p);
      Store16(p, static_cast<uint16_t>(low[w & 31] | (mid[(w >> 5) & 63] << 5) | (high[w >> 11] << 11)));
    }
  });
}

int ApplyPalette(BITMAPHANDLE& b, const PixelFormat& f, const Table8 (&t)[3]) {
  const int n = PaletteEntries(f);
  for (int i = 0; i < n; ++i) {
    RGBQUAD& q = b.Palette[i];
    q.rgbRed = t[kRed][q.rgbRed];
    q.rgbGreen = t[kGreen][q.rgbGreen];
    q.rgbBlue = t[kBlue][q.rgbBlue];
  }
  return QV_SUCCESS;
}

int ApplyColor8(BITMAPHANDLE& b, const PixelFormat& f, const Table8 (&t)[3], bool same) {
  const uint8_t* t0 = f.bgr ? t[kBlue].data() : t[kRed].data();
  const uint8_t* t1 = t[kGreen].data();
  const uint8_t* t2 = f.bgr ? t[kRed].data() : t[kBlue].data();
  if (same && f.channels == 4) {
    return RunSpans(b, [&](uint8_t* row, int x0, int x1) {
      SpanFlatBest<true>(row + static_cast<size_t>(x0) * 4, static_cast<size_t>(x1 - x0) * 4, t0);
    });
  }
  if (f.channels == 4) {
    return RunSpans(b, [&](uint8_t* row, int x0, int x1) { Span8<4>(row, x0, x1, t0, t1, t2); });
  }
  if (same) {
    return RunSpans(b, [&](uint8_t* row, int x0, int x1) {
      SpanFlatBest<false>(row + static_cast<size_t>(x0) * 3, static_cast<size_t>(x1 - x0) * 3, t0);
    });
  }
  return RunSpans(b, [&](uint8_t* row, int x0, int x1) { Span8<3>(row, x0, x1, t0, t1, t2); });
}

int ApplyColor16(BITMAPHANDLE& b, const PixelFormat& f, const ChannelMap& map) {
  const bool same = map.SameForAllChannels();
  const std::vector<uint16_t> red = Build16(map, kRed, f.maxValue);
  const std::vector<uint16_t> green = same ? std::vector<uint16_t>() : Build16(map, kGreen, f.maxValue);
  const std::vector<uint16_t> blue = same ? std::vector<uint16_t>() : Build16(map, kBlue, f.maxValue);
  const uint16_t* r = red.data();
  const uint16_t* g = same ? r : green.data();
  const uint16_t* bl = same ? r : blue.data();
  const uint16_t* t0 = f.bgr ? bl : r;
  const uint16_t* t2 = f.bgr ? r : bl;
  if (f.channels == 4) return RunSpans(b, [&](uint8_t* row, int x0, int x1) { Span16<4>(row, x0, x1, t0, g, t2); });
  return RunSpans(b, [&](uint8_t* row, int x0, int x1) { Span16<3>(row, x0, x1, t0, g, t2); });
}

}  // namespace

int ApplyChannelMap(BITMAPHANDLE& b, const PixelFormat& f, const ChannelMap& map) {
  if (f.IsGray()) {
    if (f.kind == PixelKind::Gray8) {
      const Table8 t = Build8(map, kGray);
      return RunSpans(b, [&](uint8_t* row, int x0, int x1) {
        SpanFlatBest<false>(row + x0, static_cast<size_t>(x1 - x0), t.data());
      });
    }
    const std::vector<uint16_t> t = f.isSigned ? BuildSigned16(map, f) : Build16(map, kGray, f.maxValue);
    return RunSpans(b, [&](uint8_t* row, int x0, int x1) { Span16<1>(row, x0, x1, t.data(), nullptr, nullptr); });
  }
  if (f.bytesPerSample == 2) return ApplyColor16(b, f, map);

  const bool same = map.SameForAllChannels();
  Table8 t[3];
  t[kRed] = Build8(map, kRed);
  t[kGreen] = same ? t[kRed] : Build8(map, kGreen);
  t[kBlue] = same ? t[kRed] : Build8(map, kBlue);
  if (f.IsIndexed()) return ApplyPalette(b, f, t);
  if (f.kind == PixelKind::Rgb565) return Apply565(b, f, t);
  return ApplyColor8(b, f, t, same);
}

}  // namespace ops
}  // namespace qv
