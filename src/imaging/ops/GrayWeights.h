/*
 * The gray level of the gray-scale and colored-gray operations: (R * r + G * g + B * b) / 1000 with weights
 * in thousandths, each 0..1000, adding up to exactly 1000.
 */
#pragma once

#include <cstdint>

#include "OpsCommon.h"

namespace qv {
namespace ops {

struct GrayWeights {
  int red;
  int green;
  int blue;

  bool IsValid() const {
    return red >= 0 && green >= 0 && blue >= 0 && red <= 1000 && green <= 1000 && blue <= 1000 &&
           red + green + blue == 1000;
  }
  template <class T>
  uint32_t GrayOf(T r, T g, T b) const {
    return static_cast<uint32_t>(RoundDiv(int64_t{r} * red + int64_t{g} * green + int64_t{b} * blue, 1000));
  }
};

}  // namespace ops
}  // namespace qv
