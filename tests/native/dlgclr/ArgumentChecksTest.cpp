/*
 * The argument checks of the seven single-value exports: their order, the exact size, and bitmaps with and
 * without pixel memory or signed samples (an unreadable bitmap pointer included). Every case runs for all
 * seven exports, because the table row of each export is what is really tested. Read-only and truncated
 * structures are tested under Wine, where the probe is the product's VirtualQuery.
 */
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>

#include "ArgumentChecks.h"
#include "qv/qvdlgclr.h"
#include "qv/qverror.h"

namespace qvdlg {
namespace {

class Pages {
 public:
  explicit Pages(size_t count) : m_size(count * static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
    m_base = mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  }
  ~Pages() { munmap(m_base, m_size); }
  Pages(const Pages&) = delete;
  Pages& operator=(const Pages&) = delete;
  unsigned char* Base() const { return static_cast<unsigned char*>(m_base); }
  size_t PageSize() const { return static_cast<size_t>(sysconf(_SC_PAGESIZE)); }
  void Protect(size_t page, int protection) { mprotect(Base() + page * PageSize(), PageSize(), protection); }

 private:
  size_t m_size;
  void* m_base;
};

QVBRIGHTNESSDLGPARAMS Params(uint32_t flags, BITMAPHANDLE* bitmap) {
  QVBRIGHTNESSDLGPARAMS p{};
  p.uStructSize = sizeof p;
  p.pBitmap = bitmap;
  p.uDlgFlags = flags;
  return p;
}

BITMAPHANDLE Bitmap(uint32_t flags) {
  BITMAPHANDLE b{};
  b.uStructSize = sizeof b;
  b.uFlags = flags;
  return b;
}

class EveryExport : public ::testing::TestWithParam<int> {
 protected:
  const ExportInfo& Info() const { return ExportInfoOf(static_cast<ExportId>(GetParam())); }
  bool RefusesSigned() const {
    const auto id = static_cast<ExportId>(GetParam());
    return id == ExportId::kHue || id == ExportId::kSaturation;
  }
};

TEST_P(EveryExport, ReadinessComesBeforeAnyLookAtTheStructure) {
  auto p = Params(0, nullptr);
  EXPECT_EQ(CheckExportArguments(Info(), 0, nullptr), QV_ERROR_DLG_NOT_READY);
  EXPECT_EQ(CheckExportArguments(Info(), 2, &p), QV_ERROR_DLG_NOT_READY);
  EXPECT_EQ(CheckExportArguments(Info(), 1, &p), QV_SUCCESS);
}

TEST_P(EveryExport, NullAndUnmappedStructuresAreInvalid) {
  EXPECT_EQ(CheckExportArguments(Info(), 1, nullptr), QV_ERROR_INVALID_PARAMETER);
  Pages page(1);
  page.Protect(0, PROT_NONE);
  EXPECT_EQ(CheckExportArguments(Info(), 1, page.Base()), QV_ERROR_INVALID_PARAMETER);
}

TEST_P(EveryExport, SizeMustMatchExactlyAndIsCheckedBeforeTheBitmap) {
  BITMAPHANDLE unallocated = Bitmap(0);
  for (uint32_t size : {0u, 47u, 49u, 0xFFFFFFFFu}) {
    auto p = Params(0, nullptr);
    p.uStructSize = size;
    EXPECT_EQ(CheckExportArguments(Info(), 1, &p), QV_ERROR_INVALID_STRUCT_SIZE) << size;
    p.uDlgFlags = QVDLG_SHOW_PREVIEW | QVDLG_AUTO_PROCESS;
    p.pBitmap = &unallocated;
    EXPECT_EQ(CheckExportArguments(Info(), 1, &p), QV_ERROR_INVALID_STRUCT_SIZE) << "with a bad bitmap, " << size;
  }
}

TEST_P(EveryExport, FlagsThatDemandABitmapRefuseMissingOrSignedOnes) {
  BITMAPHANDLE unallocated = Bitmap(0);
  BITMAPHANDLE allocated = Bitmap(QV_BMF_ALLOCATED);
  BITMAPHANDLE signedSamples = Bitmap(QV_BMF_ALLOCATED | QV_BMF_SIGNED);
  BITMAPHANDLE signedUnallocated = Bitmap(QV_BMF_SIGNED);
  Pages unmapped(1);
  unmapped.Protect(0, PROT_NONE);
  auto* unreadable = reinterpret_cast<BITMAPHANDLE*>(unmapped.Base());

  const int signedResult = RefusesSigned() ? QV_ERROR_UNSUPPORTED_BITMAP : QV_SUCCESS;
  struct Case {
    uint32_t flags;
    BITMAPHANDLE* bitmap;
    int expected;
  };
  const Case cases[] = {
      {0, nullptr, QV_SUCCESS},
      {QVDLG_SHOW_CONTEXTHELP | QVDLG_SHOW_TOOL_ZOOMLEVEL | 0x70u, nullptr, QV_SUCCESS},
      {0, &unallocated, QV_SUCCESS},
      {QVDLG_AUTO_PROCESS, nullptr, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {QVDLG_SHOW_PREVIEW, nullptr, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {QVDLG_SHOW_PREVIEW, &unallocated, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {QVDLG_SHOW_PREVIEW, unreadable, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW, &allocated, QV_SUCCESS},
      {QVDLG_SHOW_PREVIEW, &signedSamples, signedResult},
      {QVDLG_AUTO_PROCESS, &signedSamples, signedResult},
      {QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW, &signedUnallocated, QV_ERROR_BITMAP_NOT_ALLOCATED},
  };
  for (const Case& c : cases) {
    auto p = Params(c.flags, c.bitmap);
    EXPECT_EQ(CheckExportArguments(Info(), 1, &p), c.expected) << "flags " << c.flags;
  }
}

INSTANTIATE_TEST_SUITE_P(SingleValueExports, EveryExport, ::testing::Range(0, kExportCount),
                         [](const ::testing::TestParamInfo<int>& info) {
                           return std::string(ExportInfoOf(static_cast<ExportId>(info.param)).name + 2);
                         });

TEST(ExportTable, RowsMatchTheStructuresTheyCheck) {
  for (int i = 0; i < kExportCount; ++i) {
    const ExportInfo& info = ExportInfoOf(static_cast<ExportId>(i));
    EXPECT_EQ(info.expectedSize, sizeof(QVBRIGHTNESSDLGPARAMS)) << info.name;
    EXPECT_EQ(info.flagsOffset, offsetof(QVBRIGHTNESSDLGPARAMS, uDlgFlags)) << info.name;
    EXPECT_EQ(info.expectedSize, info.flagsOffset + 28) << info.name;
  }
}

}  // namespace
}  // namespace qvdlg
