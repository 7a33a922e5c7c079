// The argument checks of the dialog exports: their order, the exact size, and bitmaps with and without pixel
// memory or signed samples (an unreadable bitmap pointer included). Every case runs for every export, because
// the table row of each export is what is really tested. Read-only and truncated structures are tested under
// Wine, where the probe is the product's VirtualQuery.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <iterator>

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

// A structure laid out as the export's row says: its size at 0, the bitmap pointer at 4, the flag word where
// the row puts it. Room for the largest structure.
struct ParamBytes {
  unsigned char bytes[128]{};
  void SetSize(uint32_t size) { std::memcpy(bytes, &size, sizeof size); }
};

ParamBytes MakeParams(const ExportInfo& info, uint32_t flags, BITMAPHANDLE* bitmap) {
  ParamBytes p;
  p.SetSize(info.expectedSize);
  std::memcpy(p.bytes + 4, &bitmap, sizeof bitmap);
  std::memcpy(p.bytes + info.flagsOffset, &flags, sizeof flags);
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
    return id == ExportId::kHue || id == ExportId::kSaturation || id == ExportId::kIntensityDetect ||
           id == ExportId::kLocalHistoEqualize;
  }
  ParamBytes Params(uint32_t flags, BITMAPHANDLE* bitmap) const { return MakeParams(Info(), flags, bitmap); }
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
  const uint32_t expected = Info().expectedSize;
  for (uint32_t size : {0u, expected - 1, expected + 1, 0xFFFFFFFFu}) {
    auto p = Params(0, nullptr);
    p.SetSize(size);
    EXPECT_EQ(CheckExportArguments(Info(), 1, &p), QV_ERROR_INVALID_STRUCT_SIZE) << size;
    p = Params(QVDLG_SHOW_PREVIEW | QVDLG_AUTO_PROCESS, &unallocated);
    p.SetSize(size);
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

INSTANTIATE_TEST_SUITE_P(DialogExports, EveryExport, ::testing::Range(0, kExportCount),
                         [](const ::testing::TestParamInfo<int>& info) {
                           return std::string(ExportInfoOf(static_cast<ExportId>(info.param)).name + 2);
                         });

TEST(ExportTable, RowsMatchTheStructuresTheyCheck) {
  struct Row {
    ExportId id;
    size_t size;
    size_t flagsOffset;
  };
  constexpr size_t kSingle = sizeof(QVBRIGHTNESSDLGPARAMS);
  constexpr size_t kSingleFlags = offsetof(QVBRIGHTNESSDLGPARAMS, uDlgFlags);
  const Row rows[] = {
      {ExportId::kBrightness, kSingle, kSingleFlags},
      {ExportId::kContrast, kSingle, kSingleFlags},
      {ExportId::kHue, kSingle, kSingleFlags},
      {ExportId::kSaturation, kSingle, kSingleFlags},
      {ExportId::kHistoContrast, kSingle, kSingleFlags},
      {ExportId::kPosterize, kSingle, kSingleFlags},
      {ExportId::kSolarize, kSingle, kSingleFlags},
      {ExportId::kIntensityDetect, sizeof(QVINTENSITYDETECTDLGPARAMS), offsetof(QVINTENSITYDETECTDLGPARAMS, uDlgFlags)},
      {ExportId::kLocalHistoEqualize, sizeof(QVLOCALHISTOEQUALIZEDLGPARAMS),
       offsetof(QVLOCALHISTOEQUALIZEDLGPARAMS, uDlgFlags)},
  };
  ASSERT_EQ(std::size(rows), static_cast<size_t>(kExportCount)) << "every export has its row here";
  for (const Row& row : rows) {
    const ExportInfo& info = ExportInfoOf(row.id);
    EXPECT_EQ(info.expectedSize, row.size) << info.name;
    EXPECT_EQ(info.probedSize, row.size) << info.name;
    EXPECT_EQ(info.flagsOffset, row.flagsOffset) << info.name;
    EXPECT_EQ(info.expectedSize, info.flagsOffset + 28) << info.name << ": the flags come before the common tail";
  }
}

}  // namespace
}  // namespace qvdlg
