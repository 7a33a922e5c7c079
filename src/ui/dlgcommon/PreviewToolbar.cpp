/*
 * CPreviewToolbar: creation and glyph drawing. Glyphs are drawn in the
 * button-text color on a key color that the image list masks out, so they
 * follow the system colors like resource bitmaps would.
 */
#include "PreviewToolbar.h"

#include <algorithm>
#include <string>

#include "Module.h"
#include "QVBaseDialog.h"
#include "SelectObjectScope.h"
#include "UniqueDC.h"
#include "qv/qvdlgkrn.h"

namespace {

constexpr COLORREF kKeyColor = RGB(255, 0, 255);

enum Glyph { kGlyphZoomNormal, kGlyphZoomFit, kGlyphSplit, kGlyphEffect, kGlyphReset, kGlyphCount };

void DrawGlyph(HDC dc, int glyph, int size, HFONT font) {
  const COLORREF ink = GetSysColor(COLOR_BTNTEXT);
  qvfw::UniqueBrush key(CreateSolidBrush(kKeyColor));
  RECT all{0, 0, size, size};
  FillRect(dc, &all, key.Get());
  const int pen = std::max(1, size / 12);
  qvfw::UniquePen inkPen(CreatePen(PS_SOLID, pen, ink));
  qvfw::UniqueBrush inkBrush(CreateSolidBrush(ink));
  qvfw::SelectObjectScope selectPen(dc, inkPen.Get());
  qvfw::SelectObjectScope selectBrush(dc, GetStockObject(NULL_BRUSH));
  const int m = std::max(1, size / 8);
  switch (glyph) {
    case kGlyphZoomNormal: {
      qvfw::SelectObjectScope selectFont(dc, font);
      SetBkMode(dc, TRANSPARENT);
      SetTextColor(dc, ink);
      DrawTextW(dc, L"1:1", 3, &all, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
      break;
    }
    case kGlyphZoomFit: {
      // A frame with its four corners pointing outwards.
      Rectangle(dc, m * 2, m * 2, size - m * 2, size - m * 2);
      const int c = m * 2;
      const POINT corners[4][3] = {{{0, c}, {0, 0}, {c, 0}},
                                   {{size - 1 - c, 0}, {size - 1, 0}, {size - 1, c}},
                                   {{0, size - 1 - c}, {0, size - 1}, {c, size - 1}},
                                   {{size - 1 - c, size - 1}, {size - 1, size - 1}, {size - 1, size - 1 - c}}};
      for (const auto& corner : corners) Polyline(dc, corner, 3);
      break;
    }
    case kGlyphSplit: {
      // Two halves, the left one filled: before beside after.
      Rectangle(dc, m, m * 2, size - m, size - m * 2);
      RECT left{m, m * 2, size / 2, size - m * 2};
      FillRect(dc, &left, inkBrush.Get());
      MoveToEx(dc, size / 2, m, nullptr);
      LineTo(dc, size / 2, size - m);
      break;
    }
    case kGlyphEffect: {
      qvfw::SelectObjectScope selectFont(dc, font);
      SetBkMode(dc, TRANSPARENT);
      SetTextColor(dc, ink);
      DrawTextW(dc, L"fx", 2, &all, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
      break;
    }
    case kGlyphReset: {
      // A circular arrow.
      Arc(dc, m, m, size - m, size - m, size / 2, m, size - m, size / 2);
      const POINT head[3] = {{size / 2 - m, m - m / 2}, {size / 2 + m, m}, {size / 2 - m, m + m + m / 2}};
      qvfw::SelectObjectScope fill(dc, inkBrush.Get());
      Polygon(dc, head, 3);
      break;
    }
    default: break;
  }
}

UniqueImageList MakeGlyphs(HWND dialog, HFONT font, int size) {
  UniqueImageList list(ImageList_Create(size, size, ILC_COLOR24 | ILC_MASK, kGlyphCount, 0));
  if (!list) return list;
  qvfw::UniqueDC screen(dialog);
  qvfw::UniqueMemoryDC memory(CreateCompatibleDC(screen.Get()));
  for (int glyph = 0; glyph < kGlyphCount; ++glyph) {
    qvfw::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), size, size));
    if (!bitmap || !memory) return UniqueImageList();
    {
      qvfw::SelectObjectScope select(memory.Get(), bitmap.Get());
      DrawGlyph(memory.Get(), glyph, size, font);
    }
    ImageList_AddMasked(list.Get(), bitmap.Get(), kKeyColor);
  }
  return list;
}

