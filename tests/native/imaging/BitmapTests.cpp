/*
 * Descriptor life cycle and argument checks of the bitmap exports: every format can be created, copied and
 * freed; hostile descriptors get their error codes without crashing; the gray test tells the palette kinds
 * apart.
 */
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <climits>
#include <cstring>
#include <string>

#include "Bitmap.h"
#include "BitmapCheck.h"
#include "TestBitmaps.h"
#include "qv/qvkrn.h"

using qvtest::OwnedBitmap;

namespace {

// A page that is mapped but can be neither read nor written, for pointers that must be refused.
class InaccessiblePage {
 public:
  InaccessiblePage() { m_p = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0); }
  ~InaccessiblePage() { munmap(m_p, 4096); }
  void* get() const { return m_p; }

 private:
  void* m_p;
};

TEST(BitmapLifeCycle, EveryFormatIsCreatedCopiedAndFreed) {
  for (const auto& fc : qvtest::AllFormats()) {
    SCOPED_TRACE(fc.name);
    OwnedBitmap b, copy;
    ASSERT_EQ(qvtest::CreatePatterned(fc, 13, 7, b.get()), QV_SUCCESS);
    EXPECT_EQ(b->nBytesPerLine % 4, 0);
    EXPECT_GE(static_cast<int64_t>(b->nBytesPerLine) * 8, int64_t{13} * (fc.bitsPerPixel == 12 ? 16 : fc.bitsPerPixel));
    EXPECT_EQ(Q_IsValidBitmap(b.get(), 0), QV_SUCCESS);
    ASSERT_EQ(Q_CopyBitmap(copy.get(), sizeof(BITMAPHANDLE), b.get(), 0), QV_SUCCESS);
    EXPECT_NE(copy->pData, b->pData);
    EXPECT_EQ(qvtest::PixelBytes(*copy), qvtest::PixelBytes(*b));
    EXPECT_EQ(std::memcmp(copy->Palette, b->Palette, sizeof b->Palette), 0);
    // Writing the copy leaves the original alone.
    const auto before = qvtest::PixelBytes(*b);
    copy->pData[0] ^= 0xFF;
    EXPECT_EQ(qvtest::PixelBytes(*b), before);
    EXPECT_EQ(Q_FreeBitmap(copy.get(), 0), QV_SUCCESS);
    EXPECT_EQ(copy->pData, nullptr);
    EXPECT_EQ(copy->uFlags & QV_BMF_ALLOCATED, 0u);
  }
}

TEST(BitmapLifeCycle, InitThenAllocateGivesAUsableBitmap) {
  OwnedBitmap b;
  ASSERT_EQ(Q_InitBitmap(b.get(), sizeof(BITMAPHANDLE), 5, 3, 24, 0), QV_SUCCESS);
  EXPECT_EQ(b->pData, nullptr);
  EXPECT_EQ(Q_IsValidBitmap(b.get(), 0), QV_ERROR_BITMAP_NOT_ALLOCATED);
  ASSERT_EQ(Q_AllocateBitmap(b.get(), 0), QV_SUCCESS);
  EXPECT_EQ(Q_IsValidBitmap(b.get(), 0), QV_SUCCESS);
  EXPECT_EQ(b->nBytesPerLine, 16);
  EXPECT_EQ(b->uDataSize, 48u);
  // A second allocation over live pixels would leak them.
  EXPECT_EQ(Q_AllocateBitmap(b.get(), 0), QV_ERROR_INVALID_PARAMETER);
}

