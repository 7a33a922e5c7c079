/*
 * The base under every export: the guard turns any exception into a result code and lets none escape; the
 * probes tell readable from writable memory and measure a host's string without reading past the last
 * readable byte, at the edges where an off-by-one would read a byte too many or refuse a valid string.
 */
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>

#include "AddressCheck.h"
#include "ExportGuard.h"
#include "StringProbe.h"

namespace {

// Two pages: the first readable and writable, the second inaccessible, so anything read past the end of the
// first page faults.
class GuardedPage {
 public:
  GuardedPage() : m_page(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
    m_base = mmap(nullptr, 2 * m_page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    mprotect(End(), m_page, PROT_NONE);
  }
  ~GuardedPage() { munmap(m_base, 2 * m_page); }
  GuardedPage(const GuardedPage&) = delete;
  GuardedPage& operator=(const GuardedPage&) = delete;
  unsigned char* End() const { return static_cast<unsigned char*>(m_base) + m_page; }
  void MakeReadOnly() { mprotect(m_base, m_page, PROT_READ); }

  // Writes count characters 'a' and, when terminated, a terminator, so that the last one written is the
  // last character of the readable page.
  template <class Char>
  const Char* PlaceAtEnd(size_t count, bool terminated) {
    Char* last = reinterpret_cast<Char*>(End()) - 1;
    Char* first = last - count + (terminated ? 0 : 1);
    for (Char* c = first; c <= last; ++c) *c = Char('a');
    if (terminated) *last = Char(0);
    return first;
  }

 private:
  size_t m_page;
  void* m_base;
};

TEST(ExportGuard, EveryExceptionBecomesACodeAndNoneEscapes) {
  struct Row {
    const char* what;
    std::function<int()> body;
    int expected;
  };
  const Row rows[] = {
      {"a result passes through", [] { return QV_ERROR_NOT_FOUND; }, QV_ERROR_NOT_FOUND},
      {"out of memory", []() -> int { throw std::bad_alloc(); }, QV_ERROR_NO_MEMORY},
      {"an array too long", []() -> int { throw std::bad_array_new_length(); }, QV_ERROR_NO_MEMORY},
      {"a standard exception", []() -> int { throw std::runtime_error("broken"); }, QV_ERROR_DLG_FAILED},
      {"not an exception class", []() -> int { throw 42; }, QV_ERROR_DLG_FAILED},
  };
  for (const Row& row : rows) {
    int rc = 0;
    EXPECT_NO_THROW(rc = qv::Guarded(QV_ERROR_DLG_FAILED, row.body)) << row.what;
    EXPECT_EQ(rc, row.expected) << row.what;
  }
}

TEST(AddressProbe, ReadAndWriteAreAskedForSeparately) {
  GuardedPage page;
  unsigned char* first = page.End() - 16;
  EXPECT_TRUE(qv::IsValidAddress(first, 16, qv::Access::Write));
  EXPECT_FALSE(qv::IsValidAddress(first, 17, qv::Access::Read));  // one byte into the inaccessible page
  page.MakeReadOnly();
  EXPECT_TRUE(qv::IsValidAddress(first, 16, qv::Access::Read));
  EXPECT_FALSE(qv::IsValidAddress(first, 16, qv::Access::Write));
  EXPECT_FALSE(qv::IsValidAddress(nullptr, 0, qv::Access::Read));
}

TEST(StringProbe, MeasuresUpToTheLastReadableCharacterAndNoFurther) {
  struct Row {
    const char* what;
    bool wide;
    size_t count;  // characters before the terminator
    bool terminated;
    size_t maxLength;
    bool accepted;
  };
  const Row rows[] = {
      {"terminator is the page's last byte", false, 9, true, 100, true},
      {"runs into the inaccessible page", false, 9, false, 100, false},
      {"length equal to the limit", false, 9, true, 9, true},
      {"one longer than the limit", false, 9, true, 8, false},
      {"empty string", false, 0, true, 0, true},
      {"empty string, no room at all", false, 0, false, 0, false},
      {"a whole page long", false, 4095, true, 5000, true},
      {"wide terminator is the page's last character", true, 9, true, 100, true},
      {"wide runs into the inaccessible page", true, 9, false, 100, false},
      {"wide length equal to the limit", true, 9, true, 9, true},
      {"wide empty string", true, 0, true, 0, true},
  };
  for (const Row& row : rows) {
    GuardedPage page;
    const size_t untouched = 12345;
    size_t length = untouched;
    const bool accepted =
        row.wide ? qv::SafeStringLength(page.PlaceAtEnd<wchar_t>(row.count, row.terminated), row.maxLength, &length)
                 : qv::SafeStringLength(page.PlaceAtEnd<char>(row.count, row.terminated), row.maxLength, &length);
    EXPECT_EQ(accepted, row.accepted) << row.what;
    EXPECT_EQ(length, row.accepted ? row.count : untouched) << row.what;
  }
  size_t length = 0;
  EXPECT_FALSE(qv::SafeStringLength(static_cast<const char*>(nullptr), 10, &length));
}

}  // namespace
