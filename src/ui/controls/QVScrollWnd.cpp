/*
 * CQVScrollWnd: zoom ladder, scroll bars, drag panning and wheel zoom. The
 * scroll position is kept in zoomed pixels and clamped after every change of
 * size or zoom; a zoom change keeps the content point under the window's
 * centre (or under the pointer for the wheel) where it was.
 */
#include "QVScrollWnd.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "SelectObjectScope.h"
#include "UniqueHandle.h"
#include "UniquePaintDC.h"

namespace {

constexpr int kZoomLevels[] = {5, 10, 25, 33, 50, 67, 100, 150, 200, 300, 400, 600, 800, 1600};
constexpr int kLineStep = 16;
const wchar_t kClassName[] = L"QVScrollWnd";

}  // namespace

CQVScrollWnd::CQVScrollWnd() = default;
CQVScrollWnd::~CQVScrollWnd() = default;

BOOL CQVScrollWnd::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
  LPCWSTR cls = RegisterFrameworkClass(kClassName, CS_DBLCLKS, LoadCursorW(nullptr, IDC_ARROW), nullptr);
  if (!cls) return FALSE;
  return CreateEx(0, cls, L"", style | WS_CHILD | WS_CLIPSIBLINGS, rect, parent, id);
}

int CQVScrollWnd::ZoomLevelCount() { return static_cast<int>(std::size(kZoomLevels)); }

int CQVScrollWnd::ZoomLevel(int index) { return index >= 0 && index < ZoomLevelCount() ? kZoomLevels[index] : 100; }

void CQVScrollWnd::SetContentSize(int width, int height) {
  m_content = SIZE{std::max(0, width), std::max(0, height)};
  ClampScroll();
  UpdateScrollBars();
  if (m_hWnd) Invalidate(FALSE);
}

double CQVScrollWnd::GetScale() const {
  if (!m_fit) return m_zoom / 100.0;
  if (m_content.cx <= 0 || m_content.cy <= 0 || !m_hWnd) return 1.0;
  RECT client{};
  ::GetClientRect(m_hWnd, &client);
  const double sx = double(std::max<LONG>(1, client.right)) / m_content.cx;
  const double sy = double(std::max<LONG>(1, client.bottom)) / m_content.cy;
  return std::min(sx, sy);
}

int CQVScrollWnd::GetZoom() const {
  return m_fit ? std::max(1, static_cast<int>(std::lround(GetScale() * 100))) : m_zoom;
}

void CQVScrollWnd::SetZoomToFit(int fit) {
  const ContentPoint centre = CentreContentPoint();
  m_fit = fit != 0;
  if (m_fit) m_scroll = POINT{0, 0};
  KeepCentre(centre);
}

void CQVScrollWnd::SetZoom(int percent) {
  const ContentPoint centre = CentreContentPoint();
  m_zoom = std::clamp(percent, kZoomLevels[0], kZoomLevels[ZoomLevelCount() - 1]);
  m_fit = false;
  KeepCentre(centre);
}

bool CQVScrollWnd::ZoomIn() {
  const int current = GetZoom();
  for (int level : kZoomLevels) {
    if (level > current) {
      SetZoom(level);
      return true;
    }
  }
  return false;
}

bool CQVScrollWnd::ZoomOut() {
  const int current = GetZoom();
  for (int i = ZoomLevelCount() - 1; i >= 0; --i) {
    if (kZoomLevels[i] < current) {
      SetZoom(kZoomLevels[i]);
      return true;
    }
  }
  return false;
}

// Taken before a zoom change, with the geometry of the old zoom.
CQVScrollWnd::ContentPoint CQVScrollWnd::CentreContentPoint() const {
  if (!m_hWnd) return ContentPoint{0, 0};
  RECT client{};
  ::GetClientRect(m_hWnd, &client);
  const RECT shown = ContentClientRect();
  const double scale = GetScale();
  return ContentPoint{(client.right / 2.0 - shown.left) / scale, (client.bottom / 2.0 - shown.top) / scale};
}

