/*
 * Window capture into a 32-bit top-down DIB section. The window is first
 * asked to print itself (PrintWindow, i.e. WM_PRINT), which does not depend
 * on what covers it. Wine's WM_PRINT handling draws only the client area: it
 * leaves out the frame, caption and menu, never draws child windows, and
 * several controls (buttons, trackbars, static text) do not answer it at all.
 * So a print is trusted only when it covered every pixel of the canvas and
 * the window has no visible children; otherwise the window is repainted
 * synchronously and copied from its own window DC, which under Wine reads the
 * window's surface and so is not affected by other windows overlapping it.
 */
#include "qvdriver/Capture.h"

#include <cstring>

#include "qvdriver/WinHandles.h"

namespace qv::test {
namespace {

// A marker colour the canvas starts with; any pixel still carrying it after
// a print was not drawn by the window.
constexpr uint32_t kUnpainted = 0x00FE01FDu;

struct Canvas {
  UniqueMemoryDc dc;
  UniqueGdiObject bitmap;
  uint32_t* bits = nullptr;
  int width = 0;
  int height = 0;

  size_t Count() const { return static_cast<size_t>(width) * height; }
};

bool MakeCanvas(int width, int height, Canvas& canvas) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // top-down rows
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  canvas.dc.Reset(CreateCompatibleDC(nullptr));
  if (!canvas.dc) return false;
  canvas.bitmap.Reset(CreateDIBSection(canvas.dc.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!canvas.bitmap || !bits) return false;
  canvas.bits = static_cast<uint32_t*>(bits);
  canvas.width = width;
  canvas.height = height;
  for (size_t i = 0; i < canvas.Count(); ++i) canvas.bits[i] = kUnpainted;
  return true;
}

bool FullyPainted(const Canvas& canvas) {
  for (size_t i = 0; i < canvas.Count(); ++i)
    if ((canvas.bits[i] & 0x00FFFFFFu) == kUnpainted) return false;
  return true;
}

bool HasVisibleChild(HWND hwnd) {
  for (HWND c = GetWindow(hwnd, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT))
    if (IsWindowVisible(c)) return true;
  return false;
}

void CopyFromWindowDc(HWND hwnd, const Canvas& canvas) {
  RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  WindowDc source(hwnd, true);
  if (source.Get()) BitBlt(canvas.dc.Get(), 0, 0, canvas.width, canvas.height, source.Get(), 0, 0, SRCCOPY);
}

}  // namespace

Image CaptureWindow(HWND hwnd, CaptureArea area) {
  Image image;
  RECT windowRect{};
  if (!hwnd || !IsWindow(hwnd) || !GetWindowRect(hwnd, &windowRect)) return image;
  int width = windowRect.right - windowRect.left;
  int height = windowRect.bottom - windowRect.top;
  Canvas canvas;
  if (width <= 0 || height <= 0 || !MakeCanvas(width, height, canvas)) return image;
  {
    SelectedObject selected(canvas.dc.Get(), canvas.bitmap.Get());
    PrintWindow(hwnd, canvas.dc.Get(), 0);
    GdiFlush();
    if (!FullyPainted(canvas) || HasVisibleChild(hwnd)) CopyFromWindowDc(hwnd, canvas);
    GdiFlush();
  }
  image.width = width;
  image.height = height;
  image.pixels.resize(canvas.Count());
  std::memcpy(static_cast<void*>(image.pixels.data()), canvas.bits, canvas.Count() * sizeof(uint32_t));
  for (Bgra& p : image.pixels) p.a = 255;
  if (area == CaptureArea::WholeWindow) return image;
  POINT clientOrigin{0, 0};
  ClientToScreen(hwnd, &clientOrigin);
  RECT client{};
  GetClientRect(hwnd, &client);
  int x0 = clientOrigin.x - windowRect.left;
  int y0 = clientOrigin.y - windowRect.top;
  return image.Crop(x0, y0, x0 + client.right, y0 + client.bottom);
}

}  // namespace qv::test
