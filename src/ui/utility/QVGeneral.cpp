/*
 * CQVGeneral::AutoFitControls: a translated label is usually longer than the
 * English one the template was laid out for. Each label, push button, check
 * box and radio button is measured in the dialog's own font; one that is too
 * narrow grows by what it lacks, every control to its right on the same row
 * moves along, and the dialog grows last if a control would leave it.
 * Controls are handled from left to right so that growth adds up along a row.
 */
#include "QVGeneral.h"

#include <algorithm>
#include <string>
#include <vector>

#include "SelectObjectScope.h"
#include "UniqueDC.h"
#include "qv/qverror.h"

namespace {

enum class TextKind { kNone, kLabel, kPushButton, kCheck };

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

std::wstring TextOf(HWND window) {
  const int length = GetWindowTextLengthW(window);
  std::wstring text(static_cast<size_t>(std::max(length, 0)) + 1, L'\0');
  const int copied = GetWindowTextW(window, text.data(), length + 1);
  text.resize(static_cast<size_t>(std::max(copied, 0)));
  return text;
}

TextKind KindOf(HWND control) {
  const std::wstring cls = ClassOf(control);
  const LONG style = GetWindowLongW(control, GWL_STYLE);
  if (_wcsicmp(cls.c_str(), L"Static") == 0) {
    const LONG type = style & SS_TYPEMASK;
    const bool text = type == SS_LEFT || type == SS_CENTER || type == SS_RIGHT || type == SS_LEFTNOWORDWRAP ||
                      type == SS_SIMPLE;
    return text ? TextKind::kLabel : TextKind::kNone;
  }
  if (_wcsicmp(cls.c_str(), L"Button") == 0) {
    const LONG type = style & BS_TYPEMASK;
    if (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON) return TextKind::kPushButton;
    if (type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE || type == BS_AUTO3STATE ||
        type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON)
      return (style & BS_MULTILINE) ? TextKind::kNone : TextKind::kCheck;
  }
  return TextKind::kNone;
}

// Width the text needs with the room the control draws around it.
int NeededWidth(HWND control, HFONT font, TextKind kind) {
  const std::wstring text = TextOf(control);
  if (text.empty()) return 0;
  qvfw::UniqueDC dc(control);
  if (!dc) return 0;
  qvfw::SelectObjectScope selectFont(dc.Get(), font);
  RECT box{0, 0, 0, 0};
  const UINT noPrefix = (kind == TextKind::kLabel && (GetWindowLongW(control, GWL_STYLE) & SS_NOPREFIX)) ? DT_NOPREFIX
                                                                                                         : 0;
  DrawTextW(dc.Get(), text.c_str(), static_cast<int>(text.size()), &box, DT_CALCRECT | DT_SINGLELINE | noPrefix);
  int width = box.right - box.left;
  TEXTMETRICW tm{};
  GetTextMetricsW(dc.Get(), &tm);
  switch (kind) {
    case TextKind::kPushButton: width += 2 * tm.tmAveCharWidth + 2 * GetSystemMetrics(SM_CXEDGE); break;
    case TextKind::kCheck: width += GetSystemMetrics(SM_CXMENUCHECK) + tm.tmAveCharWidth; break;
    default: break;
  }
  return width;
}

// A static whose height holds two lines or more wraps its text: it is left
// to wrap instead of being widened.
bool IsWrappingLabel(HWND control, HFONT font, TextKind kind) {
  if (kind != TextKind::kLabel) return false;
  if ((GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) == SS_LEFTNOWORDWRAP) return false;
  qvfw::UniqueDC dc(control);
  if (!dc) return false;
  qvfw::SelectObjectScope selectFont(dc.Get(), font);
  TEXTMETRICW tm{};
  GetTextMetricsW(dc.Get(), &tm);
  RECT client{};
  GetClientRect(control, &client);
  return client.bottom - client.top >= 2 * tm.tmHeight;
}

RECT ChildRect(HWND dialog, HWND child) {
  RECT r{};
  GetWindowRect(child, &r);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

bool SameRow(const RECT& a, const RECT& b) { return a.top < b.bottom && b.top < a.bottom; }

}  // namespace

int CQVGeneral::MissingTextWidth(HWND control, HFONT font) {
  if (!IsWindow(control)) return 0;
  const TextKind kind = KindOf(control);
  if (kind == TextKind::kNone || IsWrappingLabel(control, font, kind)) return 0;
  RECT client{};
  GetClientRect(control, &client);
  return std::max(0, NeededWidth(control, font, kind) - static_cast<int>(client.right - client.left));
}

int CQVGeneral::AutoFitControls(HWND dialog, POINT*, int*, int, int fitTexts, POINT*, int, int) {
  if (!IsWindow(dialog)) return QV_ERROR_INVALID_PARAMETER;
  if (!fitTexts) return 0;
  const HFONT font = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));

  std::vector<HWND> children;
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    children.push_back(child);
  std::stable_sort(children.begin(), children.end(),
                   [dialog](HWND a, HWND b) { return ChildRect(dialog, a).left < ChildRect(dialog, b).left; });

  int widened = 0;
  for (HWND control : children) {
    const int missing = MissingTextWidth(control, font);
    if (missing <= 0) continue;
    const RECT grown = ChildRect(dialog, control);
    SetWindowPos(control, nullptr, 0, 0, grown.right - grown.left + missing, grown.bottom - grown.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (HWND other : children) {
      if (other == control) continue;
      const RECT r = ChildRect(dialog, other);
      if (r.left >= grown.right && SameRow(r, grown))
        SetWindowPos(other, nullptr, r.left + missing, r.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    ++widened;
  }
  if (widened == 0) return 0;

  RECT client{};
  GetClientRect(dialog, &client);
  int rightmost = 0;
  for (HWND control : children) rightmost = std::max<int>(rightmost, ChildRect(dialog, control).right);
  const int margin = 6;
  const int extra = rightmost + margin - client.right;
  if (extra > 0) {
    RECT frame{};
    GetWindowRect(dialog, &frame);
    SetWindowPos(dialog, nullptr, 0, 0, frame.right - frame.left + extra, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  return widened;
}
