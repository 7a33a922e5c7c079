/*
 * CQVWindowLevelDlgSliderCtrl: the window-level dialog's lookup-table slider.
 * It subclasses a native track bar of the template, takes from it only the
 * channel's extent along the axis (and passes it the tick frequency), and
 * draws everything itself: the scale, the channel, the interval band (each
 * interval in its colour, or in orientation 2 the caller's palette as a ramp
 * between the markers) and any number of markers on [min, max], always kept
 * sorted by value.
 *
 * The user drags a marker (Ctrl drags all of them, refused as a whole when
 * one would leave the range), right-clicks a marker to type its value in the
 * "Enter a number" dialog, and right-clicks an interval to pick its colour.
 * Every marker change sends the parent WM_NOTIFY with an NMHDR of code
 * kNotifyMarkerChanged (4): one per moved marker on each drag step, one on
 * the drop and one after a typed value; the parent reads GetMarkerValues.
 * With STYLE_NO_PASSING a dragged marker stops at its neighbour and the drop
 * keeps the value it stopped at, whatever the pointer says. A Ctrl-drag
 * drops the markers where its last allowed step left them, so a refused step
 * never breaks their spacing.
 *
 * Keyboard (the control is a tab stop like the track bar under it): one
 * marker is selected (drawn with a focus rectangle while the slider has the
 * focus; the first one at start, the last one dragged afterwards).
 * Ctrl+Left/Ctrl+Up selects the marker below, Ctrl+Right/Ctrl+Down the one
 * above; Left/Up and Right/Down move the selected marker by one value unit
 * (a tenth when the whole range is under 10), Page Up/Page Down by a tenth of
 * the range, Home/End to the lowest/highest value it may take. Each keyboard
 * move is one change and sends one notification. Keys do not reach the track
 * bar, whose own invisible thumb would otherwise move and report scrolls.
 *
 * Sizes follow the dialog's font: the thumb's half width is 6 pixels, the
 * label font 12 pixels high, for the 13-pixel font of an 8-point dialog at
 * 96 DPI, scaled in proportion to the parent's actual font.
 */
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "QVWLSliderMarker.h"
#include "SliderCtrl.h"
#include "WindowLevelSliderRules.h"
#include "UniqueHandle.h"

// One labelled tick of the scale: its pixel along the axis, its value, the
// ends of its line and the rectangle of its label.
struct TICPOINTS {
  int position;
  double value;
  POINT lineFrom;
  POINT lineTo;
  RECT label;
};

class CQVWindowLevelDlgSliderCtrl : public qvfw::CSliderCtrl {
 public:
  enum : int {
    STYLE_BAND = 0x001,
    STYLE_SCALE = 0x002,
    STYLE_WHOLE_LABELS = 0x004,
    STYLE_NO_PASSING = 0x008,
    STYLE_EDIT_COLOR = 0x010,
    STYLE_EDIT_VALUE = 0x020,
    STYLE_MIRROR = 0x040,
    STYLE_FOCUS_RECT = 0x080,
    STYLE_TICK_POINTS = 0x100,
    STYLE_TICK_INDEX = 0x200,
    STYLE_RAMP_FROM_MIN = 0x400,
  };
  static constexpr UINT kNotifyMarkerChanged = 4;

  CQVWindowLevelDlgSliderCtrl();
  ~CQVWindowLevelDlgSliderCtrl() override;

  // Sets the range, style (-1 keeps it) and palette and appends one marker
  // per value. Ignored as a whole without a palette or with a zero count, and
  // likewise for a palette or value array that cannot be read, or a range
  // that is not finite or runs backwards. Values outside the range are
  // clamped into it; values that are not numbers are skipped. The palette is
  // the caller's and must outlive the slider.
  void Init(double minimum, double maximum, UINT tickFrequency, int markerCount, const double* markerValues, int style,
            const RGBQUAD* palette, UINT paletteCount);
  // Writes the values in ascending order; `buffer` holds GetMarkerCount()
  // doubles. Returns their number.
  int GetMarkerValues(double* buffer) const;
  int GetMarkerCount() const { return static_cast<int>(m_markers.size()); }
  std::wstring FormatValue(double value) const;

  // 0 and 2 horizontal, 1 and 3 vertical; 0 and 1 put the markers below or
  // right of the channel and the scale above or left, 2 and 3 the other way.
  void SetOrientation(int orientation);
  int GetOrientation() const { return m_orientation; }
  void SetNoBand(int noBand) { m_noBand = noBand; }
  // Intervals are numbered from the minimum; there is one more than markers.
  COLORREF GetIntervalColor(int index) const;
  void SetIntervalColor(int index, COLORREF color);
  int GetSelectedMarker() const;
  // The client pixel along the axis where a value lies.
  int ValueToPixel(double value) const { return Axis().ValueToPixel(value); }
  // The point at the middle of a marker's thumb, in client coordinates.
  POINT MarkerThumbCenter(int index) const;

