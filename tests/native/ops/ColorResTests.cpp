/*
 * Color resolution: each error-diffusion kernel against a reference written here from its weights, the
 * screens on a gradient, every target depth from every source format, the palette choices, the quantizer's
 * quality on a photograph, and hostile arguments leaving both descriptors alone.
 */
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "ReduceImages.h"
#include "TestImage.h"

namespace opstest {
namespace {

using qvtest::OwnedBitmap;

int Reduce(BITMAPHANDLE* b, int bits, unsigned flags, const RGBQUAD* palette = nullptr, unsigned colors = 0) {
  return Q_ColorResBitmap(b, b, sizeof(BITMAPHANDLE), bits, flags, palette, nullptr, colors, nullptr, nullptr);
}

uint8_t Pixel7x4(int x, int y) { return static_cast<uint8_t>((x * 53 + y * 97 + 31) % 256); }

// Weights by row below the current pixel (row 0 is the current row), columns dx = -3..3.
struct KernelCase {
  const char* name;
  unsigned flag;
  int divisor;
  int weights[4][7];
};

const KernelCase kKernels[] = {
    {"Floyd-Steinberg", QV_COLORRES_FLOYD_STEINBERG, 16, {{0, 0, 0, 0, 7, 0, 0}, {0, 0, 3, 5, 1, 0, 0}}},
    {"Stucki", QV_COLORRES_STUCKI, 42, {{0, 0, 0, 0, 8, 4, 0}, {0, 2, 4, 8, 4, 2, 0}, {0, 1, 2, 4, 2, 1, 0}}},
    {"Burkes", QV_COLORRES_BURKES, 32, {{0, 0, 0, 0, 8, 4, 0}, {0, 2, 4, 8, 4, 2, 0}}},
    {"Sierra", QV_COLORRES_SIERRA, 32, {{0, 0, 0, 0, 5, 3, 0}, {0, 2, 4, 5, 4, 2, 0}, {0, 0, 2, 3, 2, 0, 0}}},
    {"Stevenson-Arce",
     QV_COLORRES_STEVENSON_ARCE,
     200,
     {{0, 0, 0, 0, 0, 32, 0}, {12, 0, 26, 0, 30, 0, 16}, {0, 12, 0, 26, 0, 12, 0}, {5, 0, 12, 0, 12, 0, 5}}},
    {"Jarvis-Judice-Ninke",
     QV_COLORRES_JARVIS,
     48,
     {{0, 0, 0, 0, 7, 5, 0}, {0, 3, 5, 7, 5, 3, 0}, {0, 1, 3, 5, 3, 1, 0}}},
};

// Serpentine diffusion onto `levels` evenly spaced grays; a palette of more than eight entries passes on
// 5/8 of each error, truncated towards zero.
std::vector<int> ReferenceDiffusion(const KernelCase& k, int w, int h, int levels) {
  std::vector<int> acc(static_cast<size_t>(w) * h, 0), out(static_cast<size_t>(w) * h);
  const double step = 255.0 / (levels - 1);
  for (int y = 0; y < h; ++y) {
    const int dir = y % 2 ? -1 : 1;
    for (int i = 0; i < w; ++i) {
      const int x = dir > 0 ? i : w - 1 - i;
      const double carried = std::floor(double(acc[y * w + x]) / k.divisor + 0.5);
      const int v = static_cast<int>(std::min(255.0, std::max(0.0, Pixel7x4(x, y) + carried)));
      const int level = static_cast<int>(std::lround(v / step));
      out[y * w + x] = level;
      int e = v - static_cast<int>(std::lround(level * step));
      if (levels > 8) e = e * 5 / 8;
      for (int dy = 0; dy < 4; ++dy)
        for (int c = 0; c < 7; ++c) {
          const int tx = x + (c - 3) * dir, ty = y + dy;
          if (k.weights[dy][c] && tx >= 0 && tx < w && ty < h) acc[ty * w + tx] += e * k.weights[dy][c];
        }
    }
  }
  return out;
}

TEST(ColorRes, EachErrorDiffusionMatchesItsWeights) {
  constexpr int w = 7, h = 4;  // wide and tall enough for every tap of every kernel
  struct Target {
    int bits;
    unsigned palette;
    int levels;
  };
  const Target targets[] = {{1, QV_COLORRES_FIXED_PALETTE, 2}, {4, QV_COLORRES_ORDER_GRAY, 16}};
  for (const KernelCase& k : kKernels)
    for (const Target& t : targets) {
      OwnedBitmap b;
      MakeGray8(b, w, h, Pixel7x4);
      ASSERT_EQ(Reduce(b.get(), t.bits, k.flag | t.palette), QV_SUCCESS) << k.name;
      const std::vector<int> expected = ReferenceDiffusion(k, w, h, t.levels);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
          EXPECT_EQ(b->Palette[IndexAt(*b, x, y)].rgbGreen, std::lround(expected[y * w + x] * 255.0 / (t.levels - 1)))
              << k.name << " to " << t.levels << " grays at " << x << "," << y;
    }
}

int Transitions(const BITMAPHANDLE& b) {
  int n = 0;
  for (int y = 0; y + 1 < b.nHeight; ++y)
    for (int x = 0; x + 1 < b.nWidth; ++x)
      n += (IndexAt(b, x, y) != IndexAt(b, x + 1, y)) + (IndexAt(b, x, y) != IndexAt(b, x, y + 1));
  return n;
}

TEST(ColorRes, ScreensTrackAGradientAndClusteredDotsClump) {
  int transitions[2] = {0, 0};
  const unsigned screens[] = {QV_COLORRES_ORDERED, QV_COLORRES_CLUSTERED};
  for (int s = 0; s < 2; ++s) {
    OwnedBitmap ramp;
    MakeGray8(ramp, 256, 16, [](int x, int) { return uint32_t(x); });
    ASSERT_EQ(Reduce(ramp.get(), 1, screens[s] | QV_COLORRES_FIXED_PALETTE), QV_SUCCESS);
    for (int x0 = 0; x0 < 256; x0 += 8) {  // each block of 8 columns is one screen period wide
      int white = 0;
      for (int y = 0; y < 16; ++y)
        for (int x = x0; x < x0 + 8; ++x) white += IndexAt(*ramp, x, y);
      EXPECT_NEAR(white / 128.0, (x0 + 3.5) / 255.0, 0.07) << "screen " << s << " at column " << x0;
    }
    OwnedBitmap flat;
    MakeGray8(flat, 64, 64, [](int, int) { return 64u; });
    ASSERT_EQ(Reduce(flat.get(), 1, screens[s] | QV_COLORRES_FIXED_PALETTE), QV_SUCCESS);
    transitions[s] = Transitions(*flat);
  }
  EXPECT_LT(transitions[1] * 2, transitions[0]) << "clustered dots should form clumps, Bayer dots spread out";
}

// Eight colors whose channels are 0 or 255 survive every depth, 5-6-5 included.
uint32_t CornerColor(int i) { return (i & 1 ? 0xFF0000u : 0) | (i & 2 ? 0xFF00u : 0) | (i & 4 ? 0xFFu : 0); }

TEST(ColorRes, EveryTargetDepthRoundTripsAKnownImage) {
  struct DepthCase {
    int bits;
    unsigned flags;
    int colors;  // distinct colors in the image
    int storedBits;
    unsigned order;
  };
  const DepthCase cases[] = {
      {1, QV_COLORRES_OPTIMIZED_PALETTE, 2, 1, QV_ORDER_BGR},
      {2, QV_COLORRES_OPTIMIZED_PALETTE, 4, 2, QV_ORDER_BGR},
      {3, QV_COLORRES_OPTIMIZED_PALETTE, 8, 4, QV_ORDER_BGR},
      {4, QV_COLORRES_OPTIMIZED_PALETTE, 8, 4, QV_ORDER_BGR},
      {5, QV_COLORRES_OPTIMIZED_PALETTE, 8, 8, QV_ORDER_BGR},
      {7, QV_COLORRES_OPTIMIZED_PALETTE, 8, 8, QV_ORDER_BGR},
      {8, QV_COLORRES_OPTIMIZED_PALETTE | QV_COLORRES_FLOYD_STEINBERG, 8, 8, QV_ORDER_BGR},
      {12, QV_COLORRES_ORDER_GRAY, 2, 12, QV_ORDER_GRAY},
      {16, QV_COLORRES_ORDER_GRAY, 2, 16, QV_ORDER_GRAY},
      {16, QV_COLORRES_ORDER_BGR, 8, 16, QV_ORDER_BGR},
      {16, QV_COLORRES_ORDER_RGB, 8, 16, QV_ORDER_RGB},
      {24, QV_COLORRES_ORDER_RGB, 8, 24, QV_ORDER_RGB},
      {32, QV_COLORRES_ORDER_BGR, 8, 32, QV_ORDER_BGR},
      {48, QV_COLORRES_ORDER_BGR, 8, 48, QV_ORDER_BGR},
      {64, QV_COLORRES_ORDER_RGB, 8, 64, QV_ORDER_RGB},
  };
  for (const DepthCase& c : cases) {
    const auto color = [&](int x, int y) { return CornerColor(((x + 3 * y) % c.colors) * (c.colors == 2 ? 7 : 1)); };
    OwnedBitmap b;
    MakeRgb24(b, 13, 5, color);
    ASSERT_EQ(Reduce(b.get(), c.bits, c.flags), QV_SUCCESS) << c.bits;
    EXPECT_EQ(b->nBitsPerPixel, c.storedBits) << c.bits;
    EXPECT_EQ(b->uOrder, c.order) << c.bits;
    EXPECT_EQ(Q_IsValidBitmap(b.get(), 0), QV_SUCCESS) << c.bits;
    if (c.bits <= 8) {
      EXPECT_EQ(b->nColors, c.colors) << c.bits;
    }
    ASSERT_EQ(Reduce(b.get(), 24, QV_COLORRES_ORDER_RGB), QV_SUCCESS);
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < 13; ++x) {
        const uint8_t* p = b->pData + y * b->nBytesPerLine + 3 * x;
        ASSERT_EQ((uint32_t{p[0]} << 16) | (p[1] << 8) | p[2], color(x, y)) << c.bits << " bits at " << x << "," << y;
      }
  }
}

TEST(ColorRes, EverySourceFormatReachesEveryDepth) {
  for (const Format& f : AllFormats())
    for (int bits : {1, 4, 6, 8, 12, 16, 32, 48}) {
      TestBitmap t(f, 19, 6);
      const unsigned flags = bits <= 8 ? QV_COLORRES_OPTIMIZED_PALETTE | QV_COLORRES_STUCKI : QV_COLORRES_ORDER_BGR;
      ASSERT_EQ(Reduce(t.get(), bits, flags), QV_SUCCESS) << f.name << " to " << bits;
      EXPECT_EQ(Q_IsValidBitmap(t.get(), 0), QV_SUCCESS) << f.name << " to " << bits;
      EXPECT_EQ(t.b().nBitsPerPixel, bits == 6 ? 8 : bits) << f.name;
    }
}

TEST(ColorRes, GivenPaletteMapsItsOwnColorsToThemselves) {
  std::vector<RGBQUAD> palette(256);
  uint32_t s = 99;
  for (RGBQUAD& q : palette) {
    s = s * 1103515245u + 12345u;
    q = RGBQUAD{uint8_t(s >> 8), uint8_t(s >> 16), uint8_t(s >> 24), 0};
  }
  struct PaletteCase {
    unsigned colors;  // palette entries handed in
    int used;         // entries the image uses (every 25th)
    int bits;
  };
  const PaletteCase cases[] = {{16, 16, 4}, {256, 10, 4}, {256, 256 / 25 + 1, 8}, {2, 2, 1}};
  for (const PaletteCase& c : cases)
    for (unsigned dither : {QV_COLORRES_NO_DITHERING, QV_COLORRES_FLOYD_STEINBERG, QV_COLORRES_JARVIS}) {
      const int stride = c.colors == 256 ? 25 : 1;
      const auto color = [&](int x, int y) { return RgbOf(palette[((x * 7 + y * 3) % c.used) * stride]); };
      OwnedBitmap b;
      MakeRgb24(b, 21, 9, color);
      ASSERT_EQ(Reduce(b.get(), c.bits, QV_COLORRES_USER_PALETTE | dither, palette.data(), c.colors), QV_SUCCESS);
      if (c.colors <= (1u << c.bits)) {
        EXPECT_EQ(0, std::memcmp(b->Palette, palette.data(), c.colors * sizeof(RGBQUAD)));
      }
      for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 21; ++x)
          ASSERT_EQ(PaletteColorAt(*b, x, y), color(x, y)) << c.colors << " entries, dither " << dither;
    }
}

