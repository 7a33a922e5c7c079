/*
 * CQVImageViewer: painting the display bitmaps, the split divider and the
 * note. Painting goes through Q_PaintBitmap, which reduces area-averaged and
 * enlarges by nearest pixel; at fit zoom the display bitmap already has the
 * pane's size and is copied one to one.
 */
#include "QVImageViewer.h"

#include <algorithm>
#include <cmath>

#include "SelectObjectScope.h"
#include "UniqueHandle.h"

namespace {

constexpr int kDividerGrip = 4;

}  // namespace

CQVImageViewer::CQVImageViewer() = default;
CQVImageViewer::~CQVImageViewer() = default;

void CQVImageViewer::SetBitmap(const BITMAPHANDLE* bitmap) {
  if (!bitmap) {
    m_display.reset();
    m_left.reset();
    SetContentSize(0, 0);
    return;
  }
  SetContentSize(bitmap->nWidth, bitmap->nHeight);
  // The caller keeps the bitmap: shared without an owner.
  SetDisplay(Display(Display(), bitmap), RECT{0, 0, bitmap->nWidth, bitmap->nHeight});
}

void CQVImageViewer::SetDisplay(Display display, const RECT& imageRect) {
  m_display = std::move(display);
  m_imageRect = imageRect;
  if (m_hWnd) Invalidate(FALSE);
}

void CQVImageViewer::SetSplitDisplay(Display left, const RECT& imageRect) {
  m_left = std::move(left);
  if (left) m_imageRect = imageRect;
  if (m_hWnd) Invalidate(FALSE);
}

int CQVImageViewer::GetSplitPos() const {
  const RECT shown = ContentClientRect();
  RECT client{};
  if (m_hWnd) ::GetClientRect(m_hWnd, &client);
  const LONG left = std::max(shown.left, client.left);
  const LONG right = std::min(shown.right, client.right);
  return static_cast<int>(left + std::lround((right - left) * m_splitShare));
}

void CQVImageViewer::SetSplitPos(int x) {
  const RECT shown = ContentClientRect();
  RECT client{};
  if (m_hWnd) ::GetClientRect(m_hWnd, &client);
  const LONG left = std::max(shown.left, client.left);
  const LONG right = std::min(shown.right, client.right);
  // A negative position puts the divider back in the middle.
  m_splitShare = x < 0 || right <= left ? 0.5 : std::clamp(double(x - left) / double(right - left), 0.0, 1.0);
  if (m_hWnd) Invalidate(FALSE);
}

void CQVImageViewer::SetNote(const std::wstring& note) {
  if (note == m_note) return;
  m_note = note;
  if (m_hWnd) Invalidate(FALSE);
}

void CQVImageViewer::PaintLayer(HDC dc, const BITMAPHANDLE* layer, const RECT& clip) {
  const RECT target = ContentToClient(m_imageRect);
  const RECT source{0, 0, layer->nWidth, layer->nHeight};
  const int saved = ::SaveDC(dc);
  ::IntersectClipRect(dc, clip.left, clip.top, clip.right, clip.bottom);
  Q_PaintBitmap(dc, layer, &source, &target, 0);
  ::RestoreDC(dc, saved);
}

void CQVImageViewer::OnDraw(HDC dc, const RECT&) {
  RECT client{};
  ::GetClientRect(m_hWnd, &client);
  if (m_display) {
    HPALETTE palette = nullptr;
    qvfw::UniquePalette owned;
    if (::GetDeviceCaps(dc, RASTERCAPS) & RC_PALETTE) {
      if (Q_CreatePaintPalette(dc, m_display.get(), &palette, 0) == QV_SUCCESS) owned.Reset(palette);
    }
    qvfw::SelectPaletteScope selectPalette(dc, owned.Get(), m_forceBackground);
    if (m_left) {
      const int split = GetSplitPos();
      PaintLayer(dc, m_left.get(), RECT{client.left, client.top, split, client.bottom});
      PaintLayer(dc, m_display.get(), RECT{split, client.top, client.right, client.bottom});
      qvfw::UniquePen pen(::CreatePen(PS_SOLID, 1, ::GetSysColor(COLOR_HIGHLIGHT)));
      qvfw::SelectObjectScope selectPen(dc, pen.Get());
      ::MoveToEx(dc, split, client.top, nullptr);
      ::LineTo(dc, split, client.bottom);
    } else {
      PaintLayer(dc, m_display.get(), client);
    }
    if ((m_region.uMode & 1) && (m_display->uRgnFlags & QV_RGN_SET)) {
      // The region is given in the display bitmap's pixels.
      const RECT target = ContentToClient(m_imageRect);
      const double sx = double(target.right - target.left) / std::max(1, m_display->nWidth);
      const double sy = double(target.bottom - target.top) / std::max(1, m_display->nHeight);
      const RECT& r = m_display->rcRgn;
      RECT outline{target.left + LONG(r.left * sx), target.top + LONG(r.top * sy), target.left + LONG(r.right * sx),
                   target.top + LONG(r.bottom * sy)};
      ::DrawFocusRect(dc, &outline);
    }
    ++m_paintCount;
  }
  if (!m_note.empty()) {
    RECT band = client;
    band.top = client.bottom - std::min<LONG>(client.bottom, 20);
    ::FillRect(dc, &band, ::GetSysColorBrush(COLOR_INFOBK));
    qvfw::SelectObjectScope selectFont(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, ::GetSysColor(COLOR_INFOTEXT));
    ::DrawTextW(dc, m_note.c_str(), static_cast<int>(m_note.size()), &band,
                DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
  }
}

bool CQVImageViewer::NearDivider(POINT point) const {
  return m_left && std::abs(point.x - GetSplitPos()) <= kDividerGrip;
}

bool CQVImageViewer::OnContentMouseDown(POINT point) {
  if (!NearDivider(point)) return false;
  m_draggingDivider = true;
  return true;
}

void CQVImageViewer::OnContentMouseMove(POINT point) {
  if (!m_draggingDivider) return;
  SetSplitPos(point.x);
  UpdateWindow();
}

void CQVImageViewer::OnContentMouseUp(POINT point) {
  if (!m_draggingDivider) return;
  m_draggingDivider = false;
  SetSplitPos(point.x);
  HWND parent = ::GetParent(m_hWnd);
  if (!parent) return;
  NMHDR header{m_hWnd, static_cast<UINT_PTR>(GetDlgCtrlID()), kNotifySplitMoved};
  ::SendMessageW(parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

HCURSOR CQVImageViewer::ContentCursor(POINT point) const {
  return NearDivider(point) ? ::LoadCursorW(nullptr, IDC_SIZEWE) : nullptr;
}
