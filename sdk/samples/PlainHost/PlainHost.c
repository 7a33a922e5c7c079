/*
 * A host program in plain C that uses nothing but the public headers and the
 * import libraries: it initialises the dialog kernel, makes a bitmap, opens
 * the brightness dialog with preview and automatic processing over a hidden
 * owner window, lets a timer press OK, and checks what came back. Exit code 0
 * when the call returned QV_DLG_OK, the value was written back and the bitmap
 * got brighter.
 */
#include <stdio.h>
#include <string.h>

#include "qv/qvdlgclr.h"
#include "qv/qvdlgkrn.h"

static void CALLBACK PressOk(HWND window, UINT message, UINT_PTR id, DWORD time) {
  HWND dialog = GetActiveWindow();
  (void)window;
  (void)message;
  (void)id;
  (void)time;
  if (dialog) PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

int main(void) {
  BITMAPHANDLE bitmap;
  QVBRIGHTNESSDLGPARAMS params;
  HWND owner;
  UINT_PTR timer;
  int result, y;
  unsigned char before;

  if (Q_DlgInit(0) != QV_SUCCESS) return 2;
  memset(&bitmap, 0, sizeof bitmap);
  if (Q_CreateBitmap(&bitmap, sizeof bitmap, 64, 48, 24, QV_ORDER_BGR, NULL, 0, 0) != QV_SUCCESS) return 3;
  for (y = 0; y < bitmap.nHeight; ++y) memset(bitmap.pData + y * bitmap.nBytesPerLine, 100, (size_t)bitmap.nWidth * 3);
  before = bitmap.pData[0];

  memset(&params, 0, sizeof params);
  params.uStructSize = sizeof params;
  params.pBitmap = &bitmap;
  params.bZoomToFit = 1;
  params.nBrightness = 300;
  params.uDlgFlags = QVDLG_SHOW_PREVIEW | QVDLG_AUTO_PROCESS;

  owner = CreateWindowExW(0, L"STATIC", L"Plain C host", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, NULL, NULL, NULL, NULL);
  timer = SetTimer(NULL, 0, 800, PressOk);
  result = Q_DlgBrightness(owner, &params);
  KillTimer(NULL, timer);
  DestroyWindow(owner);

  printf("Q_DlgBrightness returned %d, brightness %d, first sample %u -> %u\n", result, (int)params.nBrightness, before,
         bitmap.pData[0]);
  y = result == QV_DLG_OK && params.nBrightness == 300 && bitmap.pData[0] > before;
  Q_FreeBitmap(&bitmap, 0);
  Q_DlgFree();
  return y ? 0 : 1;
}