int GlyphSize(HWND dialog, HFONT font) {
  qvfw::UniqueDC dc(dialog);
  qvfw::SelectObjectScope select(dc.Get(), font);
  TEXTMETRICW tm{};
  GetTextMetricsW(dc.Get(), &tm);
  return std::max(12, static_cast<int>(tm.tmHeight) + 2);
}

}  // namespace

bool CPreviewToolbar::Create(HWND dialog, int id, HFONT font, const Commands& commands) {
  INITCOMMONCONTROLSEX init{sizeof(init), ICC_BAR_CLASSES};
  InitCommonControlsEx(&init);
  m_toolbar = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NORESIZE |
                                  CCS_NODIVIDER | CCS_NOPARENTALIGN,
                              0, 0, 0, 0, dialog, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                              qvfw::ModuleInstance(), nullptr);
  if (!m_toolbar) return false;
  SendMessageW(m_toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  const int size = GlyphSize(dialog, font);
  m_images = MakeGlyphs(dialog, font, size);
  SendMessageW(m_toolbar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_images.Get()));
  SendMessageW(m_toolbar, TB_SETBITMAPSIZE, 0, MAKELPARAM(size, size));
  SendMessageW(m_toolbar, TB_SETMAXTEXTROWS, 0, 0);
  SendMessageW(m_toolbar, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);

  // Tips come from the dialog kernel, so a host's override or its German
  // table reaches them; a text it cannot give leaves that button without one.
  const unsigned tipIds[5] = {QVDLGSTR_PREVIEW_ZOOM_NORMAL, QVDLGSTR_PREVIEW_ZOOM_FIT, QVDLGSTR_PREVIEW_SPLIT,
                              QVDLGSTR_PREVIEW_SHOW_EFFECT, QVDLGSTR_PREVIEW_RESET_VIEW};
  INT_PTR stringIds[5];
  for (int i = 0; i < 5; ++i) {
    std::wstring text = CQVBaseDialog::GetDlgString(tipIds[i]);
    stringIds[i] = -1;
    if (text.empty()) continue;
    // TB_ADDSTRING takes a list ended by an empty string.
    text.push_back(L'\0');
    stringIds[i] = SendMessageW(m_toolbar, TB_ADDSTRINGW, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
  TBBUTTON buttons[6] = {};
  const int ids[6] = {commands.zoomNormal, commands.zoomFit,      0,
                      commands.splitView,  commands.effectToggle, commands.resetView};
  const int images[6] = {kGlyphZoomNormal, kGlyphZoomFit, 0, kGlyphSplit, kGlyphEffect, kGlyphReset};
  const int strings[6] = {0, 1, -1, 2, 3, 4};
  for (int i = 0; i < 6; ++i) {
    TBBUTTON& b = buttons[i];
    if (i == 2) {
      b.fsStyle = BTNS_SEP;
      b.iBitmap = 6;
      continue;
    }
    b.iBitmap = images[i];
    b.idCommand = ids[i];
    b.fsState = TBSTATE_ENABLED | (i == 4 ? TBSTATE_CHECKED : 0);
    b.fsStyle = static_cast<BYTE>(BTNS_BUTTON | (i == 3 || i == 4 ? BTNS_CHECK : 0));
    b.iString = stringIds[strings[i]];
  }
  SendMessageW(m_toolbar, TB_ADDBUTTONSW, 6, reinterpret_cast<LPARAM>(buttons));
  SendMessageW(m_toolbar, TB_AUTOSIZE, 0, 0);
  return true;
}

void CPreviewToolbar::SetChecked(int command, bool checked) {
  if (m_toolbar) SendMessageW(m_toolbar, TB_CHECKBUTTON, command, MAKELPARAM(checked ? TRUE : FALSE, 0));
}

int CPreviewToolbar::ButtonCount() const {
  return m_toolbar ? static_cast<int>(SendMessageW(m_toolbar, TB_BUTTONCOUNT, 0, 0)) : 0;
}

SIZE CPreviewToolbar::NeededSize() const {
  SIZE size{0, 0};
  if (!m_toolbar) return size;
  const int count = ButtonCount();
  for (int i = 0; i < count; ++i) {
    RECT r{};
    if (SendMessageW(m_toolbar, TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&r))) {
      size.cx = std::max<LONG>(size.cx, r.right);
      size.cy = std::max<LONG>(size.cy, r.bottom);
    }
  }
  return size;
}
