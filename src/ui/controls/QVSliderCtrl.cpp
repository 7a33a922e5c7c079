/*
 * CQVSliderCtrl's window side: the messages, the mouse and keys turned into
 * marker moves through the slider rules, and the painting. The geometry is
 * computed afresh from the client size and the font on every use, so a new
 * font or size needs nothing but a repaint.
 */
#include "QVSliderCtrl.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "AddressCheck.h"
#include "ParentNotify.h"
#include "Placeholder.h"
#include "SelectObjectScope.h"
#include "UniqueDC.h"
#include "UniqueHandle.h"
#include "UniquePaintDC.h"

namespace {

const wchar_t kClassName[] = L"QVSliderCtrl";

COLORREF ColorAt(const std::vector<COLORREF>& colors, size_t index, COLORREF fallback) {
  return index < colors.size() ? colors[index] : fallback;
}

std::vector<COLORREF> CopyColors(const unsigned long* colors, int count) {
  if (!colors) return {};
  return std::vector<COLORREF>(colors, colors + count);
}

}  // namespace

CQVSliderCtrl::CQVSliderCtrl(UINT styles) : m_styles(styles) {}
CQVSliderCtrl::~CQVSliderCtrl() = default;

BOOL CQVSliderCtrl::Init(double minimum, double maximum, int tics, int markerCount, double* markerValues,
                         unsigned long* colors, int flags, unsigned long* markerColors) {
  if (!std::isfinite(minimum) || !std::isfinite(maximum) || !(maximum > minimum)) return FALSE;
  if (markerCount < 0 || markerCount > kMaxMarkers) return FALSE;
  const size_t count = static_cast<size_t>(markerCount);
  if (count > 0 && !qv::IsValidAddress(markerValues, count * sizeof(double), qv::Access::Read)) return FALSE;
  if (colors && !qv::IsValidAddress(colors, (count + 1) * sizeof(unsigned long), qv::Access::Read)) return FALSE;
  if (markerColors && count > 0 && !qv::IsValidAddress(markerColors, count * sizeof(unsigned long), qv::Access::Read)) {
    return FALSE;
  }
  m_minimum = minimum;
  m_maximum = maximum;
  m_tics = std::max(0, tics);
  m_styles = static_cast<UINT>(flags);
  m_markers = qvctl::OrderedMarkers(markerValues, markerCount, minimum, maximum);
  m_intervalColors = CopyColors(colors, markerCount + 1);
  m_markerColors = CopyColors(markerColors, markerCount);
  m_selected = markerCount > 0 ? 0 : -1;
  if (m_dragging >= 0 && ::GetCapture() == m_hWnd) ::ReleaseCapture();
  m_dragging = -1;
  if (m_hWnd) Invalidate(FALSE);
  return TRUE;
}

BOOL CQVSliderCtrl::GetMarkerValue(int marker, double& value) const {
  if (marker < 0 || marker >= GetMarkerCount()) return FALSE;
  value = m_markers[static_cast<size_t>(marker)];
  return TRUE;
}

BOOL CQVSliderCtrl::SetMarkerValue(int marker, double value) {
  if (marker < 0 || marker >= GetMarkerCount() || !std::isfinite(value)) return FALSE;
  if (qvctl::MoveMarker(m_markers, marker, value, m_minimum, m_maximum, m_styles) && m_hWnd) Invalidate(FALSE);
  return TRUE;
}

void CQVSliderCtrl::SetSelectedMarker(int marker) {
  if (marker < 0 || marker >= GetMarkerCount() || marker == m_selected) return;
  m_selected = marker;
  if (m_hWnd) Invalidate(FALSE);
}

void CQVSliderCtrl::GetRange(double& minimum, double& maximum) const {
  minimum = m_minimum;
  maximum = m_maximum;
}

BOOL CQVSliderCtrl::GetThumbRect(int marker, RECT* rect) const {
  if (marker < 0 || marker >= GetMarkerCount() || !rect) return FALSE;
  const qvctl::SliderLayout layout = Layout();
  const int x = qvctl::ValueToPixel(Axis(), m_markers[static_cast<size_t>(marker)]);
  *rect = RECT{x - layout.thumbHalfWidth, layout.thumbTop, x + layout.thumbHalfWidth + 1, layout.thumbBottom + 1};
  return TRUE;
}

void CQVSliderCtrl::GetChannelRect(RECT* rect) const {
  if (!rect) return;
  const qvctl::SliderLayout layout = Layout();
  *rect = RECT{layout.left, layout.trackTop, layout.right + 1, layout.trackBottom};
}

int CQVSliderCtrl::GetIdealHeight() const { return qvctl::SliderIdealHeight(FontHeight(), m_styles); }

