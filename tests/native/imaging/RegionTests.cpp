/*
 * Regions: rectangles and masks are set, bounded, replaced and removed through the exports, and the span
 * view gives exactly the pixels inside.
 */
#include <gtest/gtest.h>

#include <vector>

#include "Bitmap.h"
#include "Region.h"
#include "TestBitmaps.h"

using qvtest::OwnedBitmap;

namespace {

std::vector<std::pair<int, int>> SpansOf(const qv::RegionSpans& spans, int y) {
  std::vector<std::pair<int, int>> out;
  spans.ForEachSpan(y, [&](int x0, int x1) { out.emplace_back(x0, x1); });
  return out;
}

class RegionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 10, 6, 8, QV_ORDER_GRAY, nullptr, 0, 0), QV_SUCCESS);
  }
  OwnedBitmap b;
};

TEST_F(RegionTest, RectangleBoundsRowsAndSpans) {
  // No region (the whole bitmap is inside), an inner rectangle, one the full width of the image, the whole image.
  for (RECT set : {RECT{}, RECT{2, 1, 7, 4}, RECT{0, 2, 10, 3}, RECT{0, 0, 10, 6}}) {
    SCOPED_TRACE(testing::Message() << set.left << "," << set.top << "," << set.right << "," << set.bottom);
    const bool none = set.right == 0;
    if (none) {
      set = RECT{0, 0, 10, 6};
    } else {
      ASSERT_EQ(Q_SetBitmapRgnRect(b.get(), &set, 0), QV_SUCCESS);
    }
    EXPECT_EQ(Q_BitmapHasRgn(b.get(), 0), none ? 0 : 1);
    RECT r{};
    ASSERT_EQ(Q_GetBitmapRgnBounds(b.get(), &r, 0), QV_SUCCESS);
    EXPECT_TRUE(r.left == set.left && r.top == set.top && r.right == set.right && r.bottom == set.bottom);
    qv::RegionSpans spans(*b);
    EXPECT_EQ(spans.HasRegion(), !none);
    EXPECT_EQ(spans.Top(), set.top);
    EXPECT_EQ(spans.Bottom(), set.bottom);
    EXPECT_TRUE(set.top == 0 || SpansOf(spans, set.top - 1).empty());
    EXPECT_EQ(SpansOf(spans, set.bottom - 1), (std::vector<std::pair<int, int>>{{set.left, set.right}}));
    EXPECT_TRUE(spans.Contains(set.right - 1, set.bottom - 1));
  }
}

TEST_F(RegionTest, MaskGivesRunsAndIsCopied) {
  RECT set{1, 2, 6, 4};
  std::vector<uint8_t> mask = {1, 1, 0, 1, 0, 9, 9,  // stride 7: the last two bytes are not part of the mask
                               0, 0, 0, 0, 1, 9, 9};
  ASSERT_EQ(Q_SetBitmapRgnMask(b.get(), &set, mask.data(), 7, 0), QV_SUCCESS);
  std::fill(mask.begin(), mask.end(), 0);  // the kernel kept its own copy
  qv::RegionSpans spans(*b);
  EXPECT_EQ(SpansOf(spans, 2), (std::vector<std::pair<int, int>>{{1, 3}, {4, 5}}));
  EXPECT_EQ(SpansOf(spans, 3), (std::vector<std::pair<int, int>>{{5, 6}}));
  EXPECT_TRUE(spans.Contains(4, 2));
  EXPECT_FALSE(spans.Contains(3, 2));
  // Replacing the region with a rectangle releases the mask.
  uint8_t* oldMask = b->pRgnMask;
  RECT rect{0, 0, 1, 1};
  ASSERT_EQ(Q_SetBitmapRgnRect(b.get(), &rect, 0), QV_SUCCESS);
  EXPECT_EQ(qv::AllocationSize(oldMask), 0u);
  EXPECT_EQ(b->pRgnMask, nullptr);
  ASSERT_EQ(Q_FreeBitmapRgn(b.get(), 0), QV_SUCCESS);
  EXPECT_EQ(Q_BitmapHasRgn(b.get(), 0), 0);
}

TEST_F(RegionTest, BadRegionsAreRefusedAndTheOldOneKept) {
  RECT keep{0, 0, 2, 2};
  ASSERT_EQ(Q_SetBitmapRgnRect(b.get(), &keep, 0), QV_SUCCESS);
  const uint8_t zeros[4] = {0, 0, 0, 0};
  const uint8_t ones[4] = {1, 1, 1, 1};
  RECT outside{8, 0, 11, 2}, empty{3, 3, 3, 5}, inverted{5, 5, 2, 2}, small{0, 0, 2, 2};
  EXPECT_EQ(Q_SetBitmapRgnRect(b.get(), &outside, 0), QV_ERROR_BAD_REGION);
  EXPECT_EQ(Q_SetBitmapRgnRect(b.get(), &empty, 0), QV_ERROR_BAD_REGION);
  EXPECT_EQ(Q_SetBitmapRgnRect(b.get(), &inverted, 0), QV_ERROR_BAD_REGION);
  EXPECT_EQ(Q_SetBitmapRgnRect(b.get(), nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_SetBitmapRgnMask(b.get(), &small, zeros, 2, 0), QV_ERROR_BAD_REGION);
  EXPECT_EQ(Q_SetBitmapRgnMask(b.get(), &small, ones, 1, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_SetBitmapRgnMask(b.get(), &small, nullptr, 2, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_SetBitmapRgnRect(b.get(), &keep, 1), QV_ERROR_INVALID_FLAGS);
  RECT r{};
  ASSERT_EQ(Q_GetBitmapRgnBounds(b.get(), &r, 0), QV_SUCCESS);
  EXPECT_EQ(r.right, 2);
  EXPECT_EQ(Q_GetBitmapRgnBounds(b.get(), nullptr, 0), QV_ERROR_INVALID_PARAMETER);
}

TEST_F(RegionTest, CopyCarriesItsOwnMask) {
  RECT set{0, 0, 2, 1};
  const uint8_t mask[2] = {0, 1};
  ASSERT_EQ(Q_SetBitmapRgnMask(b.get(), &set, mask, 2, 0), QV_SUCCESS);
  OwnedBitmap copy;
  ASSERT_EQ(Q_CopyBitmap(copy.get(), sizeof(BITMAPHANDLE), b.get(), 0), QV_SUCCESS);
  EXPECT_NE(copy->pRgnMask, b->pRgnMask);
  ASSERT_EQ(Q_FreeBitmapRgn(b.get(), 0), QV_SUCCESS);
  qv::RegionSpans spans(*copy);
  EXPECT_EQ(SpansOf(spans, 0), (std::vector<std::pair<int, int>>{{1, 2}}));
}

}  // namespace