TEST(ColorRes, TablePalettesHoldTheirColorsInPlace) {
  const uint32_t system[20] = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080,
                               0xC0C0C0, 0xC0DCC0, 0xA6CAF0, 0xFFFBF0, 0xA0A0A4, 0x808080, 0xFF0000,
                               0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
  const auto photo = [](int x, int y) { return uint32_t((x * 40503u + y * 9973u) * 2654435761u) >> 8; };
  OwnedBitmap sys, flat, web, gray4, gray8, vga;
  for (auto* b : {&sys, &web, &gray4, &gray8, &vga}) MakeRgb24(*b, 40, 30, photo);
  MakeRgb24(flat, 4, 4, [](int, int) { return 0x123456u; });  // too few colors to fill the table
  for (auto* b : {&sys, &flat}) {
    ASSERT_EQ(Reduce(b->get(), 8, QV_COLORRES_SYSTEM_PALETTE), QV_SUCCESS);
    ASSERT_EQ((*b)->nColors, 256);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(RgbOf((*b)->Palette[i]), system[i]) << i;
    for (int i = 10; i < 20; ++i) EXPECT_EQ(RgbOf((*b)->Palette[236 + i]), system[i]) << i;
  }
  EXPECT_EQ(PaletteColorAt(*flat, 1, 1), 0x123456u);
  ASSERT_EQ(Reduce(vga.get(), 4, QV_COLORRES_SYSTEM_PALETTE), QV_SUCCESS);
  EXPECT_EQ(RgbOf(vga->Palette[9]), 0xFF0000u);
  EXPECT_EQ(RgbOf(vga->Palette[15]), 0xFFFFFFu);
  ASSERT_EQ(Reduce(web.get(), 8, QV_COLORRES_WEBSAFE_PALETTE), QV_SUCCESS);
  ASSERT_EQ(web->nColors, 216);
  EXPECT_EQ(RgbOf(web->Palette[36 * 5 + 6 * 2 + 1]), 0xFF6633u);
  ASSERT_EQ(Reduce(gray4.get(), 4, QV_COLORRES_ORDER_GRAY | QV_COLORRES_OPTIMIZED_PALETTE), QV_SUCCESS);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(RgbOf(gray4->Palette[i]), 0x111111u * i) << i;
  ASSERT_EQ(Reduce(gray8.get(), 8, QV_COLORRES_ORDER_GRAY), QV_SUCCESS);
  EXPECT_EQ(gray8->uOrder, QV_ORDER_GRAY);
}

