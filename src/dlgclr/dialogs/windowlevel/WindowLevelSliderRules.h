/*
 * The window-level slider's geometry and marker rules, kept apart from the window so they are tested natively:
 * how a value maps to a pixel of the track and back (with the slider's rounding), which markers bound a drag,
 * how a drag is stopped by or handed over between neighbours, when a drag of all markers is refused, which
 * interval a value falls in, and where the labelled ticks go. Marker values are passed as the slider keeps
 * them: ascending, equal values allowed.
 */
#pragma once

#include <cstddef>
#include <vector>

namespace qvwl {

// floor(x * 10^digits + 0.5) / 10^digits: marker values keep one decimal, pixels and dialog bounds none.
double RoundTo(double x, int digits);

// The value range laid over the track: `trackStart` is the pixel of `minimum`, `trackLength` the pixels from
// minimum to maximum.
struct SliderAxis {
  double minimum = 0;
  double maximum = 0;
  double trackStart = 0;
  double trackLength = 0;

  double Range() const { return maximum - minimum; }
  // The value under a pixel, on the 0.1 grid; not clamped (a pointer may lie beyond the track).
  double PixelToValue(double pixel) const;
  // The whole pixel of a value.
  int ValueToPixel(double value) const;
  double Clamp(double value) const;
};

// Where a new marker goes: before the first marker whose value is greater than or equal to its own.
size_t InsertionIndex(const std::vector<double>& values, double value);

// The bounds of a drag that starts at `value`: the largest marker value below it (else the minimum) and the
// smallest above it (else the maximum).
struct DragBounds {
  double lower;
  double upper;
};
DragBounds ComputeDragBounds(const std::vector<double>& values, double value, double minimum, double maximum);

// The values a marker set directly (typed, or moved by a key) may take: between its neighbours' values when
// markers may not pass each other, else anywhere in the range.
DragBounds MarkerLimits(const std::vector<double>& values, size_t index, double minimum, double maximum,
                        bool noPassing);

enum Collision : short { kNoCollision = 0, kStoppedByLower = 1, kStoppedByUpper = 2 };

// The state the neighbour rule works on: the grabbed marker's index, the indices of the markers that lay
// under the pointer at button-down (ascending), the proposed value and the collision flag.
struct DragState {
  size_t grabbed = 0;
  std::vector<size_t> hits;
  double value = 0;
  Collision collision = kNoCollision;
};

// One application of the neighbour rule. A marker stacked on the grabbed one and hit with it takes the grab
// over when the drag heads its way (so of a stack, a drag down moves the lowest and a drag up the highest);
// any other neighbour stops the value at its own. Returns whether the grab passed to another marker.
bool ApplyNeighbourRuleOnce(const std::vector<double>& values, DragState& state);
// The rule applied until the grab stays put; `state.hits` is left as the rule left it.
void ApplyNeighbourRule(const std::vector<double>& values, DragState& state);

// A drag of all markers by `delta` is refused as a whole when any marker would leave [minimum, maximum].
bool MoveAllAllowed(const std::vector<double>& values, double delta, double minimum, double maximum);

// The interval a value falls in: 0 at or below the first marker, the marker count at or above the last, else
// i + 1 for the first i with values[i] <= value <= values[i + 1]. A value on a marker between two intervals
// so picks the lower one. Without markers there is one interval, 0.
size_t IntervalIndex(const std::vector<double>& values, double value);

// The labelled ticks: every `frequency` value units from the minimum (the maximum always ends the scale),
// thinned by doubling the step until neighbouring ticks lie at least `minSpacing` pixels apart. At least two
// ticks (the ends) when the range is not empty, one when it is.
struct TickPlan {
  int count;
  double step;
};
TickPlan PlanTicks(double range, double frequency, double trackLength, double minSpacing);

// A palette stretch from index a to index b painted over `extent` pixels: the index of pixel i, with the
// integer step (b - a) / extent, wrapped into the palette when negative. A stretch with fewer entries than
// pixels so paints one colour.
long long RampIndex(long long a, long long b, int extent, int pixel, long long paletteCount);

}  // namespace qvwl
