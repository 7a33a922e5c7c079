/*
 * CQVWindowLevelDlgSliderCtrl: layout, painting, mouse and keyboard of the
 * window-level slider. The value/pixel mapping and the marker rules live in
 * SliderRules.cpp; this file feeds them the markers' values and acts on the
 * answers.
 */
#include "QVWindowLevelDlgSliderCtrl.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>

#include "AddressCheck.h"
#include "ColorDialog.h"
#include "QVWindowLevelDlgEditIntervalDlg.h"
#include "SelectObjectScope.h"
#include "UniqueDC.h"
#include "UniquePaintDC.h"

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
// The measures of the file comment are given for a font this many pixels high.
constexpr int kReferenceFontHeight = 13;
constexpr int kReferenceHalfThumb = 6;
constexpr int kReferenceLabelHeight = 12;

// A value handed to the whole-number dialog, saturated instead of overflowing.
int ToInt(double value) {
  if (!(value > INT_MIN)) return INT_MIN;
  if (!(value < INT_MAX)) return INT_MAX;
  return static_cast<int>(value);
}

// The client point a mouse message carries (signed: a captured pointer may
// lie left of or above the window).
POINT PointOf(LPARAM lParam) { return POINT{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))}; }

RECT Widened(RECT rect, int along, bool vertical) {
  ::InflateRect(&rect, vertical ? 0 : along, vertical ? along : 0);
  return rect;
}

}  // namespace

CQVWindowLevelDlgSliderCtrl::CQVWindowLevelDlgSliderCtrl() {
  LOGFONTW font{};
  font.lfHeight = kReferenceLabelHeight;
  ::lstrcpynW(font.lfFaceName, L"Arial", LF_FACESIZE);
  m_font.Reset(::CreateFontIndirectW(&font));
  m_intervalColors.push_back(kWhite);
}

CQVWindowLevelDlgSliderCtrl::~CQVWindowLevelDlgSliderCtrl() = default;

void CQVWindowLevelDlgSliderCtrl::Init(double minimum, double maximum, UINT tickFrequency, int markerCount,
                                       const double* markerValues, int style, const RGBQUAD* palette,
                                       UINT paletteCount) {
  if (!palette || paletteCount == 0) return;
  if (!qv::IsValidAddress(palette, static_cast<size_t>(paletteCount) * sizeof(RGBQUAD), qv::Access::Read)) return;
  if (!std::isfinite(minimum) || !std::isfinite(maximum) || maximum < minimum) return;
  const bool haveValues = markerValues && markerCount > 0;
  if (haveValues &&
      !qv::IsValidAddress(markerValues, static_cast<size_t>(markerCount) * sizeof(double), qv::Access::Read)) {
    return;
  }
  m_min = minimum;
  m_max = maximum;
  m_range = maximum - minimum;
  if (style != -1) m_style = style;
  m_tickFrequency = tickFrequency;
  if (m_hWnd) SendMessage(TBM_SETTICFREQ, tickFrequency);
  for (int i = 0; haveValues && i < markerCount; ++i) {
    if (std::isnan(markerValues[i])) continue;
    InsertSorted(std::make_unique<CQVWLSliderMarker>(std::min(std::max(markerValues[i], m_min), m_max)));
  }
  // Markers already held (from an earlier Init) are clamped into the new range too.
  for (auto& marker : m_markers) marker->value = std::min(std::max(marker->value, m_min), m_max);
  m_markerCount = GetMarkerCount();
  // Every interval has a colour; intervals the caller has not coloured are white.
  if (m_intervalColors.size() < m_markers.size() + 1) m_intervalColors.resize(m_markers.size() + 1, kWhite);
  if (!m_selected && !m_markers.empty()) m_selected = m_markers.front().get();
  m_palette = palette;
  m_paletteCount = paletteCount;
  if (!m_hWnd) return;
  Layout();
  Invalidate(TRUE);
  UpdateWindow();
}

int CQVWindowLevelDlgSliderCtrl::GetMarkerValues(double* buffer) const {
  if (!buffer) return 0;
  int count = 0;
  for (const auto& marker : m_markers) buffer[count++] = marker->value;
  return count;
}

std::wstring CQVWindowLevelDlgSliderCtrl::FormatValue(double value) const {
  wchar_t text[64];
  std::swprintf(text, 64, (m_style & STYLE_WHOLE_LABELS) ? L"%.0lf" : L"%.1lf", value);
  return text;
}

