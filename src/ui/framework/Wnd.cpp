/*
 * CWnd's mapping, routing and default handlers. The object is found through
 * a window property named kObjectProperty; windows we hook also carry the
 * pointer in their user data slot. Messages of a subclassed window enter
 * through SubclassProc (comctl32's SetWindowSubclass, which chains safely
 * with other subclassers), those of a framework class through
 * ClassWindowProc. Both end in Dispatch, which records the current message
 * for Default() and catches every exception, since none may cross a window
 * procedure.
 */
#include "Wnd.h"

#include <commctrl.h>

#include <memory>
#include <unordered_map>
#include <vector>

#include "Module.h"
#include "Trace.h"

namespace qvfw {
namespace {

const wchar_t kObjectProperty[] = L"QvfwObject";
constexpr UINT_PTR kSubclassId = 0x51564657;  // one subclass per object

std::unordered_map<HWND, std::unique_ptr<CWnd>>& TempMap() {
  thread_local std::unordered_map<HWND, std::unique_ptr<CWnd>> map;
  return map;
}

}  // namespace

// Makes the message being handled the current one for Default() and restores
// the outer one afterwards, so nested SendMessage calls stay correct.
class CWnd::CurrentMessageScope {
 public:
  CurrentMessageScope(CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam) : m_wnd(wnd), m_saved(wnd.m_current) {
    m_wnd.m_current = CurrentMessage{message, wParam, lParam, true};
  }
  ~CurrentMessageScope() { m_wnd.m_current = m_saved; }

 private:
  CWnd& m_wnd;
  CurrentMessage m_saved;
};

CWnd::~CWnd() {
  if (!m_hWnd) return;
  HWND window = m_hWnd;
  const bool owns = m_ownsWindow;
  if (m_hook != Hook::kNone) {
    Unhook();
  } else {
    Unmap();
  }
  m_hWnd = nullptr;
  if (owns) ::DestroyWindow(window);
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
  if (!window) return nullptr;
  return static_cast<CWnd*>(::GetPropW(window, kObjectProperty));
}

CWnd* CWnd::FromHandle(HWND window) {
  if (!window || !::IsWindow(window)) return nullptr;
  if (CWnd* permanent = FromHandlePermanent(window)) return permanent;
  auto& map = TempMap();
  auto found = map.find(window);
  if (found != map.end()) return found->second.get();
  auto temporary = std::make_unique<CWnd>();
  temporary->m_hWnd = window;
  temporary->m_temporary = true;
  CWnd* result = temporary.get();
  map.emplace(window, std::move(temporary));
  return result;
}

void CWnd::DeleteTempMap() {
  auto& map = TempMap();
  for (auto& entry : map) entry.second->m_hWnd = nullptr;  // never destroy a foreign window
  map.clear();
}

size_t CWnd::TempMapSize() { return TempMap().size(); }

LPCWSTR CWnd::RegisterFrameworkClass(LPCWSTR className, UINT classStyle, HCURSOR cursor, HBRUSH background) {
  WNDCLASSEXW existing{};
  existing.cbSize = sizeof(existing);
  if (::GetClassInfoExW(ModuleInstance(), className, &existing)) return className;
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof(wc);
  wc.style = classStyle;
  wc.lpfnWndProc = &CWnd::ClassWindowProc;
  wc.hInstance = ModuleInstance();
  wc.hCursor = cursor ? cursor : ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  wc.hbrBackground = background;
  wc.lpszClassName = className;
  return ::RegisterClassExW(&wc) ? className : nullptr;
}

bool CWnd::Map(HWND window) {
  if (!window || m_hWnd || FromHandlePermanent(window)) return false;
  if (!::SetPropW(window, kObjectProperty, this)) return false;
  m_hWnd = window;
  return true;
}

void CWnd::Unmap() {
  if (!m_hWnd) return;
  if (::GetPropW(m_hWnd, kObjectProperty) == this) ::RemovePropW(m_hWnd, kObjectProperty);
}

void CWnd::Unhook() {
  if (m_hook == Hook::kSubclass) ::RemoveWindowSubclass(m_hWnd, &CWnd::SubclassProc, kSubclassId);
  if (m_hook != Hook::kNone && ::GetWindowLongPtrW(m_hWnd, m_userDataIndex) == reinterpret_cast<LONG_PTR>(this)) {
    ::SetWindowLongPtrW(m_hWnd, m_userDataIndex, 0);
  }
  Unmap();
  m_hook = Hook::kNone;
}

BOOL CWnd::Attach(HWND window) {
  if (!::IsWindow(window)) return FALSE;
  return Map(window) ? TRUE : FALSE;
}

HWND CWnd::Detach() {
  HWND window = m_hWnd;
  if (!window) return nullptr;
  if (m_hook != Hook::kNone) {
    Unhook();
  } else {
    Unmap();
  }
  m_hWnd = nullptr;
  m_ownsWindow = false;
  return window;
}

bool CWnd::HookSubclass(HWND window) {
  if (!Map(window)) return false;
  if (!::SetWindowSubclass(window, &CWnd::SubclassProc, kSubclassId, reinterpret_cast<DWORD_PTR>(this))) {
    Unmap();
    m_hWnd = nullptr;
    return false;
  }
  m_hook = Hook::kSubclass;
  ::SetWindowLongPtrW(window, m_userDataIndex, reinterpret_cast<LONG_PTR>(this));
  return true;
}

BOOL CWnd::SubclassWindow(HWND window) {
  if (!::IsWindow(window)) return FALSE;
  return HookSubclass(window) ? TRUE : FALSE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
  if (!parent || !parent->m_hWnd) return FALSE;
  HWND child = ::GetDlgItem(parent->m_hWnd, static_cast<int>(id));
  return child ? SubclassWindow(child) : FALSE;
}

HWND CWnd::UnsubclassWindow() { return m_hook == Hook::kSubclass ? Detach() : nullptr; }

BOOL CWnd::CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect, HWND parent,
                    UINT id) {
  if (m_hWnd || !className) return FALSE;
  WNDCLASSEXW info{};
  info.cbSize = sizeof(info);
  const bool ours = ::GetClassInfoExW(ModuleInstance(), className, &info) && info.lpfnWndProc == &CWnd::ClassWindowProc;
  HMENU menuOrId = (style & WS_CHILD) ? reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)) : nullptr;
  HWND window = ::CreateWindowExW(exStyle, className, windowName, style, rect.left, rect.top, rect.right - rect.left,
                                  rect.bottom - rect.top, parent, menuOrId, ModuleInstance(), ours ? this : nullptr);
  if (!window) {
    m_hWnd = nullptr;
    m_hook = Hook::kNone;
    return FALSE;
  }
  // Either the class procedure mapped the window at WM_NCCREATE or it is a
  // system class to subclass now; a window left without its object is of no
  // use to anyone.
  if (ours ? m_hWnd != window : !HookSubclass(window)) {
    ::DestroyWindow(window);
    return FALSE;
  }
  m_ownsWindow = true;
  return TRUE;
}

