/*
 * Placement of real windows: a requested point is honoured where the window
 * fits, moved as little as needed where it does not, and a null point centres
 * the window on its owner.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include "qv/qvdlgkrn.h"

namespace {

// A plain top-level window of a given size, destroyed with the object.
class TestWindow {
 public:
  TestWindow(int width, int height, HWND owner = nullptr, int x = 0, int y = 0) {
    static const wchar_t* kClass = RegisterClassOnce();
    m_hWnd = CreateWindowExW(0, kClass, L"placement", WS_POPUP | (owner ? 0 : WS_VISIBLE), x, y, width, height, owner,
                             nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  ~TestWindow() {
    if (m_hWnd) DestroyWindow(m_hWnd);
  }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  HWND Get() const { return m_hWnd; }
  RECT Frame() const {
    RECT r{};
    GetWindowRect(m_hWnd, &r);
    return r;
  }

 private:
  static const wchar_t* RegisterClassOnce() {
    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"QvPlacementTestWindow";
    RegisterClassW(&wc);
    return wc.lpszClassName;
  }

  HWND m_hWnd = nullptr;
};

RECT WorkAreaNear(POINT point) {
  MONITORINFO info{};
  info.cbSize = sizeof(info);
  GetMonitorInfoW(MonitorFromPoint(point, MONITOR_DEFAULTTONEAREST), &info);
  return info.rcWork;
}

bool Inside(const RECT& inner, const RECT& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

}  // namespace

TEST(WindowPlacement, KeepsTheWindowWholeOnTheMonitor) {
  TestWindow window(300, 200);
  ASSERT_NE(window.Get(), nullptr);
  const RECT work = WorkAreaNear(POINT{0, 0});

  // A point far outside the desktop in each direction.
  const POINT faraway[] = {{-100000, -100000}, {100000, 100000}, {100000, -100000}, {-100000, 100000}};
  for (const POINT& p : faraway) {
    ASSERT_EQ(Q_DlgPlaceWindow(window.Get(), &p), QV_SUCCESS);
    const RECT frame = window.Frame();
    EXPECT_EQ(frame.right - frame.left, 300) << "placement never resizes";
    EXPECT_TRUE(Inside(frame, WorkAreaNear(p))) << p.x << "," << p.y << " -> " << frame.left << "," << frame.top;
  }

  // A point where the window fits is taken as the top-left corner.
  const POINT fits{work.left + 10, work.top + 20};
  ASSERT_EQ(Q_DlgPlaceWindow(window.Get(), &fits), QV_SUCCESS);
  EXPECT_EQ(window.Frame().left, fits.x);
  EXPECT_EQ(window.Frame().top, fits.y);

  // Overhanging the right and bottom edges: moved back just enough.
  const POINT overhang{work.right - 100, work.bottom - 50};
  ASSERT_EQ(Q_DlgPlaceWindow(window.Get(), &overhang), QV_SUCCESS);
  EXPECT_EQ(window.Frame().right, work.right);
  EXPECT_EQ(window.Frame().bottom, work.bottom);
}

TEST(WindowPlacement, NullPointCentresOnTheOwner) {
  TestWindow owner(400, 300, nullptr, 100, 120);
  TestWindow dialog(200, 100, owner.Get());
  ASSERT_NE(dialog.Get(), nullptr);
  ASSERT_EQ(Q_DlgPlaceWindow(dialog.Get(), nullptr), QV_SUCCESS);
  const RECT o = owner.Frame();
  const RECT d = dialog.Frame();
  EXPECT_NEAR((d.left + d.right) / 2, (o.left + o.right) / 2, 1);
  EXPECT_NEAR((d.top + d.bottom) / 2, (o.top + o.bottom) / 2, 1);

  // An owner partly off the desktop still yields a dialog wholly on it.
  SetWindowPos(owner.Get(), nullptr, -350, -250, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  ASSERT_EQ(Q_DlgPlaceWindow(dialog.Get(), nullptr), QV_SUCCESS);
  EXPECT_TRUE(Inside(dialog.Frame(), WorkAreaNear(POINT{0, 0})));

  // Without an owner the window is centred on its monitor's work area.
  TestWindow lonely(200, 100);
  ASSERT_EQ(Q_DlgPlaceWindow(lonely.Get(), nullptr), QV_SUCCESS);
  const RECT work = WorkAreaNear(POINT{lonely.Frame().left, lonely.Frame().top});
  EXPECT_NEAR((lonely.Frame().left + lonely.Frame().right) / 2, (work.left + work.right) / 2, 1);
}

TEST(WindowPlacement, RefusesBadWindowsAndPoints) {
  const POINT p{10, 10};
  EXPECT_EQ(Q_DlgPlaceWindow(nullptr, &p), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgPlaceWindow(reinterpret_cast<HWND>(static_cast<INT_PTR>(0x1234)), &p), QV_ERROR_INVALID_PARAMETER);
  TestWindow window(100, 100);
  const RECT before = window.Frame();
  EXPECT_EQ(Q_DlgPlaceWindow(window.Get(), reinterpret_cast<const POINT*>(0x10)), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(window.Frame().left, before.left);
  EXPECT_EQ(window.Frame().top, before.top);
}
