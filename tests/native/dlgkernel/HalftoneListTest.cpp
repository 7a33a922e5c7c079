/*
 * The narrow-to-wide copy of the halftone pattern list: names widened (UTF-8
 * in the native build), pointers carried over, damaged lists refused, and only
 * copies made by the kernel released.
 */
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "qv/qvdlgkrn.h"

namespace {

struct NarrowList {
  std::vector<std::string> names;
  std::vector<QVHALFTONEPATTERNA> entries;
  QVHALFTONELISTA list{};
  BITMAPHANDLE bitmaps[3]{};

  explicit NarrowList(std::vector<std::string> patternNames) : names(std::move(patternNames)) {
    entries.resize(names.size());
    for (size_t i = 0; i < names.size(); ++i) {
      entries[i].uStructSize = 0xDEAD;  // not checked: the caller's value is reserved
      entries[i].pBitmap = &bitmaps[i % 3];
      entries[i].pUserData = reinterpret_cast<void*>(0x1000 + i);
      entries[i].pszName = &names[i][0];
    }
    list.uStructSize = sizeof(QVHALFTONELISTA);
    list.uReserved1 = 11;
    list.uReserved2 = 22;
    list.uCount = static_cast<uint32_t>(entries.size());
    list.pEntries = entries.data();
  }
};

}  // namespace

TEST(HalftoneList, CopiesNonAsciiNamesAndKeepsPointers) {
  NarrowList source({"Punkte grün", "Ω-Raster", "", "日本語", "plain"});
  source.entries[2].pszName = nullptr;
  const QVHALFTONELISTA before = source.list;

  QVHALFTONELISTW* copy = nullptr;
  ASSERT_EQ(Q_DlgConvertHalftoneListA(&source.list, &copy), QV_SUCCESS);
  ASSERT_NE(copy, nullptr);
  const QVHALFTONELISTW header = *copy;
  EXPECT_EQ(header.uCount, 5u);
  EXPECT_EQ(header.uStructSize, sizeof(QVHALFTONELISTW));
  EXPECT_EQ(header.uReserved1, 11u);
  EXPECT_EQ(header.uReserved2, 22u);
  const wchar_t* expected[] = {L"Punkte grün", L"Ω-Raster", nullptr, L"日本語", L"plain"};
  for (uint32_t i = 0; i < copy->uCount; ++i) {
    // Packed fields are compared by value: a reference to one may be misaligned.
    const QVHALFTONEPATTERNW entry = copy->pEntries[i];
    const QVHALFTONEPATTERNA original = source.entries[i];
    EXPECT_TRUE(entry.uStructSize == 28u && entry.pBitmap == original.pBitmap && entry.pUserData == original.pUserData)
        << i;
    const std::wstring name = entry.pszName ? entry.pszName : L"<null>";
    EXPECT_EQ(name, expected[i] ? expected[i] : L"<null>") << i;
  }
  // The source is read only.
  EXPECT_EQ(std::memcmp(&before, &source.list, sizeof(before)), 0);
  const uint32_t sourceSize = source.entries[0].uStructSize;
  EXPECT_EQ(sourceSize, 0xDEADu);

  EXPECT_EQ(Q_DlgFreeHalftoneList(copy), QV_SUCCESS);
  EXPECT_EQ(Q_DlgFreeHalftoneList(copy), QV_ERROR_INVALID_HANDLE) << "a second release is refused";
}

TEST(HalftoneList, EmptyListAndIndependentCopies) {
  QVHALFTONELISTA empty{};
  QVHALFTONELISTW* copy = nullptr;
  ASSERT_EQ(Q_DlgConvertHalftoneListA(&empty, &copy), QV_SUCCESS);
  const QVHALFTONELISTW emptyCopy = *copy;
  EXPECT_EQ(emptyCopy.uCount, 0u);
  EXPECT_EQ(emptyCopy.pEntries, nullptr);

  NarrowList source({"a", "b"});
  QVHALFTONELISTW* first = nullptr;
  QVHALFTONELISTW* second = nullptr;
  ASSERT_EQ(Q_DlgConvertHalftoneListA(&source.list, &first), QV_SUCCESS);
  ASSERT_EQ(Q_DlgConvertHalftoneListA(&source.list, &second), QV_SUCCESS);
  EXPECT_NE(first, second);
  EXPECT_EQ(Q_DlgFreeHalftoneList(first), QV_SUCCESS);
  const wchar_t* secondName = second->pEntries[1].pszName;
  EXPECT_EQ(std::wstring(secondName), L"b") << "releasing one copy leaves the other";
  EXPECT_EQ(Q_DlgFreeHalftoneList(second), QV_SUCCESS);
  EXPECT_EQ(Q_DlgFreeHalftoneList(copy), QV_SUCCESS);
}