// The content point that was at the window's centre before the change stays
// there.
void CQVScrollWnd::KeepCentre(const ContentPoint& centre) {
  if (!m_hWnd) return;
  // The new zoom may show or hide scroll bars; measure the window after that.
  UpdateScrollBars();
  RECT client{};
  ::GetClientRect(m_hWnd, &client);
  const double scale = GetScale();
  if (!m_fit) {
    m_scroll.x = static_cast<LONG>(std::lround(centre.x * scale - client.right / 2.0));
    m_scroll.y = static_cast<LONG>(std::lround(centre.y * scale - client.bottom / 2.0));
  }
  ClampScroll();
  UpdateScrollBars();
  Invalidate(FALSE);
}

SIZE CQVScrollWnd::ZoomedSize() const {
  const double scale = GetScale();
  return SIZE{static_cast<LONG>(std::lround(m_content.cx * scale)),
              static_cast<LONG>(std::lround(m_content.cy * scale))};
}

void CQVScrollWnd::ClampScroll() {
  if (!m_hWnd) return;
  RECT client{};
  ::GetClientRect(m_hWnd, &client);
  const SIZE zoomed = ZoomedSize();
  m_scroll.x = std::clamp<LONG>(m_scroll.x, 0, std::max<LONG>(0, zoomed.cx - client.right));
  m_scroll.y = std::clamp<LONG>(m_scroll.y, 0, std::max<LONG>(0, zoomed.cy - client.bottom));
}

void CQVScrollWnd::UpdateScrollBars() {
  if (!m_hWnd || m_updatingBars) return;
  // Showing a bar shrinks the client area, which can call for the other bar;
  // two rounds settle it.
  m_updatingBars = true;
  for (int round = 0; round < 2; ++round) {
    RECT client{};
    ::GetClientRect(m_hWnd, &client);
    const SIZE zoomed = m_fit ? SIZE{0, 0} : ZoomedSize();
    SCROLLINFO h{sizeof(h),
                 SIF_RANGE | SIF_PAGE | SIF_POS,
                 0,
                 std::max<int>(0, zoomed.cx - 1),
                 static_cast<UINT>(client.right),
                 m_scroll.x,
                 0};
    SCROLLINFO v{sizeof(v),
                 SIF_RANGE | SIF_PAGE | SIF_POS,
                 0,
                 std::max<int>(0, zoomed.cy - 1),
                 static_cast<UINT>(client.bottom),
                 m_scroll.y,
                 0};
    ::SetScrollInfo(m_hWnd, SB_HORZ, &h, TRUE);
    ::SetScrollInfo(m_hWnd, SB_VERT, &v, TRUE);
    ClampScroll();
  }
  m_updatingBars = false;
}

void CQVScrollWnd::SetScrollPosition(POINT position) {
  m_scroll = position;
  ClampScroll();
  UpdateScrollBars();
  if (m_hWnd) Invalidate(FALSE);
}

void CQVScrollWnd::ScrollTo(POINT position, bool notify) {
  const POINT old = m_scroll;
  SetScrollPosition(position);
  if (notify && (old.x != m_scroll.x || old.y != m_scroll.y)) NotifyViewChanged();
}

void CQVScrollWnd::ScrollBy(int dx, int dy, bool notify) { ScrollTo(POINT{m_scroll.x + dx, m_scroll.y + dy}, notify); }

RECT CQVScrollWnd::ContentClientRect() const {
  RECT client{};
  if (m_hWnd) ::GetClientRect(m_hWnd, &client);
  const SIZE zoomed = ZoomedSize();
  // Smaller than the window: centred; larger: offset by the scroll position.
  const LONG left = zoomed.cx < client.right ? (client.right - zoomed.cx) / 2 : -m_scroll.x;
  const LONG top = zoomed.cy < client.bottom ? (client.bottom - zoomed.cy) / 2 : -m_scroll.y;
  return RECT{left, top, left + zoomed.cx, top + zoomed.cy};
}

RECT CQVScrollWnd::ContentToClient(const RECT& content) const {
  const RECT whole = ContentClientRect();
  const double scale = GetScale();
  return RECT{whole.left + static_cast<LONG>(std::lround(content.left * scale)),
              whole.top + static_cast<LONG>(std::lround(content.top * scale)),
              whole.left + static_cast<LONG>(std::lround(content.right * scale)),
              whole.top + static_cast<LONG>(std::lround(content.bottom * scale))};
}

