/*
 * Bitmap lists: items are deep copies in and out, indices are checked, removal hands over ownership, and
 * handles that are not live lists are refused.
 */
#include <gtest/gtest.h>

#include "Bitmap.h"
#include "TestBitmaps.h"

using qvtest::OwnedBitmap;

namespace {

void MakeGray(OwnedBitmap& b, uint8_t value) {
  ASSERT_EQ(Q_CreateBitmap(b.get(), sizeof(BITMAPHANDLE), 2, 2, 8, QV_ORDER_GRAY, nullptr, 0, 0), QV_SUCCESS);
  b->pData[0] = value;
}

TEST(BitmapList, KeepsOrderAndCopies) {
  HBITMAPLIST h = nullptr;
  ASSERT_EQ(Q_CreateBitmapList(&h, 0), QV_SUCCESS);
  OwnedBitmap a, b, c;
  for (auto [item, value] : {std::pair{&a, 1}, {&b, 2}, {&c, 3}}) MakeGray(*item, uint8_t(value));
  ASSERT_EQ(Q_InsertBitmapListItem(h, 0, a.get(), 0), QV_SUCCESS);
  ASSERT_EQ(Q_InsertBitmapListItem(h, 1, c.get(), 0), QV_SUCCESS);
  ASSERT_EQ(Q_InsertBitmapListItem(h, 1, b.get(), 0), QV_SUCCESS);
  EXPECT_EQ(Q_InsertBitmapListItem(h, 4, b.get(), 0), QV_ERROR_INDEX_OUT_OF_RANGE);
  a->pData[0] = 99;  // the list holds its own copy
  unsigned count = 0;
  ASSERT_EQ(Q_GetBitmapListCount(h, &count, 0), QV_SUCCESS);
  EXPECT_EQ(count, 3u);
  for (unsigned i = 0; i < 3; ++i) {
    OwnedBitmap item;
    ASSERT_EQ(Q_GetBitmapListItem(h, i, item.get(), sizeof(BITMAPHANDLE), 0), QV_SUCCESS);
    EXPECT_EQ(item->pData[0], i + 1);
    item->pData[0] = 50;  // changing the handed-out copy leaves the list alone
  }
  OwnedBitmap first;
  ASSERT_EQ(Q_GetBitmapListItem(h, 0, first.get(), sizeof(BITMAPHANDLE), 0), QV_SUCCESS);
  EXPECT_EQ(first->pData[0], 1);
  EXPECT_EQ(Q_GetBitmapListItem(h, 3, first.get(), sizeof(BITMAPHANDLE), 0), QV_ERROR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(Q_GetBitmapListItem(h, 0, first.get(), 8, 0), QV_ERROR_INVALID_STRUCT_SIZE);
  EXPECT_EQ(Q_DestroyBitmapList(h, 0), QV_SUCCESS);
}

TEST(BitmapList, RemoveHandsOverOrFrees) {
  HBITMAPLIST h = nullptr;
  ASSERT_EQ(Q_CreateBitmapList(&h, 0), QV_SUCCESS);
  OwnedBitmap a;
  MakeGray(a, 7);
  ASSERT_EQ(Q_InsertBitmapListItem(h, 0, a.get(), 0), QV_SUCCESS);
  ASSERT_EQ(Q_InsertBitmapListItem(h, 0, a.get(), 0), QV_SUCCESS);
  OwnedBitmap out;
  ASSERT_EQ(Q_RemoveBitmapListItem(h, 1, out.get(), 0), QV_SUCCESS);
  EXPECT_EQ(Q_IsValidBitmap(out.get(), 0), QV_SUCCESS);
  EXPECT_EQ(out->pData[0], 7);
  ASSERT_EQ(Q_RemoveBitmapListItem(h, 0, nullptr, 0), QV_SUCCESS);
  EXPECT_EQ(Q_RemoveBitmapListItem(h, 0, nullptr, 0), QV_ERROR_INDEX_OUT_OF_RANGE);
  unsigned count = 9;
  ASSERT_EQ(Q_GetBitmapListCount(h, &count, 0), QV_SUCCESS);
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(Q_DestroyBitmapList(h, 0), QV_SUCCESS);
}

TEST(BitmapList, UnknownHandlesAndBadItemsAreRefused) {
  HBITMAPLIST h = nullptr;
  ASSERT_EQ(Q_CreateBitmapList(&h, 0), QV_SUCCESS);
  int local = 0;
  HBITMAPLIST forged = reinterpret_cast<HBITMAPLIST>(&local);
  unsigned count = 0;
  EXPECT_EQ(Q_GetBitmapListCount(forged, &count, 0), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_GetBitmapListCount(nullptr, &count, 0), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_DestroyBitmapList(forged, 0), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_GetBitmapListCount(h, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  OwnedBitmap unallocated;
  EXPECT_EQ(Q_InsertBitmapListItem(h, 0, unallocated.get(), 0), QV_ERROR_INVALID_STRUCT_SIZE);
  EXPECT_EQ(Q_InsertBitmapListItem(h, 0, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_CreateBitmapList(nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  OwnedBitmap a;
  MakeGray(a, 1);
  ASSERT_EQ(Q_InsertBitmapListItem(h, 0, a.get(), 0), QV_SUCCESS);
  ASSERT_EQ(Q_DestroyBitmapList(h, 0), QV_SUCCESS);
  // The destroyed list is gone for good.
  EXPECT_EQ(Q_DestroyBitmapList(h, 0), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_InsertBitmapListItem(h, 0, a.get(), 0), QV_ERROR_INVALID_HANDLE);
}

}  // namespace
