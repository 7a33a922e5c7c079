/*
 * Throughput of the image operations on one deterministic 4000 x 3000 24-bit image, each beside the nearest
 * OpenCV equivalent run in the same process on the same pixels (cv::LUT for the table operations, the
 * BGR -> HSV -> BGR round trip with a channel change for hue and saturation, cv::transform for balance
 * colors) and beside a plain memcpy of the image as the physical limit. Every pair runs single-threaded
 * (the process pinned to one CPU, OpenCV told to use one thread) and then on all cores. Also times the
 * window-level fill of a 65536-entry LUT plus its application to a 12-megapixel 16-bit gray image.
 * Local histogram equalization runs beside OpenCV's CLAHE (clip limit high enough to be plain equalization,
 * the same number of tiles) on one 12-megapixel 8-bit gray image, all cores for both.
 * Prints MPix/s and ratios; asserts nothing. Run: build/native/bench/ops/qv_ops_bench [name filter]
 */
#include <sched.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "Parallel.h"
#include "qv/qvimgops.h"

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;
constexpr double kMegaPixels = kWidth * kHeight / 1e6;

double BestSeconds(const std::function<void()>& run, int repeats) {
  double best = 1e30;
  for (int i = 0; i < repeats; ++i) {
    const auto t0 = std::chrono::steady_clock::now();
    run();
    const auto t1 = std::chrono::steady_clock::now();
    best = std::min(best, std::chrono::duration<double>(t1 - t0).count());
  }
  return best;
}

// Smooth color gradients with a little hashed noise: every hue and saturation occurs, and neighbouring
// pixels are alike, as in photographs.
void FillImage(uint8_t* data, int stride) {
  uint32_t s = 2463534242u;
  for (int y = 0; y < kHeight; ++y) {
    uint8_t* row = data + static_cast<size_t>(y) * stride;
    for (int x = 0; x < kWidth; ++x) {
      s ^= s << 13;
      s ^= s >> 17;
      s ^= s << 5;
      const int noise = static_cast<int>(s & 15) - 8;
      const double a = x / double(kWidth), b = y / double(kHeight);
      const int v[3] = {static_cast<int>(255 * a), static_cast<int>(255 * b),
                        static_cast<int>(127.5 + 127.5 * std::sin(6.2831 * (a + b)))};
      for (int c = 0; c < 3; ++c) row[3 * x + c] = static_cast<uint8_t>(std::clamp(v[c] + noise, 0, 255));
    }
  }
}

struct Image {
  BITMAPHANDLE b{};
  Image(int bits, unsigned order) {
    if (Q_CreateBitmap(&b, sizeof b, kWidth, kHeight, bits, order, nullptr, 0, 0) != QV_SUCCESS) std::abort();
  }
  ~Image() { Q_FreeBitmap(&b, 0); }
  cv::Mat Mat() { return cv::Mat(kHeight, kWidth, CV_8UC3, b.pData, b.nBytesPerLine); }
};

void PinToCpus(int count) {
  cpu_set_t set;
  CPU_ZERO(&set);
  const int n = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
  for (int i = 0; i < std::min(count, n); ++i) CPU_SET(i, &set);
  sched_setaffinity(0, sizeof set, &set);
}

struct Row {
  std::string name;
  std::function<int()> ours;
  std::function<void()> peer;
};

cv::Mat ChannelLut(const std::function<int(int)>& f) {
  cv::Mat lut(1, 256, CV_8UC3);
  for (int i = 0; i < 256; ++i) {
    const uint8_t v = static_cast<uint8_t>(f(i));
    lut.at<cv::Vec3b>(0, i) = cv::Vec3b(v, v, v);
  }
  return lut;
}

template <class Change>
void HsvRoundTrip(cv::Mat& img, cv::Mat& hsv, const Change& change) {
  cv::cvtColor(img, hsv, cv::COLOR_BGR2HSV);
  for (int y = 0; y < hsv.rows; ++y) {
    uint8_t* p = hsv.ptr<uint8_t>(y);
    for (int x = 0; x < hsv.cols; ++x) change(p + 3 * x);
  }
  cv::cvtColor(hsv, img, cv::COLOR_HSV2BGR);
}