BOOL CQVSliderCtrl::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
  LPCWSTR cls = RegisterFrameworkClass(kClassName, 0, ::LoadCursorW(nullptr, IDC_ARROW), nullptr);
  if (!cls) return FALSE;
  return CreateEx(0, cls, L"", style | WS_CHILD, rect, parent, id);
}

BOOL CQVSliderCtrl::SubclassDlgItem(UINT id, CWnd* parent) {
  if (!parent || !parent->m_hWnd || m_hWnd) return FALSE;
  qvctl::Placeholder placeholder;
  if (!qvctl::FindPlaceholder(parent->m_hWnd, id, placeholder)) return FALSE;
  if (!Create(WS_TABSTOP | placeholder.visibleAndDisabled, placeholder.rect, parent->m_hWnd, id)) return FALSE;
  qvctl::ReplacePlaceholder(placeholder, m_hWnd);
  return TRUE;
}

// ---- geometry

int CQVSliderCtrl::FontHeight() const {
  qvfw::UniqueDC dc(m_hWnd);
  qvfw::SelectObjectScope font(dc.Get(), m_font ? m_font : ::GetStockObject(DEFAULT_GUI_FONT));
  TEXTMETRICW metrics{};
  if (!dc || !::GetTextMetricsW(dc.Get(), &metrics)) return 13;
  return metrics.tmHeight;
}

// The labels at the range ends are the widest a marker can show; a slider
// with fractions may add up to two decimals to them.
int CQVSliderCtrl::WidestLabel() const {
  if (!(m_styles & DISPLAY_VALUES)) return 0;
  qvfw::UniqueDC dc(m_hWnd);
  qvfw::SelectObjectScope font(dc.Get(), m_font ? m_font : ::GetStockObject(DEFAULT_GUI_FONT));
  const std::wstring decimals = (m_styles & SHOW_INTEGERS) ? L"" : L".00";
  int widest = 0;
  for (double end : {m_minimum, m_maximum}) {
    const std::wstring text = qvctl::FormatMarkerValue(end, m_styles | SHOW_INTEGERS) + decimals;
    SIZE size{};
    if (dc && ::GetTextExtentPoint32W(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size)) {
      widest = std::max(widest, static_cast<int>(size.cx));
    }
  }
  return widest;
}

qvctl::SliderLayout CQVSliderCtrl::Layout() const {
  RECT client{};
  if (m_hWnd) ::GetClientRect(m_hWnd, &client);
  return qvctl::ComputeSliderLayout(client.right, client.bottom, FontHeight(), WidestLabel(), m_styles);
}

qvctl::SliderAxis CQVSliderCtrl::Axis() const {
  const qvctl::SliderLayout layout = Layout();
  return qvctl::SliderAxis{m_minimum, m_maximum, layout.left, layout.right};
}

// ---- input

void CQVSliderCtrl::UserMove(int marker, double target) {
  const bool changed = qvctl::MoveMarker(m_markers, marker, target, m_minimum, m_maximum, m_styles);
  m_selected = marker;
  Invalidate(FALSE);
  if (changed) Notify(marker);
}

void CQVSliderCtrl::Notify(int marker) {
  NMQVSLIDER info{};
  info.iMarker = marker;
  info.dValue = m_markers[static_cast<size_t>(marker)];
  qvctl::NotifyParent(m_hWnd, info.hdr, kNotifyMarkerMoved);
}

void CQVSliderCtrl::OnLButtonDown(UINT, POINT point) {
  SetFocus();
  if (m_markers.empty()) return;
  const qvctl::SliderAxis axis = Axis();
  const int nearest = qvctl::NearestMarker(m_markers, axis, point.x);
  const int markerPixel = qvctl::ValueToPixel(axis, m_markers[static_cast<size_t>(nearest)]);
  m_selected = nearest;
  if (std::abs(point.x - markerPixel) <= Layout().thumbHalfWidth) {
    m_dragOffset = point.x - markerPixel;
    m_dragJustPressed = true;
  } else if (m_styles & ALLOW_SET_POS) {
    m_dragOffset = 0;
    m_dragJustPressed = false;
    const double target = qvctl::PixelToValue(axis, point.x, (m_styles & SHOW_INTEGERS) != 0);
    UserMove(qvctl::MarkerForMove(m_markers, nearest, target), target);
  } else {
    Invalidate(FALSE);
    return;
  }
  m_dragging = m_selected;
  ::SetCapture(m_hWnd);
  Invalidate(FALSE);
}