void CQVWindowLevelDlgSliderCtrl::SetOrientation(int orientation) {
  m_orientation = orientation & 3;
  if (!m_hWnd) return;
  Layout();
  Invalidate(TRUE);
}

COLORREF CQVWindowLevelDlgSliderCtrl::GetIntervalColor(int index) const {
  if (index < 0 || static_cast<size_t>(index) >= m_intervalColors.size()) return kWhite;
  return m_intervalColors[static_cast<size_t>(index)];
}

void CQVWindowLevelDlgSliderCtrl::SetIntervalColor(int index, COLORREF color) {
  if (index < 0 || index > GetMarkerCount()) return;
  if (static_cast<size_t>(index) >= m_intervalColors.size()) m_intervalColors.resize(index + 1, kWhite);
  m_intervalColors[static_cast<size_t>(index)] = color;
  if (m_hWnd) Invalidate(TRUE);
}

int CQVWindowLevelDlgSliderCtrl::GetSelectedMarker() const {
  return m_selected ? static_cast<int>(IndexOf(m_selected)) : -1;
}

POINT CQVWindowLevelDlgSliderCtrl::MarkerThumbCenter(int index) const {
  if (index < 0 || index >= GetMarkerCount()) return POINT{-1, -1};
  const RECT& thumb = m_markers[static_cast<size_t>(index)]->thumb;
  return POINT{(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2};
}

qvwl::SliderAxis CQVWindowLevelDlgSliderCtrl::Axis() const {
  return qvwl::SliderAxis{m_min, m_max, m_trackStart, m_trackLength};
}

// ---- layout ----

RECT CQVWindowLevelDlgSliderCtrl::Place(int along0, int along1, int across0, int across1) const {
  // Orientations 2 and 3 mirror the across axis, so what stands below the
  // channel in orientation 0 stands above it there.
  if (m_orientation >= 2) {
    const int extent = AcrossExtent();
    const int flipped0 = extent - across1;
    across1 = extent - across0;
    across0 = flipped0;
  }
  const int base = IsVertical() ? m_clientRect.left : m_clientRect.top;
  across0 += base;
  across1 += base;
  return IsVertical() ? RECT{across0, along0, across1, along1} : RECT{along0, across0, along1, across1};
}

int CQVWindowLevelDlgSliderCtrl::AcrossExtent() const {
  return IsVertical() ? m_clientRect.right - m_clientRect.left : m_clientRect.bottom - m_clientRect.top;
}

void CQVWindowLevelDlgSliderCtrl::UpdateFontScale() {
  HWND parent = ::GetParent(m_hWnd);
  HFONT dialogFont = parent ? reinterpret_cast<HFONT>(::SendMessageW(parent, WM_GETFONT, 0, 0)) : nullptr;
  if (!dialogFont) dialogFont = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
  qvfw::UniqueDC screen(nullptr);
  TEXTMETRICW metrics{};
  int height = kReferenceFontHeight;
  if (screen) {
    qvfw::SelectObjectScope select(screen.Get(), dialogFont);
    if (::GetTextMetricsW(screen.Get(), &metrics) && metrics.tmHeight > 0) height = metrics.tmHeight;
  }
  m_halfThumb = std::max(3, ::MulDiv(kReferenceHalfThumb, height, kReferenceFontHeight));
  m_labelHeight = std::max(6, ::MulDiv(kReferenceLabelHeight, height, kReferenceFontHeight));
  if (m_fontScaleHeight == height && m_font) return;
  LOGFONTW font{};
  font.lfHeight = m_labelHeight;
  ::lstrcpynW(font.lfFaceName, L"Arial", LF_FACESIZE);
  if (HFONT made = ::CreateFontIndirectW(&font)) {
    m_font.Reset(made);
    m_fontScaleHeight = height;
  }
}

void CQVWindowLevelDlgSliderCtrl::MeasureText(HDC dc) {
  ::SelectObject(dc, m_font.Get());
  ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
  TEXTMETRICW metrics{};
  m_textHeight = ::GetTextMetricsW(dc, &metrics) ? metrics.tmHeight : m_labelHeight;
}

void CQVWindowLevelDlgSliderCtrl::Layout() {
  if (!m_hWnd) return;
  UpdateFontScale();
  GetClientRect(&m_clientRect);
  RECT channel{};
  SendMessage(TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&channel));
  SendMessage(TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&m_thumbRect));
  // The track bar leaves room at both ends for its own thumb; ours may be
  // wider, so the track keeps half a thumb inside the channel's extent.
  // Windows reports a vertical channel unrotated, so the longer side is taken
  // as the axis.
  const bool unrotated = IsVertical() && (channel.right - channel.left) > (channel.bottom - channel.top);
  int along0 = IsVertical() && !unrotated ? channel.top : channel.left;
  int along1 = IsVertical() && !unrotated ? channel.bottom : channel.right;
  const int clientAlong0 = IsVertical() ? m_clientRect.top : m_clientRect.left;
  const int clientAlong1 = IsVertical() ? m_clientRect.bottom : m_clientRect.right;
  along0 = std::max(along0, clientAlong0 + 1);
  along1 = std::min(along1, clientAlong1 - 1);
  m_trackStart = along0 + m_halfThumb;
  m_trackLength = std::max(0, along1 - along0 - 2 * m_halfThumb);
  ComputeScale();

  const int unit = std::max(2, m_halfThumb / 2);
  int scaleDepth = unit;
  if (m_style & STYLE_SCALE) {
    int labelDepth = m_textHeight;
    if (IsVertical()) {
      for (const TICPOINTS& tick : m_ticks) labelDepth = std::max<int>(labelDepth, tick.label.right - tick.label.left);
    }
    scaleDepth = labelDepth + unit + 1;
  }
  const int channel0 = scaleDepth;
  const int channel1 = channel0 + unit + 1;
  const int band1 = channel1 + 1 + m_halfThumb;
  const int thumb0 = std::min(band1 + unit, std::max(band1, AcrossExtent() - m_halfThumb));
  m_frameChannel0 = channel0;
  m_frameBand1 = band1;
  m_frameThumb0 = thumb0;
  const int trackEnd = static_cast<int>(m_trackStart + m_trackLength);
  m_channelRect = Place(static_cast<int>(m_trackStart) - m_halfThumb, trackEnd + m_halfThumb, channel0, channel1);
  m_bandRect = Place(static_cast<int>(m_trackStart), trackEnd, channel1 + 1, band1);
  m_markerArea = Place(clientAlong0, clientAlong1, channel0, AcrossExtent());

  // Ticks: the line ends at the channel, the label stands before the line.
  for (TICPOINTS& tick : m_ticks) {
    const RECT line = Place(tick.position, tick.position + 1, channel0 - unit - 1, channel0 - 1);
    tick.lineFrom = POINT{line.left, line.top};
    tick.lineTo = IsVertical() ? POINT{line.right, line.top} : POINT{line.left, line.bottom};
    const int labelAlong = IsVertical() ? m_textHeight : tick.label.right - tick.label.left;
    const int labelAcross = IsVertical() ? tick.label.right - tick.label.left : m_textHeight;
    int start = tick.position - labelAlong / 2;
    start = std::max(clientAlong0, std::min(start, clientAlong1 - labelAlong));
    tick.label = Place(start, start + labelAlong, channel0 - unit - 1 - labelAcross, channel0 - unit - 1);
  }
  for (auto& marker : m_markers) ComputeMarkerRects(*marker);
}

