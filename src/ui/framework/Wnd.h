/*
 * CWnd: one C++ object for one window. The object is found from its HWND
 * through a window property (and, for windows we create or subclass, the
 * window's user data slot mirrors it: GWLP_USERDATA, or DWLP_USER for
 * dialogs); both are set when the window is created, subclassed or
 * initialised as a dialog and cleared at WM_NCDESTROY, after which m_hWnd is
 * null again.
 *
 * Messages: every routed window runs through one virtual WindowProc with a
 * switch that unpacks the parameters and calls a typed virtual OnXxx handler;
 * a handler that does not want a message calls Default(), which passes it on
 * to the window's previous procedure. Notifications from a child (WM_COMMAND,
 * WM_NOTIFY, WM_HSCROLL, WM_VSCROLL, WM_DRAWITEM) go first to the child's own
 * object through OnChildNotify; only if it does not take them does the
 * parent's handler see them.
 *
 * FromHandle on a window that has no object returns a temporary, non-owning
 * wrapper from a per-thread table. It routes no messages and stays valid
 * until DeleteTempMap runs, which the framework does when the outermost modal
 * dialog of the thread returns; never keep one beyond the call that got it.
 */
#pragma once

#include <windows.h>

#include <string>

namespace qvfw {

class CWnd {
 public:
  CWnd() = default;
  virtual ~CWnd();
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;

  HWND m_hWnd = nullptr;

  HWND GetSafeHwnd() const { return m_hWnd; }
  operator HWND() const { return m_hWnd; }

  // The window's own object, or a temporary wrapper when it has none; null
  // for a null or dead handle.
  static CWnd* FromHandle(HWND window);
  // The window's own object only (created, subclassed or attached); never a
  // temporary.
  static CWnd* FromHandlePermanent(HWND window);
  // Frees the calling thread's temporary wrappers.
  static void DeleteTempMap();
  static size_t TempMapSize();

  // Registers (once) and returns a window class of this module whose
  // procedure routes to the object given to CreateEx.
  static LPCWSTR RegisterFrameworkClass(LPCWSTR className, UINT classStyle, HCURSOR cursor, HBRUSH background);

  // Maps the window to this object without routing its messages, and leaves
  // its user data alone (the window is not ours). Fails if the window
  // already has an object or this object already has a window.
  BOOL Attach(HWND window);
  HWND Detach();

  // Routes the window's messages through this object (SetWindowSubclass).
  virtual BOOL SubclassWindow(HWND window);
  // Subclasses the child with id `id` of `parent`.
  virtual BOOL SubclassDlgItem(UINT id, CWnd* parent);
  HWND UnsubclassWindow();

  // Creates a window. A class registered by RegisterFrameworkClass routes
  // from WM_NCCREATE on; any other class (a system control) is subclassed
  // right after creation. The object destroys the window it created when it
  // is destroyed itself.
  BOOL CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect, HWND parent,
                UINT id);
  BOOL DestroyWindow();