void CQVSliderCtrl::OnMouseMove(UINT, POINT point) {
  if (m_dragging < 0) return;
  const double target = qvctl::PixelToValue(Axis(), point.x - m_dragOffset, (m_styles & SHOW_INTEGERS) != 0);
  // A marker pressed among equal ones is taken apart in the direction the
  // drag first goes; one that later meets a neighbour stays the one dragged.
  if (m_dragJustPressed && target != m_markers[static_cast<size_t>(m_dragging)]) {
    m_dragging = qvctl::MarkerForMove(m_markers, m_dragging, target);
    m_dragJustPressed = false;
  }
  UserMove(m_dragging, target);
}

void CQVSliderCtrl::OnLButtonUp(UINT, POINT) {
  if (m_dragging < 0) return;
  m_dragging = -1;
  if (::GetCapture() == m_hWnd) ::ReleaseCapture();
}

void CQVSliderCtrl::OnCaptureChanged(HWND) { m_dragging = -1; }

bool CQVSliderCtrl::WantsTab(const MSG* msg) const {
  if (!msg || msg->message != WM_KEYDOWN || msg->wParam != VK_TAB) return false;
  const bool backwards = ::GetKeyState(VK_SHIFT) < 0;
  return backwards ? m_selected > 0 : m_selected + 1 < GetMarkerCount();
}

UINT CQVSliderCtrl::OnGetDlgCode(MSG* msg) { return DLGC_WANTARROWS | (WantsTab(msg) ? DLGC_WANTTAB : 0); }

void CQVSliderCtrl::OnKeyDown(UINT key, UINT, UINT) {
  if (m_markers.empty()) {
    Default();
    return;
  }
  if (m_selected < 0) m_selected = 0;
  const bool ctrl = ::GetKeyState(VK_CONTROL) < 0;
  qvctl::SliderKey move;
  switch (key) {
    case VK_TAB: return SetSelectedMarker(m_selected + (::GetKeyState(VK_SHIFT) < 0 ? -1 : 1));
    case VK_UP: return SetSelectedMarker(m_selected - 1);
    case VK_DOWN: return SetSelectedMarker(m_selected + 1);
    case VK_LEFT: move = ctrl ? qvctl::SliderKey::kTickDown : qvctl::SliderKey::kLineDown; break;
    case VK_RIGHT: move = ctrl ? qvctl::SliderKey::kTickUp : qvctl::SliderKey::kLineUp; break;
    // As on the native track bar: Page Up goes towards the minimum.
    case VK_PRIOR: move = qvctl::SliderKey::kPageDown; break;
    case VK_NEXT: move = qvctl::SliderKey::kPageUp; break;
    case VK_HOME: move = qvctl::SliderKey::kHome; break;
    case VK_END: move = qvctl::SliderKey::kEnd; break;
    default: Default(); return;
  }
  const qvctl::SliderSteps steps = qvctl::StepsFor(m_minimum, m_maximum, m_tics, m_styles);
  // The keyboard moves the marker the user chose, even one stuck at an
  // equal neighbour: the choice is theirs.
  UserMove(m_selected, qvctl::KeyTarget(m_markers, m_selected, move, steps, m_minimum, m_maximum, m_styles));
}

void CQVSliderCtrl::OnSetFocus(HWND) {
  // Tabbing in starts at the first marker, Shift+Tab at the last, so the
  // markers are walked in the order the user goes.
  if (!m_markers.empty() && (m_selected < 0 || ::GetKeyState(VK_TAB) < 0)) {
    m_selected = ::GetKeyState(VK_TAB) < 0 && ::GetKeyState(VK_SHIFT) < 0 ? GetMarkerCount() - 1 : 0;
  }
  Invalidate(FALSE);
}

void CQVSliderCtrl::OnKillFocus(HWND) { Invalidate(FALSE); }

// ---- painting

void CQVSliderCtrl::OnPaint() {
  qvfw::UniquePaintDC paint(m_hWnd);
  if (paint.Get()) Paint(paint.Get(), paint.PaintRect());
}

BOOL CQVSliderCtrl::OnEraseBkgnd(HDC) { return TRUE; }

void CQVSliderCtrl::OnPrintClient(HDC dc, UINT) {
  RECT client{};
  GetClientRect(&client);
  Paint(dc, client);
}

void CQVSliderCtrl::OnSize(UINT, int, int) { Invalidate(FALSE); }