POINT CQVScrollWnd::ClientToContent(POINT client) const {
  const RECT whole = ContentClientRect();
  const double scale = GetScale();
  return POINT{static_cast<LONG>(std::floor((client.x - whole.left) / scale)),
               static_cast<LONG>(std::floor((client.y - whole.top) / scale))};
}

RECT CQVScrollWnd::VisibleContentRect() const {
  RECT client{};
  if (m_hWnd) ::GetClientRect(m_hWnd, &client);
  const RECT whole = ContentClientRect();
  const double scale = GetScale();
  RECT visible{static_cast<LONG>(std::floor((std::max(client.left, whole.left) - whole.left) / scale)),
               static_cast<LONG>(std::floor((std::max(client.top, whole.top) - whole.top) / scale)),
               static_cast<LONG>(std::ceil((std::min(client.right, whole.right) - whole.left) / scale)),
               static_cast<LONG>(std::ceil((std::min(client.bottom, whole.bottom) - whole.top) / scale))};
  const RECT all{0, 0, m_content.cx, m_content.cy};
  IntersectRect(&visible, &visible, &all);
  return visible;
}

void CQVScrollWnd::NotifyViewChanged() {
  HWND parent = ::GetParent(m_hWnd);
  if (!parent) return;
  NMHDR header{m_hWnd, static_cast<UINT_PTR>(GetDlgCtrlID()), kNotifyViewChanged};
  ::SendMessageW(parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

void CQVScrollWnd::Paint(HDC dc, const RECT& clip) {
  RECT client{};
  ::GetClientRect(m_hWnd, &client);
  // Through a memory bitmap, so the image never flickers while dragged.
  qvfw::UniqueMemoryDC memory(::CreateCompatibleDC(dc));
  qvfw::UniqueBitmap buffer(
      ::CreateCompatibleBitmap(dc, std::max<LONG>(1, client.right), std::max<LONG>(1, client.bottom)));
  HDC target = memory && buffer ? memory.Get() : dc;
  qvfw::SelectObjectScope select(memory.Get(), buffer.Get());
  ::FillRect(target, &client, ::GetSysColorBrush(COLOR_BTNFACE));
  OnDraw(target, clip);
  if (::GetFocus() == m_hWnd) {
    RECT focus = client;
    ::InflateRect(&focus, -1, -1);
    ::DrawFocusRect(target, &focus);
  }
  if (target != dc) ::BitBlt(dc, 0, 0, client.right, client.bottom, target, 0, 0, SRCCOPY);
}

void CQVScrollWnd::OnPaint() {
  qvfw::UniquePaintDC paint(m_hWnd);
  if (paint.Get()) Paint(paint.Get(), paint.PaintRect());
}

BOOL CQVScrollWnd::OnEraseBkgnd(HDC) { return TRUE; }

void CQVScrollWnd::OnPrintClient(HDC dc, UINT) {
  RECT client{};
  ::GetClientRect(m_hWnd, &client);
  Paint(dc, client);
}

void CQVScrollWnd::OnSize(UINT, int, int) {
  ClampScroll();
  UpdateScrollBars();
  Invalidate(FALSE);
}

void CQVScrollWnd::OnHScroll(UINT code, UINT, qvfw::CWnd*) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_ALL;
  ::GetScrollInfo(m_hWnd, SB_HORZ, &info);
  int x = m_scroll.x;
  switch (code) {
    case SB_LINELEFT: x -= kLineStep; break;
    case SB_LINERIGHT: x += kLineStep; break;
    case SB_PAGELEFT: x -= static_cast<int>(info.nPage); break;
    case SB_PAGERIGHT: x += static_cast<int>(info.nPage); break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: x = info.nTrackPos; break;
    case SB_LEFT: x = 0; break;
    case SB_RIGHT: x = info.nMax; break;
    default: return;
  }
  ScrollTo(POINT{x, m_scroll.y}, true);
}

void CQVScrollWnd::OnVScroll(UINT code, UINT, qvfw::CWnd*) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_ALL;
  ::GetScrollInfo(m_hWnd, SB_VERT, &info);
  int y = m_scroll.y;
  switch (code) {
    case SB_LINEUP: y -= kLineStep; break;
    case SB_LINEDOWN: y += kLineStep; break;
    case SB_PAGEUP: y -= static_cast<int>(info.nPage); break;
    case SB_PAGEDOWN: y += static_cast<int>(info.nPage); break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: y = info.nTrackPos; break;
    case SB_TOP: y = 0; break;
    case SB_BOTTOM: y = info.nMax; break;
    default: return;
  }
  ScrollTo(POINT{m_scroll.x, y}, true);
}

