/*
 * The exports under real Windows memory rules: overrides and fetches with
 * unmapped, read-only and unterminated buffers refused with codes, and
 * the halftone list widened from the ANSI code page.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "qv/qvdlgkrn.h"

namespace {

// Two pages: the first with the given protection, the second inaccessible, so
// that anything running past the first page would fault.
class GuardedPages {
 public:
  explicit GuardedPages(DWORD firstProtection) {
    m_base = static_cast<char*>(VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    DWORD old = 0;
    VirtualProtect(m_base + kPage, kPage, PAGE_NOACCESS, &old);
    std::memset(m_base, 'x', kPage);
    VirtualProtect(m_base, kPage, firstProtection, &old);
  }
  ~GuardedPages() { VirtualFree(m_base, 0, MEM_RELEASE); }
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;

  char* First() const { return m_base; }
  char* EndOfFirst() const { return m_base + kPage; }
  static constexpr size_t kPage = 4096;

 private:
  char* m_base = nullptr;
};

std::wstring Fetch(unsigned id) {
  unsigned length = 0;
  if (Q_DlgGetStringLen(id, &length) != QV_SUCCESS) return L"<missing>";
  std::wstring text(length + 1, L'\0');
  if (Q_DlgGetString(id, &text[0], length + 1) != QV_SUCCESS) return L"<failed>";
  text.resize(length);
  return text;
}

}  // namespace

TEST(StringExports, HostileBuffersGiveCodes) {
  GuardedPages readOnly(PAGE_READONLY);
  EXPECT_EQ(Q_DlgGetString(1, reinterpret_cast<wchar_t*>(readOnly.First()), 32), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgGetStringLen(1, reinterpret_cast<unsigned*>(readOnly.First())), QV_ERROR_INVALID_PARAMETER);

  // A buffer whose claimed length runs into the inaccessible page.
  GuardedPages writable(PAGE_READWRITE);
  wchar_t* nearEnd = reinterpret_cast<wchar_t*>(writable.EndOfFirst()) - 2;
  EXPECT_EQ(Q_DlgGetString(1, nearEnd, 32), QV_ERROR_INVALID_PARAMETER);

  // An override text without a terminator before the inaccessible page.
  EXPECT_EQ(Q_DlgSetString(2, reinterpret_cast<const wchar_t*>(readOnly.First())), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Fetch(2), L"Help") << "a refused override changes nothing";
}

TEST(ColorExports, HostileRecordsGiveCodesAndWriteNothing) {
  const QVRGB rgb{10, 20, 30};
  GuardedPages readOnly(PAGE_READONLY);
  auto* lockedOut = reinterpret_cast<QVLAB*>(readOnly.First());
  EXPECT_EQ(Q_DlgRGBToLab(&rgb, lockedOut), QV_ERROR_INVALID_PARAMETER);
  // A record straddling into the inaccessible page.
  GuardedPages writable(PAGE_READWRITE);
  auto* straddling = reinterpret_cast<QVCMYK*>(writable.EndOfFirst() - 8);
  EXPECT_EQ(Q_DlgRGBToCMYK(&rgb, straddling), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(writable.EndOfFirst()[-8], 'x');
  EXPECT_EQ(Q_DlgGetComponentRange(QV_RANGE_L_MIN, reinterpret_cast<int*>(readOnly.First())),
            QV_ERROR_INVALID_PARAMETER);
}

TEST(HalftoneExports, WidensAnsiNamesAndRefusesDamage) {
  // "grün" and "Œuvre" in Windows-1252, the ANSI code page of an English system.
  char green[] = "gr\xFCn";
  char oeuvre[] = "\x8Cuvre";
  BITMAPHANDLE bitmap{};
  QVHALFTONEPATTERNA entries[2] = {};
  entries[0].pBitmap = &bitmap;
  entries[0].pszName = green;
  entries[1].pBitmap = &bitmap;
  entries[1].pszName = oeuvre;
  QVHALFTONELISTA list{};
  list.uCount = 2;
  list.pEntries = entries;

  QVHALFTONELISTW* copy = nullptr;
  ASSERT_EQ(Q_DlgConvertHalftoneListA(&list, &copy), QV_SUCCESS);
  // Packed fields are copied out before comparing: a reference to one may be misaligned.
  const uint32_t count = copy->uCount;
  const BITMAPHANDLE* firstBitmap = copy->pEntries[0].pBitmap;
  const wchar_t* firstName = copy->pEntries[0].pszName;
  const wchar_t* secondName = copy->pEntries[1].pszName;
  ASSERT_EQ(count, 2u);
  EXPECT_EQ(firstBitmap, &bitmap);
  if (GetACP() == 1252) {
    EXPECT_STREQ(firstName, L"gr\u00FCn");
    EXPECT_STREQ(secondName, L"\u0152uvre");
  } else {
    EXPECT_NE(firstName, nullptr);
  }
  EXPECT_EQ(Q_DlgFreeHalftoneList(copy), QV_SUCCESS);
  EXPECT_EQ(Q_DlgFreeHalftoneList(copy), QV_ERROR_INVALID_HANDLE);

  // A name that runs unterminated into the inaccessible page.
  GuardedPages readOnly(PAGE_READONLY);
  entries[1].pszName = readOnly.First();
  copy = nullptr;
  EXPECT_EQ(Q_DlgConvertHalftoneListA(&list, &copy), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(copy, nullptr);
  // Entries that end inside the inaccessible page.
  list.pEntries = reinterpret_cast<QVHALFTONEPATTERNA*>(readOnly.EndOfFirst() - sizeof(QVHALFTONEPATTERNA));
  EXPECT_EQ(Q_DlgConvertHalftoneListA(&list, &copy), QV_ERROR_INVALID_PARAMETER);
}