void CQVWindowLevelDlgSliderCtrl::ComputeScale() {
  m_ticks.clear();
  qvfw::UniqueDC screen(m_hWnd);
  if (!screen) return;
  qvfw::SelectObjectScope select(screen.Get(), m_font.Get());
  MeasureText(screen.Get());
  auto widthOf = [&](const std::wstring& text) {
    SIZE size{};
    ::GetTextExtentPoint32W(screen.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
  };
  // Labels must not touch: the widest one plus a text height apart.
  const int widest = std::max(widthOf(FormatValue(m_min)), widthOf(FormatValue(m_max)));
  const double spacing = IsVertical() ? 2.0 * m_textHeight : widest + m_textHeight;
  const qvwl::TickPlan plan = qvwl::PlanTicks(m_range, m_tickFrequency, m_trackLength, spacing);
  m_tickCount = plan.count;
  m_tickStep = plan.step;
  for (int i = 0; i < m_tickCount; ++i) {
    const double value = i + 1 == m_tickCount && m_tickCount > 1 ? m_max : m_min + i * m_tickStep;
    TICPOINTS tick{};
    tick.value = value;
    tick.position = ValueToPixel(value);
    const double shown = (m_style & STYLE_TICK_INDEX) ? i * m_tickStep : value;
    // Only the label's width is known here; Layout places it.
    tick.label = RECT{0, 0, widthOf(FormatValue(shown)), m_textHeight};
    m_ticks.push_back(tick);
  }
}

void CQVWindowLevelDlgSliderCtrl::ComputeMarkerRects(CQVWLSliderMarker& marker) const {
  const int p = ValueToPixel(marker.value);
  const int unit = std::max(2, m_halfThumb / 2);
  marker.thumb = Place(p - m_halfThumb, p + m_halfThumb + 1, m_frameThumb0, AcrossExtent());
  marker.arrow = Place(p - unit, p + unit + 1, m_frameBand1, m_frameThumb0);
  marker.stem = Place(p, p + 1, m_frameChannel0, m_frameBand1);
}

// ---- markers ----

std::vector<double> CQVWindowLevelDlgSliderCtrl::Values() const {
  std::vector<double> values;
  values.reserve(m_markers.size());
  for (const auto& marker : m_markers) values.push_back(marker->value);
  return values;
}

size_t CQVWindowLevelDlgSliderCtrl::IndexOf(const CQVWLSliderMarker* marker) const {
  for (size_t i = 0; i < m_markers.size(); ++i) {
    if (m_markers[i].get() == marker) return i;
  }
  return m_markers.size();
}

void CQVWindowLevelDlgSliderCtrl::InsertSorted(std::unique_ptr<CQVWLSliderMarker> marker) {
  const size_t at = qvwl::InsertionIndex(Values(), marker->value);
  if (m_hWnd) ComputeMarkerRects(*marker);
  m_markers.insert(m_markers.begin() + static_cast<std::ptrdiff_t>(at), std::move(marker));
}

size_t CQVWindowLevelDlgSliderCtrl::Resort(size_t index) {
  std::unique_ptr<CQVWLSliderMarker> marker = std::move(m_markers[index]);
  m_markers.erase(m_markers.begin() + static_cast<std::ptrdiff_t>(index));
  CQVWLSliderMarker* kept = marker.get();
  InsertSorted(std::move(marker));
  return IndexOf(kept);
}

qvwl::DragBounds CQVWindowLevelDlgSliderCtrl::Limits(size_t index) const {
  return qvwl::MarkerLimits(Values(), index, m_min, m_max, (m_style & STYLE_NO_PASSING) != 0);
}

void CQVWindowLevelDlgSliderCtrl::KeepSorted(size_t index) {
  // Under the neighbour rule a marker set within its neighbours is already in
  // place; moving it before an equal neighbour would only swap which of the
  // two the user is holding.
  if (m_style & STYLE_NO_PASSING) return;
  Resort(index);
}

bool CQVWindowLevelDlgSliderCtrl::IsHit(const CQVWLSliderMarker* marker) const {
  return std::find(m_hitMarkers.begin(), m_hitMarkers.end(), marker) != m_hitMarkers.end();
}

void CQVWindowLevelDlgSliderCtrl::Notify() {
  HWND parent = ::GetParent(m_hWnd);
  if (!parent) return;
  NMHDR header{};
  header.hwndFrom = m_hWnd;
  header.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
  header.code = kNotifyMarkerChanged;
  ::SendMessageW(parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

void CQVWindowLevelDlgSliderCtrl::InvalidateMove(const RECT& before, const RECT& after, bool pointerInMarkerArea) {
  RECT area{};
  ::UnionRect(&area, &before, &after);
  area = Widened(area, pointerInMarkerArea ? 2 : 6, IsVertical());
  // Across, the whole control: the band under the marker changes too.
  if (IsVertical()) {
    area.left = m_clientRect.left;
    area.right = m_clientRect.right;
  } else {
    area.top = m_clientRect.top;
    area.bottom = m_clientRect.bottom;
  }
  InvalidateRect(&area, FALSE);
}

// ---- mouse ----

void CQVWindowLevelDlgSliderCtrl::OnLButtonDown(UINT flags, POINT point) {
  m_grabbed = nullptr;
  m_hitMarkers.clear();
  for (const auto& marker : m_markers) {
    if (marker->Contains(point)) m_hitMarkers.push_back(marker.get());
  }
  // The track bar's own click handling is left out on purpose: it would move
  // its invisible thumb and report scrolls the parent has no use for.
  SetFocus();
  if (m_hitMarkers.empty()) return;
  if (flags & MK_CONTROL) m_moveAll = 1;
  m_grabbed = m_hitMarkers.front();
  m_selected = m_grabbed;
  m_dragStartValue = m_grabbed->value;
  const qvwl::DragBounds bounds = qvwl::ComputeDragBounds(Values(), Axis().PixelToValue(AlongOf(point)), m_min, m_max);
  m_lowerBound = bounds.lower;
  m_upperBound = bounds.upper;
  m_collision = qvwl::kNoCollision;
  if (::GetCapture() != m_hWnd) ::SetCapture(m_hWnd);
  Invalidate(FALSE);
}

void CQVWindowLevelDlgSliderCtrl::OnMouseMove(UINT flags, POINT point) {
  if (m_grabbed && ::GetCapture() != m_hWnd) {
    m_grabbed = nullptr;
    m_hitMarkers.clear();
    return;
  }
  if (!m_grabbed) return;
  double value = Axis().PixelToValue(AlongOf(point));
  if ((m_style & STYLE_NO_PASSING) && m_markers.size() > 1) {
    qvwl::DragState state;
    state.grabbed = IndexOf(m_grabbed);
    for (const CQVWLSliderMarker* hit : m_hitMarkers) state.hits.push_back(IndexOf(hit));
    state.value = value;
    qvwl::ApplyNeighbourRule(Values(), state);
    m_grabbed = m_markers[state.grabbed].get();
    m_selected = m_grabbed;
    value = state.value;
    m_collision = state.collision;
    m_hitMarkers.clear();
  }
  value = Axis().Clamp(value);
  const double delta = value - m_grabbed->value;
  if (m_moveAll && !qvwl::MoveAllAllowed(Values(), delta, m_min, m_max)) return;

  std::vector<CQVWLSliderMarker*> moving{m_grabbed};
  if (m_moveAll) {
    for (const auto& marker : m_markers) {
      if (marker.get() != m_grabbed) moving.push_back(marker.get());
    }
  }
  const bool inMarkerArea = ::PtInRect(&m_markerArea, point) != FALSE;
  for (CQVWLSliderMarker* marker : moving) {
    const RECT before = marker->Bounds();
    const RECT thumbBefore = marker->thumb;
    // Each marker keeps the 0.1 grid even after many relative moves.
    marker->value = qvwl::RoundTo(marker->value + delta, 1);
    ComputeMarkerRects(*marker);
    if (::EqualRect(&thumbBefore, &marker->thumb)) continue;
    InvalidateMove(before, marker->Bounds(), inMarkerArea);
    UpdateWindow();
    Notify();
  }
}

void CQVWindowLevelDlgSliderCtrl::OnLButtonUp(UINT flags, POINT point) {
  SetFocus();
  if (::GetCapture() == m_hWnd) ::ReleaseCapture();
  // A drag of all markers drops the group where its last allowed step left
  // it; taking the pointer's value would break the markers' spacing.
  const bool keepOwnValue = ((m_style & STYLE_NO_PASSING) && m_collision != qvwl::kNoCollision) || m_moveAll;
  m_moveAll = 0;
  if (m_grabbed) {
    const double dropped = keepOwnValue ? m_grabbed->value : Axis().PixelToValue(AlongOf(point));
    const size_t index = IndexOf(m_grabbed);
    auto replacement = std::make_unique<CQVWLSliderMarker>(Axis().Clamp(dropped));
    CQVWLSliderMarker* kept = replacement.get();
    m_markers.erase(m_markers.begin() + static_cast<std::ptrdiff_t>(index));
    if (m_selected == m_grabbed) m_selected = kept;
    m_grabbed = nullptr;
    InsertSorted(std::move(replacement));
    Invalidate(TRUE);
    Notify();
  }
  m_grabbed = nullptr;
  m_collision = qvwl::kNoCollision;
  m_hitMarkers.clear();
}

void CQVWindowLevelDlgSliderCtrl::OnRButtonUp(UINT flags, POINT point) {
  if (!::PtInRect(&m_markerArea, point)) return;
  for (const auto& marker : m_markers) {
    if (!marker->Contains(point)) continue;
    if (m_style & STYLE_EDIT_VALUE) EditMarkerValue(marker.get());
    return;
  }
  if ((m_style & STYLE_BAND) && (m_style & STYLE_EDIT_COLOR)) EditIntervalColor(point);
}

void CQVWindowLevelDlgSliderCtrl::EditMarkerValue(CQVWLSliderMarker* marker) {
  m_editMarker = marker;
  const qvwl::DragBounds limits = Limits(IndexOf(marker));
  CQVWindowLevelDlgEditIntervalDlg dialog(this);
  dialog.SetValue(ToInt(qvwl::RoundTo(marker->value, 0)));
  dialog.SetRange(ToInt(qvwl::RoundTo(limits.lower, 0)), ToInt(qvwl::RoundTo(limits.upper, 0)));
  const bool confirmed = dialog.DoModal() == IDOK;
  m_editMarker = nullptr;
  if (!confirmed) return;
  // Bounds rounded outwards (a range ending at 10.6 offers 11) are pulled
  // back in, so every marker stays inside the range.
  marker->value = Axis().Clamp(dialog.GetValue());
  ComputeMarkerRects(*marker);
  KeepSorted(IndexOf(marker));
  m_selected = marker;
  Notify();
  Invalidate(TRUE);
  UpdateWindow();
}

void CQVWindowLevelDlgSliderCtrl::EditIntervalColor(POINT point) {
  const size_t index = qvwl::IntervalIndex(Values(), Axis().PixelToValue(AlongOf(point)));
  if (m_intervalColors.size() <= index) m_intervalColors.resize(index + 1, kWhite);
  qvfw::CColorDialog dialog(m_intervalColors[index], CC_FULLOPEN, this);
  if (dialog.DoModal() != IDOK) return;
  m_intervalColors[index] = dialog.GetColor();
  Invalidate(TRUE);
}

// ---- keyboard ----

void CQVWindowLevelDlgSliderCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  if (m_markers.empty()) {
    Default();
    return;
  }
  if (!m_selected) m_selected = m_markers.front().get();
  const bool ctrl = ::GetKeyState(VK_CONTROL) < 0;
  const double line = m_range >= 10 ? 1.0 : 0.1;
  const double page = std::max(line, qvwl::RoundTo(m_range / 10, 1));
  const size_t index = IndexOf(m_selected);
  switch (key) {
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN: {
      const bool down = key == VK_LEFT || key == VK_UP;
      if (ctrl) {
        const size_t next = down ? (index > 0 ? index - 1 : 0) : std::min(index + 1, m_markers.size() - 1);
        m_selected = m_markers[next].get();
        Invalidate(FALSE);
      } else {
        MoveSelectedTo(m_selected->value + (down ? -line : line));
      }
      break;
    }
    case VK_PRIOR: MoveSelectedTo(m_selected->value - page); break;
    case VK_NEXT: MoveSelectedTo(m_selected->value + page); break;
    case VK_HOME: MoveSelectedTo(-HUGE_VAL); break;
    case VK_END: MoveSelectedTo(HUGE_VAL); break;
    default: Default(); break;
  }
}

void CQVWindowLevelDlgSliderCtrl::MoveSelectedTo(double value) {
  const size_t index = IndexOf(m_selected);
  const qvwl::DragBounds limits = Limits(index);
  const double target = qvwl::RoundTo(std::min(std::max(value, limits.lower), limits.upper), 1);
  if (target == m_selected->value) return;
  const RECT before = m_selected->Bounds();
  m_selected->value = target;
  ComputeMarkerRects(*m_selected);
  KeepSorted(index);
  InvalidateMove(before, m_selected->Bounds(), true);
  UpdateWindow();
  Notify();
}

// ---- focus, size, painting ----

void CQVWindowLevelDlgSliderCtrl::OnSetFocus(HWND previous) {
  m_hasFocus = true;
  Invalidate(FALSE);
}

void CQVWindowLevelDlgSliderCtrl::OnKillFocus(HWND next) {
  m_hasFocus = false;
  Invalidate(FALSE);
}

void CQVWindowLevelDlgSliderCtrl::OnSize(UINT type, int cx, int cy) {
  Default();
  Layout();
  Invalidate(FALSE);
}

LRESULT CQVWindowLevelDlgSliderCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_RBUTTONUP: OnRButtonUp(static_cast<UINT>(wParam), PointOf(lParam)); return 0;
    case WM_GETDLGCODE: return DLGC_WANTARROWS;
    default: return qvfw::CSliderCtrl::WindowProc(message, wParam, lParam);
  }
}