BOOL CWnd::DestroyWindow() {
  if (!m_hWnd) return FALSE;
  if (m_temporary) return FALSE;  // a wrapper does not own what it wraps
  return ::DestroyWindow(m_hWnd);
}

CWnd* CWnd::GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }

CWnd* CWnd::GetParent() const { return FromHandle(::GetParent(m_hWnd)); }

std::wstring CWnd::GetWindowText() const {
  const int length = ::GetWindowTextLengthW(m_hWnd);
  if (length <= 0) return std::wstring();
  std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1);
  const int copied = ::GetWindowTextW(m_hWnd, buffer.data(), length + 1);
  return std::wstring(buffer.data(), copied > 0 ? static_cast<size_t>(copied) : 0);
}

std::wstring CWnd::GetDlgItemText(int id) const {
  HWND item = ::GetDlgItem(m_hWnd, id);
  if (!item) return std::wstring();
  CWnd* wrapper = FromHandle(item);
  return wrapper ? wrapper->GetWindowText() : std::wstring();
}

void CWnd::MoveWindow(const RECT& rect, BOOL repaint) {
  ::MoveWindow(m_hWnd, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, repaint);
}

void CWnd::ScreenToClient(RECT* rect) const { ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(rect), 2); }

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT swpFlags) {
  const DWORD style = GetStyle();
  const DWORD changed = (style & ~remove) | add;
  if (changed == style) return FALSE;
  ::SetWindowLongPtrW(m_hWnd, GWL_STYLE, changed);
  if (swpFlags)
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | swpFlags);
  return TRUE;
}

BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT swpFlags) {
  const DWORD style = GetExStyle();
  const DWORD changed = (style & ~remove) | add;
  if (changed == style) return FALSE;
  ::SetWindowLongPtrW(m_hWnd, GWL_EXSTYLE, changed);
  if (swpFlags)
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | swpFlags);
  return TRUE;
}