  // The whole control, drawn through a memory bitmap (straight onto `dc` if
  // that cannot be made); `clip` is the part to copy out.
  void Paint(HDC dc, const RECT& clip);
  virtual void Layout();

 protected:
  virtual void DrawTickPoints(HDC dc);
  virtual void DrawScale(HDC dc);
  virtual void DrawBand(HDC dc);
  virtual void DrawMarkers(HDC dc);
  virtual void MeasureText(HDC dc);
  virtual bool IsHit(const CQVWLSliderMarker* marker) const;

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnPaint() override;
  BOOL OnEraseBkgnd(HDC dc) override;
  void OnPrintClient(HDC dc, UINT flags) override;
  void OnSize(UINT type, int cx, int cy) override;
  void OnSetFocus(HWND previous) override;
  void OnKillFocus(HWND next) override;
  void OnLButtonDown(UINT flags, POINT point) override;
  void OnMouseMove(UINT flags, POINT point) override;
  void OnLButtonUp(UINT flags, POINT point) override;
  void OnRButtonUp(UINT flags, POINT point);
  void OnKeyDown(UINT key, UINT repeat, UINT flags) override;

 private:
  using MarkerList = std::vector<std::unique_ptr<CQVWLSliderMarker>>;

  bool IsVertical() const { return (m_orientation & 1) != 0; }
  qvwl::SliderAxis Axis() const;
  int AlongOf(POINT point) const { return IsVertical() ? point.y : point.x; }
  // A rectangle given along and across the axis, in the frame of
  // orientation 0, placed for the actual orientation.
  RECT Place(int along0, int along1, int across0, int across1) const;
  int AcrossExtent() const;
  void ComputeScale();
  void ComputeMarkerRects(CQVWLSliderMarker& marker) const;
  std::vector<double> Values() const;
  size_t IndexOf(const CQVWLSliderMarker* marker) const;
  // Puts the marker back where the sort order wants it; returns its index.
  size_t Resort(size_t index);
  qvwl::DragBounds Limits(size_t index) const;
  // Resort after a value was set directly, unless the neighbour rule kept the order.
  void KeepSorted(size_t index);
  void InsertSorted(std::unique_ptr<CQVWLSliderMarker> marker);
  void Notify();
  void InvalidateMove(const RECT& before, const RECT& after, bool pointerInMarkerArea);
  void DrawAll(HDC dc);
  void DrawBandSpan(HDC dc, int from, int to, COLORREF color);
  void DrawPaletteRamp(HDC dc, long long a, long long b, int from, int to);
  void DrawArrow(HDC dc, const RECT& arrow);
  void DrawOneMarker(HDC dc, const CQVWLSliderMarker& marker, bool selected);
  void EditMarkerValue(CQVWLSliderMarker* marker);
  void EditIntervalColor(POINT point);
  void MoveSelectedTo(double value);
  void UpdateFontScale();

  MarkerList m_markers;
  std::vector<CQVWLSliderMarker*> m_hitMarkers;
  bool m_hasFocus = false;
  qvfw::UniqueFont m_font;
  int m_style = 0;
  int m_markerCount = 0;
  int m_orientation = 0;
  int m_noBand = 0;
  RECT m_channelRect{};
  RECT m_thumbRect{};
  RECT m_clientRect{};
  RECT m_markerArea{};
  RECT m_bandRect{};
  std::vector<COLORREF> m_intervalColors;
  double m_max = 0;
  double m_min = 0;
  double m_range = 0;
  double m_trackStart = 0;
  double m_trackLength = 0;
  CQVWLSliderMarker* m_grabbed = nullptr;
  CQVWLSliderMarker* m_editMarker = nullptr;
  CQVWLSliderMarker* m_selected = nullptr;
  double m_lowerBound = 0;
  double m_upperBound = 0;
  short m_collision = qvwl::kNoCollision;
  std::vector<TICPOINTS> m_ticks;
  int m_tickCount = 0;
  double m_tickStep = 0;
  double m_tickFrequency = 0;
  int m_moveAll = 0;
  double m_dragStartValue = 0;
  const RGBQUAD* m_palette = nullptr;
  UINT m_paletteCount = 0;

  // Measures scaled with the dialog font (see the file comment).
  int m_halfThumb = 6;
  int m_labelHeight = 12;
  int m_textHeight = 12;
  int m_fontScaleHeight = 0;  // the font height m_font was made for
  // Where channel, band end and thumbs start across the axis, counted in the
  // frame of orientation 0 (Place maps them).
  int m_frameChannel0 = 0;
  int m_frameBand1 = 0;
  int m_frameThumb0 = 0;
};