BOOL CQVWindowLevelDlgSliderCtrl::OnEraseBkgnd(HDC dc) { return TRUE; }

void CQVWindowLevelDlgSliderCtrl::OnPaint() {
  qvfw::UniquePaintDC paint(m_hWnd);
  if (paint.Get()) Paint(paint.Get(), paint.PaintRect());
}

void CQVWindowLevelDlgSliderCtrl::OnPrintClient(HDC dc, UINT flags) {
  RECT client{};
  GetClientRect(&client);
  Paint(dc, client);
}

void CQVWindowLevelDlgSliderCtrl::Paint(HDC dc, const RECT& clip) {
  RECT client{};
  GetClientRect(&client);
  if (!::EqualRect(&client, &m_clientRect)) Layout();
  const int width = client.right - client.left;
  const int height = client.bottom - client.top;
  qvfw::UniqueMemoryDC memory(::CreateCompatibleDC(dc));
  qvfw::UniqueBitmap bitmap(memory && width > 0 && height > 0 ? ::CreateCompatibleBitmap(dc, width, height) : nullptr);
  if (!memory || !bitmap) {
    DrawAll(dc);
    return;
  }
  {
    qvfw::SelectObjectScope select(memory.Get(), bitmap.Get());
    DrawAll(memory.Get());
    ::BitBlt(dc, clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top, memory.Get(), clip.left, clip.top,
             SRCCOPY);
  }
}

