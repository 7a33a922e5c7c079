/*
 * Handle owners: each handle is released exactly once, moves hand ownership
 * over without releasing, selections are undone before an owner lets go,
 * and the palette and file-dialog helpers keep their data straight. Counts
 * come from the owners themselves, since Wine reports no GDI handle counts.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "AddressCheck.h"
#include "FileDialog.h"
#include "HandleCount.h"
#include "Palette.h"
#include "SelectObjectScope.h"
#include "UniqueDC.h"
#include "UniqueHandle.h"

using namespace qvfw;

TEST(HandleOwnerTest, EveryOwnerReleasesItsHandleOnce) {
  const long baseline = OwnedHandleCount();
  HBRUSH brushHandle = nullptr;
  HBITMAP bitmapHandle = nullptr;
  {
    UniqueBrush brush(::CreateSolidBrush(RGB(1, 2, 3)));
    UniquePen pen(::CreatePen(PS_SOLID, 1, RGB(0, 0, 0)));
    UniqueMenu menu(::CreatePopupMenu());
    UniqueDC screen(nullptr);
    UniqueMemoryDC memory(::CreateCompatibleDC(screen.Get()));
    UniqueBitmap bitmap(::CreateCompatibleBitmap(screen.Get(), 8, 8));
    ASSERT_TRUE(brush && pen && menu && screen && memory && bitmap);
    brushHandle = brush.Get();
    bitmapHandle = bitmap.Get();
    EXPECT_EQ(OwnedHandleCount(), baseline + 6);

    // Moving hands the handle over; the moved-from owner holds nothing.
    UniqueBrush moved(std::move(brush));
    EXPECT_EQ(brush.Get(), nullptr);
    EXPECT_EQ(moved.Get(), brushHandle);
    UniqueDC movedDC(std::move(screen));
    EXPECT_FALSE(screen);
    EXPECT_EQ(OwnedHandleCount(), baseline + 6);

    // Assigning over a held handle frees the old one.
    UniqueBitmap other(::CreateCompatibleBitmap(movedDC.Get(), 4, 4));
    HBITMAP otherHandle = other.Get();
    other = std::move(bitmap);
    EXPECT_EQ(::GetObjectType(otherHandle), 0u);
    EXPECT_EQ(other.Get(), bitmapHandle);
    EXPECT_EQ(OwnedHandleCount(), baseline + 6);
  }
  EXPECT_EQ(OwnedHandleCount(), baseline);
  EXPECT_EQ(::GetObjectType(brushHandle), 0u);
  EXPECT_EQ(::GetObjectType(bitmapHandle), 0u);
}

TEST(HandleOwnerTest, ReleaseGivesUpOwnershipWithoutFreeing) {
  const long baseline = OwnedHandleCount();
  UniqueBrush brush(::CreateSolidBrush(RGB(9, 9, 9)));
  HBRUSH handle = brush.Release();
  EXPECT_EQ(OwnedHandleCount(), baseline);
  EXPECT_EQ(::GetObjectType(handle), static_cast<DWORD>(OBJ_BRUSH));
  ::DeleteObject(handle);
  UniqueBrush empty;
  empty.Reset();
  EXPECT_EQ(OwnedHandleCount(), baseline);
}

TEST(HandleOwnerTest, SelectionIsUndoneAtTheEndOfItsScope) {
  UniqueDC screen(nullptr);
  UniqueMemoryDC memory(::CreateCompatibleDC(screen.Get()));
  UniqueBitmap bitmap(::CreateCompatibleBitmap(screen.Get(), 8, 8));
  HGDIOBJ original = ::GetCurrentObject(memory.Get(), OBJ_BITMAP);
  {
    SelectObjectScope select(memory.Get(), bitmap.Get());
    EXPECT_EQ(select.Previous(), original);
    EXPECT_EQ(::GetCurrentObject(memory.Get(), OBJ_BITMAP), bitmap.Get());
    ::SetPixel(memory.Get(), 2, 3, RGB(255, 0, 0));
    EXPECT_EQ(::GetPixel(memory.Get(), 2, 3), RGB(255, 0, 0));
  }
  EXPECT_EQ(::GetCurrentObject(memory.Get(), OBJ_BITMAP), original);
  // A null DC or object selects nothing and restores nothing.
  SelectObjectScope none(nullptr, bitmap.Get());
  EXPECT_EQ(none.Previous(), nullptr);
}

TEST(HandleOwnerTest, PaletteKeepsEntriesAndRefusesBadInput) {
  const long baseline = OwnedHandleCount();
  const PALETTEENTRY entries[3] = {{10, 20, 30, 0}, {40, 50, 60, 0}, {70, 80, 90, 0}};
  {
    CPalette palette;
    EXPECT_FALSE(palette.CreatePalette(nullptr, 3));
    EXPECT_FALSE(palette.CreatePalette(entries, 0));
    EXPECT_FALSE(palette.CreatePalette(entries, 257));
    ASSERT_TRUE(palette.CreatePalette(entries, 3));
    EXPECT_FALSE(palette.CreatePalette(entries, 3)) << "a palette is not silently replaced";
    EXPECT_EQ(palette.GetEntryCount(), 3);
    const std::vector<PALETTEENTRY> back = palette.GetAllEntries();
    ASSERT_EQ(back.size(), 3u);
    EXPECT_EQ(back[1].peRed, 40);
    EXPECT_EQ(back[2].peBlue, 90);

    CPalette copy;
    ASSERT_TRUE(copy.CreateCopy(palette));
    EXPECT_NE(copy.GetSafeHandle(), palette.GetSafeHandle());
    EXPECT_EQ(copy.GetAllEntries()[0].peGreen, 20);
    EXPECT_EQ(OwnedHandleCount(), baseline + 2);

    CPalette moved(std::move(copy));
    EXPECT_EQ(copy.GetSafeHandle(), nullptr);
    HPALETTE detached = moved.Detach();
    EXPECT_EQ(OwnedHandleCount(), baseline + 1);
    ::DeleteObject(detached);
  }
  EXPECT_EQ(OwnedHandleCount(), baseline);
}

TEST(HandleOwnerTest, FileDialogFilterBecomesDoubleNullList) {
  struct Case {
    const wchar_t* filter;
    std::vector<wchar_t> expected;
  };
  const Case cases[] = {
      {L"Curves (*.crv)|*.crv||", {L'C', L'u', L'r', L'v', L'e', L's', L' ', L'(', L'*', L'.', L'c',
                                   L'r', L'v', L')', 0,    L'*', L'.', L'c', L'r', L'v', 0,    0}},
      {L"A|*.a", {L'A', 0, L'*', L'.', L'a', 0, 0}},
      {L"", {0, 0}},
      {nullptr, {0, 0}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CFileDialog::MakeFilterList(c.filter), c.expected);
  }
}

TEST(HandleOwnerTest, AddressProbeTellsUsableFromUnusableMemory) {
  int local[4] = {};
  EXPECT_TRUE(qv::IsValidAddress(local, sizeof(local), qv::Access::Write));
  EXPECT_FALSE(qv::IsValidAddress(nullptr, 4, qv::Access::Read));
  void* readOnly = ::VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READONLY);
  ASSERT_NE(readOnly, nullptr);
  EXPECT_TRUE(qv::IsValidAddress(readOnly, 4096, qv::Access::Read));
  EXPECT_FALSE(qv::IsValidAddress(readOnly, 4096, qv::Access::Write));
  EXPECT_FALSE(qv::IsValidAddress(readOnly, 4097, qv::Access::Read));
  ::VirtualFree(readOnly, 0, MEM_RELEASE);
  EXPECT_FALSE(qv::IsValidAddress(readOnly, 1, qv::Access::Read));
}
