/*
 * The call sequence of one dialog. A dialog whose effect the kernel has no
 * operation for is always applied through the dialog, whatever the mode, so
 * the picture never silently stays unchanged after OK.
 */
#include "DialogRunner.h"

#include "qv/qvdlgclr.h"

namespace qvdemo {

DialogOutcome RunDialog(const DialogEntry& entry, DialogCall call, HWND owner, BITMAPHANDLE* bitmap, ApplyMode mode,
                        int mainValue, const CallInvoker& invoker) {
  DialogOutcome outcome;
  if (call == nullptr) {
    outcome.dialogResult = QV_ERROR_INVALID_PARAMETER;
    return outcome;
  }
  const bool hasBitmap = entry.image != ImageKind::None;
  outcome.autoProcessed = hasBitmap && (mode == ApplyMode::ThroughDialog || entry.apply == nullptr);
  const uint32_t flags = kPreviewFlags | (outcome.autoProcessed ? QVDLG_AUTO_PROCESS : 0u);

  ParamBlock params;
  entry.fill(params, hasBitmap ? bitmap : nullptr, flags, mainValue);
  auto makeCall = [&] { return call(owner, params.Data()); };
  outcome.dialogResult = invoker ? invoker(makeCall) : makeCall();

  if (outcome.dialogResult == QV_DLG_OK) {
    if (!outcome.autoProcessed && hasBitmap && entry.apply != nullptr) {
      outcome.operationRun = true;
      outcome.operationResult = entry.apply(params, bitmap);
    }
    outcome.values = entry.describe(params);
  }
  outcome.params = params;
  if (entry.release != nullptr && outcome.dialogResult == QV_DLG_OK) entry.release(params);
  return outcome;
}

}  // namespace qvdemo