LRESULT CALLBACK CWnd::ClassWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
    auto* wnd = static_cast<CWnd*>(create->lpCreateParams);
    if (wnd && wnd->Map(window)) {
      wnd->m_hook = Hook::kClassProc;
      ::SetWindowLongPtrW(window, wnd->m_userDataIndex, reinterpret_cast<LONG_PTR>(wnd));
    }
  }
  CWnd* wnd = FromHandlePermanent(window);
  if (!wnd || wnd->m_hook != Hook::kClassProc) return ::DefWindowProcW(window, message, wParam, lParam);
  return wnd->Dispatch(message, wParam, lParam);
}

LRESULT CALLBACK CWnd::SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR refData) {
  auto* wnd = reinterpret_cast<CWnd*>(refData);
  if (!wnd || wnd->m_hWnd != window) return ::DefSubclassProc(window, message, wParam, lParam);
  return wnd->Dispatch(message, wParam, lParam);
}

LRESULT CWnd::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCDESTROY) return DispatchNcDestroy(wParam, lParam);
  CurrentMessageScope scope(*this, message, wParam, lParam);
  try {
    return WindowProc(message, wParam, lParam);
  } catch (...) {
    // A handler failed half-way; the window must go on working, so the
    // message gets its default treatment instead.
    qv::TraceCaughtException("a window's message handler failed");
    return Default();
  }
}

// The window is going away: let the previous procedure see the message, then
// unmap the object so nothing can reach it through the dead handle.
LRESULT CWnd::DispatchNcDestroy(WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  {
    CurrentMessageScope scope(*this, WM_NCDESTROY, wParam, lParam);
    result = Default();
  }
  Unhook();
  m_hWnd = nullptr;
  m_ownsWindow = false;
  try {
    PostNcDestroy();
  } catch (...) {
    qv::TraceCaughtException("a window's final clean-up failed");
  }
  return result;
}

LRESULT CWnd::Default() {
  if (!m_current.active || !m_hWnd) return 0;
  switch (m_hook) {
    case Hook::kSubclass: return ::DefSubclassProc(m_hWnd, m_current.message, m_current.wParam, m_current.lParam);
    case Hook::kClassProc: return ::DefWindowProcW(m_hWnd, m_current.message, m_current.wParam, m_current.lParam);
    case Hook::kNone: break;
  }
  return 0;
}

bool CWnd::ReflectToChild(HWND child, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
  if (!child || child == m_hWnd) return false;
  CWnd* wnd = FromHandlePermanent(child);
  if (!wnd || wnd == this) return false;
  *result = 0;
  return wnd->OnChildNotify(message, wParam, lParam, result) != FALSE;
}

BOOL CWnd::OnChildNotify(UINT, WPARAM, LPARAM, LRESULT*) { return FALSE; }