TEST(BitmapLifeCycle, FreeingTwiceOrThroughAStaleCopyIsRefused) {
  OwnedBitmap b;
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 4, 4, 32, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  RECT r{1, 1, 3, 3};
  const uint8_t mask[4] = {1, 0, 0, 1};
  ASSERT_EQ(Q_SetBitmapRgnMask(b.get(), &r, mask, 2, 0), QV_SUCCESS);
  BITMAPHANDLE stale = *b;
  ASSERT_EQ(Q_FreeBitmap(b.get(), 0), QV_SUCCESS);
  EXPECT_EQ(Q_FreeBitmap(b.get(), 0), QV_ERROR_BITMAP_NOT_ALLOCATED);
  EXPECT_EQ(Q_FreeBitmap(&stale, 0), QV_ERROR_BITMAP_NOT_ALLOCATED);
  EXPECT_EQ(Q_IsValidBitmap(&stale, 0), QV_ERROR_BITMAP_NOT_ALLOCATED);
  EXPECT_EQ(qv::AllocationSize(stale.pRgnMask), 0u);
}

TEST(BitmapChecks, HostileDescriptorsGetTheirCodes) {
  InaccessiblePage page;
  EXPECT_EQ(Q_IsValidBitmap(nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_IsValidBitmap(static_cast<const BITMAPHANDLE*>(page.get()), 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_FreeBitmap(static_cast<BITMAPHANDLE*>(page.get()), 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_InitBitmap(nullptr, sizeof(BITMAPHANDLE), 1, 1, 8, 0), QV_ERROR_INVALID_PARAMETER);

  OwnedBitmap good;
  ASSERT_EQ(Q_CreateBitmap(good.get(), sizeof(BITMAPHANDLE), 8, 8, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  struct Case {
    const char* what;
    void (*spoil)(BITMAPHANDLE&);
    int expected;
  };
  static uint8_t foreign[4096];
  const Case cases[] = {
      {"struct size", [](BITMAPHANDLE& b) { b.uStructSize = 272; }, QV_ERROR_INVALID_STRUCT_SIZE},
      {"flag cleared", [](BITMAPHANDLE& b) { b.uFlags &= ~QV_BMF_ALLOCATED; }, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {"foreign pixels", [](BITMAPHANDLE& b) { b.pData = foreign; }, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {"inside the block", [](BITMAPHANDLE& b) { b.pData += 4; }, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {"taller than its block", [](BITMAPHANDLE& b) { b.nHeight = 9; }, QV_ERROR_BITMAP_NOT_ALLOCATED},
      {"zero width", [](BITMAPHANDLE& b) { b.nWidth = 0; }, QV_ERROR_INVALID_DIMENSIONS},
      {"zero height", [](BITMAPHANDLE& b) { b.nHeight = 0; }, QV_ERROR_INVALID_DIMENSIONS},
      {"negative height", [](BITMAPHANDLE& b) { b.nHeight = -8; }, QV_ERROR_INVALID_DIMENSIONS},
      {"short rows", [](BITMAPHANDLE& b) { b.nBytesPerLine = 20; }, QV_ERROR_INVALID_DIMENSIONS},
      {"unaligned rows", [](BITMAPHANDLE& b) { b.nBytesPerLine = 25; }, QV_ERROR_INVALID_DIMENSIONS},
      {"bits per pixel", [](BITMAPHANDLE& b) { b.nBitsPerPixel = 7; }, QV_ERROR_INVALID_BITS_PER_PIXEL},
      {"gray order on color", [](BITMAPHANDLE& b) { b.uOrder = QV_ORDER_GRAY; }, QV_ERROR_UNSUPPORTED_FORMAT},
      {"unknown order", [](BITMAPHANDLE& b) { b.uOrder = 7; }, QV_ERROR_INVALID_PARAMETER},
      {"signed color", [](BITMAPHANDLE& b) { b.uFlags |= QV_BMF_SIGNED; }, QV_ERROR_UNSUPPORTED_FORMAT},
      {"palette count", [](BITMAPHANDLE& b) { b.nColors = 300; }, QV_ERROR_INVALID_PARAMETER},
      {"LUT not ours",
       [](BITMAPHANDLE& b) {
         b.pLUT = reinterpret_cast<RGBQUAD*>(foreign);
         b.uLUTLength = 4;
       },
       QV_ERROR_INVALID_TABLE},
      {"LUT flag without LUT", [](BITMAPHANDLE& b) { b.uFlags |= QV_BMF_USELUT; }, QV_ERROR_INVALID_TABLE},
      {"region outside",
       [](BITMAPHANDLE& b) {
         b.uRgnFlags = QV_RGN_SET;
         b.rcRgn = RECT{4, 4, 9, 6};
       },
       QV_ERROR_BAD_REGION},
      {"empty region",
       [](BITMAPHANDLE& b) {
         b.uRgnFlags = QV_RGN_SET;
         b.rcRgn = RECT{4, 4, 4, 6};
       },
       QV_ERROR_BAD_REGION},
      {"mask not ours",
       [](BITMAPHANDLE& b) {
         b.uRgnFlags = QV_RGN_SET;
         b.rcRgn = RECT{0, 0, 2, 2};
         b.pRgnMask = foreign;
         b.nRgnMaskStride = 2;
       },
       QV_ERROR_BAD_REGION},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    BITMAPHANDLE b = *good;
    c.spoil(b);
    EXPECT_EQ(Q_IsValidBitmap(&b, 0), c.expected);
    EXPECT_EQ(Q_IsGrayScaleBitmap(&b, 0), c.expected);
  }
  EXPECT_EQ(Q_IsValidBitmap(good.get(), 0x10), QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(Q_IsValidBitmap(good.get(), 0), QV_SUCCESS);
}

TEST(BitmapChecks, ImpossibleSizesAreRefusedBeforeAllocating) {
  OwnedBitmap b;
  EXPECT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), INT_MAX, INT_MAX, 64, QV_ORDER_RGB, nullptr, 0, 0),
            QV_ERROR_IMAGE_TOO_LARGE);
  EXPECT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 5, 5, 3, QV_ORDER_GRAY, nullptr, 0, 0),
            QV_ERROR_INVALID_BITS_PER_PIXEL);
  EXPECT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 5, 5, 12, QV_ORDER_BGR, nullptr, 0, 0),
            QV_ERROR_UNSUPPORTED_FORMAT);
  EXPECT_EQ(Q_CreateBitmap(b.get(), 100, 5, 5, 8, QV_ORDER_GRAY, nullptr, 0, 0), QV_ERROR_INVALID_STRUCT_SIZE);
  EXPECT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 5, 5, 4, QV_ORDER_BGR, nullptr, 17, 0),
            QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 5, 5, 8, QV_ORDER_GRAY, nullptr, 0, 0x4),
            QV_ERROR_INVALID_FLAGS);
  // The caller's descriptor is untouched by every refusal above.
  EXPECT_EQ(b->pData, nullptr);
  EXPECT_EQ(b->uStructSize, 0u);
}

