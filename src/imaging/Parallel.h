/*
 * Row-band parallelism for the image operations and painting, and the per-thread status callback that long
 * operations report progress through. Progress is always reported on the thread that made the call, so a
 * host's callback never runs on one of our workers.
 */
#pragma once

#include <functional>

#include "qv/qvkrn.h"

namespace qv {

// Splits rows [begin, end) into bands over the available cores (std::thread::hardware_concurrency(), at
// least 1; a small image runs on the calling thread) and calls fn(y0, y1) for each band. Progress 0..100 is
// reported on the CALLING thread through the thread's status callback (Q_SetStatusCallBack); when the
// callback returns anything but QV_SUCCESS the remaining bands are skipped and QV_ERROR_USER_ABORT is
// returned. fn must not throw. Returns QV_SUCCESS otherwise.
int ParallelRows(int begin, int end, const std::function<void(int y0, int y1)>& fn);

// The same without progress reports (painting, internal conversions): always QV_SUCCESS.
void ParallelRowsQuiet(int begin, int end, const std::function<void(int y0, int y1)>& fn);

// The status callback registered for the calling thread (null when none).
struct StatusCallback {
  pQVSTATUSCALLBACK fn;
  void* user;
};
StatusCallback CurrentStatusCallback();
void SetCurrentStatusCallback(StatusCallback cb);

// Reports percent done through the calling thread's callback: QV_SUCCESS to go on, QV_ERROR_USER_ABORT when
// the callback asked to stop.
int ReportStatus(int percent);

}  // namespace qv
