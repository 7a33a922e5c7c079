/*
 * The demo's dialog calls under the driver, on the generated chart: every
 * exported dialog is opened, moved to the tour's value and closed by OK in
 * both apply modes (the two pictures must be identical and differ from the
 * original in the direction the value says) and by Cancel (picture and
 * structure untouched); the tour writes a page with a complete row for each.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "DialogCatalog.h"
#include "DialogLibrary.h"
#include "DialogRunner.h"
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

struct Stats {
  double meanLuma = 0;
    double meanChroma = 0;  // max - min of a pixel's channels
  size_t maxLevelsPerChannel = 0;
  int rampDark = 0;    // the chart's gray ramp an eighth in from its dark end
  int rampBright = 0;  // and from its bright end
};

Stats Measure(const BITMAPHANDLE& b) {
  Stats s;
  std::set<int> levels[3];
  double sum = 0, chroma = 0;
  const double count = static_cast<double>(b.nWidth) * b.nHeight;
  for (int y = 0; y < b.nHeight; ++y) {
    const unsigned char* row = b.pData + static_cast<size_t>(y) * b.nBytesPerLine;
    for (int x = 0; x < b.nWidth; ++x) {
      const int blue = row[3 * x], green = row[3 * x + 1], red = row[3 * x + 2];
      const double luma = 0.299 * red + 0.587 * green + 0.114 * blue;
      sum += luma;
      chroma += std::max({red, green, blue}) - std::min({red, green, blue});
      levels[0].insert(blue);
      levels[1].insert(green);
      levels[2].insert(red);
    }
  }
  s.rampDark = b.pData[3 * (b.nWidth / 8)];
  s.rampBright = b.pData[3 * (b.nWidth * 7 / 8)];
  s.meanLuma = sum / count;
  s.meanChroma = chroma / count;
  s.maxLevelsPerChannel = std::max({levels[0].size(), levels[1].size(), levels[2].size()});
  return s;
}

// More contrast: the dark end of the ramp darker, the bright end brighter.
bool Spreads(const Stats& before, const Stats& after) {
  return after.rampDark < before.rampDark && after.rampBright > before.rampBright;
}

// What the tour's value must do to the chart, by export; dialogs without a rule only have to change it.
const std::map<std::string, std::function<bool(const Stats&, const Stats&)>>& Directions() {
  static const std::map<std::string, std::function<bool(const Stats&, const Stats&)>> kDirections = {
      {"Q_DlgBrightness", [](const Stats& b, const Stats& a) { return a.meanLuma > b.meanLuma + 20; }},
      {"Q_DlgContrast", [](const Stats& b, const Stats& a) { return Spreads(b, a); }},
      {"Q_DlgSaturation", [](const Stats& b, const Stats& a) { return a.meanChroma < b.meanChroma * 0.5; }},
      {"Q_DlgHistoContrast", [](const Stats& b, const Stats& a) { return Spreads(b, a); }},
      {"Q_DlgPosterize", [](const Stats&, const Stats& a) { return a.maxLevelsPerChannel <= 4; }},
      {"Q_DlgGrayScale", [](const Stats&, const Stats& a) { return a.meanChroma < 1.0; }},
  };
  return kDirections;
}

class DemoTour : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_library.IsLoaded()) << "Qvdlgclrx.dll did not load";
    ASSERT_EQ(MakeColorChart(m_chart, 256, 192), QV_SUCCESS);
  }

  OwnedBitmap ChartCopy() {
    OwnedBitmap copy;
    EXPECT_EQ(copy.CopyFrom(*m_chart.Get()), QV_SUCCESS);
    return copy;
  }

  std::vector<const DialogEntry*> ExportedPhotoDialogs() const {
    std::vector<const DialogEntry*> entries;
    for (const DialogEntry& e : DialogCatalog()) {
      if (e.image == ImageKind::Photo && m_library.Find(e.exportName) != nullptr) entries.push_back(&e);
    }
    return entries;
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

TEST_F(DemoTour, OkAppliesTheSameResultThroughTheDialogAndThroughTheOperation) {
  const auto entries = ExportedPhotoDialogs();
  ASSERT_FALSE(entries.empty()) << "the library exports no dialog that works on a picture";
  const Stats original = Measure(*m_chart.Get());
  for (const DialogEntry* e : entries) {
    SCOPED_TRACE(e->exportName);
    const DialogCall call = m_library.Find(e->exportName);
    OwnedBitmap byDialog = ChartCopy();
    OwnedBitmap byOperation = ChartCopy();
    std::vector<std::string> failures;
    const DialogOutcome first =
        DriveDialog(*e, call, m_owner.Handle(), byDialog.Get(), ApplyMode::ThroughDialog, L"", true, &failures);
    const DialogOutcome second =
        DriveDialog(*e, call, m_owner.Handle(), byOperation.Get(), ApplyMode::ByOperation, L"", true, &failures);
    for (const std::string& f : failures) ADD_FAILURE() << f;
    EXPECT_EQ(first.dialogResult, QV_DLG_OK);
    EXPECT_TRUE(first.autoProcessed);
    EXPECT_EQ(second.dialogResult, QV_DLG_OK);
    EXPECT_EQ(second.operationRun, e->apply != nullptr);
    EXPECT_EQ(second.LastResult(), e->apply != nullptr ? QV_SUCCESS : QV_DLG_OK);
    EXPECT_EQ(first.values, second.values);
    EXPECT_FALSE(first.values.empty());
    EXPECT_TRUE(byDialog.Bytes() == byOperation.Bytes()) << "the two ways of applying differ";
    EXPECT_FALSE(byDialog.Bytes() == m_chart.Bytes()) << "OK left the picture as it was";
    const auto rule = Directions().find(e->exportName);
    if (rule != Directions().end()) {
      EXPECT_TRUE(rule->second(original, Measure(*byDialog.Get()))) << "the change goes the wrong way";
    }
  }
}

TEST_F(DemoTour, CancelLeavesPictureAndStructureUntouched) {
  for (const DialogEntry* e : ExportedPhotoDialogs()) {
    SCOPED_TRACE(e->exportName);
    for (ApplyMode mode : {ApplyMode::ThroughDialog, ApplyMode::ByOperation}) {
      OwnedBitmap picture = ChartCopy();
      std::vector<std::string> failures;
      const DialogOutcome outcome =
          DriveDialog(*e, m_library.Find(e->exportName), m_owner.Handle(), picture.Get(), mode, L"", false, &failures);
      for (const std::string& f : failures) ADD_FAILURE() << f;
      EXPECT_EQ(outcome.dialogResult, QV_DLG_CANCEL);
      EXPECT_FALSE(outcome.operationRun);
      EXPECT_TRUE(outcome.values.empty());
      EXPECT_TRUE(picture.Bytes() == m_chart.Bytes()) << "Cancel changed the picture";
      ParamBlock expected;
      const int startValue = e->control == TourControl::None ? e->tourValue : e->neutralValue;
      e->fill(expected, picture.Get(), kPreviewFlags | (outcome.autoProcessed ? QVDLG_AUTO_PROCESS : 0u), startValue);
      EXPECT_TRUE(outcome.params.SameBytes(expected)) << "Cancel wrote into the structure";
    }
  }
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