void CQVSliderCtrl::Paint(HDC dc, const RECT&) {
  RECT client{};
  GetClientRect(&client);
  // Through a memory bitmap, so a dragged marker never flickers.
  qvfw::UniqueMemoryDC memory(::CreateCompatibleDC(dc));
  qvfw::UniqueBitmap buffer(
      ::CreateCompatibleBitmap(dc, std::max<LONG>(1, client.right), std::max<LONG>(1, client.bottom)));
  HDC target = memory && buffer ? memory.Get() : dc;
  qvfw::SelectObjectScope select(memory.Get(), buffer.Get());
  // The parent's background, as a static control shows it.
  HWND parent = ::GetParent(m_hWnd);
  const auto background = reinterpret_cast<HBRUSH>(parent ? ::SendMessageW(parent, WM_CTLCOLORSTATIC,
                                                                           reinterpret_cast<WPARAM>(target),
                                                                           reinterpret_cast<LPARAM>(m_hWnd))
                                                          : 0);
  ::FillRect(target, &client, background ? background : ::GetSysColorBrush(COLOR_BTNFACE));

  qvfw::SelectObjectScope font(target, m_font ? m_font : ::GetStockObject(DEFAULT_GUI_FONT));
  const qvctl::SliderLayout layout = Layout();
  DrawChannel(target, layout);
  if (m_styles & DISPLAY_TICS) DrawTicks(target, layout);
  for (int i = 0; i < GetMarkerCount(); ++i) {
    if (i != m_selected) DrawThumb(target, layout, i);
  }
  if (m_selected >= 0) DrawThumb(target, layout, m_selected);  // the chosen one on top
  if (m_styles & DISPLAY_VALUES) DrawLabels(target, layout);
  if (::GetFocus() == m_hWnd) ::DrawFocusRect(target, &client);
  if (target != dc) ::BitBlt(dc, 0, 0, client.right, client.bottom, target, 0, 0, SRCCOPY);
}

void CQVSliderCtrl::DrawChannel(HDC dc, const qvctl::SliderLayout& layout) const {
  // The sunken edge lies around the track rows, so the colours inside keep
  // the track's full height.
  const int edge = ::GetSystemMetrics(SM_CXEDGE);
  RECT channel{layout.left - edge, layout.trackTop - edge, layout.right + 1 + edge, layout.trackBottom + edge};
  ::DrawEdge(dc, &channel, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
  const COLORREF plain = ::GetSysColor(IsWindowEnabled() ? COLOR_WINDOW : COLOR_BTNFACE);
  if (!(m_styles & DISPLAY_COLORS) || !IsWindowEnabled()) {
    qvfw::UniqueBrush brush(::CreateSolidBrush(plain));
    ::FillRect(dc, &channel, brush.Get());
    return;
  }
  // Interval k runs from marker k - 1 (or the channel's start) to marker k
  // (or its end).
  const qvctl::SliderAxis axis{m_minimum, m_maximum, layout.left, layout.right};
  int start = channel.left;
  for (size_t k = 0; k <= m_markers.size(); ++k) {
    const int end = k < m_markers.size() ? qvctl::ValueToPixel(axis, m_markers[k]) : channel.right;
    RECT interval{start, channel.top, std::max(start, end), channel.bottom};
    qvfw::UniqueBrush brush(::CreateSolidBrush(ColorAt(m_intervalColors, k, plain)));
    ::FillRect(dc, &interval, brush.Get());
    start = std::max(start, end);
  }
}

void CQVSliderCtrl::DrawTicks(HDC dc, const qvctl::SliderLayout& layout) const {
  const qvctl::SliderAxis axis{m_minimum, m_maximum, layout.left, layout.right};
  const int minimumGap = std::max(4, (layout.tickBottom - layout.tickTop) + 1);
  qvfw::UniquePen pen(::CreatePen(PS_SOLID, 1, ::GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT)));
  qvfw::SelectObjectScope select(dc, pen.Get());
  for (int x : qvctl::TickPixels(axis, m_tics, minimumGap)) {
    ::MoveToEx(dc, x, layout.tickTop, nullptr);
    ::LineTo(dc, x, layout.tickBottom);
  }
}

// A body over the channel with a point below it, at the marker's pixel.
void CQVSliderCtrl::DrawThumb(HDC dc, const qvctl::SliderLayout& layout, int marker) const {
  const qvctl::SliderAxis axis{m_minimum, m_maximum, layout.left, layout.right};
  const int x = qvctl::ValueToPixel(axis, m_markers[static_cast<size_t>(marker)]);
  const int half = layout.thumbHalfWidth;
  const int shoulder = std::max(layout.thumbTop + 1, layout.thumbBottom - half);
  const POINT outline[] = {{x - half, layout.thumbTop},
                           {x + half, layout.thumbTop},
                           {x + half, shoulder},
                           {x, layout.thumbBottom},
                           {x - half, shoulder}};
  const bool chosen = marker == m_selected && ::GetFocus() == m_hWnd;
  COLORREF fill = ColorAt(m_markerColors, static_cast<size_t>(marker), ::GetSysColor(COLOR_BTNFACE));
  if (chosen) fill = ::GetSysColor(COLOR_HIGHLIGHT);
  qvfw::UniqueBrush brush(::CreateSolidBrush(fill));
  qvfw::UniquePen pen(::CreatePen(PS_SOLID, 1, ::GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT)));
  qvfw::SelectObjectScope selectBrush(dc, brush.Get());
  qvfw::SelectObjectScope selectPen(dc, pen.Get());
  ::Polygon(dc, outline, static_cast<int>(std::size(outline)));
}

