/*
 * DialogView's actions and read-backs. Each action sends the messages a real
 * control or a real user would, to the window that would receive them (the
 * control's parent for notifications), so the dialog's own handlers run
 * exactly as in use.
 */
#include <windows.h>
#include <commctrl.h>

#include <string>

#include "qvdriver/Capture.h"
#include "qvdriver/DialogView.h"
#include "qvdriver/WindowText.h"

namespace qv::test {
namespace {

struct ChildSearch {
  int id;
  HWND found;
};

BOOL CALLBACK MatchChildId(HWND hwnd, LPARAM param) {
  auto* search = reinterpret_cast<ChildSearch*>(param);
  if (GetDlgCtrlID(hwnd) != search->id) return TRUE;
  search->found = hwnd;
  return FALSE;
}

bool HasClass(HWND hwnd, const wchar_t* name) { return _wcsicmp(WindowClass(hwnd).c_str(), name) == 0; }

LPARAM PointParam(POINT pt) {
  return MAKELPARAM(static_cast<WORD>(static_cast<SHORT>(pt.x)), static_cast<WORD>(static_cast<SHORT>(pt.y)));
}

}  // namespace

HWND DialogView::Control(int id) const {
  if (!IsWindow(m_dialog)) return nullptr;
  if (HWND direct = GetDlgItem(m_dialog, id)) return direct;
  ChildSearch search{id, nullptr};
  EnumChildWindows(m_dialog, MatchChildId, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

Outcome DialogView::Missing(int id) const {
  if (!IsWindow(m_dialog)) return Outcome::Fail("the dialog window is gone (control " + std::to_string(id) + ")");
  return Outcome::Fail("no control " + std::to_string(id) + " in '" + Narrow(Caption()) + "'");
}

Outcome DialogView::SetTrackbar(int id, int pos) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  if (!HasClass(ctl, TRACKBAR_CLASSW))
    return Outcome::Fail("control " + std::to_string(id) + " is not a trackbar but a " + Narrow(WindowClass(ctl)));
  SendMessageW(ctl, TBM_SETPOS, TRUE, pos);
  // The position after clamping to the range, as the thumb would report it.
  int actual = static_cast<int>(SendMessageW(ctl, TBM_GETPOS, 0, 0));
  UINT message = (GetWindowLongPtrW(ctl, GWL_STYLE) & TBS_VERT) ? WM_VSCROLL : WM_HSCROLL;
  HWND parent = GetParent(ctl);
  auto lp = reinterpret_cast<LPARAM>(ctl);
  SendMessageW(parent, message, MAKEWPARAM(TB_THUMBTRACK, actual), lp);
  SendMessageW(parent, message, MAKEWPARAM(TB_THUMBPOSITION, actual), lp);
  SendMessageW(parent, message, MAKEWPARAM(TB_ENDTRACK, 0), lp);
  return Outcome::Ok();
}

Outcome DialogView::SetEditText(int id, const std::wstring& text) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  if (!SendMessageW(ctl, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())))
    return Outcome::Fail("control " + std::to_string(id) + " refused the text '" + Narrow(text) + "'");
  return Outcome::Ok();
}

Outcome DialogView::CommitEdit(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  SetFocus(ctl);
  HWND next = GetNextDlgTabItem(m_dialog, ctl, FALSE);
  SetFocus(next && next != ctl ? next : m_dialog);
  return Outcome::Ok();
}

Outcome DialogView::Click(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  if (!IsWindowEnabled(ctl)) return Outcome::Fail("button " + std::to_string(id) + " is disabled");
  SendMessageW(ctl, BM_CLICK, 0, 0);
  return Outcome::Ok();
}

Outcome DialogView::PostKey(int id, UINT virtualKey) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  SetFocus(ctl);
  UINT scan = MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC);
  LPARAM down = 1 | (static_cast<LPARAM>(scan) << 16);
  PostMessageW(ctl, WM_KEYDOWN, virtualKey, down);
  PostMessageW(ctl, WM_KEYUP, virtualKey, down | (1LL << 30) | (1LL << 31));
  return Outcome::Ok();
}

Outcome DialogView::Mouse(int id, UINT message, WPARAM keys, POINT pt) const {
  HWND target = id == 0 ? m_dialog : Control(id);
  if (!target || !IsWindow(target)) return Missing(id);
  SendMessageW(target, message, keys, PointParam(pt));
  return Outcome::Ok();
}

Outcome DialogView::MouseDown(int id, POINT pt) const { return Mouse(id, WM_LBUTTONDOWN, MK_LBUTTON, pt); }

Outcome DialogView::MouseMove(int id, POINT pt, bool leftHeld) const {
  return Mouse(id, WM_MOUSEMOVE, leftHeld ? MK_LBUTTON : 0, pt);
}