void CQVWindowLevelDlgSliderCtrl::DrawAll(HDC dc) {
  ::FillRect(dc, &m_clientRect, ::GetSysColorBrush(COLOR_3DFACE));
  ::FillRect(dc, &m_channelRect, ::GetSysColorBrush(COLOR_WINDOW));
  RECT channel = m_channelRect;
  ::DrawEdge(dc, &channel, EDGE_SUNKEN, BF_RECT);
  if (m_hasFocus && (m_style & STYLE_FOCUS_RECT)) ::DrawFocusRect(dc, &m_clientRect);
  if (m_style & STYLE_TICK_POINTS) DrawTickPoints(dc);
  ::SetBkMode(dc, TRANSPARENT);
  qvfw::UniquePen pen(::CreatePen(PS_SOLID, 1, ::GetSysColor(COLOR_3DDKSHADOW)));
  qvfw::SelectObjectScope selectFont(dc, m_font.Get());
  qvfw::SelectObjectScope selectPen(dc, pen.Get());
  if (m_style & STYLE_SCALE) DrawScale(dc);
  if ((m_style & STYLE_BAND) && !m_noBand) DrawBand(dc);
  DrawMarkers(dc);
}

void CQVWindowLevelDlgSliderCtrl::DrawTickPoints(HDC dc) {
  for (const TICPOINTS& tick : m_ticks) {
    RECT dot{tick.lineTo.x - 1, tick.lineTo.y - 1, tick.lineTo.x + 1, tick.lineTo.y + 1};
    ::FillRect(dc, &dot, ::GetSysColorBrush(COLOR_3DDKSHADOW));
  }
}