TEST(BitmapChecks, EveryDoorAppliesTheSameSizeLimit) {
  const int limit = QV_MAX_BITMAP_SIDE;
  struct Case {
    int width, height, expected;
  };
  const Case cases[] = {
      {limit, 1, QV_SUCCESS},
      {limit + 1, 1, QV_ERROR_IMAGE_TOO_LARGE},
      {1, limit, QV_SUCCESS},
      {1, limit + 1, QV_ERROR_IMAGE_TOO_LARGE},
      {0, 1, QV_ERROR_INVALID_DIMENSIONS},
      {1, 0, QV_ERROR_INVALID_DIMENSIONS},
      {0, limit + 1, QV_ERROR_INVALID_DIMENSIONS},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.width) + " x " + std::to_string(c.height));
    OwnedBitmap created, initialised;
    EXPECT_EQ(Q_CreateBitmap(created.get(), sizeof(BITMAPHANDLE), c.width, c.height, 8, QV_ORDER_GRAY, nullptr, 0, 0),
              c.expected);
    EXPECT_EQ(Q_InitBitmap(initialised.get(), sizeof(BITMAPHANDLE), c.width, c.height, 8, 0), c.expected);
    BITMAPHANDLE internal;
    const int rc = qv::CreateBlankBitmap(c.width, c.height, 8, QV_ORDER_GRAY, false, &internal);
    EXPECT_EQ(rc, c.expected);
    if (rc == QV_SUCCESS) Q_FreeBitmap(&internal, 0);
  }
  // A descriptor widened past the limit after Q_InitBitmap is refused by Q_AllocateBitmap too.
  OwnedBitmap widened;
  ASSERT_EQ(Q_InitBitmap(widened.get(), sizeof(BITMAPHANDLE), 8, 1, 8, 0), QV_SUCCESS);
  widened->nWidth = limit + 1;
  EXPECT_EQ(Q_AllocateBitmap(widened.get(), 0), QV_ERROR_IMAGE_TOO_LARGE);
}

