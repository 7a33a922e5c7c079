/*
 * Color reduction side by side with ImageMagick (Magick++: quantize with Floyd-Steinberg) and libimagequant
 * (dithering level 1), in one process on the same pixels: the sample photograph and a 12-megapixel
 * enlargement of it, reduced to 256, 64 and 16 colors with an optimized palette and Floyd-Steinberg
 * dithering. The three take turns, so a busy moment of the machine falls on all of them alike. Prints the
 * best of a few runs in milliseconds, the PSNR over R, G, B and the mean CIE76 color difference in L*a*b*
 * (D65) for each, and the ratios the product is held to. Asserts nothing.
 * Run: build/native/bench/ops/qv_reduce_bench [photo.png]
 */
#include <Magick++.h>
#include <libimagequant.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "qv/qvimgops.h"

namespace {

struct Image {
  int width = 0, height = 0;
  std::vector<uint8_t> rgb;  // tightly packed R, G, B
};

struct Result {
  double ms;
  Image out;
};

double Milliseconds(const std::function<void()>& run) {
  const auto t0 = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
}

bool Load(const char* path, Image* img) {
  BITMAPHANDLE b{};
  const std::wstring wide(path, path + std::strlen(path));
  if (Q_LoadBitmap(wide.c_str(), &b, sizeof b, 24, QV_ORDER_RGB, 0) != QV_SUCCESS) return false;
  img->width = b.nWidth;
  img->height = b.nHeight;
  img->rgb.resize(static_cast<size_t>(b.nWidth) * b.nHeight * 3);
  for (int y = 0; y < b.nHeight; ++y)
    std::memcpy(&img->rgb[static_cast<size_t>(y) * b.nWidth * 3], b.pData + static_cast<size_t>(y) * b.nBytesPerLine,
                static_cast<size_t>(b.nWidth) * 3);
  Q_FreeBitmap(&b, 0);
  return true;
}

// Bilinear enlargement to about the given number of pixels, keeping the aspect ratio.
Image Enlarge(const Image& s, double megapixels) {
  const double f = std::sqrt(megapixels * 1e6 / (double(s.width) * s.height));
  Image d;
  d.width = static_cast<int>(s.width * f);
  d.height = static_cast<int>(s.height * f);
  d.rgb.resize(static_cast<size_t>(d.width) * d.height * 3);
  for (int y = 0; y < d.height; ++y) {
    const double sy = std::clamp((y + 0.5) / f - 0.5, 0.0, s.height - 1.0);
    const int y0 = static_cast<int>(sy), y1 = std::min(y0 + 1, s.height - 1);
    const double ty = sy - y0;
    for (int x = 0; x < d.width; ++x) {
      const double sx = std::clamp((x + 0.5) / f - 0.5, 0.0, s.width - 1.0);
      const int x0 = static_cast<int>(sx), x1 = std::min(x0 + 1, s.width - 1);
      const double tx = sx - x0;
      for (int c = 0; c < 3; ++c) {
        auto at = [&](int yy, int xx) { return s.rgb[(static_cast<size_t>(yy) * s.width + xx) * 3 + c]; };
        const double v = (at(y0, x0) * (1 - tx) + at(y0, x1) * tx) * (1 - ty) +
                         (at(y1, x0) * (1 - tx) + at(y1, x1) * tx) * ty;
        d.rgb[(static_cast<size_t>(y) * d.width + x) * 3 + c] = static_cast<uint8_t>(std::lround(v));
      }
    }
  }
  return d;
}

double Psnr(const Image& a, const Image& b) {
  double sum = 0;
  for (size_t i = 0; i < a.rgb.size(); ++i) {
    const double d = double(a.rgb[i]) - b.rgb[i];
    sum += d * d;
  }
  const double mse = sum / a.rgb.size();
  return mse > 0 ? 10 * std::log10(255.0 * 255.0 / mse) : 99.0;
}

void ToLab(const uint8_t* p, double lab[3]) {
  double lin[3];
  for (int c = 0; c < 3; ++c) {
    const double v = p[c] / 255.0;
    lin[c] = v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
  }
  const double xyz[3] = {(0.4124 * lin[0] + 0.3576 * lin[1] + 0.1805 * lin[2]) / 0.95047,
                         0.2126 * lin[0] + 0.7152 * lin[1] + 0.0722 * lin[2],
                         (0.0193 * lin[0] + 0.1192 * lin[1] + 0.9505 * lin[2]) / 1.08883};
  double f[3];
  for (int c = 0; c < 3; ++c) f[c] = xyz[c] > 0.008856 ? std::cbrt(xyz[c]) : 7.787 * xyz[c] + 16.0 / 116;
  lab[0] = 116 * f[1] - 16;
  lab[1] = 500 * (f[0] - f[1]);
  lab[2] = 200 * (f[1] - f[2]);
}

double MeanDeltaE(const Image& a, const Image& b) {
  double sum = 0;
  const size_t n = a.rgb.size() / 3;
  for (size_t i = 0; i < n; ++i) {
    double la[3], lb[3];
    ToLab(&a.rgb[i * 3], la);
    ToLab(&b.rgb[i * 3], lb);
    sum += std::sqrt((la[0] - lb[0]) * (la[0] - lb[0]) + (la[1] - lb[1]) * (la[1] - lb[1]) +
                     (la[2] - lb[2]) * (la[2] - lb[2]));
  }
  return sum / n;
}

int BitsFor(int colors) { return colors >= 256 ? 8 : (colors >= 64 ? 6 : 4); }

Result RunOurs(const Image& in, int colors) {
  BITMAPHANDLE b{};
  Q_CreateBitmap(&b, sizeof b, in.width, in.height, 24, QV_ORDER_RGB, nullptr, 0, 0);
  for (int y = 0; y < in.height; ++y)
    std::memcpy(b.pData + static_cast<size_t>(y) * b.nBytesPerLine, &in.rgb[static_cast<size_t>(y) * in.width * 3],
                static_cast<size_t>(in.width) * 3);
  Result r{0, {}};
  r.ms = Milliseconds([&] {
    Q_ColorResBitmap(&b, &b, sizeof b, BitsFor(colors), QV_COLORRES_OPTIMIZED_PALETTE | QV_COLORRES_FLOYD_STEINBERG,
                     nullptr, nullptr, 0, nullptr, nullptr);
  });
  Q_ColorResBitmap(&b, &b, sizeof b, 24, QV_COLORRES_ORDER_RGB, nullptr, nullptr, 0, nullptr, nullptr);
  r.out.width = in.width;
  r.out.height = in.height;
  r.out.rgb.resize(in.rgb.size());
  for (int y = 0; y < in.height; ++y)
    std::memcpy(&r.out.rgb[static_cast<size_t>(y) * in.width * 3], b.pData + static_cast<size_t>(y) * b.nBytesPerLine,
                static_cast<size_t>(in.width) * 3);
  Q_FreeBitmap(&b, 0);
  return r;
}

Result RunMagick(const Image& in, int colors) {
  Result r{0, in};
  Magick::Image img(in.width, in.height, "RGB", Magick::CharPixel, in.rgb.data());
  r.ms = Milliseconds([&] {
    img.quantizeColors(colors);
    img.quantizeDither(true);
    img.quantizeDitherMethod(Magick::FloydSteinbergDitherMethod);
    img.quantize();
  });
  img.write(0, 0, in.width, in.height, "RGB", Magick::CharPixel, r.out.rgb.data());
  return r;
}

Result RunLiq(const Image& in, int colors) {
  Result r{0, in};
  std::vector<uint8_t> rgba(static_cast<size_t>(in.width) * in.height * 4);
  for (size_t i = 0; i < rgba.size() / 4; ++i) {
    std::memcpy(&rgba[i * 4], &in.rgb[i * 3], 3);
    rgba[i * 4 + 3] = 255;
  }
  std::vector<uint8_t> indices(static_cast<size_t>(in.width) * in.height);
  liq_palette palette{};
  r.ms = Milliseconds([&] {
    liq_attr* attr = liq_attr_create();
    liq_set_max_colors(attr, colors);
    liq_image* image = liq_image_create_rgba(attr, rgba.data(), in.width, in.height, 0);
    liq_result* result = nullptr;
    if (liq_image_quantize(image, attr, &result) == LIQ_OK) {
      liq_set_dithering_level(result, 1.0f);
      liq_write_remapped_image(result, image, indices.data(), indices.size());
      palette = *liq_get_palette(result);
      liq_result_destroy(result);
    }
    liq_image_destroy(image);
    liq_attr_destroy(attr);
  });
  for (size_t i = 0; i < indices.size(); ++i) {
    const liq_color& c = palette.entries[indices[i]];
    r.out.rgb[i * 3] = c.r;
    r.out.rgb[i * 3 + 1] = c.g;
    r.out.rgb[i * 3 + 2] = c.b;
  }
  return r;
}

void Compare(const char* name, const Image& img, int repeats) {
  std::printf("\n%s: %d x %d (%.1f MP)\n", name, img.width, img.height, img.width * double(img.height) / 1e6);
  std::printf("%7s %-14s %10s %8s %8s\n", "colors", "library", "ms", "PSNR", "dE76");
  for (int colors : {256, 64, 16}) {
    Result ours = RunOurs(img, colors), magick = RunMagick(img, colors), liq = RunLiq(img, colors);
    for (int r = 1; r < repeats; ++r) {
      ours.ms = std::min(ours.ms, RunOurs(img, colors).ms);
      magick.ms = std::min(magick.ms, RunMagick(img, colors).ms);
      liq.ms = std::min(liq.ms, RunLiq(img, colors).ms);
    }
    const double pOurs = Psnr(img, ours.out), pMagick = Psnr(img, magick.out), pLiq = Psnr(img, liq.out);
    std::printf("%7d %-14s %10.1f %8.2f %8.2f\n", colors, "QUORVELIX", ours.ms, pOurs, MeanDeltaE(img, ours.out));
    std::printf("%7d %-14s %10.1f %8.2f %8.2f\n", colors, "Magick++", magick.ms, pMagick, MeanDeltaE(img, magick.out));
    std::printf("%7d %-14s %10.1f %8.2f %8.2f\n", colors, "libimagequant", liq.ms, pLiq, MeanDeltaE(img, liq.out));
    std::printf(
        "%7d speed vs Magick++ %.1fx, vs libimagequant %.1fx; PSNR vs Magick++ %+.2f dB, vs libimagequant "
        "%+.2f dB\n",
        colors, magick.ms / ours.ms, liq.ms / ours.ms, pOurs - pMagick, pOurs - pLiq);
  }
}

}  // namespace

int main(int argc, char** argv) {
  Magick::InitializeMagick(argv[0]);
  const char* path = argc > 1 ? argv[1] : QV_SAMPLE_PHOTO;
  Image photo;
  if (!*path || !Load(path, &photo)) {
    std::printf("no sample photograph (install python3-skimage or pass a PNG): nothing to measure\n");
    return 0;
  }
  Compare("sample photograph", photo, 5);
  Compare("12-megapixel enlargement", Enlarge(photo, 12.0), 3);
  return 0;
}
