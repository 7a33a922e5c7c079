/*
 * The multi-marker slider's rules. Values are doubles throughout; pixels are
 * rounded half up at the last moment, so a value and the pixel it is drawn
 * at agree however the range and the track width divide.
 */
#include "SliderRules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace qvctl {

namespace {

double Clamp(double value, double lower, double upper) { return std::min(std::max(value, lower), upper); }

bool ValidIndex(const std::vector<double>& markers, int index) {
  return index >= 0 && static_cast<size_t>(index) < markers.size();
}

}  // namespace

double RoundHalfUp(double value) { return std::floor(value + 0.5); }

int ValueToPixel(const SliderAxis& axis, double value) {
  const double span = axis.maximum - axis.minimum;
  if (!(span > 0) || !std::isfinite(value)) return axis.left;
  const double share = Clamp((value - axis.minimum) / span, 0.0, 1.0);
  return axis.left + static_cast<int>(RoundHalfUp(share * (axis.right - axis.left)));
}

double PixelToValue(const SliderAxis& axis, int pixel, bool integers) {
  const int width = axis.right - axis.left;
  if (width <= 0 || !(axis.maximum > axis.minimum)) return axis.minimum;
  const double share = Clamp(static_cast<double>(pixel - axis.left) / width, 0.0, 1.0);
  const double value = axis.minimum + share * (axis.maximum - axis.minimum);
  if (!integers) return value;
  double whole = RoundHalfUp(value);
  // A range with fractional ends keeps its whole numbers inside it.
  if (whole < axis.minimum) whole = std::ceil(axis.minimum);
  if (whole > axis.maximum) whole = std::floor(axis.maximum);
  return whole >= axis.minimum && whole <= axis.maximum ? whole : value;
}

int NearestMarker(const std::vector<double>& markers, const SliderAxis& axis, int pixel) {
  int best = -1;
  int bestDistance = 0;
  for (size_t i = 0; i < markers.size(); ++i) {
    const int markerPixel = ValueToPixel(axis, markers[i]);
    const int distance = std::abs(pixel - markerPixel);
    if (best < 0 || distance < bestDistance || (distance == bestDistance && pixel > markerPixel)) {
      best = static_cast<int>(i);
      bestDistance = distance;
    }
  }
  return best;
}

int MarkerForMove(const std::vector<double>& markers, int index, double target) {
  if (!ValidIndex(markers, index)) return index;
  const int last = static_cast<int>(markers.size()) - 1;
  if (target > markers[index]) {
    while (index < last && markers[index + 1] == markers[index]) ++index;
  } else if (target < markers[index]) {
    while (index > 0 && markers[index - 1] == markers[index]) --index;
  }
  return index;
}

MarkerLimits LimitsOf(const std::vector<double>& markers, int index, double minimum, double maximum, unsigned styles) {
  MarkerLimits limits{minimum, maximum};
  if (!(styles & kSliderPreventCrossing) || !ValidIndex(markers, index)) return limits;
  if (index > 0) limits.lower = markers[index - 1];
  if (static_cast<size_t>(index) + 1 < markers.size()) limits.upper = markers[index + 1];
  return limits;
}

bool MoveMarker(std::vector<double>& markers, int index, double target, double minimum, double maximum,
                unsigned styles) {
  if (!ValidIndex(markers, index) || !std::isfinite(target)) return false;
  const MarkerLimits limits = LimitsOf(markers, index, minimum, maximum, styles);
  const double value = Clamp(target, limits.lower, limits.upper);
  bool changed = markers[index] != value;
  markers[index] = value;
  // Only reached without kSliderPreventCrossing: the others give way.
  for (size_t j = static_cast<size_t>(index) + 1; j < markers.size() && markers[j] < value; ++j) {
    markers[j] = value;
    changed = true;
  }
  for (int j = index - 1; j >= 0 && markers[j] > value; --j) {
    markers[j] = value;
    changed = true;
  }
  return changed;
}

std::vector<double> OrderedMarkers(const double* values, int count, double minimum, double maximum) {
  std::vector<double> markers;
  if (!values || count <= 0) return markers;
  markers.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    double value = std::isfinite(values[i]) ? Clamp(values[i], minimum, maximum) : minimum;
    if (!markers.empty()) value = std::max(value, markers.back());
    markers.push_back(value);
  }
  return markers;
}

SliderSteps StepsFor(double minimum, double maximum, double ticFrequency, unsigned styles) {
  const double span = std::max(0.0, maximum - minimum);
  SliderSteps steps{};
  if (styles & kSliderShowIntegers) {
    steps.line = 1;
    steps.page = std::max(1.0, RoundHalfUp(span / 10));
  } else {
    steps.line = span / 100;
    steps.page = span / 10;
  }
  steps.tick = ticFrequency > 0 ? ticFrequency : steps.line;
  return steps;
}

