/*
 * The window-free rules of the multi-marker slider: where a value lies on
 * the track and which value a pixel stands for, which marker a click takes,
 * how far a marker may move (its neighbours stop it, or it pushes them along,
 * so markers never cross either way), where each key sends it, where the
 * ticks go, and how the rows of the control are laid out from the font
 * height. The window class only measures, paints and routes input to these.
 */
#pragma once

#include <string>
#include <vector>

namespace qvctl {

enum SliderStyle : unsigned {
  // Values the user sets land on whole numbers; labels show whole numbers.
  kSliderShowIntegers = 0x0001,
  // The track is painted in the interval colours between the markers.
  kSliderDisplayColors = 0x0002,
  // Each marker's value is written above it.
  kSliderDisplayValues = 0x0004,
  // A marker stops at its neighbours; without it, it pushes them along.
  kSliderPreventCrossing = 0x0008,
  kSliderDisplayTics = 0x0010,
  // A click on the track moves the nearest marker there.
  kSliderAllowSetPos = 0x0020,
};

// The value range laid onto the pixels left..right of the track (both ends
// included; right >= left).
struct SliderAxis {
  double minimum;
  double maximum;
  int left;
  int right;
};

// The pixel nearest to the value; values outside the range sit at its ends.
int ValueToPixel(const SliderAxis& axis, double value);
// The value a pixel stands for, within the range; with `integers` rounded to
// the nearest whole number (halves up) and kept within the range.
double PixelToValue(const SliderAxis& axis, int pixel, bool integers);
// Half up: 2.5 gives 3, -2.5 gives -2. Labels and whole-number snapping use it.
double RoundHalfUp(double value);

// The marker a press at `pixel` takes: the one whose pixel is nearest. Of
// markers drawn at the same pixel, a press right of them takes the last and
// any other press the first, so each can be pulled away from the others; a
// press exactly between two takes the lower. -1 when there are no markers.
int NearestMarker(const std::vector<double>& markers, const SliderAxis& axis, int pixel);
// Markers at the same value move apart with the drag: moving `index` up
// takes the last of its equals, moving it down the first.
int MarkerForMove(const std::vector<double>& markers, int index, double target);

struct MarkerLimits {
  double lower;
  double upper;
};
// How far marker `index` may go: with kSliderPreventCrossing its
// neighbours' values (or the range ends), otherwise the range ends.
MarkerLimits LimitsOf(const std::vector<double>& markers, int index, double minimum, double maximum, unsigned styles);
// Moves marker `index` to `target` within its limits; without
// kSliderPreventCrossing the markers it passes are pushed to the same value.
// True when any marker changed.
bool MoveMarker(std::vector<double>& markers, int index, double target, double minimum, double maximum,
                unsigned styles);
// Marker values as Init takes them: clamped to the range, and each at least
// its predecessor, so they start in order.
std::vector<double> OrderedMarkers(const double* values, int count, double minimum, double maximum);

enum class SliderKey { kLineUp, kLineDown, kTickUp, kTickDown, kPageUp, kPageDown, kHome, kEnd };
struct SliderSteps {
  double line;  // arrows
  double tick;  // Ctrl+arrows
  double page;  // Page Up/Down
};
// One for whole-number sliders, else a hundredth of the range; the tick
// frequency (or a line when there is none); a tenth of the range, whole for
// whole-number sliders.
SliderSteps StepsFor(double minimum, double maximum, double ticFrequency, unsigned styles);
// Where a key sends marker `index` (before the limits are applied). Home and
// End go to the marker's limits. A whole-number slider steps onto whole
// numbers, so a marker at 333.5 goes to 334 and 333.
double KeyTarget(const std::vector<double>& markers, int index, SliderKey key, const SliderSteps& steps, double minimum,
                 double maximum, unsigned styles);

// Tick pixels: one every `frequency` values from the minimum, and the
// maximum; the spacing is doubled until neighbouring ticks are at least
// `minimumGap` pixels apart. None for a frequency <= 0.
std::vector<int> TickPixels(const SliderAxis& axis, double frequency, int minimumGap);

// The rows of the control, from its client size and its font's height.
struct SliderLayout {
  int labelTop, labelBottom;  // empty without kSliderDisplayValues
  int trackTop, trackBottom;  // the coloured channel
  int thumbTop, thumbBottom;  // a marker: a body over the channel with a point below it
  int thumbHalfWidth;
  int tickTop, tickBottom;
  int left, right;  // the pixels of the range ends
};
// `labelWidth` is the widest value label in pixels; the track is inset so
// that thumbs and labels at the range ends stay inside the control. The rows
// are centred vertically when the control is taller than they need.
SliderLayout ComputeSliderLayout(int width, int height, int fontHeight, int labelWidth, unsigned styles);
int SliderIdealHeight(int fontHeight, unsigned styles);

// A marker's label: a whole number under kSliderShowIntegers, else up to
// two decimals without trailing zeros.
std::wstring FormatMarkerValue(double value, unsigned styles);

}  // namespace qvctl
