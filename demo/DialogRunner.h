/*
 * One dialog call as a host makes it: fill the structure, call the export
 * with the preview and its zoom tools, and apply the result either through
 * the dialog (QVDLG_AUTO_PROCESS) or by calling the kernel operation with the
 * values the dialog returned. The window, the tour and the tests all go
 * through here, so the two ways are compared on exactly what the demo does.
 */
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "DialogCatalog.h"
#include "DialogLibrary.h"
#include "ParamBlock.h"

namespace qvdemo {

enum class ApplyMode { ThroughDialog, ByOperation };

// Makes the export call; a tour or a test wraps it in a dialog driver.
using CallInvoker = std::function<int(const std::function<int()>& call)>;

struct DialogOutcome {
  int dialogResult = 0;       // QV_DLG_OK, QV_DLG_CANCEL or an error
  bool operationRun = false;  // the kernel operation was called with the returned values
  int operationResult = QV_SUCCESS;
  bool autoProcessed = false;  // the dialog was asked to apply its effect itself
  std::wstring values;         // the returned values as text (after OK)
  ParamBlock params;           // the structure as the call left it (before any release)

  // The code a host reports: the operation's when it ran, else the dialog's.
  int LastResult() const { return operationRun ? operationResult : dialogResult; }
};

constexpr uint32_t kPreviewFlags = 0x0004u | 0x0008u;  // QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL

DialogOutcome RunDialog(const DialogEntry& entry, DialogCall call, HWND owner, BITMAPHANDLE* bitmap, ApplyMode mode,
                        int mainValue, const CallInvoker& invoker = {});

}  // namespace qvdemo
