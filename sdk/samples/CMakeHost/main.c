/*
 * A small host application: it loads a picture (or makes a gradient when none is given), lets the user adjust
 * its brightness in the SDK's dialog with the live before/after preview, and saves the result when the user
 * pressed OK and a second path was given.
 *
 *   cmake_host.exe [input picture [output picture]] [/ok-after MS]
 *
 * /ok-after presses OK by itself after MS milliseconds, for unattended checks of an installation.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <wchar.h>

#include <qv/qvdlgclr.h>
#include <qv/qvdlgkrn.h>
#include <qv/qvkrn.h>

static void CALLBACK PressOk(HWND window, UINT message, UINT_PTR id, DWORD time) {
  HWND dialog = GetActiveWindow();
  (void)window, (void)message, (void)id, (void)time;
  if (dialog) PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

static int MakeGradient(BITMAPHANDLE* bitmap) {
  int x, y, result = Q_CreateBitmap(bitmap, sizeof *bitmap, 320, 240, 24, QV_ORDER_BGR, NULL, 0, 0);
  if (result != QV_SUCCESS) return result;
  for (y = 0; y < bitmap->nHeight; ++y) {
    unsigned char* row = bitmap->pData + (size_t)y * bitmap->nBytesPerLine;
    for (x = 0; x < bitmap->nWidth; ++x) {
      row[3 * x + 0] = (unsigned char)(y * 255 / bitmap->nHeight);
      row[3 * x + 1] = (unsigned char)(x * 255 / bitmap->nWidth);
      row[3 * x + 2] = 96;
    }
  }
  return QV_SUCCESS;
}

int wmain(int argc, wchar_t** argv) {
  const wchar_t* paths[2] = {NULL, NULL};
  int pathCount = 0, okAfter = 0, result, i;
  BITMAPHANDLE bitmap;
  QVBRIGHTNESSDLGPARAMS params;
  HWND owner;
  UINT_PTR timer = 0;

  for (i = 1; i < argc; ++i) {
    if (wcscmp(argv[i], L"/ok-after") == 0 && i + 1 < argc)
      okAfter = _wtoi(argv[++i]);
    else if (pathCount < 2)
      paths[pathCount++] = argv[i];
  }

  result = Q_DlgInit(0);
  if (result != QV_SUCCESS) return fprintf(stderr, "Q_DlgInit: %d\n", result), 2;
  memset(&bitmap, 0, sizeof bitmap);
  result = paths[0] ? Q_LoadBitmap(paths[0], &bitmap, sizeof bitmap, 24, QV_ORDER_BGR, 0) : MakeGradient(&bitmap);
  if (result != QV_SUCCESS) return fprintf(stderr, "no picture: %d\n", result), 3;

  memset(&params, 0, sizeof params);
  params.uStructSize = sizeof params;
  params.pBitmap = &bitmap;
  params.bZoomToFit = 1;
  params.nBrightness = 200;
  params.uDlgFlags = QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL | QVDLG_AUTO_PROCESS;

  owner = CreateWindowExW(0, L"STATIC", L"QUORVELIX CMake host", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 480,
                          320, NULL, NULL, NULL, NULL);
  if (okAfter > 0) timer = SetTimer(NULL, 0, (UINT)okAfter, PressOk);
  result = Q_DlgBrightness(owner, &params);
  if (timer) KillTimer(NULL, timer);
  DestroyWindow(owner);

  printf("Q_DlgBrightness returned %d (brightness %d)\n", result, (int)params.nBrightness);
  if (result == QV_DLG_OK && paths[1]) {
    int saved = Q_SaveBitmap(paths[1], &bitmap, QV_FILE_PNG, 0);
    if (saved != QV_SUCCESS) result = saved;
  }
  Q_FreeBitmap(&bitmap, 0);
  Q_DlgFree();
  return result == QV_DLG_OK || result == QV_DLG_CANCEL ? 0 : 1;
}
