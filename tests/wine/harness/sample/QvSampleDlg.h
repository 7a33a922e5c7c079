/*
 * The sample dialog DLL the driver's own tests run: a real dialog template
 * with a trackbar, an edit, a combo box, a check box, buttons, a menu, a
 * painted swatch, a nested message box and a nested dialog, shown modally by
 * one export the way the SDK's dialogs are.
 */
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

#define QV_SAMPLE_RESULT_BAD_POINTER (-1)
#define QV_SAMPLE_RESULT_BAD_SIZE (-2)
#define QV_SAMPLE_RESULT_NO_DIALOG (-3)

enum { QV_SAMPLE_CHANNEL_RED = 0, QV_SAMPLE_CHANNEL_GREEN = 1, QV_SAMPLE_CHANNEL_BLUE = 2 };

typedef struct QVSAMPLEDLGPARAMS {
  UINT uStructSize;
  int nLevel;       /* 0..100, the swatch intensity */
  int nChannel;     /* QV_SAMPLE_CHANNEL_* the level drives */
  BOOL bEnabled;    /* whether the level applies; a disabled swatch is gray */
  WCHAR szNote[64]; /* text from the nested note dialog */
} QVSAMPLEDLGPARAMS;

/* IDOK after OK (the structure updated), IDCANCEL after Cancel (the
 * structure untouched), or a negative QV_SAMPLE_RESULT_* for bad input or a dialog
 * that could not be created. */
int WINAPI Q_ShowSampleDialog(HWND hWndOwner, QVSAMPLEDLGPARAMS* pParams);

#ifdef __cplusplus
}
#endif