void RunPass(const char* title, Image& img, Image& work, std::vector<uint8_t>& copyTarget, const std::string& only) {
  cv::Mat src = img.Mat();
  cv::Mat mat = work.Mat();
  cv::Mat hsv;
  const size_t bytes = static_cast<size_t>(img.b.nBytesPerLine) * kHeight;
  const double copySec = BestSeconds([&] { std::memcpy(copyTarget.data(), img.b.pData, bytes); }, 7);

  const cv::Mat brightLut = ChannelLut([](int v) { return v + (255 - v) * 300 / 1000; });
  const cv::Mat contrastLut = ChannelLut([](int v) { return std::clamp(128 + (v - 128) * 1000 / 700, 0, 255); });
  const cv::Mat posterLut = ChannelLut([](int v) { return (v * 7 + 127) / 255 * 255 / 7; });
  const cv::Mat solarLut = ChannelLut([](int v) { return v >= 128 ? 255 - v : v; });
  const cv::Mat gammaLut = ChannelLut([](int v) { return static_cast<int>(255 * std::pow(v / 255.0, 100.0 / 180)); });
  std::vector<unsigned> remap(256);
  for (int i = 0; i < 256; ++i) remap[i] = 255 - i;
  const cv::Mat remapLut = ChannelLut([](int v) { return 255 - v; });
  const QVBALANCINGRECORD r{28, 0.7, 0.2, 0.1}, g{28, 0.1, 0.8, 0.1}, bl{28, 0.0, 0.3, 0.7};
  const cv::Matx33f mix(0.7f, 0.3f, 0.0f, 0.1f, 0.8f, 0.1f, 0.1f, 0.2f, 0.7f);  // BGR rows of the same weights

  BITMAPHANDLE* w = &work.b;
  const std::vector<Row> rows = {
      {"intensity", [&] { return Q_ChangeBitmapIntensity(w, 300, 0); }, [&] { cv::LUT(mat, brightLut, mat); }},
      {"contrast", [&] { return Q_ChangeBitmapContrast(w, 300, 0); }, [&] { cv::LUT(mat, contrastLut, mat); }},
      {"posterize", [&] { return Q_PosterizeBitmap(w, 8, 0); }, [&] { cv::LUT(mat, posterLut, mat); }},
      {"solarize", [&] { return Q_SolarizeBitmap(w, 128, 0); }, [&] { cv::LUT(mat, solarLut, mat); }},
      {"gamma", [&] { return Q_GammaCorrectBitmapExt(w, 180, 180, 180, 0); }, [&] { cv::LUT(mat, gammaLut, mat); }},
      {"remap intensity", [&] { return Q_RemapBitmapIntensity(w, remap.data(), 256, 0, 0); },
       [&] { cv::LUT(mat, remapLut, mat); }},
      {"hue +40", [&] { return Q_ChangeBitmapHue(w, 40, 0); },
       [&] { HsvRoundTrip(mat, hsv, [](uint8_t* p) { p[0] = static_cast<uint8_t>((p[0] + 20) % 180); }); }},
      {"saturation +300", [&] { return Q_ChangeBitmapSaturation(w, 300, 0); },
       [&] { HsvRoundTrip(mat, hsv, [](uint8_t* p) { p[1] = static_cast<uint8_t>(std::min(255, p[1] * 13 / 10)); }); }},
      {"balance colors", [&] { return Q_BalanceColors(w, &r, &g, &bl, 0); }, [&] { cv::transform(mat, mat, mix); }},
  };

  std::printf("\n%s (memcpy of the image: %.2f ms, %.0f MPix/s)\n", title, copySec * 1e3, kMegaPixels / copySec);
  std::printf("%-18s %10s %10s %12s %12s %12s\n", "operation", "ours ms", "OpenCV ms", "ours MPix/s", "vs OpenCV",
              "vs memcpy");
  for (const Row& row : rows) {
    if (!only.empty() && row.name.find(only) == std::string::npos) continue;
    // One untimed pass of each warms caches and builds OpenCV's lazily created tables.
    src.copyTo(mat);
    int rc = row.ours();
    src.copyTo(mat);
    row.peer();
    double oursBest = 1e30, peerBest = 1e30;
    for (int i = 0; i < 5; ++i) {
      src.copyTo(mat);
      auto t0 = std::chrono::steady_clock::now();
      rc = row.ours();
      auto t1 = std::chrono::steady_clock::now();
      oursBest = std::min(oursBest, std::chrono::duration<double>(t1 - t0).count());
      src.copyTo(mat);
      t0 = std::chrono::steady_clock::now();
      row.peer();
      t1 = std::chrono::steady_clock::now();
      peerBest = std::min(peerBest, std::chrono::duration<double>(t1 - t0).count());
    }
    std::printf("%-18s %10.2f %10.2f %12.0f %11.2fx %11.2fx%s\n", row.name.c_str(), oursBest * 1e3, peerBest * 1e3,
                kMegaPixels / oursBest, peerBest / oursBest, oursBest / copySec, rc == QV_SUCCESS ? "" : "  (failed)");
  }
}