double Psnr(const BITMAPHANDLE& a, const BITMAPHANDLE& b) {
  double sum = 0;
  for (int y = 0; y < a.nHeight; ++y)
    for (int x = 0; x < a.nWidth * 3; ++x) {
      const double d = double(a.pData[y * a.nBytesPerLine + x]) - b.pData[y * b.nBytesPerLine + x];
      sum += d * d;
    }
  return 10 * std::log10(255.0 * 255.0 * a.nWidth * a.nHeight * 3 / sum);
}

TEST(ColorRes, OptimizedPaletteQualityOnAPhotograph) {
  const std::string path = QV_SAMPLE_PHOTO;
  if (path.empty()) GTEST_SKIP() << "python3-skimage's coffee.png is not installed";
  OwnedBitmap original;
  const std::wstring wide(path.begin(), path.end());
  ASSERT_EQ(Q_LoadBitmap(wide.c_str(), original.get(), sizeof(BITMAPHANDLE), 24, QV_ORDER_RGB, 0), QV_SUCCESS);
  struct QualityCase {
    int bits;
    unsigned flags;
    double floorDb;  // about 0.5 dB under what the quantizer reaches on this photograph
  };
  const QualityCase cases[] = {
      {8, QV_COLORRES_OPTIMIZED_PALETTE, 39.3},
      {8, QV_COLORRES_OPTIMIZED_PALETTE | QV_COLORRES_FLOYD_STEINBERG, 39.0},
      {4, QV_COLORRES_OPTIMIZED_PALETTE | QV_COLORRES_FLOYD_STEINBERG, 28.3},
      {8, QV_COLORRES_FIXED_PALETTE, 0},
  };
  double psnr[4];
  for (int i = 0; i < 4; ++i) {
    OwnedBitmap b;
    ASSERT_EQ(Q_CopyBitmap(b.get(), sizeof(BITMAPHANDLE), original.get(), 0), QV_SUCCESS);
    ASSERT_EQ(Reduce(b.get(), cases[i].bits, cases[i].flags), QV_SUCCESS);
    ASSERT_EQ(Reduce(b.get(), 24, QV_COLORRES_ORDER_RGB), QV_SUCCESS);
    psnr[i] = Psnr(*original, *b);
    EXPECT_GE(psnr[i], cases[i].floorDb) << cases[i].bits << " bits, flags " << std::hex << cases[i].flags;
  }
  EXPECT_GT(psnr[0], psnr[3] + 6) << "an optimized palette must beat the uniform cube by far";
}

