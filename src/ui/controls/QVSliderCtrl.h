/*
 * CQVSliderCtrl: a horizontal slider with any number of markers over one
 * range of doubles, for weights that share a whole (two markers split
 * 0..1000 into red, green and blue) or one value with a coloured track. The
 * intervals between the markers can be painted in their own colours, each
 * marker's value written above it, ticks drawn below.
 *
 * Input. The mouse takes the nearest marker and drags it; with
 * ALLOW_SET_POS a press beside the markers first moves the nearest one
 * there. From the keyboard one marker is selected (drawn highlighted):
 * Up/Down and Tab/Shift+Tab choose another (Tab enters at the first marker
 * and leaves after the last, Shift+Tab the other way round), Left/Right move
 * it by one line, Ctrl+Left/Right by the tick frequency, Page Up/Down by a
 * tenth of the range, Home/End to the farthest it may go. Markers never
 * cross: with PREVENT_CROSSING a marker stops at its neighbours, without it
 * it pushes them along.
 *
 * Every move the user makes sends WM_NOTIFY with code kNotifyMarkerMoved (4)
 * and an NMQVSLIDER naming the marker, once per move that changed a value;
 * Init and SetMarkerValue never notify.
 *
 * As a comctl32 control does, the slider keeps its state behind the window
 * and answers a message for every feature (QVSM_*), so it can be driven
 * without its C++ object; the member functions and the messages do the same.
 * It either takes over a placeholder of a template (a track bar, say: same
 * id, rectangle, tab order, font, visibility and enabled state) or is
 * created with Create. All sizes follow the font's height.
 */
#pragma once

#include <windows.h>

#include <vector>

#include "SliderRules.h"
#include "Wnd.h"

// Messages of the slider. Values travel by pointer, since they are doubles.
enum : UINT {
  QVSM_GETMARKERCOUNT = WM_USER + 100,  // returns the count
  QVSM_GETMARKER,                       // wParam marker, lParam double*; returns TRUE when the marker exists
  QVSM_SETMARKER,                       // wParam marker, lParam const double*; returns TRUE when the marker exists
  QVSM_GETSELMARKER,                    // returns the selected marker (-1 with none)
  QVSM_SETSELMARKER,                    // wParam marker
  QVSM_GETRANGE,                        // wParam double* minimum, lParam double* maximum
  QVSM_GETSTYLES,                       // returns the style bits
  QVSM_GETTHUMBRECT,    // wParam marker, lParam RECT* (client coordinates); returns TRUE when the marker exists
  QVSM_GETCHANNELRECT,  // lParam RECT*: the track between the range ends
};

struct NMQVSLIDER {
  NMHDR hdr;
  int iMarker;    // the marker the user moved
  double dValue;  // its new value
};

class CQVSliderCtrl : public qvfw::CWnd {
 public:
  enum : UINT {
    SHOW_INTEGERS = qvctl::kSliderShowIntegers,
    DISPLAY_COLORS = qvctl::kSliderDisplayColors,
    DISPLAY_VALUES = qvctl::kSliderDisplayValues,
    PREVENT_CROSSING = qvctl::kSliderPreventCrossing,
    DISPLAY_TICS = qvctl::kSliderDisplayTics,
    ALLOW_SET_POS = qvctl::kSliderAllowSetPos,
  };
  static constexpr UINT kNotifyMarkerMoved = 4;
  static constexpr int kMaxMarkers = 64;

  explicit CQVSliderCtrl(UINT styles = 0);
  ~CQVSliderCtrl() override;

  // Range minimum..maximum (maximum > minimum, both finite); a tick every
  // `tics` values (0 none); `markerCount` markers (0..kMaxMarkers) from
  // `markerValues`, clamped to the range and put in order; `colors` holds
  // markerCount + 1 interval colours, lowest interval first (null: the
  // window colour); `flags` replaces the styles given at construction;
  // `markerColors`, when not null, holds a fill colour for each marker.
  // FALSE, with the slider left as it was, for arguments it cannot take.
  BOOL Init(double minimum, double maximum, int tics, int markerCount, double* markerValues, unsigned long* colors,
            int flags, unsigned long* markerColors);
  int GetMarkerCount() const { return static_cast<int>(m_markers.size()); }
  BOOL GetMarkerValue(int marker, double& value) const;
  // Moves the marker as far towards `value` as the crossing rule lets it;
  // no notification.
  BOOL SetMarkerValue(int marker, double value);
  int GetSelectedMarker() const { return m_selected; }
  void SetSelectedMarker(int marker);
  void GetRange(double& minimum, double& maximum) const;
  UINT GetStyles() const { return m_styles; }
  BOOL GetThumbRect(int marker, RECT* rect) const;
  void GetChannelRect(RECT* rect) const;
  // Height in pixels that shows every row of the current styles at the font.
  int GetIdealHeight() const;

  BOOL Create(DWORD style, const RECT& rect, HWND parent, UINT id);
  BOOL SubclassDlgItem(UINT id, CWnd* parent) override;

  // Draws the whole control into `dc` (what WM_PAINT and WM_PRINTCLIENT show).
  void Paint(HDC dc, const RECT& clip);

 protected:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnPaint() override;
  BOOL OnEraseBkgnd(HDC dc) override;
  void OnPrintClient(HDC dc, UINT flags) override;
  void OnSize(UINT type, int cx, int cy) override;
  void OnSetFocus(HWND previous) override;
  void OnKillFocus(HWND next) override;
  UINT OnGetDlgCode(MSG* msg) override;
  void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
  void OnLButtonDown(UINT flags, POINT point) override;
  void OnMouseMove(UINT flags, POINT point) override;
  void OnLButtonUp(UINT flags, POINT point) override;
  void OnCaptureChanged(HWND newCapture) override;

 private:
  qvctl::SliderLayout Layout() const;
  qvctl::SliderAxis Axis() const;
  int FontHeight() const;
  int WidestLabel() const;
  bool WantsTab(const MSG* msg) const;
  // A move made by the user: applied by the rules, notified when it changed a value.
  void UserMove(int marker, double target);
  void Notify(int marker);
  void DrawChannel(HDC dc, const qvctl::SliderLayout& layout) const;
  void DrawTicks(HDC dc, const qvctl::SliderLayout& layout) const;
  void DrawThumb(HDC dc, const qvctl::SliderLayout& layout, int marker) const;
  void DrawLabels(HDC dc, const qvctl::SliderLayout& layout) const;

  double m_minimum = 0;
  double m_maximum = 100;
  double m_tics = 0;
  UINT m_styles;
  std::vector<double> m_markers;
  std::vector<COLORREF> m_intervalColors;
  std::vector<COLORREF> m_markerColors;
  int m_selected = -1;
  int m_dragging = -1;             // the marker under the mouse, -1 when none
  int m_dragOffset = 0;            // pressed pixel minus the marker's pixel, so a grabbed marker does not jump
  bool m_dragJustPressed = false;  // the dragged marker has not moved yet since the press
  HFONT m_font = nullptr;          // the dialog's; not ours to free
};