void CQVWindowLevelDlgSliderCtrl::DrawScale(HDC dc) {
  ::SetTextColor(dc, ::GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  if (m_ticks.empty()) return;
  auto start = [this](const RECT& r) { return IsVertical() ? r.top : r.left; };
  auto end = [this](const RECT& r) { return IsVertical() ? r.bottom : r.right; };
  // The maximum's label always shows; a label that would touch it or its
  // predecessor (the last step may be short) is left out.
  const int lastStart = start(m_ticks.back().label);
  int previousEnd = INT_MIN;
  for (size_t i = 0; i < m_ticks.size(); ++i) {
    const TICPOINTS& tick = m_ticks[i];
    ::MoveToEx(dc, tick.lineFrom.x, tick.lineFrom.y, nullptr);
    ::LineTo(dc, tick.lineTo.x, tick.lineTo.y);
    const bool last = i + 1 == m_ticks.size();
    if (start(tick.label) < previousEnd || (!last && end(tick.label) >= lastStart)) continue;
    previousEnd = end(tick.label);
    const double shown = (m_style & STYLE_TICK_INDEX) ? static_cast<double>(i) * m_tickStep : tick.value;
    const std::wstring text = FormatValue(shown);
    RECT label = tick.label;
    ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &label,
                DT_SINGLELINE | DT_NOPREFIX | DT_CENTER | DT_VCENTER | DT_NOCLIP);
  }
}