// Each label centred over its marker, then pushed apart where two would
// overlap and kept inside the control.
void CQVSliderCtrl::DrawLabels(HDC dc, const qvctl::SliderLayout& layout) const {
  RECT client{};
  GetClientRect(&client);
  const qvctl::SliderAxis axis{m_minimum, m_maximum, layout.left, layout.right};
  const int gap = std::max(2, (layout.labelBottom - layout.labelTop) / 3);
  std::vector<std::wstring> texts;
  std::vector<RECT> boxes;
  for (double value : m_markers) {
    texts.push_back(qvctl::FormatMarkerValue(value, m_styles));
    SIZE size{};
    ::GetTextExtentPoint32W(dc, texts.back().c_str(), static_cast<int>(texts.back().size()), &size);
    const int x = qvctl::ValueToPixel(axis, value) - size.cx / 2;
    boxes.push_back(RECT{x, layout.labelTop, x + size.cx, layout.labelBottom});
  }
  int floor = client.left;
  for (RECT& box : boxes) {
    if (box.left < floor) ::OffsetRect(&box, floor - box.left, 0);
    floor = box.right + gap;
  }
  int ceiling = client.right;
  for (auto box = boxes.rbegin(); box != boxes.rend(); ++box) {
    if (box->right > ceiling) ::OffsetRect(&*box, ceiling - box->right, 0);
    ceiling = box->left - gap;
  }
  ::SetBkMode(dc, TRANSPARENT);
  ::SetTextColor(dc, ::GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  for (size_t i = 0; i < boxes.size(); ++i) {
    ::DrawTextW(dc, texts[i].c_str(), static_cast<int>(texts[i].size()), &boxes[i],
                DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP | DT_TOP);
  }
}

// ---- messages

LRESULT CQVSliderCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  const int index = static_cast<int>(wParam);
  switch (message) {
    case QVSM_GETMARKERCOUNT: return GetMarkerCount();
    case QVSM_GETMARKER: {
      auto* value = reinterpret_cast<double*>(lParam);
      return value && qv::IsValidAddress(value, sizeof(double), qv::Access::Write) && GetMarkerValue(index, *value);
    }
    case QVSM_SETMARKER: {
      const auto* value = reinterpret_cast<const double*>(lParam);
      return value && qv::IsValidAddress(value, sizeof(double), qv::Access::Read) && SetMarkerValue(index, *value);
    }
    case QVSM_GETSELMARKER: return m_selected;
    case QVSM_SETSELMARKER: SetSelectedMarker(index); return 0;
    case QVSM_GETRANGE: {
      auto* minimum = reinterpret_cast<double*>(wParam);
      auto* maximum = reinterpret_cast<double*>(lParam);
      if (minimum && qv::IsValidAddress(minimum, sizeof(double), qv::Access::Write)) *minimum = m_minimum;
      if (maximum && qv::IsValidAddress(maximum, sizeof(double), qv::Access::Write)) *maximum = m_maximum;
      return 0;
    }
    case QVSM_GETSTYLES: return m_styles;
    case QVSM_GETTHUMBRECT: {
      auto* rect = reinterpret_cast<RECT*>(lParam);
      return rect && qv::IsValidAddress(rect, sizeof(RECT), qv::Access::Write) && GetThumbRect(index, rect);
    }
    case QVSM_GETCHANNELRECT: {
      auto* rect = reinterpret_cast<RECT*>(lParam);
      if (rect && qv::IsValidAddress(rect, sizeof(RECT), qv::Access::Write)) GetChannelRect(rect);
      return 0;
    }
    case WM_SETFONT:
      m_font = reinterpret_cast<HFONT>(wParam);
      if (LOWORD(lParam)) Invalidate(FALSE);
      return 0;
    case WM_GETFONT: return reinterpret_cast<LRESULT>(m_font);
    case WM_ENABLE: Invalidate(FALSE); return 0;
    default: return CWnd::WindowProc(message, wParam, lParam);
  }
}