void CQVScrollWnd::OnLButtonDown(UINT, POINT point) {
  ::SetFocus(m_hWnd);
  if (OnContentMouseDown(point)) {
    m_contentDrag = true;
    ::SetCapture(m_hWnd);
    return;
  }
  if (!m_pan) return;
  m_dragging = true;
  m_dragStart = point;
  m_dragScroll = m_scroll;
  ::SetCapture(m_hWnd);
}

void CQVScrollWnd::OnMouseMove(UINT, POINT point) {
  if (m_contentDrag) {
    OnContentMouseMove(point);
    return;
  }
  if (!m_dragging) return;
  ScrollTo(POINT{m_dragScroll.x - (point.x - m_dragStart.x), m_dragScroll.y - (point.y - m_dragStart.y)}, true);
}

void CQVScrollWnd::OnLButtonUp(UINT, POINT point) {
  if (m_contentDrag) OnContentMouseUp(point);
  m_contentDrag = false;
  m_dragging = false;
  if (::GetCapture() == m_hWnd) ::ReleaseCapture();
}

void CQVScrollWnd::OnCaptureChanged(HWND) {
  m_dragging = false;
  m_contentDrag = false;
}

BOOL CQVScrollWnd::DoMouseWheel(UINT, short delta, POINT screenPoint) {
  if (delta == 0 || m_content.cx <= 0) return FALSE;
  POINT client = screenPoint;
  ::ScreenToClient(m_hWnd, &client);
  const POINT anchor = ClientToContent(client);
  const bool moved = delta > 0 ? ZoomIn() : ZoomOut();
  if (!moved) return TRUE;
  // The content point under the pointer stays under it.
  const double scale = GetScale();
  RECT clientRect{};
  ::GetClientRect(m_hWnd, &clientRect);
  if (ZoomedSize().cx > clientRect.right || ZoomedSize().cy > clientRect.bottom)
    SetScrollPosition(POINT{static_cast<LONG>(std::lround(anchor.x * scale - client.x)),
                            static_cast<LONG>(std::lround(anchor.y * scale - client.y))});
  NotifyViewChanged();
  return TRUE;
}

BOOL CQVScrollWnd::OnMouseWheel(UINT flags, short delta, POINT point) {
  if (!m_wheel) return FALSE;
  return DoMouseWheel(flags, delta, point);
}

BOOL CQVScrollWnd::OnSetCursor(HWND window, UINT hitTest, UINT message) {
  if (hitTest == HTCLIENT) {
    POINT point{};
    ::GetCursorPos(&point);
    ::ScreenToClient(m_hWnd, &point);
    HCURSOR cursor = ContentCursor(point);
    if (!cursor) cursor = ::LoadCursorW(nullptr, m_pan ? IDC_SIZEALL : IDC_ARROW);
    ::SetCursor(cursor);
    return TRUE;
  }
  return static_cast<BOOL>(Default());
}

void CQVScrollWnd::OnSetFocus(HWND) { Invalidate(FALSE); }
void CQVScrollWnd::OnKillFocus(HWND) { Invalidate(FALSE); }

UINT CQVScrollWnd::OnGetDlgCode(MSG*) { return DLGC_WANTARROWS; }

void CQVScrollWnd::OnKeyDown(UINT key, UINT, UINT) {
  switch (key) {
    case VK_LEFT: ScrollBy(-kLineStep, 0, true); break;
    case VK_RIGHT: ScrollBy(kLineStep, 0, true); break;
    case VK_UP: ScrollBy(0, -kLineStep, true); break;
    case VK_DOWN: ScrollBy(0, kLineStep, true); break;
    default: Default(); break;
  }
}
