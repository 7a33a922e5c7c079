/*
 * Window objects: how an object is found from its handle and when it stops
 * being found, temporary wrappers of foreign windows, and the typed handlers
 * a message reaches.
 */
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "Wnd.h"

using qvfw::CWnd;

namespace {

const wchar_t kTestClass[] = L"QvfwTestWindow";

class RecordingWnd : public CWnd {
 public:
  std::vector<std::wstring> log;
  bool postNcDestroyCalled = false;
  bool throwOnTimer = false;

 protected:
  void OnSize(UINT type, int cx, int cy) override {
    log.push_back(L"size " + std::to_wstring(cx) + L"x" + std::to_wstring(cy));
  }
  void OnKeyDown(UINT key, UINT repeat, UINT) override {
    log.push_back(L"keydown " + std::to_wstring(key) + L" " + std::to_wstring(repeat));
  }
  void OnChar(UINT ch, UINT, UINT) override { log.push_back(std::wstring(L"char ") + static_cast<wchar_t>(ch)); }
  void OnLButtonDown(UINT flags, POINT point) override {
    log.push_back(L"lbutton " + std::to_wstring(point.x) + L"," + std::to_wstring(point.y) + L" " +
                  std::to_wstring(flags));
  }
  BOOL OnMouseWheel(UINT, short delta, POINT point) override {
    log.push_back(L"wheel " + std::to_wstring(delta) + L" at " + std::to_wstring(point.x) + L"," +
                  std::to_wstring(point.y));
    return TRUE;
  }
  void OnTimer(UINT_PTR id) override {
    if (throwOnTimer) throw std::runtime_error("handler failure");
    log.push_back(L"timer " + std::to_wstring(id));
  }
  BOOL OnCommand(WPARAM wParam, LPARAM) override {
    log.push_back(L"command " + std::to_wstring(LOWORD(wParam)) + L" " + std::to_wstring(HIWORD(wParam)));
    return TRUE;
  }
  void PostNcDestroy() override { postNcDestroyCalled = true; }
};

HWND CreatePlainEdit() {
  return ::CreateWindowExW(0, L"EDIT", L"plain", WS_POPUP, 0, 0, 100, 20, nullptr, nullptr, nullptr, nullptr);
}

RECT Rect(int left, int top, int right, int bottom) { return RECT{left, top, right, bottom}; }

class WindowObjectTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(CWnd::RegisterFrameworkClass(kTestClass, 0, nullptr, reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1)),
              nullptr);
  }
};

}  // namespace

TEST_F(WindowObjectTest, CreatedWindowIsMappedUntilNcDestroy) {
  RecordingWnd wnd;
  ASSERT_TRUE(wnd.CreateEx(0, kTestClass, L"test", WS_OVERLAPPEDWINDOW, Rect(0, 0, 200, 100), nullptr, 0));
  HWND window = wnd.m_hWnd;
  EXPECT_EQ(CWnd::FromHandlePermanent(window), &wnd);
  EXPECT_EQ(CWnd::FromHandle(window), &wnd);
  EXPECT_EQ(::GetWindowLongPtrW(window, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(&wnd));
  EXPECT_TRUE(wnd.IsRouting());

  // A second object cannot take the same window.
  RecordingWnd intruder;
  EXPECT_FALSE(intruder.SubclassWindow(window));
  EXPECT_FALSE(intruder.Attach(window));

  EXPECT_TRUE(wnd.DestroyWindow());
  EXPECT_EQ(wnd.m_hWnd, nullptr);
  EXPECT_FALSE(wnd.IsRouting());
  EXPECT_TRUE(wnd.postNcDestroyCalled);
  EXPECT_FALSE(::IsWindow(window));
  EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
}

TEST_F(WindowObjectTest, ObjectDestroysOnlyWhatItCreated) {
  HWND created = nullptr;
  {
    RecordingWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, kTestClass, L"owned", WS_POPUP, Rect(0, 0, 50, 50), nullptr, 0));
    created = owner.m_hWnd;
  }
  EXPECT_FALSE(::IsWindow(created));

  HWND foreign = CreatePlainEdit();
  {
    RecordingWnd subclasser;
    ASSERT_TRUE(subclasser.SubclassWindow(foreign));
    EXPECT_EQ(CWnd::FromHandlePermanent(foreign), &subclasser);
  }
  // The subclassed window outlives its object, unmapped and working.
  ASSERT_TRUE(::IsWindow(foreign));
  EXPECT_EQ(CWnd::FromHandlePermanent(foreign), nullptr);
  EXPECT_EQ(::GetWindowLongPtrW(foreign, GWLP_USERDATA), 0);
  ::SendMessageW(foreign, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"still alive"));
  wchar_t text[32] = {};
  ::GetWindowTextW(foreign, text, 32);
  EXPECT_STREQ(text, L"still alive");
  ::DestroyWindow(foreign);
}

