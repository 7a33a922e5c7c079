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
// returned. A band that throws stops the bands not yet started as well: std::bad_alloc comes back as
// QV_ERROR_NO_MEMORY, anything else as QV_ERROR_PLATFORM (rows of the failed bands may be half written).
// A worker thread that cannot be started only means fewer workers. Returns QV_SUCCESS otherwise.
int ParallelRows(int begin, int end, const std::function<void(int y0, int y1)>& fn);

// The same without progress reports (painting, internal conversions).
int ParallelRowsQuiet(int begin, int end, const std::function<void(int y0, int y1)>& fn);

// The status callback registered for the calling thread (null when none).
struct StatusCallback {
  pQVSTATUSCALLBACK fn;
  void* user;
};
StatusCallback CurrentStatusCallback();
void SetCurrentStatusCallback(StatusCallback cb);

// Installs a call's own status callback for the calling thread for as long as it lives (a null one keeps the
// thread's), and puts the previous one back.
class ScopedStatusCallback {
 public:
  ScopedStatusCallback(pQVSTATUSCALLBACK fn, void* user) : m_saved(CurrentStatusCallback()), m_active(fn != nullptr) {
    if (m_active) SetCurrentStatusCallback(StatusCallback{fn, user});
  }
  ~ScopedStatusCallback() {
    if (m_active) SetCurrentStatusCallback(m_saved);
  }
  ScopedStatusCallback(const ScopedStatusCallback&) = delete;
  ScopedStatusCallback& operator=(const ScopedStatusCallback&) = delete;

 private:
  StatusCallback m_saved;
  bool m_active;
};

// Reports percent done through the calling thread's callback: QV_SUCCESS to go on, QV_ERROR_USER_ABORT when
// the callback asked to stop.
int ReportStatus(int percent);

}  // namespace qv