void CQVWindowLevelDlgSliderCtrl::DrawBandSpan(HDC dc, int from, int to, COLORREF color) {
  if (IsVertical()) {
    from += (m_style & STYLE_MIRROR) ? 2 : -1;
    to += (m_style & STYLE_MIRROR) ? -2 : 2;
  }
  const int trackEnd = static_cast<int>(m_trackStart + m_trackLength);
  from = std::max(from, static_cast<int>(m_trackStart));
  to = std::min(to, trackEnd);
  if (to <= from) return;
  RECT span = m_bandRect;
  if (IsVertical()) {
    span.top = from;
    span.bottom = to;
  } else {
    span.left = from;
    span.right = to;
  }
  qvfw::UniqueBrush brush(::CreateSolidBrush(color));
  if (brush) ::FillRect(dc, &span, brush.Get());
}

void CQVWindowLevelDlgSliderCtrl::DrawPaletteRamp(HDC dc, long long a, long long b, int from, int to) {
  const int extent = to - from;
  for (int i = 0; i < extent; ++i) {
    const long long index = qvwl::RampIndex(a, b, extent, i, m_paletteCount);
    // Marker values beyond the palette have no colour to show.
    if (index < 0 || index >= static_cast<long long>(m_paletteCount)) continue;
    const RGBQUAD& entry = m_palette[index];
    qvfw::UniqueBrush brush(::CreateSolidBrush(RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue)));
    if (!brush) return;
    qvfw::SelectObjectScope select(dc, brush.Get());
    if (IsVertical()) {
      ::PatBlt(dc, m_bandRect.left, from + i, m_bandRect.right - m_bandRect.left, 1, PATCOPY);
    } else {
      ::PatBlt(dc, from + i, m_bandRect.top, 1, m_bandRect.bottom - m_bandRect.top, PATCOPY);
    }
  }
}

