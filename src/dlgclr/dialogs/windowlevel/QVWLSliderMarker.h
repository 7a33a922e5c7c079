/*
 * CQVWLSliderMarker: one marker of the window-level slider. It holds its
 * value and the three rectangles the slider's layout gives it: the thumb body
 * the user grabs, and the arrow and stem that point from the thumb to the
 * marker's pixel on the channel. A point lies on the marker when it lies in
 * any of the three.
 */
#pragma once

#include <windows.h>

class CQVWLSliderMarker {
 public:
  explicit CQVWLSliderMarker(double value) : value(value) {}

  bool Contains(POINT point) const {
    return ::PtInRect(&thumb, point) || ::PtInRect(&arrow, point) || ::PtInRect(&stem, point);
  }
  RECT Bounds() const {
    RECT bounds{};
    ::UnionRect(&bounds, &thumb, &arrow);
    ::UnionRect(&bounds, &bounds, &stem);
    return bounds;
  }

  double value;
  RECT thumb{};
  RECT arrow{};
  RECT stem{};
};
