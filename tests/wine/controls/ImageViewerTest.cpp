/*
 * The scroll window and image viewer: zoom ladder and fit, scroll limits,
 * what part of the image the view reports as visible, panning and wheel zoom
 * with their notifications, and the pixels painted for a plain and a split
 * view.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "QVImageViewer.h"
#include "UniqueDC.h"
#include "UniqueHandle.h"
#include "SelectObjectScope.h"
#include "qv/qverror.h"

namespace {

const wchar_t kParentClass[] = L"QvctlViewerTestParent";
constexpr UINT kViewerId = 300;

class NotifyCounter : public qvfw::CWnd {
 public:
  int viewChanges = 0;

 protected:
  BOOL OnNotify(WPARAM, LPARAM lParam, LRESULT* result) override {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (header->idFrom == kViewerId && header->code == CQVScrollWnd::kNotifyViewChanged) ++viewChanges;
    *result = 0;
    return TRUE;
  }
};

// A 24-bit bitmap whose pixel (x, y) has the color `colors[y * width + x]`.
class TestBitmap {
 public:
  TestBitmap(int width, int height, const std::vector<COLORREF>& colors) {
    ok = Q_CreateBitmap(&bitmap, sizeof(bitmap), width, height, 24, QV_ORDER_BGR, nullptr, 0, 0) == QV_SUCCESS;
    if (!ok) return;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        uint8_t* pixel = bitmap.pData + y * bitmap.nBytesPerLine + x * 3;
        const COLORREF color = colors[static_cast<size_t>(y * width + x)];
        pixel[0] = GetBValue(color);
        pixel[1] = GetGValue(color);
        pixel[2] = GetRValue(color);
      }
    }
  }
  ~TestBitmap() {
    if (ok) Q_FreeBitmap(&bitmap, 0);
  }
  TestBitmap(const TestBitmap&) = delete;
  TestBitmap& operator=(const TestBitmap&) = delete;

  BITMAPHANDLE bitmap{};
  bool ok = false;
};

class ImageViewerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(qvfw::CWnd::RegisterFrameworkClass(kParentClass, 0, nullptr, nullptr), nullptr);
    ASSERT_TRUE(parent.CreateEx(0, kParentClass, L"viewer test", WS_POPUP, RECT{0, 0, 400, 300}, nullptr, 0));
    ASSERT_TRUE(viewer.Create(0, RECT{0, 0, 200, 100}, parent.m_hWnd, kViewerId));
  }

  RECT Client() const {
    RECT client{};
    viewer.GetClientRect(&client);
    return client;
  }

  // The viewer's picture as painted for WM_PRINTCLIENT.
  std::vector<COLORREF> Capture(int& width) {
    const RECT client = Client();
    width = client.right;
    qvfw::UniqueDC screen(nullptr);
    qvfw::UniqueMemoryDC memory(::CreateCompatibleDC(screen.Get()));
    qvfw::UniqueBitmap target(::CreateCompatibleBitmap(screen.Get(), client.right, client.bottom));
    std::vector<COLORREF> pixels;
    {
      qvfw::SelectObjectScope select(memory.Get(), target.Get());
      viewer.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.Get()), PRF_CLIENT);
      for (int y = 0; y < client.bottom; ++y)
        for (int x = 0; x < client.right; ++x) pixels.push_back(::GetPixel(memory.Get(), x, y));
    }
    return pixels;
  }

  NotifyCounter parent;
  CQVImageViewer viewer;
};

}  // namespace

TEST_F(ImageViewerTest, ZoomLadderAndFit) {
  viewer.SetContentSize(400, 200);
  viewer.SetZoomToFit(1);
  EXPECT_DOUBLE_EQ(viewer.GetScale(), 0.5);
  EXPECT_EQ(viewer.GetZoom(), 50);
  RECT visible = viewer.VisibleContentRect();
  EXPECT_EQ(visible.left, 0);
  EXPECT_EQ(visible.right, 400);
  EXPECT_EQ(visible.bottom, 200);

  viewer.SetZoom(100);
  EXPECT_EQ(viewer.GetZoomToFit(), 0);
  EXPECT_EQ(viewer.GetZoom(), 100);
  // Leaving fit keeps the image's centre at the view's centre.
  const RECT client = Client();
  const POINT centre = viewer.ClientToContent(POINT{client.right / 2, client.bottom / 2});
  EXPECT_LE(std::abs(centre.x - 200), 1);
  EXPECT_LE(std::abs(centre.y - 100), 1);
  EXPECT_TRUE(viewer.ZoomIn());
  EXPECT_EQ(viewer.GetZoom(), 150);
  EXPECT_TRUE(viewer.ZoomOut());
  EXPECT_TRUE(viewer.ZoomOut());
  EXPECT_EQ(viewer.GetZoom(), 67);

  const int top = CQVScrollWnd::ZoomLevel(CQVScrollWnd::ZoomLevelCount() - 1);
  viewer.SetZoom(top * 10);
  EXPECT_EQ(viewer.GetZoom(), top);
  EXPECT_FALSE(viewer.ZoomIn());
  viewer.SetZoom(0);
  EXPECT_EQ(viewer.GetZoom(), CQVScrollWnd::ZoomLevel(0));
  EXPECT_FALSE(viewer.ZoomOut());
  EXPECT_EQ(parent.viewChanges, 0) << "changes made by the program are not reported";
}

TEST_F(ImageViewerTest, ScrollPositionStaysWithinTheContent) {
  viewer.SetContentSize(400, 200);
  viewer.SetZoom(100);
  const RECT client = Client();
  ASSERT_LT(client.right, 200) << "a vertical scroll bar is shown for content taller than the view";

  viewer.SetScrollPosition(POINT{10000, 10000});
  EXPECT_EQ(viewer.GetScrollPosition().x, 400 - client.right);
  EXPECT_EQ(viewer.GetScrollPosition().y, 200 - client.bottom);
  RECT visible = viewer.VisibleContentRect();
  EXPECT_EQ(visible.right, 400);
  EXPECT_EQ(visible.bottom, 200);
  EXPECT_EQ(visible.right - visible.left, client.right);

  viewer.SetScrollPosition(POINT{-5, -5});
  EXPECT_EQ(viewer.GetScrollPosition().x, 0);
  EXPECT_EQ(viewer.GetScrollPosition().y, 0);

  // Content smaller than the view is centred and shown whole.
  viewer.SetContentSize(50, 20);
  visible = viewer.VisibleContentRect();
  EXPECT_EQ(visible.right - visible.left, 50);
  const RECT shown = viewer.ContentClientRect();
  EXPECT_EQ(shown.left, (Client().right - 50) / 2);
}

TEST_F(ImageViewerTest, DraggingPansAndTellsTheParent) {
  viewer.SetContentSize(800, 600);
  viewer.SetZoom(100);
  viewer.SetScrollPosition(POINT{0, 0});
  viewer.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, 50));
  viewer.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(30, 40));
  viewer.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(30, 40));
  EXPECT_EQ(viewer.GetScrollPosition().x, 20);
  EXPECT_EQ(viewer.GetScrollPosition().y, 10);
  EXPECT_EQ(parent.viewChanges, 1);
  // Moving without the button held pans nothing.
  viewer.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(0, 0));
  EXPECT_EQ(viewer.GetScrollPosition().x, 20);

  viewer.SetPanEnabled(0);
  viewer.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, 50));
  viewer.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(0, 0));
  viewer.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(0, 0));
  EXPECT_EQ(viewer.GetScrollPosition().x, 20);
  EXPECT_EQ(parent.viewChanges, 1);
}

TEST_F(ImageViewerTest, WheelZoomKeepsThePointUnderThePointer) {
  viewer.SetContentSize(800, 600);
  viewer.SetZoom(100);
  viewer.SetScrollPosition(POINT{100, 100});
  const POINT client{40, 30};
  const POINT before = viewer.ClientToContent(client);
  POINT screen = client;
  viewer.ClientToScreen(&screen);
  viewer.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), MAKELPARAM(screen.x, screen.y));
  EXPECT_EQ(viewer.GetZoom(), 150);
  const POINT after = viewer.ClientToContent(client);
  EXPECT_LE(std::abs(after.x - before.x), 1);
  EXPECT_LE(std::abs(after.y - before.y), 1);
  EXPECT_EQ(parent.viewChanges, 1);

  viewer.SetMouseWheelEnabled(0);
  viewer.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), MAKELPARAM(screen.x, screen.y));
  EXPECT_EQ(viewer.GetZoom(), 150);
}

TEST_F(ImageViewerTest, PaintsTheBitmapAndTheSplitView) {
  const COLORREF red = RGB(255, 0, 0), green = RGB(0, 255, 0), blue = RGB(0, 0, 255), white = RGB(255, 255, 255);
  TestBitmap after(4, 2, {red, green, blue, white, white, blue, green, red});
  TestBitmap before(4, 2, std::vector<COLORREF>(8, RGB(0, 0, 0)));
  ASSERT_TRUE(after.ok && before.ok);
  viewer.SetBitmap(&after.bitmap);
  viewer.SetZoomToFit(1);  // 4 x 2 pixels in 200 x 100: blocks of 50
  ASSERT_DOUBLE_EQ(viewer.GetScale(), 50.0);

  int width = 0;
  std::vector<COLORREF> shown = Capture(width);
  auto at = [&](int x, int y) { return shown[static_cast<size_t>(y * width + x)]; };
  EXPECT_EQ(at(25, 25), red);
  EXPECT_EQ(at(75, 25), green);
  EXPECT_EQ(at(125, 25), blue);
  EXPECT_EQ(at(175, 75), red);
  EXPECT_EQ(at(25, 75), white);
  const unsigned paints = viewer.GetPaintCount();
  EXPECT_GE(paints, 1u);

  // Split: the before image left of the divider (the middle by default).
  viewer.SetSplitDisplay(&before.bitmap, RECT{0, 0, 4, 2});
  EXPECT_TRUE(viewer.IsSplit());
  EXPECT_EQ(viewer.GetSplitPos(), 100);
  shown = Capture(width);
  EXPECT_EQ(at(25, 25), RGB(0, 0, 0));
  EXPECT_EQ(at(75, 75), RGB(0, 0, 0));
  EXPECT_EQ(at(125, 25), blue);
  EXPECT_EQ(at(175, 75), red);

  viewer.SetSplitPos(50);
  shown = Capture(width);
  EXPECT_EQ(at(75, 25), green);
  viewer.SetSplitPos(-1);
  EXPECT_EQ(viewer.GetSplitPos(), 100);

  viewer.SetSplitDisplay(nullptr, RECT{});
  shown = Capture(width);
  EXPECT_EQ(at(25, 25), red);
  viewer.SetBitmap(nullptr);
}