Outcome DialogView::MouseUp(int id, POINT pt) const { return Mouse(id, WM_LBUTTONUP, 0, pt); }

Outcome DialogView::MouseWheel(int id, POINT pt, int delta) const {
  HWND target = id == 0 ? m_dialog : Control(id);
  if (!target) return Missing(id);
  // The wheel message carries screen coordinates, unlike the button messages.
  POINT screen = pt;
  ClientToScreen(target, &screen);
  SendMessageW(target, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(static_cast<SHORT>(delta))), PointParam(screen));
  return Outcome::Ok();
}

Outcome DialogView::Command(int id) const {
  if (!IsWindow(m_dialog)) return Missing(id);
  HWND ctl = Control(id);
  SendMessageW(m_dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(ctl));
  return Outcome::Ok();
}

std::wstring DialogView::Caption() const { return WindowCaption(m_dialog); }

int DialogView::FocusedId() const {
  HWND focus = GetFocus();
  return focus && IsChild(m_dialog, focus) ? GetDlgCtrlID(focus) : 0;
}

std::optional<std::wstring> DialogView::Text(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return WindowCaption(ctl);
}

std::optional<bool> DialogView::Visible(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return IsWindowVisible(ctl) != FALSE;
}

std::optional<int> DialogView::TrackbarPos(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return static_cast<int>(SendMessageW(ctl, TBM_GETPOS, 0, 0));
}

std::optional<std::pair<int, int>> DialogView::TrackbarRange(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return std::make_pair(static_cast<int>(SendMessageW(ctl, TBM_GETRANGEMIN, 0, 0)),
                        static_cast<int>(SendMessageW(ctl, TBM_GETRANGEMAX, 0, 0)));
}

std::optional<int> DialogView::ToolbarButtonCount(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return static_cast<int>(SendMessageW(ctl, TB_BUTTONCOUNT, 0, 0));
}

std::optional<Image> DialogView::Pixels(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return CaptureWindow(ctl);
}

Outcome DialogView::SelectComboIndex(int id, int index) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  if (SendMessageW(ctl, CB_SETCURSEL, index, 0) == CB_ERR)
    return Outcome::Fail("combo " + std::to_string(id) + " has no item " + std::to_string(index));
  SendMessageW(GetParent(ctl), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(ctl), CBN_SELCHANGE), reinterpret_cast<LPARAM>(ctl));
  return Outcome::Ok();
}

Outcome DialogView::SelectComboText(int id, const std::wstring& text) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  auto index = SendMessageW(ctl, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
  if (index == CB_ERR) return Outcome::Fail("combo " + std::to_string(id) + " has no item '" + Narrow(text) + "'");
  return SelectComboIndex(id, static_cast<int>(index));
}

Outcome DialogView::SetCheck(int id, bool checked) const {
  // A three-state box may need up to two clicks to get from indeterminate to
  // the wanted state; a box that never gets there is reported.
  for (int clicks = 0; clicks < 3; ++clicks) {
    auto state = CheckState(id);
    if (!state) return Missing(id);
    if ((*state == BST_CHECKED) == checked && *state != BST_INDETERMINATE) return Outcome::Ok();
    Outcome clicked = Click(id);
    if (!clicked) return clicked;
  }
  return Outcome::Fail("check box " + std::to_string(id) + " does not reach the " +
                       (checked ? "checked" : "unchecked") + " state by clicks");
}

Outcome DialogView::PressKey(int id, UINT virtualKey) const {
  HWND ctl = Control(id);
  if (!ctl) return Missing(id);
  SetFocus(ctl);
  UINT scan = MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC);
  LPARAM down = 1 | (static_cast<LPARAM>(scan) << 16);
  LPARAM up = down | (1LL << 30) | (1LL << 31);
  SendMessageW(ctl, WM_KEYDOWN, virtualKey, down);
  BYTE keys[256] = {};
  WCHAR chars[4] = {};
  if (ToUnicode(virtualKey, scan, keys, chars, 4, 0) == 1) SendMessageW(ctl, WM_CHAR, chars[0], down);
  SendMessageW(ctl, WM_KEYUP, virtualKey, up);
  return Outcome::Ok();
}

std::optional<int> DialogView::CheckState(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return static_cast<int>(SendMessageW(ctl, BM_GETCHECK, 0, 0));
}

std::optional<bool> DialogView::Enabled(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return IsWindowEnabled(ctl) != FALSE;
}

std::optional<int> DialogView::ComboSelection(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return static_cast<int>(SendMessageW(ctl, CB_GETCURSEL, 0, 0));
}

std::optional<int> DialogView::ComboCount(int id) const {
  HWND ctl = Control(id);
  if (!ctl) return std::nullopt;
  return static_cast<int>(SendMessageW(ctl, CB_GETCOUNT, 0, 0));
}

}  // namespace qv::test
