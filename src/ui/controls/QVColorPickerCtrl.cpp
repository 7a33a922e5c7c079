/*
 * CQVColorPickerCtrl: the swatch drawing, the colour dialog round trip and
 * the custom colours taken from the palettes.
 */
#include "QVColorPickerCtrl.h"

#include <algorithm>
#include <vector>

#include "ColorDialog.h"
#include "ParentNotify.h"
#include "SelectObjectScope.h"
#include "UniqueHandle.h"

namespace {

// `share` colours spread evenly over the palette, first and last entry
// included, so a 256-entry gray palette offers its whole ramp.
std::vector<COLORREF> Sample(const std::vector<PALETTEENTRY>& entries, size_t share) {
  std::vector<COLORREF> colors;
  const size_t take = std::min(entries.size(), share);
  for (size_t i = 0; i < take; ++i) {
    const size_t index = take == 1 ? 0 : i * (entries.size() - 1) / (take - 1);
    colors.push_back(RGB(entries[index].peRed, entries[index].peGreen, entries[index].peBlue));
  }
  return colors;
}

std::vector<PALETTEENTRY> EntriesOf(const qvfw::CPalette* palette) {
  return palette && palette->GetSafeHandle() ? palette->GetAllEntries() : std::vector<PALETTEENTRY>{};
}

COLORREF Blend(COLORREF a, COLORREF b) {
  return RGB((GetRValue(a) + GetRValue(b)) / 2, (GetGValue(a) + GetGValue(b)) / 2, (GetBValue(a) + GetBValue(b)) / 2);
}

int FontHeight(HDC dc) {
  TEXTMETRICW metrics{};
  return ::GetTextMetricsW(dc, &metrics) ? metrics.tmHeight : 13;
}

}  // namespace

CQVColorPickerCtrl::CQVColorPickerCtrl() {
  std::copy_n(qvfw::CColorDialog::GetSavedCustomColors(), kCustomColorCount, m_customColors);
}

CQVColorPickerCtrl::~CQVColorPickerCtrl() = default;

void CQVColorPickerCtrl::SetRGB(COLORREF color) {
  m_color = color & 0x00FFFFFF;
  if (m_hWnd) Invalidate(FALSE);
}

void CQVColorPickerCtrl::SetPalette(qvfw::CPalette* first, qvfw::CPalette* second) {
  const std::vector<PALETTEENTRY> firstEntries = EntriesOf(first);
  const std::vector<PALETTEENTRY> secondEntries = EntriesOf(second);
  const size_t half = kCustomColorCount / 2;
  const size_t firstShare = std::min(firstEntries.size(), kCustomColorCount - std::min(secondEntries.size(), half));
  std::vector<COLORREF> colors = Sample(firstEntries, firstShare);
  const std::vector<COLORREF> rest = Sample(secondEntries, kCustomColorCount - colors.size());
  colors.insert(colors.end(), rest.begin(), rest.end());
  std::copy(colors.begin(), colors.end(), m_customColors);
}

bool CQVColorPickerCtrl::PickColor() {
  if (m_choosing || !m_hWnd) return false;
  m_choosing = true;
  qvfw::CColorDialog dialog(m_color, CC_FULLOPEN, GetParent());
  dialog.m_cc.lpCustColors = m_customColors;
  const bool picked = dialog.DoModal() == IDOK;
  m_choosing = false;
  const COLORREF color = dialog.GetColor() & 0x00FFFFFF;
  if (!picked || color == m_color) return false;
  SetRGB(color);
  qvctl::NotifyParent(m_hWnd, kNotifyColorChanged);
  return true;
}

BOOL CQVColorPickerCtrl::SubclassWindow(HWND window) {
  wchar_t className[16] = {};
  ::GetClassNameW(window, className, 16);
  if (_wcsicmp(className, L"Button") != 0) return FALSE;
  if (!CButton::SubclassWindow(window)) return FALSE;
  ModifyStyle(BS_TYPEMASK, BS_OWNERDRAW);
  Invalidate(FALSE);
  return TRUE;
}

void CQVColorPickerCtrl::Paint(HDC dc, const RECT& rect, UINT state) const {
  const bool pressed = (state & ODS_SELECTED) != 0;
  const bool disabled = (state & ODS_DISABLED) != 0;
  RECT face = rect;
  ::DrawFrameControl(dc, &face, DFC_BUTTON,
                     DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0) | (disabled ? DFCS_INACTIVE : 0));
  // The swatch sits a third of a line inside the face and moves with a press
  // as a button's caption does.
  qvfw::SelectObjectScope font(dc, reinterpret_cast<HGDIOBJ>(GetFont()));
  const int inset = std::max(3, FontHeight(dc) / 3);
  RECT swatch = rect;
  ::InflateRect(&swatch, -inset, -inset);
  if (pressed) ::OffsetRect(&swatch, 1, 1);
  if (swatch.right > swatch.left && swatch.bottom > swatch.top) {
    // Disabled, the colour is washed into the face, so it still reads but
    // clearly cannot be changed.
    const COLORREF fill = disabled ? Blend(m_color, ::GetSysColor(COLOR_BTNFACE)) : m_color;
    qvfw::UniqueBrush brush(::CreateSolidBrush(fill));
    ::FillRect(dc, &swatch, brush.Get());
    ::FrameRect(dc, &swatch, ::GetSysColorBrush(disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
  }
  if ((state & ODS_FOCUS) && !disabled) {
    RECT focus = rect;
    ::InflateRect(&focus, -std::max(2, inset / 2), -std::max(2, inset / 2));
    ::DrawFocusRect(dc, &focus);
  }
}

BOOL CQVColorPickerCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
  if (message == WM_DRAWITEM) {
    const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    Paint(item->hDC, item->rcItem, item->itemState);
    *result = TRUE;
    return TRUE;
  }
  if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED) {
    PickColor();
    return TRUE;
  }
  return FALSE;
}

// Enter on a focused picker opens the dialog rather than pressing the
// dialog's default button, as it does on a focused push button.
UINT CQVColorPickerCtrl::OnGetDlgCode(MSG* msg) {
  UINT code = static_cast<UINT>(Default());
  if (msg && msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN) code |= DLGC_WANTMESSAGE;
  return code;
}

void CQVColorPickerCtrl::OnKeyDown(UINT key, UINT, UINT) {
  if (key == VK_RETURN) {
    PickColor();
    return;
  }
  Default();
}

LRESULT CQVColorPickerCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != BM_SETSTYLE) return CButton::WindowProc(message, wParam, lParam);
  // The dialog manager (or a host) may restyle the button as a default push
  // button; it stays owner-drawn, or the swatch would be lost.
  const LRESULT result = Default();
  ModifyStyle(BS_TYPEMASK, BS_OWNERDRAW);
  Invalidate(FALSE);
  return result;
}
