/*
 * The argument checks of the dialog exports: their order, the exact size, and bitmaps with and without pixel
 * memory or signed samples (an unreadable bitmap pointer included). Every case runs for every export, because
 * the table row of each export is what is really tested. Read-only and truncated structures are tested under
 * Wine, where the probe is the product's VirtualQuery.
 */
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <vector>

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

// A structure of the export's size with the bitmap at offset 4 and the flags where the export keeps them.
struct Params {
  Params(const ExportInfo& info, uint32_t flags, BITMAPHANDLE* bitmap) : bytes(info.expectedSize) {
    std::memcpy(bytes.data(), &info.expectedSize, sizeof info.expectedSize);
    std::memcpy(bytes.data() + 4, &bitmap, sizeof bitmap);
    std::memcpy(bytes.data() + info.flagsOffset, &flags, sizeof flags);
  }
  void SetSize(uint32_t size) { std::memcpy(bytes.data(), &size, sizeof size); }
  const void* Get() const { return bytes.data(); }
  std::vector<unsigned char> bytes;
};

BITMAPHANDLE Bitmap(uint32_t flags, int bitsPerPixel = 24, uint32_t order = QV_ORDER_BGR, bool region = false) {
  BITMAPHANDLE b{};
  b.uStructSize = sizeof b;
  b.uFlags = flags;
  b.nBitsPerPixel = bitsPerPixel;
  b.uOrder = order;
  b.uRgnFlags = region ? QV_RGN_SET : 0;
  return b;
}

class EveryExport : public ::testing::TestWithParam<int> {
 protected:
  const ExportInfo& Info() const { return ExportInfoOf(static_cast<ExportId>(GetParam())); }
  Params Make(uint32_t flags, BITMAPHANDLE* bitmap) const { return Params(Info(), flags, bitmap); }
};

TEST_P(EveryExport, ReadinessComesBeforeAnyLookAtTheStructure) {
  const Params p = Make(0, nullptr);
  EXPECT_EQ(CheckExportArguments(Info(), 0, nullptr), QV_ERROR_DLG_NOT_READY);
  EXPECT_EQ(CheckExportArguments(Info(), 2, p.Get()), QV_ERROR_DLG_NOT_READY);
  EXPECT_EQ(CheckExportArguments(Info(), 1, p.Get()), QV_SUCCESS);
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
  for (uint32_t size : {0u, expected - 1, expected + 1, 48u == expected ? 56u : 48u, 0xFFFFFFFFu}) {
    Params p = Make(0, nullptr);
    p.SetSize(size);
    EXPECT_EQ(CheckExportArguments(Info(), 1, p.Get()), QV_ERROR_INVALID_STRUCT_SIZE) << size;
    p = Make(QVDLG_SHOW_PREVIEW | QVDLG_AUTO_PROCESS, &unallocated);
    p.SetSize(size);
    EXPECT_EQ(CheckExportArguments(Info(), 1, p.Get()), QV_ERROR_INVALID_STRUCT_SIZE) << "with a bad bitmap, " << size;
  }
}