double KeyTarget(const std::vector<double>& markers, int index, SliderKey key, const SliderSteps& steps, double minimum,
                 double maximum, unsigned styles) {
  if (!ValidIndex(markers, index)) return minimum;
  const double value = markers[index];
  const MarkerLimits limits = LimitsOf(markers, index, minimum, maximum, styles);
  double step = 0;
  switch (key) {
    case SliderKey::kHome: return limits.lower;
    case SliderKey::kEnd: return limits.upper;
    case SliderKey::kLineUp: step = steps.line; break;
    case SliderKey::kLineDown: step = -steps.line; break;
    case SliderKey::kTickUp: step = steps.tick; break;
    case SliderKey::kTickDown: step = -steps.tick; break;
    case SliderKey::kPageUp: step = steps.page; break;
    case SliderKey::kPageDown: step = -steps.page; break;
  }
  if (!(styles & kSliderShowIntegers)) return value + step;
  return step > 0 ? std::floor(value + step) : std::ceil(value + step);
}

std::vector<int> TickPixels(const SliderAxis& axis, double frequency, int minimumGap) {
  std::vector<int> ticks;
  const double span = axis.maximum - axis.minimum;
  const int width = axis.right - axis.left;
  if (!(frequency > 0) || !(span > 0) || width <= 0) return ticks;
  const double pixelsPerUnit = width / span;
  double step = frequency;
  while (step * pixelsPerUnit < minimumGap && step < span) step *= 2;
  // The small allowance keeps a tick that lands on the maximum despite
  // rounding in the division.
  const long long count = static_cast<long long>(std::floor(span / step + 1e-9));
  for (long long k = 0; k <= count; ++k) {
    ticks.push_back(ValueToPixel(axis, axis.minimum + static_cast<double>(k) * step));
  }
  if (ticks.back() != axis.right) ticks.push_back(axis.right);
  return ticks;
}

namespace {

struct Rows {
  int labelHeight, thumbToTrack, trackHeight, pointHeight, tickHeight;
};

Rows RowsFor(int fontHeight, unsigned styles) {
  const int height = std::max(fontHeight, 8);
  return Rows{(styles & kSliderDisplayValues) ? height : 0, height / 4, std::max(4, height / 3), height / 2,
              (styles & kSliderDisplayTics) ? std::max(3, height / 4) : 0};
}

// One pixel above for the focus ring, one below the ticks, one more for the ring.
constexpr int kRingSpace = 1;

}  // namespace

int SliderIdealHeight(int fontHeight, unsigned styles) {
  const Rows rows = RowsFor(fontHeight, styles);
  return kRingSpace + rows.labelHeight + 1 + rows.thumbToTrack + rows.trackHeight + rows.pointHeight + 1 +
         rows.tickHeight + 1 + kRingSpace;
}

SliderLayout ComputeSliderLayout(int width, int height, int fontHeight, int labelWidth, unsigned styles) {
  const Rows rows = RowsFor(fontHeight, styles);
  SliderLayout layout{};
  int y = kRingSpace + std::max(0, (height - SliderIdealHeight(fontHeight, styles)) / 2);
  layout.labelTop = y;
  layout.labelBottom = y += rows.labelHeight;
  layout.thumbTop = y += 1;
  layout.trackTop = y += rows.thumbToTrack;
  layout.trackBottom = y += rows.trackHeight;
  layout.thumbBottom = y += rows.pointHeight;
  layout.tickTop = y += 1;
  layout.tickBottom = y + rows.tickHeight;
  layout.thumbHalfWidth = std::max(4, std::max(fontHeight, 8) * 2 / 5);
  const int labelHalf = (styles & kSliderDisplayValues) ? (std::max(0, labelWidth) + 1) / 2 : 0;
  const int margin = std::max(layout.thumbHalfWidth, labelHalf) + 2;
  layout.left = margin;
  layout.right = std::max(layout.left, width - 1 - margin);
  return layout;
}

std::wstring FormatMarkerValue(double value, unsigned styles) {
  if (!std::isfinite(value)) return L"";
  wchar_t text[400];  // room for the largest double written out in full
  if (styles & kSliderShowIntegers) {
    std::swprintf(text, 400, L"%.0f", RoundHalfUp(value) + 0.0);  // + 0.0 turns -0 into 0
    return text;
  }
  if (std::fabs(value) < 0.005) value = 0;  // no "-0"
  std::swprintf(text, 400, L"%.2f", value);
  std::wstring result(text);
  while (!result.empty() && result.back() == L'0') result.pop_back();
  if (!result.empty() && result.back() == L'.') result.pop_back();
  return result;
}

}  // namespace qvctl
