/*
 * Table palettes. The fixed palette of each depth is chosen so that it spans the color cube as evenly as its
 * size allows: black and white, then grays (two bits hold no useful color cube), the cube's corners, the VGA
 * colors, and from five bits a uniform cube that gives green, to which the eye is most sensitive, the most
 * levels and blue the fewest.
 */
#include "ColorPalettes.h"

#include <cmath>

namespace qv {
namespace ops {
namespace {

RGBQUAD Rgb(int r, int g, int b) {
  return RGBQUAD{static_cast<uint8_t>(b), static_cast<uint8_t>(g), static_cast<uint8_t>(r), 0};
}

uint8_t Level(int i, int levels) { return static_cast<uint8_t>(std::lround(i * 255.0 / (levels - 1))); }

std::vector<RGBQUAD> Cube(int red, int green, int blue) {
  std::vector<RGBQUAD> p;
  for (int r = 0; r < red; ++r)
    for (int g = 0; g < green; ++g)
      for (int b = 0; b < blue; ++b) p.push_back(Rgb(Level(r, red), Level(g, green), Level(b, blue)));
  return p;
}

}  // namespace

std::vector<RGBQUAD> GrayRamp(int n) {
  std::vector<RGBQUAD> p;
  for (int i = 0; i < n; ++i) p.push_back(Rgb(Level(i, n), Level(i, n), Level(i, n)));
  return p;
}

std::vector<RGBQUAD> VgaColors() {
  return {Rgb(0, 0, 0),     Rgb(128, 0, 0),     Rgb(0, 128, 0),     Rgb(128, 128, 0),  Rgb(0, 0, 128), Rgb(128, 0, 128),
          Rgb(0, 128, 128), Rgb(192, 192, 192), Rgb(128, 128, 128), Rgb(255, 0, 0),    Rgb(0, 255, 0), Rgb(255, 255, 0),
          Rgb(0, 0, 255),   Rgb(255, 0, 255),   Rgb(0, 255, 255),   Rgb(255, 255, 255)};
}

std::vector<RGBQUAD> SystemColors() {
  return {Rgb(0, 0, 0),       Rgb(128, 0, 0),     Rgb(0, 128, 0),     Rgb(128, 128, 0),   Rgb(0, 0, 128),
          Rgb(128, 0, 128),   Rgb(0, 128, 128),   Rgb(192, 192, 192), Rgb(192, 220, 192), Rgb(166, 202, 240),
          Rgb(255, 251, 240), Rgb(160, 160, 164), Rgb(128, 128, 128), Rgb(255, 0, 0),     Rgb(0, 255, 0),
          Rgb(255, 255, 0),   Rgb(0, 0, 255),     Rgb(255, 0, 255),   Rgb(0, 255, 255),   Rgb(255, 255, 255)};
}

std::vector<RGBQUAD> WebSafeColors() { return Cube(6, 6, 6); }

std::vector<RGBQUAD> FixedPalette(int bitsPerPixel) {
  switch (bitsPerPixel) {
    case 1: return GrayRamp(2);
    case 2: return GrayRamp(4);
    case 3: return Cube(2, 2, 2);
    case 4: return VgaColors();
    case 5: return Cube(4, 4, 2);
    case 6: return Cube(4, 4, 4);
    case 7: return Cube(4, 8, 4);
    default: return Cube(8, 8, 4);
  }
}

}  // namespace ops
}  // namespace qv
