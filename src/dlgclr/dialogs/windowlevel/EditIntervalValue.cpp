/*
 * The edit-interval dialog's clamp (see EditIntervalValue.h).
 */
#include "EditIntervalValue.h"

namespace qvwl {

int ClampIntervalValue(int value, int minimum, int maximum) {
  if (value > maximum) return maximum;
  if (value < minimum) return minimum;
  return value;
}

}  // namespace qvwl
