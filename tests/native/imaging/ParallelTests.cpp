/*
 * Row bands: every row is visited exactly once whatever the split, progress reaches the callback on the
 * calling thread only, and a callback that asks to stop ends the run with the abort code.
 */
#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Parallel.h"

namespace {

struct Recorder {
  std::thread::id caller;
  std::vector<int> percents;
  bool wrongThread = false;
  int stopAt = 1000;
};

int RecordingCallback(int percent, void* user) {
  auto* r = static_cast<Recorder*>(user);
  if (std::this_thread::get_id() != r->caller) r->wrongThread = true;
  r->percents.push_back(percent);
  return percent >= r->stopAt ? 0 : QV_SUCCESS;
}

class ParallelRowsTest : public ::testing::Test {
 protected:
  void TearDown() override { Q_SetStatusCallBack(nullptr, nullptr, 0); }
};

TEST_F(ParallelRowsTest, VisitsEveryRowOnceForAnyRange) {
  for (int rows : {0, 1, 15, 16, 33, 1000, 4097}) {
    SCOPED_TRACE(rows);
    std::vector<std::atomic<int>> hits(static_cast<size_t>(rows) + 10);
    const int begin = 10;
    const int rc = qv::ParallelRows(begin, begin + rows, [&](int y0, int y1) {
      for (int y = y0; y < y1; ++y) hits[static_cast<size_t>(y - begin)]++;
    });
    EXPECT_EQ(rc, QV_SUCCESS);
    for (int i = 0; i < rows; ++i) ASSERT_EQ(hits[static_cast<size_t>(i)].load(), 1) << i;
  }
}

TEST_F(ParallelRowsTest, ReportsRisingProgressOnTheCallingThreadAndStopsWhenAsked) {
  Recorder rec;
  rec.caller = std::this_thread::get_id();
  ASSERT_EQ(Q_SetStatusCallBack(RecordingCallback, &rec, 0), QV_SUCCESS);
  EXPECT_EQ(qv::ParallelRows(0, 2000, [](int, int) {}), QV_SUCCESS);
  EXPECT_FALSE(rec.wrongThread);
  ASSERT_GE(rec.percents.size(), 2u);
  EXPECT_EQ(rec.percents.front(), 0);
  EXPECT_EQ(rec.percents.back(), 100);
  for (size_t i = 1; i < rec.percents.size(); ++i) EXPECT_LE(rec.percents[i - 1], rec.percents[i]);

  rec.percents.clear();
  rec.stopAt = 0;
  std::atomic<int> rowsDone{0};
  EXPECT_EQ(qv::ParallelRows(0, 100000, [&](int y0, int y1) { rowsDone += y1 - y0; }), QV_ERROR_USER_ABORT);
  EXPECT_EQ(rowsDone.load(), 0);
  EXPECT_EQ(rec.percents.size(), 1u);
}

TEST_F(ParallelRowsTest, CallbackIsPerThread) {
  Recorder rec;
  ASSERT_EQ(Q_SetStatusCallBack(RecordingCallback, &rec, 0), QV_SUCCESS);
  pQVSTATUSCALLBACK seen = RecordingCallback;
  std::thread([&] {
    void* user = &rec;
    Q_GetStatusCallBack(&seen, &user, 0);
  }).join();
  EXPECT_EQ(seen, nullptr);
  pQVSTATUSCALLBACK mine = nullptr;
  void* user = nullptr;
  ASSERT_EQ(Q_GetStatusCallBack(&mine, &user, 0), QV_SUCCESS);
  EXPECT_EQ(mine, RecordingCallback);
  EXPECT_EQ(user, &rec);
  EXPECT_EQ(Q_GetStatusCallBack(nullptr, &user, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_SetStatusCallBack(nullptr, nullptr, 2), QV_ERROR_INVALID_FLAGS);
}

TEST_F(ParallelRowsTest, ABandThatThrowsComesBackAsACodeOnEveryThread) {
  // Every band throws, so both the calling thread and the workers do; an exception leaving a worker would
  // end the process, one leaving the caller would cross the export.
  struct Case {
    const char* what;
    void (*raise)();
    int expected;
  };
  const Case cases[] = {
      {"no memory", [] { throw std::bad_alloc(); }, QV_ERROR_NO_MEMORY},
      {"anything else", [] { throw std::runtime_error("band"); }, QV_ERROR_PLATFORM},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(qv::ParallelRows(0, 4000, [&](int, int) { c.raise(); }), c.expected);
    EXPECT_EQ(qv::ParallelRowsQuiet(0, 4000, [&](int, int) { c.raise(); }), c.expected);
  }
}

}  // namespace
