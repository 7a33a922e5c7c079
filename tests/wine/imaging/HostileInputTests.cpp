/*
 * Hostile input to the exports under Windows: null, unmapped and read-only descriptors (probed through
 * VirtualQuery), damaged, cut-short and foreign files through the Windows decoders. Each gets its code,
 * nothing crashes, and the caller's memory is not written.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include "TestFiles.h"

using qvtest::OwnedBitmap;

namespace {

// A page reserved but never committed, and a committed read-only page.
class Pages {
 public:
  Pages() {
    m_reserved = VirtualAlloc(nullptr, 65536, MEM_RESERVE, PAGE_NOACCESS);
    m_readOnly = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    auto* b = static_cast<BITMAPHANDLE*>(m_readOnly);
    b->uStructSize = sizeof(BITMAPHANDLE);
    DWORD old = 0;
    VirtualProtect(m_readOnly, 4096, PAGE_READONLY, &old);
  }
  ~Pages() {
    VirtualFree(m_reserved, 0, MEM_RELEASE);
    VirtualFree(m_readOnly, 0, MEM_RELEASE);
  }
  BITMAPHANDLE* Unmapped() const { return static_cast<BITMAPHANDLE*>(m_reserved); }
  BITMAPHANDLE* ReadOnly() const { return static_cast<BITMAPHANDLE*>(m_readOnly); }

 private:
  void* m_reserved;
  void* m_readOnly;
};

TEST(HostileInput, NullUnmappedAndReadOnlyDescriptors) {
  Pages pages;
  RECT r{0, 0, 1, 1};
  HBITMAPLIST list = nullptr;
  ASSERT_EQ(Q_CreateBitmapList(&list, 0), QV_SUCCESS);
  for (BITMAPHANDLE* p : {static_cast<BITMAPHANDLE*>(nullptr), pages.Unmapped()}) {
    EXPECT_EQ(Q_IsValidBitmap(p, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_IsGrayScaleBitmap(p, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_FreeBitmap(p, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_InitBitmap(p, sizeof(BITMAPHANDLE), 4, 4, 24, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_CreateBitmap(p, sizeof(BITMAPHANDLE), 4, 4, 24, QV_ORDER_BGR, nullptr, 0, 0),
              QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_SetBitmapRgnRect(p, &r, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_BitmapHasRgn(p, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_InsertBitmapListItem(list, 0, p, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_SaveBitmap(L"x.png", p, QV_FILE_PNG, 0), QV_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Q_PaintBitmap(nullptr, p, nullptr, nullptr, 0), QV_ERROR_INVALID_PARAMETER);
  }
  // Readable but not writable: reading calls pass the pointer check, writing calls refuse it.
  EXPECT_EQ(Q_IsValidBitmap(pages.ReadOnly(), 0), QV_ERROR_BITMAP_NOT_ALLOCATED);
  EXPECT_EQ(Q_FreeBitmap(pages.ReadOnly(), 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_CreateBitmap(pages.ReadOnly(), sizeof(BITMAPHANDLE), 4, 4, 24, QV_ORDER_BGR, nullptr, 0, 0),
            QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_LoadBitmap(L"x.png", pages.ReadOnly(), sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0),
            QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_LoadBitmap(reinterpret_cast<const wchar_t*>(pages.Unmapped()), nullptr, sizeof(BITMAPHANDLE), 0,
                         QV_LOAD_KEEP_ORDER, 0),
            QV_ERROR_INVALID_PARAMETER);
  unsigned count = 0;
  EXPECT_EQ(Q_GetBitmapListCount(reinterpret_cast<HBITMAPLIST>(pages.Unmapped()), &count, 0), QV_ERROR_INVALID_HANDLE);
  EXPECT_EQ(Q_GetBitmapListCount(list, reinterpret_cast<unsigned*>(pages.ReadOnly()), 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DestroyBitmapList(list, 0), QV_SUCCESS);
}

TEST(HostileInput, DamagedAndForeignFiles) {
  OwnedBitmap src;
  ASSERT_EQ(Q_CreateBitmap(src.get(), sizeof(BITMAPHANDLE), 64, 64, 24, QV_ORDER_BGR, nullptr, 0, 0), QV_SUCCESS);
  for (int i = 0; i < 64 * 64 * 3; ++i) src->pData[i] = static_cast<uint8_t>(i * 7);
  const std::wstring png = qvtest::OutputPath(L"whole.png");
  ASSERT_EQ(Q_SaveBitmap(png.c_str(), src.get(), QV_FILE_PNG, 0), QV_SUCCESS);
  std::vector<uint8_t> bytes = qvtest::ReadFileBytes(png);
  ASSERT_GT(bytes.size(), 100u);
  struct Case {
    const wchar_t* name;
    std::vector<uint8_t> content;
    int expected;
  };
  std::vector<uint8_t> cut(bytes.begin(), bytes.begin() + bytes.size() / 2);
  const char text[] = "plain text, no picture here\r\n";
  const Case cases[] = {
      {L"cut.png", cut, QV_ERROR_FILE_CORRUPT},
      {L"text.png", std::vector<uint8_t>(text, text + sizeof text - 1), QV_ERROR_FILE_FORMAT},
      {L"empty.bmp", {}, QV_ERROR_FILE_FORMAT},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.expected);
    const std::wstring path = qvtest::OutputPath(c.name);
    qvtest::WriteFileBytes(path, c.content);
    BITMAPHANDLE b;
    std::memset(&b, 0x44, sizeof b);
    EXPECT_EQ(Q_LoadBitmap(path.c_str(), &b, sizeof(BITMAPHANDLE), 0, QV_LOAD_KEEP_ORDER, 0), c.expected);
    EXPECT_EQ(b.uStructSize, 0x44444444u);
  }
  OwnedBitmap b;
  EXPECT_EQ(Q_LoadBitmap(qvtest::OutputPath(L"missing.png").c_str(), b.get(), sizeof(BITMAPHANDLE), 0,
                         QV_LOAD_KEEP_ORDER, 0),
            QV_ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Q_SaveBitmap(L"Z:\\no\\such\\folder\\x.png", src.get(), QV_FILE_PNG, 0), QV_ERROR_FILE_WRITE);
  EXPECT_EQ(Q_SaveBitmap(qvtest::OutputPath(L"x.pnm").c_str(), src.get(), QV_FILE_PNM, 0), QV_ERROR_FILE_FORMAT);
}

}  // namespace