// 16-bit gray window level: fill the 65536-entry LUT and map every sample of a 12-megapixel image to 24-bit
// color, once through Q_WindowLevelBitmap (which also allocates the new pixels) and once as a bare LUT
// pass over rows on all cores into a buffer allocated beforehand.
void RunWindowLevel() {
  Image gray(16, QV_ORDER_GRAY);
  for (int y = 0; y < kHeight; ++y) {
    uint8_t* row = gray.b.pData + static_cast<size_t>(y) * gray.b.nBytesPerLine;
    for (int x = 0; x < kWidth; ++x) {
      const uint16_t v = static_cast<uint16_t>((x * 16 + y * 5) & 0xFFFF);
      std::memcpy(row + 2 * x, &v, 2);
    }
  }
  std::vector<RGBQUAD> lut(65536);
  const unsigned flags = QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR;
  double convertBest = 1e30;
  for (int i = 0; i < 5; ++i) {
    BITMAPHANDLE copy{};
    if (Q_CopyBitmap(&copy, sizeof copy, &gray.b, 0) != QV_SUCCESS) std::abort();
    const auto t0 = std::chrono::steady_clock::now();
    Q_WindowLevelFillLUT(lut.data(), 65536, 0x000000FF, 0x00FFFF00, 1000, 50000, 0, 15, 0, 65535, 0, flags);
    const int rc = Q_WindowLevelBitmap(&copy, 0, 15, lut.data(), 65536, QV_ORDER_BGR, 0);
    const auto t1 = std::chrono::steady_clock::now();
    if (rc != QV_SUCCESS) std::printf("window level failed: %d\n", rc);
    convertBest = std::min(convertBest, std::chrono::duration<double>(t1 - t0).count());
    Q_FreeBitmap(&copy, 0);
  }
  std::vector<uint8_t> out(static_cast<size_t>(kWidth) * 3 * kHeight);
  const double applyBest = BestSeconds(
      [&] {
        Q_WindowLevelFillLUT(lut.data(), 65536, 0x000000FF, 0x00FFFF00, 1000, 50000, 0, 15, 0, 65535, 0, flags);
        qv::ParallelRowsQuiet(0, kHeight, [&](int y0, int y1) {
          for (int y = y0; y < y1; ++y) {
            const uint8_t* src = gray.b.pData + static_cast<size_t>(y) * gray.b.nBytesPerLine;
            uint8_t* dst = out.data() + static_cast<size_t>(y) * kWidth * 3;
            for (int x = 0; x < kWidth; ++x) {
              uint16_t v;
              std::memcpy(&v, src + 2 * x, 2);
              const RGBQUAD& q = lut[v];
              dst[3 * x] = q.rgbBlue;
              dst[3 * x + 1] = q.rgbGreen;
              dst[3 * x + 2] = q.rgbRed;
            }
          }
        });
      },
      5);
  std::printf("\n16-bit gray window level, 12 MPix, all cores:\n");
  std::printf("  fill LUT + Q_WindowLevelBitmap (new 24-bit pixels): %.2f ms\n", convertBest * 1e3);
  std::printf("  fill LUT + LUT pass into a ready buffer:             %.2f ms\n", applyBest * 1e3);
}