TEST(ColorRes, HostileArgumentsLeaveBothDescriptorsAlone) {
  OwnedBitmap unallocated;
  unallocated->uStructSize = sizeof(BITMAPHANDLE);
  const RGBQUAD two[2] = {};
  struct Hostile {
    const char* what;
    bool nullSrc, unallocatedSrc, nullDst;
    unsigned structSize;
    int bits;
    unsigned flags;
    const RGBQUAD* palette;
    unsigned colors;
    bool handle;
    int expected;
  };
  const unsigned kSize = sizeof(BITMAPHANDLE), kUser = QV_COLORRES_USER_PALETTE;
  const Hostile cases[] = {
      {"null source", true, false, false, kSize, 8, 0, nullptr, 0, false, QV_ERROR_INVALID_PARAMETER},
      {"unallocated", false, true, false, kSize, 8, 0, nullptr, 0, false, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {"struct size", false, false, false, kSize - 8, 8, 0, nullptr, 0, false, QV_ERROR_INVALID_STRUCT_SIZE},
      {"null destination", false, false, true, kSize, 8, 0, nullptr, 0, false, QV_ERROR_INVALID_PARAMETER},
      {"0 bits", false, false, false, kSize, 0, 0, nullptr, 0, false, QV_ERROR_INVALID_BITS_PER_PIXEL},
      {"9 bits", false, false, false, kSize, 9, 0, nullptr, 0, false, QV_ERROR_INVALID_BITS_PER_PIXEL},
      {"65 bits", false, false, false, kSize, 65, 0, nullptr, 0, false, QV_ERROR_INVALID_BITS_PER_PIXEL},
      {"undefined flag", false, false, false, kSize, 8, 0x200, nullptr, 0, false, QV_ERROR_INVALID_FLAGS},
      {"two palettes", false, false, false, kSize, 8, 0x3, nullptr, 0, false, QV_ERROR_INVALID_FLAGS},
      {"two orders", false, false, false, kSize, 24, 0x84, nullptr, 0, false, QV_ERROR_INVALID_FLAGS},
      {"dither 9", false, false, false, kSize, 8, 0x90000, nullptr, 0, false, QV_ERROR_INVALID_FLAGS},
      {"web-safe at 7 bits", false, false, false, kSize, 7, 0x40, nullptr, 0, false, QV_ERROR_INVALID_PARAMETER},
      {"no user palette", false, false, false, kSize, 8, kUser, nullptr, 2, false, QV_ERROR_INVALID_PARAMETER},
      {"0 colors", false, false, false, kSize, 8, kUser, two, 0, false, QV_ERROR_INVALID_PARAMETER},
      {"257 colors", false, false, false, kSize, 8, kUser, two, 257, false, QV_ERROR_INVALID_PARAMETER},
      {"a GDI palette natively", false, false, false, kSize, 8, kUser, two, 2, true, QV_ERROR_INVALID_HANDLE},
  };
  for (const Hostile& c : cases) {
    OwnedBitmap src;
    MakeRgb24(src, 9, 4, [](int x, int y) { return uint32_t(x * 0x102030 + y * 0x40506); });
    const BITMAPHANDLE srcBefore = *src;
    const std::vector<uint8_t> pixelsBefore(src->pData, src->pData + src->uDataSize);
    BITMAPHANDLE dst;
    std::memset(&dst, 0x5A, sizeof dst);
    const BITMAPHANDLE dstBefore = dst;
    BITMAPHANDLE* s = c.nullSrc ? nullptr : (c.unallocatedSrc ? unallocated.get() : src.get());
    const QVHPALETTE handle = c.handle ? reinterpret_cast<QVHPALETTE>(&dst) : nullptr;
    const int rc = Q_ColorResBitmap(s, c.nullDst ? nullptr : &dst, c.structSize, c.bits, c.flags, c.palette, handle,
                                    c.colors, nullptr, nullptr);
    EXPECT_EQ(rc, c.expected) << c.what;
    EXPECT_EQ(0, std::memcmp(&srcBefore, src.get(), sizeof srcBefore)) << c.what;
    EXPECT_EQ(pixelsBefore, std::vector<uint8_t>(src->pData, src->pData + src->uDataSize)) << c.what;
    EXPECT_EQ(0, std::memcmp(&dstBefore, &dst, sizeof dst)) << c.what;
  }
}

TEST(ColorRes, AbortLeavesBothDescriptorsAlone) {
  for (unsigned dither : {QV_COLORRES_FLOYD_STEINBERG, QV_COLORRES_ORDERED}) {
    OwnedBitmap src;
    MakeRgb24(src, 64, 64, [](int x, int y) { return uint32_t(x * 0x030201 + y * 0x010203); });
    const BITMAPHANDLE before = *src;
    BITMAPHANDLE dst{};
    int calls = 0;
    const auto stop = [](int, void* user) { return ++*static_cast<int*>(user) > 0 ? 0 : QV_SUCCESS; };
    EXPECT_EQ(Q_ColorResBitmap(src.get(), &dst, sizeof dst, 4, QV_COLORRES_OPTIMIZED_PALETTE | dither, nullptr, nullptr,
                               0, stop, &calls),
              QV_ERROR_USER_ABORT);
    EXPECT_GT(calls, 0);
    EXPECT_EQ(0, std::memcmp(&before, src.get(), sizeof before));
    EXPECT_EQ(dst.pData, nullptr);
  }
}

}  // namespace
}  // namespace opstest
