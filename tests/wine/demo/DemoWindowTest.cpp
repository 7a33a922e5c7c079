/*
 * The demo's main window as a user meets it: the Dialogs menu lists exactly
 * the exported dialogs, the status bar shows the picture's size and depth
 * and the last result, a dialog chosen from the menu applies its result in
 * the selected way, Undo brings the picture back, and Cancel leaves it alone.
 */
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DemoWindow.h"
#include "DialogCatalog.h"
#include "DialogLibrary.h"
#include "qv/qvimgops.h"
#include "OwnedBitmap.h"
#include "TestChart.h"
#include "Tour.h"
#include "qvdriver/Capture.h"
#include "qvdriver/DialogDriver.h"
#include "qvdriver/TestOutput.h"
#include "resource.h"

namespace qvdemo {
namespace {

std::vector<unsigned char> BytesOf(const BITMAPHANDLE& bitmap) {
  OwnedBitmap copy;
  EXPECT_EQ(copy.CopyFrom(bitmap), QV_SUCCESS);
  return copy.Bytes();
}

class DemoWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_library.IsLoaded());
    // No sample path: the window starts on the generated chart.
    ASSERT_TRUE(m_window.Create(L"", SW_HIDE));
    m_status = FindWindowExW(m_window.Handle(), nullptr, STATUSCLASSNAMEW, nullptr);
    ASSERT_NE(m_status, nullptr);
  }
  void TearDown() override {
    DestroyWindow(m_window.Handle());
    // The main window ends the program's message loop when it goes; the next test's dialogs must not see that.
    MSG quit;
    while (PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
  }

  std::wstring StatusPart(int part) const {
    const int length = LOWORD(SendMessageW(m_status, SB_GETTEXTLENGTHW, part, 0));
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    SendMessageW(m_status, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(length));
    return text;
  }

  HMENU DialogMenu() const { return GetSubMenu(GetMenu(m_window.Handle()), 2); }

  void Command(int id) { SendMessageW(m_window.Handle(), WM_COMMAND, id, 0); }

  // Chooses a dialog from the menu and lets the tour's script drive it.
  void RunFromMenu(const std::string& exportName, bool pressOk) {
    int command = IDM_DIALOG_FIRST;
    const DialogEntry* entry = nullptr;
    for (const DialogEntry& e : DialogCatalog()) {
      if (m_library.Find(e.exportName) == nullptr) continue;
      if (exportName == e.exportName) {
        entry = &e;
        break;
      }
      ++command;
    }
    ASSERT_NE(entry, nullptr) << exportName << " is not exported";
    const qv::test::RunResult run = qv::test::DialogDriver().Run(
        [&] {
          Command(command);
          return 0;
        },
        TourScript(*entry, L"", pressOk));
    EXPECT_TRUE(run.Ok()) << run.Report();
    EXPECT_TRUE(run.dialogSeen);
  }

  DialogLibrary m_library;
  DemoWindow m_window{GetModuleHandleW(nullptr), m_library, L""};
  HWND m_status = nullptr;
};

TEST_F(DemoWindowTest, MenuAndStatusBarDescribeWhatIsThere) {
  std::vector<std::wstring> expected;
  for (const DialogEntry& e : DialogCatalog()) {
    if (m_library.Find(e.exportName) != nullptr) expected.push_back(e.menuText);
  }
  ASSERT_FALSE(expected.empty());
  HMENU menu = DialogMenu();
  ASSERT_EQ(GetMenuItemCount(menu), static_cast<int>(expected.size()));
  for (size_t i = 0; i < expected.size(); ++i) {
    wchar_t text[128] = L"";
    GetMenuStringW(menu, static_cast<UINT>(i), text, 128, MF_BYPOSITION);
    EXPECT_EQ(std::wstring(text), expected[i]);
    EXPECT_EQ(GetMenuItemID(menu, static_cast<int>(i)), IDM_DIALOG_FIRST + i);
  }
  EXPECT_EQ(StatusPart(0), L"512 x 384");
  EXPECT_EQ(StatusPart(1), L"24 bits per pixel");
  // The photograph was not given, so the window says why it shows the chart.
  EXPECT_EQ(StatusPart(2).rfind(std::to_wstring(QV_ERROR_FILE_NOT_FOUND) + L" QV_ERROR_FILE_NOT_FOUND", 0), 0u);

  ShowWindow(m_window.Handle(), SW_SHOWNOACTIVATE);  // the capture reads the window's surface
  UpdateWindow(m_window.Handle());
  const qv::test::Image shown = qv::test::CaptureWindow(m_window.Handle(), qv::test::CaptureArea::Client);
  EXPECT_GT(shown.CountColors(), 500u) << "the chart is not painted";
  qv::test::SaveTestScreenshot(m_window.Handle(), "DemoWindow", L"main-window.png");

  Command(IDM_GRAY16);
  EXPECT_EQ(StatusPart(1), L"16 bits per pixel");
  EXPECT_EQ(m_window.Picture()->nBitsPerPixel, 16);
  Command(IDM_UNDO);
  EXPECT_EQ(m_window.Picture()->nBitsPerPixel, 24) << "Undo must bring the chart back";
}

TEST_F(DemoWindowTest, BrightnessFromTheMenuAppliesEitherWayAndUndoes) {
  const std::vector<unsigned char> chart = BytesOf(*m_window.Picture());
  OwnedBitmap expected;
  ASSERT_EQ(expected.CopyFrom(*m_window.Picture()), QV_SUCCESS);
  ASSERT_EQ(Q_ChangeBitmapIntensity(expected.Get(), FindDialogEntry("Q_DlgBrightness")->tourValue, 0), QV_SUCCESS);

  for (int mode : {IDM_MODE_DIALOG, IDM_MODE_OPERATION}) {
    SCOPED_TRACE(mode == IDM_MODE_DIALOG ? "through the dialog" : "by the operation");
    Command(mode);
    EXPECT_EQ(GetMenuState(GetMenu(m_window.Handle()), mode, MF_BYCOMMAND) & MF_CHECKED, static_cast<UINT>(MF_CHECKED));
    RunFromMenu("Q_DlgBrightness", false);
    EXPECT_EQ(BytesOf(*m_window.Picture()), chart) << "Cancel changed the picture";
    const std::wstring cancelled = StatusPart(2);
    EXPECT_EQ(cancelled.rfind(L"101 QV_DLG_CANCEL", 0), 0u) << std::string(cancelled.begin(), cancelled.end());

    RunFromMenu("Q_DlgBrightness", true);
    EXPECT_EQ(BytesOf(*m_window.Picture()), expected.Bytes());
    const std::wstring result = StatusPart(2);
    const std::wstring action = StatusPart(3);
    if (mode == IDM_MODE_DIALOG) {
      EXPECT_EQ(result.rfind(L"100 QV_DLG_OK", 0), 0u);
      EXPECT_NE(action.find(L"by the dialog"), std::wstring::npos);
    } else {
      EXPECT_EQ(result.rfind(L"1 QV_SUCCESS", 0), 0u);
      EXPECT_NE(action.find(L"by the operation"), std::wstring::npos);
    }
    EXPECT_NE(action.find(L"nBrightness = 400"), std::wstring::npos);

    Command(IDM_UNDO);
    EXPECT_EQ(BytesOf(*m_window.Picture()), chart) << "Undo must restore the picture before the dialog";
  }
}

}  // namespace
}  // namespace qvdemo
