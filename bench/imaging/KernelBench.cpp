/*
 * Times the kernel on a 12-megapixel 24-bit image: saving and loading it (BMP and PNG), copying it, and painting it
 * reduced to a 1024 x 768 preview and at 1:1 into an 800 x 600 window. Peers in the same run: a fresh buffer and memcpy
 * for the copy; on Windows StretchDIBits with HALFTONE for the reduced paint. Prints milliseconds (best of several
 * runs) and ratios; nothing is asserted.
 */
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "qv/qvkrn.h"

#include "DisplayResampler.h"
#ifdef _WIN32
#include <windows.h>
#endif

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;

double BestMs(int runs, const std::function<void()>& fn) {
  double best = 1e30;
  for (int i = 0; i < runs; ++i) {
    const auto t0 = std::chrono::steady_clock::now();
    fn();
    const auto t1 = std::chrono::steady_clock::now();
    best = std::min(best, std::chrono::duration<double, std::milli>(t1 - t0).count());
  }
  return best;
}

void Report(const char* what, double ms, const char* peer = nullptr, double peerMs = 0) {
  if (peer)
    std::printf("%-34s %9.1f ms   %-26s %9.1f ms   ratio %.2f\n", what, ms, peer, peerMs, ms / peerMs);
  else
    std::printf("%-34s %9.1f ms\n", what, ms);
}

#ifdef _WIN32
std::wstring TempFile(const wchar_t* name) {
  wchar_t dir[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  return std::wstring(dir) + name;
}

struct Target {
  HDC dc;
  HBITMAP bitmap;
  HGDIOBJ old;
  Target(int w, int h) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = w;
    info.bmiHeader.biHeight = -h;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    dc = CreateCompatibleDC(nullptr);
    bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    old = SelectObject(dc, bitmap);
  }
  ~Target() {
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
  }
};
#else
std::wstring TempFile(const wchar_t* name) { return std::wstring(L"/tmp/") + name; }
#endif

}  // namespace

int main() {
  BITMAPHANDLE image;
  if (Q_CreateBitmap(&image, sizeof image, kWidth, kHeight, 24, QV_ORDER_BGR, nullptr, 0, 0) != QV_SUCCESS) {
    std::printf("cannot create the test image\n");
    return 1;
  }
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth * 3; ++x)
      image.pData[static_cast<size_t>(y) * image.nBytesPerLine + x] = static_cast<uint8_t>((x ^ y) + (x * y >> 9));
  std::printf("image %d x %d, 24 bits per pixel (%.1f MB)\n", kWidth, kHeight, image.uDataSize / 1048576.0);

  for (auto file : {std::make_pair(QV_FILE_BMP, L"qv-bench.bmp"), std::make_pair(QV_FILE_PNG, L"qv-bench.png")}) {
    const std::wstring path = TempFile(file.second);
    const char* name = file.first == QV_FILE_BMP ? "BMP" : "PNG";
    const double save = BestMs(1, [&] { Q_SaveBitmap(path.c_str(), &image, file.first, 0); });
    const double load = BestMs(3, [&] {
      BITMAPHANDLE loaded;
      if (Q_LoadBitmap(path.c_str(), &loaded, sizeof loaded, 0, QV_LOAD_KEEP_ORDER, 0) == QV_SUCCESS)
        Q_FreeBitmap(&loaded, 0);
    });
    std::printf("%s save %.1f ms, ", name, save);
    Report((std::string("load ") + name).c_str(), load);
  }

  const double copy = BestMs(5, [&] {
    BITMAPHANDLE copyOf;
    if (Q_CopyBitmap(&copyOf, sizeof copyOf, &image, 0) == QV_SUCCESS) Q_FreeBitmap(&copyOf, 0);
  });
  // The peer pays for fresh pages as the copy does.
  const double memcpyMs = BestMs(5, [&] {
    std::vector<uint8_t> raw(image.uDataSize);
    std::memcpy(raw.data(), image.pData, raw.size());
  });
  Report("copy (Q_CopyBitmap)", copy, "new vector + memcpy", memcpyMs);

#ifdef _WIN32
  Target preview(1024, 768), window(800, 600);
  RECT reduced{0, 0, 1024, 768};
  const double paint = BestMs(5, [&] { Q_PaintBitmap(preview.dc, &image, nullptr, &reduced, 0); });
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = kWidth;
  info.bmiHeader.biHeight = -kHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 24;
  const double stretch = BestMs(5, [&] {
    SetStretchBltMode(preview.dc, HALFTONE);
    StretchDIBits(preview.dc, 0, 0, 1024, 768, 0, 0, kWidth, kHeight, image.pData, &info, DIB_RGB_COLORS, SRCCOPY);
  });
  Report("paint reduced to 1024x768", paint, "StretchDIBits HALFTONE", stretch);
  std::vector<uint32_t> out(1024 * 768);
  qv::DisplayRequest request{RECT{0, 0, kWidth, kHeight}, 1024, 768, RECT{0, 0, 1024, 768}};
  Report("  of which rendering", BestMs(5, [&] { qv::RenderForDisplay(image, request, out.data()); }));
  RECT src{1000, 1000, 1800, 1600};
  const double oneToOne = BestMs(5, [&] { Q_PaintBitmap(window.dc, &image, &src, nullptr, 0); });
  Report("paint 800x600 at 1:1", oneToOne);
#else
  std::vector<uint32_t> out(1024 * 768);
  qv::DisplayRequest request{RECT{0, 0, kWidth, kHeight}, 1024, 768, RECT{0, 0, 1024, 768}};
  const double render = BestMs(5, [&] { qv::RenderForDisplay(image, request, out.data()); });
  Report("render reduced to 1024x768", render);
  qv::DisplayRequest window{RECT{1000, 1000, 1800, 1600}, 800, 600, RECT{0, 0, 800, 600}};
  const double oneToOne = BestMs(5, [&] { qv::RenderForDisplay(image, window, out.data()); });
  Report("render 800x600 at 1:1", oneToOne);
#endif
  Q_FreeBitmap(&image, 0);
  return 0;
}