TEST_F(WindowObjectTest, SubclassRoutesUntilUnsubclassedAndKeepsDefaultBehaviour) {
  HWND edit = CreatePlainEdit();
  RecordingWnd wnd;
  ASSERT_TRUE(wnd.SubclassWindow(edit));
  ::SendMessageW(edit, WM_CHAR, L'x', 1);
  ASSERT_EQ(wnd.log.size(), 1u);
  EXPECT_EQ(wnd.log[0], L"char x");
  // Messages without a handler of ours still reach the edit itself.
  ::SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"abc"));
  EXPECT_EQ(wnd.GetWindowText(), L"abc");

  EXPECT_EQ(wnd.UnsubclassWindow(), edit);
  EXPECT_EQ(wnd.m_hWnd, nullptr);
  ::SendMessageW(edit, WM_CHAR, L'y', 1);
  EXPECT_EQ(wnd.log.size(), 1u);
  ::DestroyWindow(edit);
}

TEST_F(WindowObjectTest, AttachMapsWithoutRouting) {
  HWND edit = CreatePlainEdit();
  ::SetWindowLongPtrW(edit, GWLP_USERDATA, 0x1234);
  RecordingWnd wnd;
  ASSERT_TRUE(wnd.Attach(edit));
  EXPECT_EQ(CWnd::FromHandlePermanent(edit), &wnd);
  EXPECT_FALSE(wnd.IsRouting());
  EXPECT_EQ(::GetWindowLongPtrW(edit, GWLP_USERDATA), 0x1234);  // not ours to overwrite
  ::SendMessageW(edit, WM_CHAR, L'x', 1);
  EXPECT_TRUE(wnd.log.empty());
  EXPECT_EQ(wnd.Detach(), edit);
  EXPECT_EQ(CWnd::FromHandlePermanent(edit), nullptr);
  EXPECT_TRUE(::IsWindow(edit));
  EXPECT_FALSE(wnd.Attach(nullptr));
  EXPECT_FALSE(wnd.Attach(reinterpret_cast<HWND>(static_cast<UINT_PTR>(0xdead0))));
  ::DestroyWindow(edit);
}

TEST_F(WindowObjectTest, FromHandleGivesOneTemporaryPerForeignWindow) {
  CWnd::DeleteTempMap();
  HWND first = CreatePlainEdit();
  HWND second = CreatePlainEdit();
  CWnd* a = CWnd::FromHandle(first);
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->m_hWnd, first);
  EXPECT_EQ(CWnd::FromHandle(first), a);
  EXPECT_EQ(CWnd::FromHandlePermanent(first), nullptr);
  EXPECT_FALSE(a->IsRouting());
  CWnd* b = CWnd::FromHandle(second);
  EXPECT_NE(b, a);
  EXPECT_EQ(CWnd::TempMapSize(), 2u);
  EXPECT_EQ(a->GetWindowText(), L"plain");
  // A wrapper does not own what it wraps.
  EXPECT_FALSE(a->DestroyWindow());
  EXPECT_TRUE(::IsWindow(first));

  CWnd::DeleteTempMap();
  EXPECT_EQ(CWnd::TempMapSize(), 0u);
  EXPECT_TRUE(::IsWindow(first));
  EXPECT_TRUE(::IsWindow(second));

  EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
  ::DestroyWindow(first);
  EXPECT_EQ(CWnd::FromHandle(first), nullptr);
  ::DestroyWindow(second);
  EXPECT_EQ(CWnd::TempMapSize(), 0u);
}

TEST_F(WindowObjectTest, MessagesReachTypedHandlersUnpacked) {
  RecordingWnd wnd;
  ASSERT_TRUE(wnd.CreateEx(0, kTestClass, L"test", WS_POPUP, Rect(0, 0, 200, 100), nullptr, 0));
  wnd.log.clear();
  wnd.SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(321, 123));
  wnd.SendMessage(WM_KEYDOWN, VK_LEFT, 3);
  wnd.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(-5, 17));
  wnd.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-240)), MAKELPARAM(40, 50));
  wnd.SendMessage(WM_TIMER, 7, 0);
  wnd.SendMessage(WM_COMMAND, MAKEWPARAM(4321, 0), 0);
  const std::vector<std::wstring> expected = {L"size 321x123",        L"keydown 37 3", L"lbutton -5,17 1",
                                              L"wheel -240 at 40,50", L"timer 7",      L"command 4321 0"};
  EXPECT_EQ(wnd.log, expected);
}

TEST_F(WindowObjectTest, ExceptionInHandlerStaysInsideTheWindowProcedure) {
  RecordingWnd wnd;
  ASSERT_TRUE(wnd.CreateEx(0, kTestClass, L"test", WS_POPUP, Rect(0, 0, 200, 100), nullptr, 0));
  wnd.throwOnTimer = true;
  wnd.SendMessage(WM_TIMER, 1, 0);
  wnd.throwOnTimer = false;
  wnd.log.clear();
  wnd.SendMessage(WM_TIMER, 2, 0);
  ASSERT_EQ(wnd.log.size(), 1u);
  EXPECT_EQ(wnd.log[0], L"timer 2");
}
