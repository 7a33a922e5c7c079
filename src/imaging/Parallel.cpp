/*
 * Row bands over worker threads. Bands are handed out through an atomic counter; the calling thread works
 * on bands too and, between its bands, reports progress and asks the status callback whether to go on. An
 * abort stops new bands from being started; bands already running finish, so no row is half written.
 * A band that throws (a worker's buffer that cannot be allocated) aborts the run the same way and comes back
 * as a result code: an exception escaping a std::thread would end the host process.
 */
#include "Parallel.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <thread>
#include <vector>

#include "Trace.h"

namespace qv {
namespace {

thread_local StatusCallback t_callback{nullptr, nullptr};

constexpr int kMinRowsPerBand = 16;
constexpr int kBandsPerThread = 4;

int WorkerCount(int rows) {
  const unsigned hw = std::max(1u, std::thread::hardware_concurrency());
  const int byRows = std::max(1, rows / (kMinRowsPerBand * 2));
  return static_cast<int>(std::min<unsigned>(hw, static_cast<unsigned>(byRows)));
}

class BandRunner {
 public:
  BandRunner(int begin, int end, const std::function<void(int, int)>& fn, int threads)
      : m_begin(begin), m_end(end), m_fn(fn) {
    const int rows = end - begin;
    m_bands = std::max(1, std::min(rows / kMinRowsPerBand, threads * kBandsPerThread));
    if (m_bands < 1) m_bands = 1;
  }

  // Runs bands until none is left or the run was aborted; returns true when it ran one.
  bool RunOne() {
    if (m_abort.load(std::memory_order_relaxed)) return false;
    const int band = m_next.fetch_add(1);
    if (band >= m_bands) return false;
    const int rows = m_end - m_begin;
    const int y0 = m_begin + static_cast<int>(static_cast<int64_t>(rows) * band / m_bands);
    const int y1 = m_begin + static_cast<int>(static_cast<int64_t>(rows) * (band + 1) / m_bands);
    if (y0 < y1) RunBand(y0, y1);
    m_done.fetch_add(1);
    return true;
  }

  void Abort() { m_abort.store(true); }
  // QV_SUCCESS, or the code of the first band that failed.
  int Failure() const { return m_failure.load(); }
  int Percent() const { return static_cast<int>(static_cast<int64_t>(m_done.load()) * 100 / m_bands); }

 private:
  void RunBand(int y0, int y1) noexcept {
    try {
      m_fn(y0, y1);
    } catch (const std::bad_alloc&) {
      Fail(QV_ERROR_NO_MEMORY);
    } catch (...) {
      Fail(QV_ERROR_PLATFORM);
    }
  }

  void Fail(int code) {
    int expected = QV_SUCCESS;
    m_failure.compare_exchange_strong(expected, code);
    Abort();
  }

  int m_begin;
  int m_end;
  const std::function<void(int, int)>& m_fn;
  int m_bands = 1;
  std::atomic<int> m_next{0};
  std::atomic<int> m_done{0};
  std::atomic<bool> m_abort{false};
  std::atomic<int> m_failure{QV_SUCCESS};
};

int Run(int begin, int end, const std::function<void(int, int)>& fn, bool report) {
  if (end <= begin) return report ? ReportStatus(100) : QV_SUCCESS;
  // Asked before any worker starts, so a callback that stops at 0 % leaves every row untouched.
  int rc = report ? ReportStatus(0) : QV_SUCCESS;
  if (rc != QV_SUCCESS) return rc;
  const int threads = WorkerCount(end - begin);
  BandRunner runner(begin, end, fn, threads);
  std::vector<std::thread> workers;
  for (int i = 1; i < threads; ++i) {
    try {
      if (workers.empty()) workers.reserve(static_cast<size_t>(threads - 1));
      workers.emplace_back([&runner] {
        while (runner.RunOne()) {
        }
      });
    } catch (...) {
      qv::TraceCaughtException("a worker thread could not start; fewer threads take the rows");
      break;  // fewer threads (no memory, or the system refused one); the calling thread still does every band
    }
  }
  while (rc == QV_SUCCESS && runner.RunOne()) {
    if (report) rc = ReportStatus(std::min(99, runner.Percent()));
    if (rc != QV_SUCCESS) runner.Abort();
  }
  for (auto& t : workers) t.join();
  if (runner.Failure() != QV_SUCCESS) return runner.Failure();
  if (rc == QV_SUCCESS && report) rc = ReportStatus(100);
  return rc;
}

}  // namespace

int ParallelRows(int begin, int end, const std::function<void(int y0, int y1)>& fn) {
  return Run(begin, end, fn, true);
}

int ParallelRowsQuiet(int begin, int end, const std::function<void(int y0, int y1)>& fn) {
  return Run(begin, end, fn, false);
}

StatusCallback CurrentStatusCallback() { return t_callback; }

void SetCurrentStatusCallback(StatusCallback cb) { t_callback = cb; }

int ReportStatus(int percent) {
  const StatusCallback cb = t_callback;
  if (!cb.fn) return QV_SUCCESS;
  return cb.fn(percent, cb.user) == QV_SUCCESS ? QV_SUCCESS : QV_ERROR_USER_ABORT;
}

}  // namespace qv
