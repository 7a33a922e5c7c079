/*
 * The threshold screens of the halftone: for each pixel a threshold in 1..65534; the pixel is inked when its
 * darkness (0..65535) exceeds it. Spot-function screens spread their thresholds by area: a table built from
 * the spot function sampled over one cell gives, for each spot value, the share of the cell that inks before
 * it, so a flat gray of darkness t inks t of every cell whatever the dot's shape.
 */
#pragma once

#include <cstdint>
#include <vector>

#include "ScreenMatrix.h"

namespace qv {
namespace ops {

class HalftoneScreen {
 public:
  enum class Kind { Spot, Matrix, Random };

  // A spot screen of the given period (pixels per cell) at the angle (hundredths of a degree). On the pixel
  // grid (a multiple of 90 degrees) the cell's pixels are ranked instead, so a cell of d x d pixels renders
  // exactly d * d + 1 levels.
  static HalftoneScreen MakeSpot(Spot spot, int period, int angle);
  // A screen of ranks 0..n*n-1, n a power of two, sampled at the angle.
  static HalftoneScreen MakeMatrix(const std::vector<uint16_t>& ranks, int n, int angle);
  // Position-hashed noise, constant over grain x grain blocks.
  static HalftoneScreen MakeRandom(int grain);

  // Thresholds of pixels 0..width-1 of row y.
  void Row(int y, int width, uint16_t* thresholds) const;

 private:
  HalftoneScreen() = default;
  uint16_t SpotThreshold(double u, double v) const;

  Kind m_kind = Kind::Spot;
  Spot m_spot = Spot::Round;
  double m_cos = 1, m_sin = 0;    // rotation, already divided by the period for spot screens
  int m_size = 1;                 // matrix screens: side of the matrix; random: the grain
  double m_low = 0, m_scale = 0;  // spot value -> table bin
  std::vector<uint16_t> m_table;  // spot screens: threshold by bin; matrix screens: by matrix entry
};

}  // namespace ops
}  // namespace qv
