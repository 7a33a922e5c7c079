/*
 * The charts are drawn straight into the bitmap's rows through the public
 * descriptor (rows top-down, nBytesPerLine apart), which is how a host
 * fills a bitmap it computed itself. The colour wheel takes hue from the
 * angle and saturation from the radius, so hue and saturation dialogs move
 * every part of it visibly; the gradients cover the whole sample range, so
 * a window picks out a visible band.
 */
#include "TestChart.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace qvdemo {
namespace {

struct Rgb {
  int r, g, b;
};

// HSV to RGB with h in degrees, s and v in 0..1.
Rgb FromHsv(double h, double s, double v) {
  const double c = v * s;
  const double hp = std::fmod(h, 360.0) / 60.0;
  const double x = c * (1 - std::fabs(std::fmod(hp, 2.0) - 1));
  double r = 0, g = 0, b = 0;
  if (hp < 1) {
    r = c;
    g = x;
  } else if (hp < 2) {
    r = x;
    g = c;
  } else if (hp < 3) {
    g = c;
    b = x;
  } else if (hp < 4) {
    g = x;
    b = c;
  } else if (hp < 5) {
    r = x;
    b = c;
  } else {
    r = c;
    b = x;
  }
  const double m = v - c;
  auto level = [m](double u) { return static_cast<int>(std::lround((u + m) * 255)); };
  return {level(r), level(g), level(b)};
}

Rgb ChartColor(int x, int y, int width, int height) {
  const int rampHeight = height / 6;
  const int wedgeHeight = height / 12;
  if (y < rampHeight) {
    const int v = x * 255 / std::max(1, width - 1);
    return {v, v, v};
  }
  if (y < rampHeight + wedgeHeight) {
    const int v = (x * 16 / width) * 255 / 15;
    return {v, v, v};
  }
  const int top = rampHeight + wedgeHeight;
  const int bodyHeight = height - top;
  const int wheelWidth = width * 2 / 3;
  if (x < wheelWidth) {
    const double cx = wheelWidth / 2.0, cy = top + bodyHeight / 2.0;
    const double radius = std::min(wheelWidth, bodyHeight) / 2.0 - 4;
    const double dx = x - cx, dy = y - cy;
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance > radius) return {128, 128, 128};
    const double angle = std::atan2(-dy, dx) * 180.0 / 3.14159265358979323846;
    return FromHsv(angle < 0 ? angle + 360 : angle, distance / radius, 1.0);
  }
  // Three bands of channel ramps, dark at the top.
  const int band = (x - wheelWidth) * 3 / std::max(1, width - wheelWidth);
  const int v = (y - top) * 255 / std::max(1, bodyHeight - 1);
  return {band == 0 ? v : 0, band == 1 ? v : 0, band == 2 ? v : 0};
}

}  // namespace

int MakeColorChart(OwnedBitmap& bitmap, int width, int height) {
  const int result = bitmap.Create(width, height, 24, QV_ORDER_BGR);
  if (result != QV_SUCCESS) return result;
  BITMAPHANDLE* p = bitmap.Get();
  for (int y = 0; y < height; ++y) {
    uint8_t* row = p->pData + static_cast<size_t>(y) * p->nBytesPerLine;
    for (int x = 0; x < width; ++x) {
      const Rgb c = ChartColor(x, y, width, height);
      row[3 * x + 0] = static_cast<uint8_t>(c.b);
      row[3 * x + 1] = static_cast<uint8_t>(c.g);
      row[3 * x + 2] = static_cast<uint8_t>(c.r);
    }
  }
  return QV_SUCCESS;
}

int MakeGrayGradient(OwnedBitmap& bitmap, int bits, int width, int height) {
  if (bits != 12 && bits != 16) return QV_ERROR_INVALID_BITS_PER_PIXEL;
  const int result = bitmap.Create(width, height, bits, QV_ORDER_GRAY);
  if (result != QV_SUCCESS) return result;
  BITMAPHANDLE* p = bitmap.Get();
  const double maxValue = (1 << bits) - 1;
  for (int y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<uint16_t*>(p->pData + static_cast<size_t>(y) * p->nBytesPerLine);
    for (int x = 0; x < width; ++x) {
      // Upper half a horizontal ramp; lower half a radial one, bright in the middle.
      double t = static_cast<double>(x) / std::max(1, width - 1);
      if (y >= height / 2) {
        const double dx = (x - width / 2.0) / (width / 2.0);
        const double dy = (y - height * 0.75) / (height / 4.0);
        t = std::max(0.0, 1.0 - std::sqrt(dx * dx + dy * dy));
      }
      row[x] = static_cast<uint16_t>(std::lround(t * maxValue));
    }
  }
  return QV_SUCCESS;
}

}  // namespace qvdemo
