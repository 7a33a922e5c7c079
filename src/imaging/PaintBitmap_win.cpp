/*
 * Q_PaintBitmap: renders the part of the destination rectangle that the device context can show (its clip
 * box) into 32-bit top-down pixels and hands them to the device with SetDIBitsToDevice. The rendering is the
 * portable display resampler, so the preview panes get area-averaged reductions at integer cost.
 */
#include <windows.h>

#include <algorithm>
#include <vector>

#include "AddressCheck.h"
#include "BitmapCheck.h"
#include "DisplayResampler.h"
#include "ExportGuard.h"

using namespace qv;

namespace {

bool IsDeviceContext(HDC hdc) {
  const DWORD type = hdc ? GetObjectType(hdc) : 0;
  return type == OBJ_DC || type == OBJ_MEMDC || type == OBJ_ENHMETADC || type == OBJ_METADC;
}

// Reads an optional rectangle argument: null gives the fallback.
bool ReadRect(const RECT* p, const RECT& fallback, RECT* out) {
  if (!p) {
    *out = fallback;
    return true;
  }
  if (!IsValidAddress(p, sizeof(RECT), Access::Read)) return false;
  *out = *p;
  return true;
}

int Paint(HDC hdc, const BITMAPHANDLE& b, const RECT& src, const RECT& dst) {
  const int64_t dw = int64_t{dst.right} - dst.left, dh = int64_t{dst.bottom} - dst.top;
  if (dw <= 0 || dh <= 0 || dw > INT_MAX || dh > INT_MAX) return QV_ERROR_INVALID_PARAMETER;
  RECT clip{};
  const int clipKind = GetClipBox(hdc, &clip);
  if (clipKind == NULLREGION) return QV_SUCCESS;
  RECT visible = dst;
  if (clipKind != ERROR && !IntersectRect(&visible, &dst, &clip)) return QV_SUCCESS;
  DisplayRequest request{src, static_cast<int>(dw), static_cast<int>(dh),
                         RECT{visible.left - dst.left, visible.top - dst.top, visible.right - dst.left,
                              visible.bottom - dst.top}};
  const int vw = visible.right - visible.left, vh = visible.bottom - visible.top;
  std::vector<uint32_t> pixels(static_cast<size_t>(vw) * static_cast<size_t>(vh));
  const int rc = RenderForDisplay(b, request, pixels.data());
  if (rc != QV_SUCCESS) return rc;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = vw;
  info.bmiHeader.biHeight = -vh;  // top-down
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  const int lines = SetDIBitsToDevice(hdc, visible.left, visible.top, static_cast<DWORD>(vw), static_cast<DWORD>(vh), 0,
                                      0, 0, static_cast<UINT>(vh), pixels.data(), &info, DIB_RGB_COLORS);
  return lines > 0 ? QV_SUCCESS : QV_ERROR_PLATFORM;
}

}  // namespace

QV_EXTERN_C int Q_PaintBitmap(HDC hDC, const BITMAPHANDLE* p, const RECT* pSrc, const RECT* pDst, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    int rc = CheckBitmap(p, Access::Read);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (!IsDeviceContext(hDC)) return QV_ERROR_INVALID_PARAMETER;
    RECT src{}, dst{};
    if (!ReadRect(pSrc, RECT{0, 0, p->nWidth, p->nHeight}, &src)) return QV_ERROR_INVALID_PARAMETER;
    if (src.left < 0 || src.top < 0 || src.right > p->nWidth || src.bottom > p->nHeight || src.left >= src.right ||
        src.top >= src.bottom)
      return QV_ERROR_INVALID_PARAMETER;
    if (!ReadRect(pDst, RECT{0, 0, src.right - src.left, src.bottom - src.top}, &dst))
      return QV_ERROR_INVALID_PARAMETER;
    return Paint(hDC, *p, src, dst);
  });
}
