/*
 * The sample DLL's export: checks its arguments, registers the swatch class in
 * this module, shows the dialog and copies the values back only on OK.
 */
#include <windows.h>
#include <commctrl.h>

#include "QvSampleDlg.h"
#include "SampleDialog.h"
#include "Swatch.h"

namespace {

HINSTANCE g_module = nullptr;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    g_module = instance;
    DisableThreadLibraryCalls(instance);
  }
  return TRUE;
}

extern "C" int WINAPI Q_ShowSampleDialog(HWND hWndOwner, QVSAMPLEDLGPARAMS* pParams) {
  if (!pParams) return QV_SAMPLE_RESULT_BAD_POINTER;
  if (pParams->uStructSize != sizeof(QVSAMPLEDLGPARAMS)) return QV_SAMPLE_RESULT_BAD_SIZE;
  try {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    if (!qv::sample::RegisterSwatchClass(g_module)) return QV_SAMPLE_RESULT_NO_DIALOG;
    qv::sample::SampleDialog dialog(g_module, *pParams);
    INT_PTR result = dialog.DoModal(hWndOwner);
    if (result != IDOK && result != IDCANCEL) return QV_SAMPLE_RESULT_NO_DIALOG;
    if (result == IDOK) *pParams = dialog.Values();
    return static_cast<int>(result);
  } catch (...) {
    // Nothing may unwind into the host; an allocation failure ends the call.
    return QV_SAMPLE_RESULT_NO_DIALOG;
  }
}
