/*
 * Peak extra memory and time of the preview's kernel work on a 100-megapixel 24-bit image (10000 x 10000), as
 * a before/after dialog does it: at fit zoom the image reduced to an 800 x 800 pane; at 100 % the visible
 * 800 x 600 rectangle with its margin copied out; and the worst case, an effect that needs its neighbourhood,
 * where the covered region is copied at full resolution, changed in place and then reduced to the pane.
 * Peak memory is the rise of the process's peak resident set (VmHWM, reset through /proc/self/clear_refs)
 * over what the image itself holds, printed as a multiple of the image's size. Linux only; asserts nothing.
 */
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>

#include "qv/qvimgops.h"
#include "qv/qvkrn.h"

namespace {

constexpr int kSide = 10000;

long StatusKb(const char* field) {
  std::ifstream status("/proc/self/status");
  std::string line;
  const size_t n = std::strlen(field);
  while (std::getline(status, line))
    if (line.compare(0, n, field) == 0) return std::stol(line.substr(n + 1));
  return -1;
}

void ResetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

struct Freed {
  BITMAPHANDLE b{};
  ~Freed() {
    if (b.uFlags & QV_BMF_ALLOCATED) Q_FreeBitmap(&b, 0);
  }
};

void Measure(const char* what, double imageMb, const std::function<int()>& work) {
  ResetPeak();
  const long before = StatusKb("VmRSS:");
  const auto t0 = std::chrono::steady_clock::now();
  const int rc = work();
  const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
  const double extraMb = (StatusKb("VmHWM:") - before) / 1024.0;
  std::printf("%-58s rc %d  %8.1f ms  peak extra %8.1f MB = %.3f x image\n", what, rc, ms, extraMb, extraMb / imageMb);
}

}  // namespace

int main() {
  Freed image;
  if (Q_CreateBitmap(&image.b, sizeof(BITMAPHANDLE), kSide, kSide, 24, QV_ORDER_BGR, nullptr, 0, 0) != QV_SUCCESS) {
    std::printf("no memory for the test image\n");
    return 1;
  }
  for (int y = 0; y < kSide; ++y) {
    uint8_t* row = image.b.pData + size_t(y) * image.b.nBytesPerLine;
    for (int x = 0; x < kSide * 3; ++x) row[x] = static_cast<uint8_t>(x * 7 + y * 13);
  }
  const double imageMb = double(image.b.nBytesPerLine) * kSide / (1024.0 * 1024.0);
  std::printf("image %d x %d, 24-bit: %.1f MB\n", kSide, kSide, imageMb);

  Measure("fit zoom: whole image reduced to 800 x 800", imageMb, [&] {
    Freed pane;
    return Q_ReduceBitmapRegion(&image.b, nullptr, 800, 800, &pane.b, sizeof(BITMAPHANDLE), 0);
  });
  Measure("100 %: 800 x 600 view with margins copied out", imageMb, [&] {
    const RECT visible{4599, 4699, 4599 + 1202, 4699 + 902};
    Freed view;
    return Q_ReduceBitmapRegion(&image.b, &visible, 1202, 902, &view.b, sizeof(BITMAPHANDLE), 0);
  });
  Measure("fit zoom, neighbourhood effect: full copy, effect, reduce", imageMb, [&] {
    Freed full, pane;
    int rc = Q_ReduceBitmapRegion(&image.b, nullptr, kSide, kSide, &full.b, sizeof(BITMAPHANDLE), 0);
    if (rc == QV_SUCCESS) rc = Q_ChangeBitmapIntensity(&full.b, 200, 0);
    if (rc == QV_SUCCESS) rc = Q_ReduceBitmapRegion(&full.b, nullptr, 800, 800, &pane.b, sizeof(BITMAPHANDLE), 0);
    return rc;
  });
  return 0;
}