TEST(BitmapChecks, CopyRefusesABadSourceAndKeepsTheDestination) {
  OwnedBitmap src, dst;
  ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 3, 3, 8, QV_ORDER_GRAY, nullptr, 0, 0), QV_SUCCESS);
  BITMAPHANDLE broken = *src;
  broken.uFlags = 0;
  std::memset(dst.get(), 0x5A, sizeof(BITMAPHANDLE));
  EXPECT_EQ(Q_CopyBitmap(dst.get(), sizeof(BITMAPHANDLE), &broken, 0), QV_ERROR_BITMAP_NOT_ALLOCATED);
  EXPECT_EQ(Q_CopyBitmap(dst.get(), 12, src.get(), 0), QV_ERROR_INVALID_STRUCT_SIZE);
  EXPECT_EQ(Q_CopyBitmap(src.get(), sizeof(BITMAPHANDLE), src.get(), 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(dst->uStructSize, 0x5A5A5A5Au);
  std::memset(dst.get(), 0, sizeof(BITMAPHANDLE));
}

TEST(BitmapGrayTest, TellsPaletteKindsApart) {
  struct Case {
    const char* what;
    int bits;
    unsigned order;
    int colors;
    RGBQUAD (*entry)(int i, int n);
    int expected;
  };
  const Case cases[] = {
      {"gray samples", 16, QV_ORDER_GRAY, 0, nullptr, QV_GRAY_ORDERED},
      {"color", 24, QV_ORDER_BGR, 0, nullptr, QV_GRAY_NONE},
      {"5-6-5", 16, QV_ORDER_BGR, 0, nullptr, QV_GRAY_NONE},
      {"dark to light", 8, QV_ORDER_BGR, 256,
       [](int i, int) {
         return RGBQUAD{uint8_t(i), uint8_t(i), uint8_t(i), 0};
       },
       QV_GRAY_ORDERED},
      {"light to dark", 4, QV_ORDER_BGR, 16,
       [](int i, int) {
         return RGBQUAD{uint8_t(255 - 17 * i), uint8_t(255 - 17 * i), uint8_t(255 - 17 * i), 0};
       },
       QV_GRAY_INVERSE},
      {"gray shuffled", 2, QV_ORDER_BGR, 4,
       [](int i, int) {
         const uint8_t v[] = {0, 200, 100, 255};
         return RGBQUAD{v[i], v[i], v[i], 0};
       },
       QV_GRAY_NOT_ORDERED},
      {"one tinted entry", 8, QV_ORDER_BGR, 256,
       [](int i, int) {
         return RGBQUAD{uint8_t(i), uint8_t(i), uint8_t(i == 77 ? 78 : i), 0};
       },
       QV_GRAY_NONE},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    RGBQUAD pal[256];
    for (int i = 0; i < c.colors; ++i) pal[i] = c.entry(i, c.colors);
    OwnedBitmap b;
    ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 4, 4, c.bits, c.order, c.colors ? pal : nullptr, c.colors,
                             0),
              QV_SUCCESS);
    EXPECT_EQ(Q_IsGrayScaleBitmap(b.get(), 0), c.expected);
  }
}

}  // namespace