TEST(HalftoneList, DamagedListsAreRefusedWithoutOutput) {
  QVHALFTONELISTW* const untouched = reinterpret_cast<QVHALFTONELISTW*>(0x1234);
  QVHALFTONELISTW* copy = untouched;

  const std::string badNames[] = {
      "bad \xC3\x28 name",  // a lead byte without its continuation
      "\xE6\x97",           // a three-byte sequence missing its last byte
      "\xC0\xAF",           // '/' in two bytes: overlong
      "\xE0\x80\xAF",       // '/' in three bytes: overlong
      "\xF0\x8F\xBF\xBF",   // U+FFFF in four bytes: overlong
      "\xED\xA0\x80",       // a surrogate
      "\xF4\x90\x80\x80",   // above U+10FFFF
      std::string(QV_HALFTONE_MAX_NAME + 1, 'n'),
  };
  for (const std::string& name : badNames) {
    NarrowList bad({"ok", name});
    EXPECT_EQ(Q_DlgConvertHalftoneListA(&bad.list, &copy), QV_ERROR_INVALID_PARAMETER) << name.substr(0, 8);
    EXPECT_EQ(copy, untouched);
  }
  // The shortest forms just above each overlong range, and a name of the longest allowed length, are fine.
  NarrowList edges({"\xC2\x80", "\xE0\xA0\x80", "\xF0\x90\x80\x80", std::string(QV_HALFTONE_MAX_NAME, 'n')});
  QVHALFTONELISTW* edgeCopy = nullptr;
  ASSERT_EQ(Q_DlgConvertHalftoneListA(&edges.list, &edgeCopy), QV_SUCCESS);
  const wchar_t* longest = edgeCopy->pEntries[3].pszName;
  EXPECT_EQ(std::wstring(longest).size(), QV_HALFTONE_MAX_NAME);
  EXPECT_EQ(Q_DlgFreeHalftoneList(edgeCopy), QV_SUCCESS);

  NarrowList unmappedName({"x"});
  unmappedName.entries[0].pszName = reinterpret_cast<char*>(0x10);
  EXPECT_EQ(Q_DlgConvertHalftoneListA(&unmappedName.list, &copy), QV_ERROR_INVALID_PARAMETER);

  NarrowList hugeCount({"x"});
  hugeCount.list.uCount = 0xFFFFFFFFu;
  EXPECT_EQ(Q_DlgConvertHalftoneListA(&hugeCount.list, &copy), QV_ERROR_INVALID_PARAMETER);

  NarrowList nullEntries({"x"});
  nullEntries.list.pEntries = nullptr;
  EXPECT_EQ(Q_DlgConvertHalftoneListA(&nullEntries.list, &copy), QV_ERROR_INVALID_PARAMETER);

  EXPECT_EQ(copy, untouched);

  EXPECT_EQ(Q_DlgConvertHalftoneListA(nullptr, &copy), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgConvertHalftoneListA(reinterpret_cast<const QVHALFTONELISTA*>(0x10), &copy),
            QV_ERROR_INVALID_PARAMETER);
  NarrowList fine({"x"});
  EXPECT_EQ(Q_DlgConvertHalftoneListA(&fine.list, nullptr), QV_ERROR_INVALID_PARAMETER);

  QVHALFTONELISTW foreign{};
  EXPECT_EQ(Q_DlgFreeHalftoneList(&foreign), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_DlgFreeHalftoneList(nullptr), QV_ERROR_INVALID_PARAMETER);
}
