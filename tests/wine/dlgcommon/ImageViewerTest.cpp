/*
 * The image viewer on its own, in a plain parent window: fit and fixed zoom
 * geometry, the zoom ladder, clamped scrolling, keyboard scrolling with its
 * notification (and none for programmatic changes), and what it paints.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include "QVImageViewer.h"
#include "TestImages.h"
#include "qvdriver/Capture.h"

namespace {

int g_viewChanges = 0;

LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == CQVScrollWnd::kNotifyViewChanged)
    ++g_viewChanges;
  return DefWindowProcW(window, message, wParam, lParam);
}

class ViewerHost {
 public:
  ViewerHost() {
    WNDCLASSW cls{};
    cls.lpfnWndProc = ParentProc;
    cls.hInstance = GetModuleHandleW(nullptr);
    cls.lpszClassName = L"QvViewerTestHost";
    RegisterClassW(&cls);
    m_parent = CreateWindowExW(0, cls.lpszClassName, L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 400, 300,
                               nullptr, nullptr, cls.hInstance, nullptr);
  }
  ~ViewerHost() { DestroyWindow(m_parent); }
  HWND Parent() const { return m_parent; }

 private:
  HWND m_parent = nullptr;
};

TEST(ImageViewer, FitAndFixedZoomGeometryScrollingAndNotifications) {
  ViewerHost host;
  CQVImageViewer viewer;
  ASSERT_TRUE(viewer.Create(WS_VISIBLE, RECT{0, 0, 200, 150}, host.Parent(), 77));
  dlgtest::TestBitmap image(400, 300, 24, QV_ORDER_BGR);
  image.FillPattern(9);
  viewer.SetBitmap(image.Get());
  g_viewChanges = 0;

  EXPECT_EQ(viewer.GetZoomToFit(), 1);
  EXPECT_EQ(viewer.GetZoom(), 50);
  RECT placed = viewer.ContentClientRect();
  EXPECT_EQ(placed.right - placed.left, 200);
  EXPECT_EQ(placed.bottom - placed.top, 150);
  RECT all = viewer.VisibleContentRect();
  const RECT full{0, 0, 400, 300};
  EXPECT_TRUE(EqualRect(&all, &full));

  viewer.SetZoom(100);
  RECT client{};
  GetClientRect(viewer.m_hWnd, &client);
  EXPECT_LT(client.right, 200) << "a vertical scroll bar took room";
  const POINT centred = viewer.GetScrollPosition();
  EXPECT_NEAR(centred.x, (400 - client.right) / 2, 1) << "zooming keeps the middle of the image in the middle";
  EXPECT_NEAR(centred.y, (300 - client.bottom) / 2, 1);
  const POINT mapped = viewer.ClientToContent(POINT{10, 20});
  EXPECT_EQ(mapped.x, centred.x + 10);
  EXPECT_EQ(mapped.y, centred.y + 20);

  viewer.SetScrollPosition(POINT{10000, -5});
  EXPECT_EQ(viewer.GetScrollPosition().x, 400 - client.right) << "scrolling stops at the edges";
  EXPECT_EQ(viewer.GetScrollPosition().y, 0);
  EXPECT_EQ(g_viewChanges, 0) << "programmatic changes are not reported";

  SendMessageW(viewer.m_hWnd, WM_KEYDOWN, VK_LEFT, 0);
  EXPECT_EQ(viewer.GetScrollPosition().x, 400 - client.right - 16);
  EXPECT_EQ(g_viewChanges, 1);
  SendMessageW(viewer.m_hWnd, WM_HSCROLL, SB_LEFT, 0);
  EXPECT_EQ(viewer.GetScrollPosition().x, 0);
  EXPECT_EQ(g_viewChanges, 2);

  // The ladder, up and down, and its ends.
  EXPECT_TRUE(viewer.ZoomIn());
  EXPECT_EQ(viewer.GetZoom(), 150);
  viewer.SetZoom(CQVScrollWnd::ZoomLevel(CQVScrollWnd::ZoomLevelCount() - 1));
  EXPECT_FALSE(viewer.ZoomIn());
  viewer.SetZoom(1);
  EXPECT_EQ(viewer.GetZoom(), CQVScrollWnd::ZoomLevel(0)) << "zoom is kept within the ladder";
  EXPECT_FALSE(viewer.ZoomOut());
}

TEST(ImageViewer, PaintsTheBitmapWhereTheGeometrySaysAndTheNoteOverIt) {
  ViewerHost host;
  CQVImageViewer viewer;
  ASSERT_TRUE(viewer.Create(WS_VISIBLE, RECT{0, 0, 240, 180}, host.Parent(), 78));
  dlgtest::TestBitmap image(60, 40, 24, QV_ORDER_BGR);
  image.FillPattern(4);
  viewer.SetBitmap(image.Get());
  viewer.SetZoom(200);
  const RECT placed = viewer.ContentToClient(RECT{0, 0, 60, 40});
  EXPECT_EQ(placed.right - placed.left, 120);
  const qv::test::Image shot = qv::test::CaptureWindow(viewer.m_hWnd, qv::test::CaptureArea::Client);
  ASSERT_FALSE(shot.Empty());
  for (POINT p : {POINT{0, 0}, POINT{31, 17}, POINT{59, 39}}) {
    const RGBTRIPLE want = dlgtest::Pixel24(image.Ref(), p.x, p.y);
    const qv::test::Bgra got = shot.At(placed.left + 2 * p.x + 1, placed.top + 2 * p.y + 1);
    EXPECT_EQ(got.r, want.rgbtRed) << p.x << "," << p.y;
    EXPECT_EQ(got.g, want.rgbtGreen);
    EXPECT_EQ(got.b, want.rgbtBlue);
  }
  const qv::test::Bgra outside = shot.At(2, 2);
  const COLORREF face = GetSysColor(COLOR_BTNFACE);
  EXPECT_EQ(outside.r, GetRValue(face)) << "around a small image the background shows";
  const unsigned paints = viewer.GetPaintCount();
  viewer.SetNote(L"Out of date");
  const qv::test::Image noted = qv::test::CaptureWindow(viewer.m_hWnd, qv::test::CaptureArea::Client);
  EXPECT_GT(viewer.GetPaintCount(), paints);
  const COLORREF info = GetSysColor(COLOR_INFOBK);
  EXPECT_GT(noted.Crop(0, noted.height - 20, noted.width, noted.height)
                .ShareNear(qv::test::Bgra{GetBValue(info), GetGValue(info), GetRValue(info), 255}, 8),
            0.5)
      << "the note band is drawn along the bottom";
}

}  // namespace
