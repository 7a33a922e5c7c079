/*
 * The library's face to hosts: the export table names exactly the dialogs
 * built so far, undecorated (no C++ mangling, no stdcall suffixes), and a
 * plain C host compiled against the public headers alone links with the
 * import libraries and runs a dialog to OK.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::wstring ExeFolder() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring folder(path);
  return folder.substr(0, folder.find_last_of(L"\\/") + 1);
}

std::vector<std::string> ExportedNames(HMODULE module) {
  auto* base = reinterpret_cast<const unsigned char*>(module);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  std::vector<std::string> names;
  if (dir.Size == 0) return names;
  const auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + dir.VirtualAddress);
  const auto* nameRvas = reinterpret_cast<const DWORD*>(base + exports->AddressOfNames);
  for (DWORD i = 0; i < exports->NumberOfNames; ++i)
    names.emplace_back(reinterpret_cast<const char*>(base + nameRvas[i]));
  return names;
}

TEST(DialogLibraryFace, ExportsItsDialogsByPlainNames) {
  HMODULE module = LoadLibraryW(L"Qvdlgclrx.dll");
  ASSERT_NE(module, nullptr);
  std::vector<std::string> names = ExportedNames(module);
  std::sort(names.begin(), names.end());
  const std::vector<std::string> expected{"Q_DlgBalanceColors", "Q_DlgBrightness",      "Q_DlgColoredGray",
                                          "Q_DlgContrast",      "Q_DlgGrayScale",       "Q_DlgHistoContrast",
                                          "Q_DlgHue",           "Q_DlgIntensityDetect", "Q_DlgLocalHistoEqualize",
                                          "Q_DlgPosterize",     "Q_DlgSaturation",      "Q_DlgSolarize"};
  for (const std::string& name : expected) {
    EXPECT_NE(std::find(names.begin(), names.end(), name), names.end()) << name << " is not exported";
    EXPECT_NE(GetProcAddress(module, name.c_str()), nullptr) << name;
  }
  for (const std::string& name : names) {
    EXPECT_EQ(name.find_first_of("@?$"), std::string::npos) << "decorated export " << name;
    EXPECT_EQ(name.rfind("Q_Dlg", 0), 0u) << "unexpected export " << name;
  }
  FreeLibrary(module);
}

TEST(DialogLibraryFace, APlainCHostRunsADialog) {
  std::wstring command = L"\"" + ExeFolder() + L"dlgclr_plain_host.exe\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, ExeFolder().c_str(),
                             &startup, &process))
      << "cannot start the host program";
  const DWORD waited = WaitForSingleObject(process.hProcess, 60000);
  if (waited != WAIT_OBJECT_0) TerminateProcess(process.hProcess, 99);
  DWORD exitCode = 99;
  GetExitCodeProcess(process.hProcess, &exitCode);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  EXPECT_EQ(waited, WAIT_OBJECT_0) << "the host program did not finish";
  EXPECT_EQ(exitCode, 0u) << "the host's dialog call did not come back with OK and a brighter bitmap";
}

}  // namespace
