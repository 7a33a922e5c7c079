/*
 * The swatch window procedure. One Paint function serves WM_PAINT and
 * WM_PRINTCLIENT, so a capture through WM_PRINT shows what the screen shows.
 */
#include "Swatch.h"

#include <windowsx.h>

namespace qv::sample {
namespace {

void Paint(HWND hwnd, HDC dc) {
  RECT rect{};
  GetClientRect(hwnd, &rect);
  HBRUSH brush = CreateSolidBrush(static_cast<COLORREF>(GetWindowLongPtrW(hwnd, GWLP_USERDATA)));
  FillRect(dc, &rect, brush);
  DeleteObject(brush);
}

int LevelAt(HWND hwnd, int x) {
  RECT rect{};
  GetClientRect(hwnd, &rect);
  if (rect.right <= 1) return 0;
  int clamped = x < 0 ? 0 : (x >= rect.right ? rect.right - 1 : x);
  return (clamped * 100 + (rect.right - 1) / 2) / (rect.right - 1);
}

LRESULT CALLBACK SwatchProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = BeginPaint(hwnd, &ps);
      Paint(hwnd, dc);
      EndPaint(hwnd, &ps);
      return 0;
    }
    case WM_PRINTCLIENT:
      Paint(hwnd, reinterpret_cast<HDC>(wParam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
      SendMessageW(GetParent(hwnd), kSwatchPick, LevelAt(hwnd, GET_X_LPARAM(lParam)), 0);
      return 0;
    case WM_MOUSEWHEEL:
      // One notch (120) moves the level by 5.
      SendMessageW(GetParent(hwnd), kSwatchPick, static_cast<WPARAM>(-1),
                   GET_WHEEL_DELTA_WPARAM(wParam) * 5 / WHEEL_DELTA);
      return 0;
    default:
      return DefWindowProcW(hwnd, message, wParam, lParam);
  }
}

}  // namespace

bool RegisterSwatchClass(HINSTANCE instance) {
  WNDCLASSEXW wc{};
  if (GetClassInfoExW(instance, kSwatchClass, &wc)) return true;
  wc.cbSize = sizeof wc;
  wc.lpfnWndProc = SwatchProc;
  wc.hInstance = instance;
  wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_CROSS));
  wc.lpszClassName = kSwatchClass;
  return RegisterClassExW(&wc) != 0;
}

void SetSwatchColor(HWND swatch, COLORREF color) {
  SetWindowLongPtrW(swatch, GWLP_USERDATA, static_cast<LONG_PTR>(color));
  InvalidateRect(swatch, nullptr, FALSE);
}

}  // namespace qv::sample