  // Thin helpers over the USER calls of the same names.
  CWnd* GetDlgItem(int id) const;
  HWND GetDlgItemHandle(int id) const { return ::GetDlgItem(m_hWnd, id); }
  int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
  CWnd* GetParent() const;
  void SetWindowText(const wchar_t* text) { ::SetWindowTextW(m_hWnd, text); }
  std::wstring GetWindowText() const;
  void SetDlgItemText(int id, const wchar_t* text) { ::SetDlgItemTextW(m_hWnd, id, text); }
  std::wstring GetDlgItemText(int id) const;
  void CheckDlgButton(int id, UINT check) { ::CheckDlgButton(m_hWnd, id, check); }
  UINT IsDlgButtonChecked(int id) const { return ::IsDlgButtonChecked(m_hWnd, id); }
  BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
  BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
  BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
  BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
  void GetClientRect(RECT* rect) const { ::GetClientRect(m_hWnd, rect); }
  void GetWindowRect(RECT* rect) const { ::GetWindowRect(m_hWnd, rect); }
  void MoveWindow(const RECT& rect, BOOL repaint = TRUE);
  BOOL SetWindowPos(HWND insertAfter, int x, int y, int cx, int cy, UINT flags) {
    return ::SetWindowPos(m_hWnd, insertAfter, x, y, cx, cy, flags);
  }
  void ScreenToClient(RECT* rect) const;
  void ScreenToClient(POINT* point) const { ::ScreenToClient(m_hWnd, point); }
  void ClientToScreen(POINT* point) const { ::ClientToScreen(m_hWnd, point); }
  void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
  void InvalidateRect(const RECT* rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
  void UpdateWindow() { ::UpdateWindow(m_hWnd); }
  LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(m_hWnd, message, wParam, lParam);
  }
  BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::PostMessageW(m_hWnd, message, wParam, lParam);
  }
  void SetFont(HFONT font, BOOL redraw = TRUE) { SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw); }
  HFONT GetFont() const { return reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)); }
  HWND SetFocus() { return ::SetFocus(m_hWnd); }
  DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_STYLE)); }
  DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE)); }
  BOOL ModifyStyle(DWORD remove, DWORD add, UINT swpFlags = 0);
  BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT swpFlags = 0);
  UINT_PTR SetTimer(UINT_PTR id, UINT elapse) { return ::SetTimer(m_hWnd, id, elapse, nullptr); }
  BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }

  // True while this object routes its window's messages.
  bool IsRouting() const { return m_hook != Hook::kNone; }

 protected:
  // The one dispatch point: unpacks the message and calls the typed handler.
  // Override to see any message; call the base for the rest.
  virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
  // Passes the message being handled to the window's previous procedure.
  LRESULT Default();
  // A notification the parent received from this window, offered here first.
  // Return TRUE (and set *result) to take it; the parent then does not see it.
  virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
  // Called after the window is gone and the object is unmapped.
  virtual void PostNcDestroy() {}
  // The slot that mirrors the object pointer (dialogs use DWLP_USER).
  int m_userDataIndex = GWLP_USERDATA;

  virtual int OnCreate(LPCREATESTRUCTW create);
  virtual void OnDestroy();
  virtual void OnPaint();
  virtual BOOL OnEraseBkgnd(HDC dc);
  virtual void OnPrintClient(HDC dc, UINT flags);
  virtual void OnSize(UINT type, int cx, int cy);
  virtual void OnTimer(UINT_PTR id);
  virtual void OnKeyDown(UINT key, UINT repeat, UINT flags);
  virtual void OnKeyUp(UINT key, UINT repeat, UINT flags);
  virtual void OnChar(UINT ch, UINT repeat, UINT flags);
  virtual UINT OnGetDlgCode(MSG* msg);
  virtual void OnSetFocus(HWND previous);
  virtual void OnKillFocus(HWND next);
  virtual void OnLButtonDown(UINT flags, POINT point);
  virtual void OnLButtonUp(UINT flags, POINT point);
  virtual void OnLButtonDblClk(UINT flags, POINT point);
  virtual void OnRButtonDown(UINT flags, POINT point);
  virtual void OnMouseMove(UINT flags, POINT point);
  // `point` is in screen coordinates, as the message carries it.
  virtual BOOL OnMouseWheel(UINT flags, short delta, POINT point);
  virtual void OnCaptureChanged(HWND newCapture);
  virtual BOOL OnSetCursor(HWND window, UINT hitTest, UINT message);
  virtual void OnHScroll(UINT code, UINT position, CWnd* scrollBar);
  virtual void OnVScroll(UINT code, UINT position, CWnd* scrollBar);
  // Return TRUE when the command was handled.
  virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
  virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
  virtual void OnDrawItem(int id, LPDRAWITEMSTRUCT drawItem);
  virtual void OnContextMenu(HWND window, POINT point);
  virtual BOOL OnHelpInfo(HELPINFO* info);
  virtual void OnPaste();

 private:
  enum class Hook { kNone, kClassProc, kSubclass };
  struct CurrentMessage {
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    bool active = false;
  };
  class CurrentMessageScope;
  friend class CDialog;

  static LRESULT CALLBACK ClassWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR refData);

  LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT DispatchNcDestroy(WPARAM wParam, LPARAM lParam);
  bool ReflectToChild(HWND child, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
  bool Map(HWND window);
  void Unmap();
  void Unhook();
  bool HookSubclass(HWND window);

  Hook m_hook = Hook::kNone;
  bool m_ownsWindow = false;
  bool m_temporary = false;
  CurrentMessage m_current;
};

}  // namespace qvfw
