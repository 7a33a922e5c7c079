/*
 * Driving and pane read-back for the dialog tests.
 */
#include "DialogFixture.h"

#include "TestImages.h"

namespace dlgtest {

qv::test::RunResult Drive(CPreviewTestDialog& dialog, const qv::test::Script& script) {
  qv::test::DialogDriver driver;
  return driver.Run([&dialog] { return static_cast<int>(dialog.DoModal()); }, script);
}

qv::test::Bgra ShownAt(CQVImageViewer& view, const RECT& imageRect, int x, int y) {
  const qv::test::Image image = qv::test::CaptureWindow(view.m_hWnd, qv::test::CaptureArea::Client);
  const RECT placed = view.ContentToClient(imageRect);
  return image.At(placed.left + x, placed.top + y);
}

qv::test::Bgra ColorOf(const BITMAPHANDLE& b, int x, int y) {
  const RGBTRIPLE p = Pixel24(b, x, y);
  qv::test::Bgra color;
  color.b = p.rgbtBlue;
  color.g = p.rgbtGreen;
  color.r = p.rgbtRed;
  color.a = 255;
  return color;
}

}  // namespace dlgtest