void CQVWindowLevelDlgSliderCtrl::DrawBand(HDC dc) {
  const int trackStart = static_cast<int>(m_trackStart);
  const int trackEnd = static_cast<int>(m_trackStart + m_trackLength);
  if (m_orientation == 2 && m_palette) {
    long long a = (m_style & STYLE_RAMP_FROM_MIN) ? static_cast<long long>(m_min) : 0;
    int from = trackStart;
    for (const auto& marker : m_markers) {
      const int to = ValueToPixel(marker->value);
      DrawPaletteRamp(dc, a, static_cast<long long>(marker->value), from, to);
      a = static_cast<long long>(marker->value);
      from = to;
    }
    DrawPaletteRamp(dc, a, static_cast<long long>(m_max), from, trackEnd);
    return;
  }
  int from = trackStart;
  for (size_t i = 0; i < m_markers.size(); ++i) {
    const int to = ValueToPixel(m_markers[i]->value) + m_halfThumb;
    DrawBandSpan(dc, from, to, GetIntervalColor(static_cast<int>(i)));
    from = to;
  }
  DrawBandSpan(dc, from, trackEnd, GetIntervalColor(GetMarkerCount()));
}

void CQVWindowLevelDlgSliderCtrl::DrawArrow(HDC dc, const RECT& arrow) {
  if (::IsRectEmpty(&arrow)) return;
  // The tip points at the channel: up or left in orientations 0 and 1, down
  // or right in 2 and 3.
  const bool tipAtStart = m_orientation < 2;
  POINT points[3];
  if (IsVertical()) {
    const int middle = (arrow.top + arrow.bottom - 1) / 2;
    const int tip = tipAtStart ? arrow.left : arrow.right - 1;
    const int base = tipAtStart ? arrow.right - 1 : arrow.left;
    points[0] = POINT{tip, middle};
    points[1] = POINT{base, arrow.top};
    points[2] = POINT{base, arrow.bottom - 1};
  } else {
    const int middle = (arrow.left + arrow.right - 1) / 2;
    const int tip = tipAtStart ? arrow.top : arrow.bottom - 1;
    const int base = tipAtStart ? arrow.bottom - 1 : arrow.top;
    points[0] = POINT{middle, tip};
    points[1] = POINT{arrow.left, base};
    points[2] = POINT{arrow.right - 1, base};
  }
  qvfw::SelectObjectScope brush(dc, ::GetSysColorBrush(COLOR_3DDKSHADOW));
  ::Polygon(dc, points, 3);
}

void CQVWindowLevelDlgSliderCtrl::DrawOneMarker(HDC dc, const CQVWLSliderMarker& marker, bool selected) {
  ::FillRect(dc, &marker.stem, ::GetSysColorBrush(COLOR_3DDKSHADOW));
  DrawArrow(dc, marker.arrow);
  RECT thumb = marker.thumb;
  ::FillRect(dc, &thumb, ::GetSysColorBrush(IsHit(&marker) || m_grabbed == &marker ? COLOR_3DHILIGHT : COLOR_3DFACE));
  ::DrawEdge(dc, &thumb, EDGE_RAISED, BF_RECT);
  if (selected && m_hasFocus) {
    RECT focus = marker.thumb;
    ::InflateRect(&focus, -2, -2);
    ::DrawFocusRect(dc, &focus);
  }
}

void CQVWindowLevelDlgSliderCtrl::DrawMarkers(HDC dc) {
  for (const auto& marker : m_markers) DrawOneMarker(dc, *marker, marker.get() == m_selected);
}