namespace {
POINT PointFromLParam(LPARAM lParam) {
  return POINT{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
}
}  // namespace

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  switch (message) {
    case WM_COMMAND:
      if (ReflectToChild(reinterpret_cast<HWND>(lParam), message, wParam, lParam, &result)) return result;
      return OnCommand(wParam, lParam) ? 0 : Default();
    case WM_NOTIFY: {
      const auto* header = reinterpret_cast<const NMHDR*>(lParam);
      if (header && ReflectToChild(header->hwndFrom, message, wParam, lParam, &result)) return result;
      return OnNotify(wParam, lParam, &result) ? result : Default();
    }
    case WM_HSCROLL:
    case WM_VSCROLL: {
      HWND bar = reinterpret_cast<HWND>(lParam);
      if (ReflectToChild(bar, message, wParam, lParam, &result)) return result;
      if (message == WM_HSCROLL) {
        OnHScroll(LOWORD(wParam), HIWORD(wParam), FromHandle(bar));
      } else {
        OnVScroll(LOWORD(wParam), HIWORD(wParam), FromHandle(bar));
      }
      return 0;
    }
    case WM_DRAWITEM: {
      auto* drawItem = reinterpret_cast<LPDRAWITEMSTRUCT>(lParam);
      if (drawItem && drawItem->CtlType != ODT_MENU &&
          ReflectToChild(drawItem->hwndItem, message, wParam, lParam, &result)) {
        return result;
      }
      OnDrawItem(static_cast<int>(wParam), drawItem);
      return TRUE;
    }
    case WM_CREATE: return OnCreate(reinterpret_cast<LPCREATESTRUCTW>(lParam));
    case WM_DESTROY: OnDestroy(); return 0;
    case WM_PAINT: OnPaint(); return 0;
    case WM_ERASEBKGND: return OnEraseBkgnd(reinterpret_cast<HDC>(wParam));
    case WM_PRINTCLIENT: OnPrintClient(reinterpret_cast<HDC>(wParam), static_cast<UINT>(lParam)); return 0;
    case WM_SIZE:
      OnSize(static_cast<UINT>(wParam), static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
      return 0;
    case WM_TIMER: OnTimer(wParam); return 0;
    case WM_KEYDOWN: OnKeyDown(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam)); return 0;
    case WM_KEYUP: OnKeyUp(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam)); return 0;
    case WM_CHAR: OnChar(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam)); return 0;
    case WM_GETDLGCODE: return OnGetDlgCode(reinterpret_cast<MSG*>(lParam));
    case WM_SETFOCUS: OnSetFocus(reinterpret_cast<HWND>(wParam)); return 0;
    case WM_KILLFOCUS: OnKillFocus(reinterpret_cast<HWND>(wParam)); return 0;
    case WM_LBUTTONDOWN: OnLButtonDown(static_cast<UINT>(wParam), PointFromLParam(lParam)); return 0;
    case WM_LBUTTONUP: OnLButtonUp(static_cast<UINT>(wParam), PointFromLParam(lParam)); return 0;
    case WM_LBUTTONDBLCLK: OnLButtonDblClk(static_cast<UINT>(wParam), PointFromLParam(lParam)); return 0;
    case WM_RBUTTONDOWN: OnRButtonDown(static_cast<UINT>(wParam), PointFromLParam(lParam)); return 0;
    case WM_MOUSEMOVE: OnMouseMove(static_cast<UINT>(wParam), PointFromLParam(lParam)); return 0;
    case WM_MOUSEWHEEL:
      return OnMouseWheel(LOWORD(wParam), static_cast<short>(HIWORD(wParam)), PointFromLParam(lParam));
    case WM_CAPTURECHANGED: OnCaptureChanged(reinterpret_cast<HWND>(lParam)); return 0;
    case WM_SETCURSOR: return OnSetCursor(reinterpret_cast<HWND>(wParam), LOWORD(lParam), HIWORD(lParam));
    case WM_CONTEXTMENU: OnContextMenu(reinterpret_cast<HWND>(wParam), PointFromLParam(lParam)); return 0;
    case WM_HELP: return OnHelpInfo(reinterpret_cast<HELPINFO*>(lParam));
    case WM_PASTE: OnPaste(); return 0;
    default: return Default();
  }
}

int CWnd::OnCreate(LPCREATESTRUCTW) { return static_cast<int>(Default()); }
void CWnd::OnDestroy() { Default(); }
void CWnd::OnPaint() { Default(); }
BOOL CWnd::OnEraseBkgnd(HDC) { return static_cast<BOOL>(Default()); }
void CWnd::OnPrintClient(HDC, UINT) { Default(); }
void CWnd::OnSize(UINT, int, int) { Default(); }
void CWnd::OnTimer(UINT_PTR) { Default(); }
void CWnd::OnKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnChar(UINT, UINT, UINT) { Default(); }
UINT CWnd::OnGetDlgCode(MSG*) { return static_cast<UINT>(Default()); }
void CWnd::OnSetFocus(HWND) { Default(); }
void CWnd::OnKillFocus(HWND) { Default(); }
void CWnd::OnLButtonDown(UINT, POINT) { Default(); }
void CWnd::OnLButtonUp(UINT, POINT) { Default(); }
void CWnd::OnLButtonDblClk(UINT, POINT) { Default(); }
void CWnd::OnRButtonDown(UINT, POINT) { Default(); }
void CWnd::OnMouseMove(UINT, POINT) { Default(); }
BOOL CWnd::OnMouseWheel(UINT, short, POINT) { return static_cast<BOOL>(Default()); }
void CWnd::OnCaptureChanged(HWND) { Default(); }
BOOL CWnd::OnSetCursor(HWND, UINT, UINT) { return static_cast<BOOL>(Default()); }
void CWnd::OnHScroll(UINT, UINT, CWnd*) { Default(); }
void CWnd::OnVScroll(UINT, UINT, CWnd*) { Default(); }
BOOL CWnd::OnCommand(WPARAM, LPARAM) { return FALSE; }
BOOL CWnd::OnNotify(WPARAM, LPARAM, LRESULT*) { return FALSE; }
void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT) { Default(); }
void CWnd::OnContextMenu(HWND, POINT) { Default(); }
BOOL CWnd::OnHelpInfo(HELPINFO*) { return static_cast<BOOL>(Default()); }
void CWnd::OnPaste() { Default(); }

}  // namespace qvfw