TEST_P(EveryExport, FlagsThatDemandABitmapRefuseMissingSignedOrPaletteWithRegionOnes) {
  BITMAPHANDLE unallocated = Bitmap(0);
  BITMAPHANDLE allocated = Bitmap(QV_BMF_ALLOCATED);
  BITMAPHANDLE signedSamples = Bitmap(QV_BMF_ALLOCATED | QV_BMF_SIGNED);
  BITMAPHANDLE signedUnallocated = Bitmap(QV_BMF_SIGNED);
  Pages unmapped(1);
  unmapped.Protect(0, PROT_NONE);
  auto* unreadable = reinterpret_cast<BITMAPHANDLE*>(unmapped.Base());
  BITMAPHANDLE palette8Region = Bitmap(QV_BMF_ALLOCATED, 8, QV_ORDER_BGR, true);
  BITMAPHANDLE palette4Region = Bitmap(QV_BMF_ALLOCATED, 4, QV_ORDER_BGR, true);
  BITMAPHANDLE palette8 = Bitmap(QV_BMF_ALLOCATED, 8, QV_ORDER_BGR, false);
  BITMAPHANDLE gray8Region = Bitmap(QV_BMF_ALLOCATED, 8, QV_ORDER_GRAY, true);
  BITMAPHANDLE unallocatedPaletteRegion = Bitmap(0, 1, QV_ORDER_BGR, true);

  const int signedResult = Info().refusesSigned ? QV_ERROR_UNSUPPORTED_BITMAP : QV_SUCCESS;
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
      {QVDLG_SHOW_PREVIEW, &palette8Region, QV_ERROR_UNSUPPORTED_FORMAT},
      {QVDLG_AUTO_PROCESS, &palette4Region, QV_ERROR_UNSUPPORTED_FORMAT},
      {0, &palette8Region, QV_SUCCESS},
      {QVDLG_SHOW_PREVIEW, &palette8, QV_SUCCESS},
      {QVDLG_AUTO_PROCESS, &gray8Region, QV_SUCCESS},
      {QVDLG_SHOW_PREVIEW, &unallocatedPaletteRegion, QV_ERROR_BITMAP_NOT_ALLOCATED},
  };
  for (const Case& c : cases) {
    const Params p = Make(c.flags, c.bitmap);
    EXPECT_EQ(CheckExportArguments(Info(), 1, p.Get()), c.expected) << "flags " << c.flags;
  }
}

INSTANTIATE_TEST_SUITE_P(DialogExports, EveryExport, ::testing::Range(0, kExportCount),
                         [](const ::testing::TestParamInfo<int>& info) {
                           return std::string(ExportInfoOf(static_cast<ExportId>(info.param)).name + 2);
                         });

struct Row {
  ExportId id;
  size_t size;
  size_t flagsOffset;
  bool refusesSigned;
};

template <class Params>
Row RowOf(ExportId id, bool refusesSigned) {
  return {id, sizeof(Params), offsetof(Params, uDlgFlags), refusesSigned};
}

TEST(ExportTable, RowsMatchTheStructuresTheyCheck) {
  const Row rows[kExportCount] = {
      RowOf<QVBRIGHTNESSDLGPARAMS>(ExportId::kBrightness, false),
      RowOf<QVCONTRASTDLGPARAMS>(ExportId::kContrast, false),
      RowOf<QVHUEDLGPARAMS>(ExportId::kHue, true),
      RowOf<QVSATURATIONDLGPARAMS>(ExportId::kSaturation, true),
      RowOf<QVHISTOCONTRASTDLGPARAMS>(ExportId::kHistoContrast, false),
      RowOf<QVPOSTERIZEDLGPARAMS>(ExportId::kPosterize, false),
      RowOf<QVSOLARIZEDLGPARAMS>(ExportId::kSolarize, false),
      RowOf<QVBALANCECOLORSDLGPARAMS>(ExportId::kBalanceColors, true),
      RowOf<QVGRAYSCALEDLGPARAMS>(ExportId::kGrayScale, true),
      RowOf<QVCOLOREDGRAYDLGPARAMS>(ExportId::kColoredGray, true),
      RowOf<QVINTENSITYDETECTDLGPARAMS>(ExportId::kIntensityDetect, true),
      RowOf<QVLOCALHISTOEQUALIZEDLGPARAMS>(ExportId::kLocalHistoEqualize, true),
  };
  for (const Row& row : rows) {
    const ExportInfo& info = ExportInfoOf(row.id);
    EXPECT_EQ(info.expectedSize, row.size) << info.name;
    EXPECT_EQ(info.probedSize, row.size) << info.name;
    EXPECT_EQ(info.flagsOffset, row.flagsOffset) << info.name;
    EXPECT_EQ(info.refusesSigned, row.refusesSigned) << info.name;
  }
}

}  // namespace
}  // namespace qvdlg