// 8-bit gray: local equalization at several tile sizes and extensions against CLAHE with as many tiles.
void RunLocalHisto() {
  Image gray(8, QV_ORDER_GRAY);
  Image work(8, QV_ORDER_GRAY);
  for (int y = 0; y < kHeight; ++y) {
    uint8_t* row = gray.b.pData + static_cast<size_t>(y) * gray.b.nBytesPerLine;
    for (int x = 0; x < kWidth; ++x)
      row[x] = static_cast<uint8_t>(std::clamp(
          128.0 + 100 * std::sin(x / 300.0) * std::cos(y / 170.0) + ((x * 7 + y * 13) % 23) - 11, 0.0, 255.0));
  }
  const size_t bytes = static_cast<size_t>(gray.b.nBytesPerLine) * kHeight;
  cv::Mat src(kHeight, kWidth, CV_8UC1, gray.b.pData, gray.b.nBytesPerLine), dst;
  auto ours = [&](int tile, int ext) {
    return BestSeconds(
        [&] {
          std::memcpy(work.b.pData, gray.b.pData, bytes);
          if (Q_LocalHistoEqualizeBitmap(&work.b, tile, tile, ext, ext, QV_LHE_GRAY, 0, 0) != QV_SUCCESS) std::abort();
        },
        5);
  };
  auto clahe = [&](int tile) {
    // A clip limit this high never clips: the histogram of a tile is equalized as it is.
    cv::Ptr<cv::CLAHE> c = cv::createCLAHE(1e6, cv::Size((kWidth + tile - 1) / tile, (kHeight + tile - 1) / tile));
    c->apply(src, dst);
    return BestSeconds([&] { c->apply(src, dst); }, 5);
  };
  std::printf(
      "\nLocal histogram equalization, 4000 x 3000 8-bit gray, all cores, best of 5 (copy of the image "
      "included in ours):\n");
  std::printf("%-28s %10s %10s %12s\n", "tile / window", "ours ms", "CLAHE ms", "CLAHE/ours");
  double t16 = 0, t64 = 0, c64 = 0, t256 = 0, t16e = 0;
  for (int tile : {16, 64, 256}) {
    const double o = ours(tile, 0), c = clahe(tile);
    std::printf("%-28s %10.2f %10.2f %11.2fx\n", (std::to_string(tile) + " x " + std::to_string(tile)).c_str(), o * 1e3,
                c * 1e3, c / o);
    if (tile == 16) t16 = o;
    if (tile == 64) t64 = o, c64 = c;
    if (tile == 256) t256 = o;
  }
  // With an extension the window slides (rows and strips leave as well as enter); window 32 is the smallest
  // such window, so 32 -> 256 isolates how the sliding cost follows the window.
  const double t16w32 = ours(16, 8);
  t16e = ours(16, 120);
  std::printf("%-28s %10.2f %10s\n", "16 x 16 tiles, window 32", t16w32 * 1e3, "-");
  std::printf("%-28s %10.2f %10s\n", "16 x 16 tiles, window 256", t16e * 1e3, "-");
  std::printf("ours / CLAHE at 64 x 64: %.2f (at most 1 wanted)\n", t64 / c64);
  std::printf("256 x 256 / 16 x 16 tiles: %.2f (at most 1.3 wanted)\n", t256 / t16);
  std::printf("over 16 x 16 tiles, window 256 / window 16: %.2f, window 256 / window 32: %.2f\n", t16e / t16,
              t16e / t16w32);
}

}  // namespace

// An optional argument runs only the operations whose names contain it.
int main(int argc, char** argv) {
  const std::string only = argc > 1 ? argv[1] : "";
  Image img(24, QV_ORDER_BGR);
  Image work(24, QV_ORDER_BGR);
  FillImage(img.b.pData, img.b.nBytesPerLine);
  std::vector<uint8_t> copyTarget(static_cast<size_t>(img.b.nBytesPerLine) * kHeight);
  std::printf(
      "4000 x 3000 24-bit BGR, best of 5 runs; 'vs OpenCV' = OpenCV time / our time (above 1: we are\n"
      "faster); 'vs memcpy' = our time / memcpy time of the same image (1 is the physical limit).\n");

  PinToCpus(1);
  cv::setNumThreads(1);
  RunPass("Single-threaded (process pinned to one CPU, cv::setNumThreads(1))", img, work, copyTarget, only);

  PinToCpus(1024);
  cv::setNumThreads(-1);
  RunPass("All cores", img, work, copyTarget, only);
  if (only.empty() || only == "window") RunWindowLevel();
  if (only.empty() || only == "local") RunLocalHisto();
  return 0;
}
