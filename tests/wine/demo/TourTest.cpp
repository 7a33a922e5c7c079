/*
 * The demo's dialog calls under the driver, on the generated chart: the menu
 * table names every export once, and the tour opens every exported dialog,
 * moves it to the tour's value, closes it by OK and writes a page with a
 * complete row for each. Both apply modes are compared in the demo window's
 * test; that OK applies each dialog's operation is proven per export by the
 * dialog tests.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "DialogCatalog.h"
#include "DialogLibrary.h"
#include "OwnedBitmap.h"
#include "TestChart.h"
#include "Tour.h"
#include "TourPage.h"
#include "qv/qvdlgclr.h"
#include "qvdriver/TestOutput.h"

namespace qvdemo {
namespace {

class HiddenOwner {
 public:
  HiddenOwner()
      : m_window(CreateWindowExW(0, L"STATIC", L"demo test owner", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr,
                                 nullptr, GetModuleHandleW(nullptr), nullptr)) {}
  ~HiddenOwner() {
    if (m_window != nullptr) DestroyWindow(m_window);
  }
  HiddenOwner(const HiddenOwner&) = delete;
  HiddenOwner& operator=(const HiddenOwner&) = delete;
  HWND Handle() const { return m_window; }

 private:
  HWND m_window;
};

// The names a loaded module exports, read from its export directory.
std::set<std::string> ExportNames(HMODULE module) {
  std::set<std::string> names;
  const auto* base = reinterpret_cast<const unsigned char*>(module);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  if (dir.VirtualAddress == 0) return names;
  const auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + dir.VirtualAddress);
  const auto* nameOffsets = reinterpret_cast<const DWORD*>(base + exports->AddressOfNames);
  for (DWORD i = 0; i < exports->NumberOfNames; ++i) names.insert(reinterpret_cast<const char*>(base + nameOffsets[i]));
  return names;
}

std::string ReadWholeFile(const std::wstring& path) {
  std::string text;
  HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return text;
  char buffer[4096];
  DWORD read = 0;
  while (ReadFile(file, buffer, sizeof buffer, &read, nullptr) && read > 0) text.append(buffer, read);
  CloseHandle(file);
  return text;
}

class DemoTour : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_library.IsLoaded()) << "Qvdlgclrx.dll did not load";
    ASSERT_EQ(MakeColorChart(m_chart, 256, 192), QV_SUCCESS);
  }

  DialogLibrary m_library;
  HiddenOwner m_owner;
  OwnedBitmap m_chart;
};

TEST_F(DemoTour, TheMenuTableNamesEveryExportOfTheLibraryOnce) {
  const std::set<std::string> exported = ExportNames(GetModuleHandleW(L"Qvdlgclrx.dll"));
  std::set<std::string> catalogued;
  for (const DialogEntry& e : DialogCatalog()) {
    EXPECT_TRUE(catalogued.insert(e.exportName).second) << e.exportName << " is listed twice";
    EXPECT_EQ(m_library.Find(e.exportName) != nullptr, exported.count(e.exportName) == 1) << e.exportName;
  }
  EXPECT_EQ(catalogued.size(), 21u);
  for (const std::string& name : exported) {
    if (name.rfind("Q_Dlg", 0) == 0) {
      EXPECT_EQ(catalogued.count(name), 1u) << name << " would be missing from the menu";
    }
  }
  EXPECT_EQ(m_library.Find("Q_DlgNoSuchDialog"), nullptr);
}

TEST_F(DemoTour, TheTourWritesARowWithPicturesForEveryExportedDialog) {
  const std::wstring marker = qv::test::TestOutputFile("DemoTour", L"index.html");
  const std::wstring folder = marker.substr(0, marker.find_last_of(L'\\'));
  ASSERT_TRUE(EnsureFolder(folder));
  OwnedBitmap gray16;
  ASSERT_EQ(MakeGrayGradient(gray16, 16, 128, 64), QV_SUCCESS);
  const auto rows = RunTour(m_library, m_owner.Handle(), {m_chart.Get(), gray16.Get()}, folder);

  size_t exported = 0;
  for (const DialogEntry& e : DialogCatalog()) exported += m_library.Find(e.exportName) != nullptr ? 1 : 0;
  ASSERT_EQ(rows.size(), exported);
  for (const TourRow& row : rows) {
    SCOPED_TRACE(row.exportName);
    for (const std::string& f : row.failures) ADD_FAILURE() << f;
    const bool hasPicture = FindDialogEntry(row.exportName)->image != ImageKind::None;
    std::vector<std::wstring> files = {row.screenshotFile};
    if (hasPicture) {
      EXPECT_EQ(row.result, QV_DLG_OK);
      EXPECT_TRUE(row.changed) << "the after picture shows no change";
      files.push_back(row.beforeFile);
      files.push_back(row.afterFile);
    } else {
      EXPECT_TRUE(row.result == QV_DLG_OK || row.result == QV_DLG_OK_NO_APPLY) << row.result;
      EXPECT_TRUE(row.beforeFile.empty() && row.afterFile.empty());
    }
    for (const std::wstring& file : files) {
      const DWORD attributes = GetFileAttributesW((folder + L"\\" + file).c_str());
      EXPECT_NE(attributes, INVALID_FILE_ATTRIBUTES) << "missing picture";
    }
  }
  ASSERT_TRUE(WriteTourPage(folder, rows, L"chart <generated>"));
  const std::string html = ReadWholeFile(folder + L"\\index.html");
  EXPECT_NE(html.find("chart &lt;generated&gt;"), std::string::npos) << "texts must be escaped";
  for (const TourRow& row : rows) {
    EXPECT_NE(html.find("<code>" + row.exportName + "</code>"), std::string::npos) << row.exportName;
    EXPECT_NE(html.find(std::string(row.screenshotFile.begin(), row.screenshotFile.end())), std::string::npos);
  }
}

}  // namespace
}  // namespace qvdemo
