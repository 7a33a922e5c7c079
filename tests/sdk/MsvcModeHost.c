/*
 * A host linked as Visual C++ links: by lld-link in MSVC mode against the SDK's lib/msvc import libraries, with
 * no C runtime at all. It reaches exports of each DLL through the public headers and ends the process with 0
 * when all answered as documented.
 */
#include <qv/qvdlgclr.h>
#include <qv/qvdlgkrn.h>
#include <qv/qvkrn.h>

static int Check(void) {
  BITMAPHANDLE bitmap;
  int ok;
  if (Q_DlgInit(0) != QV_SUCCESS || Q_DlgIsReady() != 1) return 1;
  /* A null structure is refused once the kernel is ready. */
  if (Q_DlgBrightness(NULL, NULL) != QV_ERROR_INVALID_PARAMETER) return 2;
  ok = Q_CreateBitmap(&bitmap, sizeof bitmap, 8, 8, 24, QV_ORDER_BGR, NULL, 0, 0) == QV_SUCCESS &&
       bitmap.nBytesPerLine == 24 && Q_FreeBitmap(&bitmap, 0) == QV_SUCCESS;
  Q_DlgFree();
  return ok ? (Q_DlgIsReady() == 0 ? 0 : 4) : 3;
}

void __cdecl HostEntry(void) { ExitProcess((UINT)Check()); }
