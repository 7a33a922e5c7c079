/*
 * Readiness of the dialog kernel over the process's life, the language chosen
 * at initialisation, and the dialog font (the system message font unless the
 * host sets one).
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "qv/qvdlgkrn.h"

namespace {

// Taken before main, so it sees the kernel exactly as a host finds it.
const int kReadyAtLoad = Q_DlgIsReady();

std::wstring Fetch(unsigned id) {
  unsigned length = 0;
  if (Q_DlgGetStringLen(id, &length) != QV_SUCCESS) return L"<missing>";
  std::wstring text(length + 1, L'\0');
  if (Q_DlgGetString(id, &text[0], length + 1) != QV_SUCCESS) return L"<failed>";
  text.resize(length);
  return text;
}

LOGFONTW FontInfo(HFONT font) {
  LOGFONTW info{};
  EXPECT_EQ(GetObjectW(font, sizeof(info), &info), static_cast<int>(sizeof(info)));
  return info;
}

}  // namespace

TEST(Readiness, FollowsInitAndFree) {
  EXPECT_EQ(kReadyAtLoad, 0);
  EXPECT_EQ(Q_DlgFree(), QV_ERROR_NOT_INITIALIZED) << "free without init";
  EXPECT_EQ(Q_DlgIsReady(), 0);

  ASSERT_EQ(Q_DlgInit(0), QV_SUCCESS);
  EXPECT_EQ(Q_DlgIsReady(), 1);
  ASSERT_EQ(Q_DlgInit(0), QV_SUCCESS) << "a second init is harmless";
  EXPECT_EQ(Q_DlgIsReady(), 1);
  EXPECT_EQ(Q_DlgInit(0x8000), QV_ERROR_INVALID_FLAGS);
  EXPECT_EQ(Q_DlgIsReady(), 1);

  ASSERT_EQ(Q_DlgFree(), QV_SUCCESS);
  EXPECT_EQ(Q_DlgIsReady(), 0);
  EXPECT_EQ(Q_DlgFree(), QV_ERROR_NOT_INITIALIZED) << "a second free";
  EXPECT_EQ(Q_DlgIsReady(), 0);
}

TEST(Readiness, InitFlagChoosesTheLanguage) {
  ASSERT_EQ(Q_DlgInit(QV_DLGINIT_GERMAN), QV_SUCCESS);
  EXPECT_EQ(Fetch(1), L"Abbrechen");
  EXPECT_EQ(Fetch(1207), L"Intensität");
  ASSERT_EQ(Q_DlgInit(0), QV_SUCCESS);
  EXPECT_EQ(Fetch(1), L"Cancel");
  ASSERT_EQ(Q_DlgSetLanguage(QV_DLGLANG_GERMAN), QV_SUCCESS);
  EXPECT_EQ(Fetch(4548), L"&Anwenden");
  ASSERT_EQ(Q_DlgSetLanguage(QV_DLGLANG_ENGLISH), QV_SUCCESS);
  EXPECT_EQ(Fetch(4548), L"&Apply");
  ASSERT_EQ(Q_DlgFree(), QV_SUCCESS);
}

TEST(DialogFont, DefaultIsTheSystemMessageFontAndHostFontWins) {
  ASSERT_EQ(Q_DlgInit(0), QV_SUCCESS);
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  ASSERT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0));

  HFONT standard = Q_DlgGetFont();
  ASSERT_NE(standard, nullptr);
  EXPECT_EQ(GetObjectType(standard), static_cast<DWORD>(OBJ_FONT));
  const LOGFONTW info = FontInfo(standard);
  EXPECT_STREQ(info.lfFaceName, metrics.lfMessageFont.lfFaceName);
  EXPECT_EQ(info.lfHeight, metrics.lfMessageFont.lfHeight);
  EXPECT_EQ(info.lfWeight, metrics.lfMessageFont.lfWeight);
  EXPECT_EQ(Q_DlgGetFont(), standard) << "made once, then reused";

  LOGFONTW big = info;
  big.lfHeight = -40;
  HFONT host = CreateFontIndirectW(&big);
  ASSERT_EQ(Q_DlgSetFont(host), QV_SUCCESS);
  EXPECT_EQ(Q_DlgGetFont(), host);
  ASSERT_EQ(Q_DlgSetFont(nullptr), QV_SUCCESS);
  EXPECT_EQ(FontInfo(Q_DlgGetFont()).lfHeight, metrics.lfMessageFont.lfHeight);
  EXPECT_EQ(GetObjectType(host), static_cast<DWORD>(OBJ_FONT)) << "the host's font stays the host's";
  DeleteObject(host);

  HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
  EXPECT_EQ(Q_DlgSetFont(reinterpret_cast<HFONT>(brush)), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgSetFont(reinterpret_cast<HFONT>(static_cast<INT_PTR>(0x10))), QV_ERROR_INVALID_PARAMETER);
  DeleteObject(brush);
  EXPECT_EQ(FontInfo(Q_DlgGetFont()).lfHeight, metrics.lfMessageFont.lfHeight) << "a refused font changes nothing";

  // Free releases the kernel's own font; the next use makes a new one.
  ASSERT_EQ(Q_DlgFree(), QV_SUCCESS);
  EXPECT_EQ(GetObjectType(standard), 0u);
}
