/*
 * The window-level slider's portable rules (see SliderRules.h). Everything here works on plain numbers: the
 * control feeds in its markers' values and pixels and acts on what comes back.
 */
#include "WindowLevelSliderRules.h"

#include <algorithm>
#include <cmath>

namespace qvwl {

double RoundTo(double x, int digits) {
  const double scale = std::pow(10.0, digits);
  return std::floor(x * scale + 0.5) / scale;
}

double SliderAxis::PixelToValue(double pixel) const {
  // An empty track has no pixels to map: every pointer is at the minimum.
  if (trackLength <= 0) return RoundTo(minimum, 1);
  return RoundTo((pixel - trackStart) / trackLength * Range() + minimum, 1);
}

int SliderAxis::ValueToPixel(double value) const {
  // An empty range puts every value at the track start rather than dividing by zero.
  if (Range() <= 0) return static_cast<int>(RoundTo(trackStart, 0));
  return static_cast<int>(RoundTo((value - minimum) / Range() * trackLength + trackStart, 0));
}

double SliderAxis::Clamp(double value) const { return std::min(std::max(value, minimum), maximum); }

size_t InsertionIndex(const std::vector<double>& values, double value) {
  return static_cast<size_t>(std::lower_bound(values.begin(), values.end(), value) - values.begin());
}

DragBounds ComputeDragBounds(const std::vector<double>& values, double value, double minimum, double maximum) {
  DragBounds bounds{minimum, maximum};
  for (double v : values) {
    if (v < value && v > bounds.lower) bounds.lower = v;
    if (v > value && v < bounds.upper) bounds.upper = v;
  }
  return bounds;
}

DragBounds MarkerLimits(const std::vector<double>& values, size_t index, double minimum, double maximum,
                        bool noPassing) {
  DragBounds limits{minimum, maximum};
  if (!noPassing || index >= values.size()) return limits;
  if (index > 0) limits.lower = values[index - 1];
  if (index + 1 < values.size()) limits.upper = values[index + 1];
  return limits;
}

namespace {

bool Contains(const std::vector<size_t>& hits, size_t index) {
  return std::find(hits.begin(), hits.end(), index) != hits.end();
}

// Hands the grab from the grabbed marker to its neighbour in the hit list (`step` -1 the one before, +1 the
// one after); the old holder leaves the list.
void PassGrab(DragState& state, int step) {
  auto it = std::find(state.hits.begin(), state.hits.end(), state.grabbed);
  const size_t position = static_cast<size_t>(it - state.hits.begin());
  const size_t next = step < 0 ? position - 1 : position + 1;
  const size_t successor = state.hits[next];
  state.hits.erase(it);
  state.grabbed = successor;
}

bool CanPassTo(const std::vector<double>& values, const DragState& state, size_t neighbour, int step) {
  if (values[neighbour] != values[state.grabbed] || state.hits.size() <= 1) return false;
  if (!Contains(state.hits, neighbour)) return false;
  auto it = std::find(state.hits.begin(), state.hits.end(), state.grabbed);
  if (it == state.hits.end()) return false;
  return step < 0 ? it != state.hits.begin() : it + 1 != state.hits.end();
}

}  // namespace

bool ApplyNeighbourRuleOnce(const std::vector<double>& values, DragState& state) {
  bool passed = false;
  if (state.grabbed > 0) {
    const size_t lower = state.grabbed - 1;
    if (values[lower] >= state.value) {
      if (!CanPassTo(values, state, lower, -1)) {
        state.value = values[lower];
        state.collision = kStoppedByLower;
        return false;
      }
      PassGrab(state, -1);
      passed = true;
    }
  }
  if (state.grabbed + 1 < values.size()) {
    const size_t upper = state.grabbed + 1;
    if (state.value >= values[upper]) {
      if (CanPassTo(values, state, upper, +1)) {
        PassGrab(state, +1);
        state.collision = kNoCollision;
        return true;
      }
      state.value = values[upper];
      state.collision = kStoppedByUpper;
      return passed;
    }
  }
  state.collision = kNoCollision;
  return passed;
}

void ApplyNeighbourRule(const std::vector<double>& values, DragState& state) {
  // Each pass either keeps the grab or shortens the hit list, so the loop ends.
  while (ApplyNeighbourRuleOnce(values, state)) {
  }
}

bool MoveAllAllowed(const std::vector<double>& values, double delta, double minimum, double maximum) {
  return std::all_of(values.begin(), values.end(),
                     [&](double v) { return v + delta >= minimum && v + delta <= maximum; });
}

size_t IntervalIndex(const std::vector<double>& values, double value) {
  if (values.empty() || value <= values.front()) return 0;
  if (value >= values.back()) return values.size();
  for (size_t i = 0; i + 1 < values.size(); ++i) {
    if (values[i] <= value && value <= values[i + 1]) return i + 1;
  }
  return values.size();
}

TickPlan PlanTicks(double range, double frequency, double trackLength, double minSpacing) {
  if (!(range > 0)) return {1, 0};
  double step = frequency > 0 ? frequency : range;
  // The step only grows, and once it reaches the range two ticks remain, so this ends.
  while (step < range && trackLength * step / range < minSpacing) step *= 2;
  if (step >= range) return {2, range};
  const int count = static_cast<int>(std::ceil(range / step - 1e-9)) + 1;
  return {count, step};
}

long long RampIndex(long long a, long long b, int extent, int pixel, long long paletteCount) {
  if (extent <= 0) return a;
  const long long step = (b - a) / extent;
  long long index = a + pixel * step;
  if (index < 0) index += paletteCount;
  return index;
}

}  // namespace qvwl
