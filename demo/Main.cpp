/*
 * qvdemo.exe: with no arguments it opens the sample photograph (or the test
 * chart when the photograph is missing), with a path it opens that picture,
 * and with --tour DIR it runs the tour into DIR without showing its own
 * window and exits: 0 when every dialog went through, 1 when a dialog
 * failed, 2 when the page could not be written. "--lang de" anywhere shows
 * the dialogs with the dialog kernel's German texts.
 */
#include <windows.h>
#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

#include <cstddef>
#include <string>
#include <vector>

#include "DemoWindow.h"
#include "DialogLibrary.h"
#include "OwnedBitmap.h"
#include "TestChart.h"
#include "Tour.h"
#include "TourPage.h"
#include "qv/qvdlgkrn.h"

namespace {

constexpr wchar_t kSampleFile[] = L"coffee.png";
constexpr wchar_t kSampleNote[] =
    L"Sample picture: coffee.png from Debian's python3-skimage (skimage/data), a photograph by Rachel Michetti, "
    L"courtesy of Pikolo Espresso Bar, released under CC0.";

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH] = L"";
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring folder(path, length);
  const size_t slash = folder.find_last_of(L"\\/");
  return slash == std::wstring::npos ? L"." : folder.substr(0, slash);
}

std::vector<std::wstring> Arguments() {
  int count = 0;
  LPWSTR* argv = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> args;
  for (int i = 1; argv != nullptr && i < count; ++i) args.emplace_back(argv[i]);
  if (argv != nullptr) LocalFree(argv);
  return args;
}

// Takes "--lang de" or "--lang en" out of the arguments and switches the dialogs' strings to that language;
// false for a language the dialog kernel does not have.
bool TakeLanguage(std::vector<std::wstring>& args) {
  for (size_t i = 0; i + 1 < args.size(); ++i) {
    if (args[i] != L"--lang") continue;
    const std::wstring language = args[i + 1];
    args.erase(args.begin() + static_cast<std::ptrdiff_t>(i), args.begin() + static_cast<std::ptrdiff_t>(i) + 2);
    if (language == L"de") return Q_DlgSetLanguage(QV_DLGLANG_GERMAN) == QV_SUCCESS;
    return language == L"en" && Q_DlgSetLanguage(QV_DLGLANG_ENGLISH) == QV_SUCCESS;
  }
  return true;
}

void Say(const std::string& text) {
  HANDLE out = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD written = 0;
  if (out != nullptr && out != INVALID_HANDLE_VALUE)
    WriteFile(out, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

int RunTourMode(const std::wstring& folder) {
  qvdemo::DialogLibrary library;
  if (!library.IsLoaded()) {
    Say("qvdemo: Qvdlgclrx.dll could not be loaded\n");
    return 2;
  }
  if (!qvdemo::EnsureFolder(folder)) {
    Say("qvdemo: the tour folder could not be created\n");
    return 2;
  }
  qvdemo::OwnedBitmap photo;
  std::wstring note = kSampleNote;
  if (photo.Load(ProgramFolder() + L"\\" + kSampleFile) != QV_SUCCESS) {
    qvdemo::MakeColorChart(photo);
    note = L"Sample picture: the generated test chart (the photograph coffee.png was not found next to qvdemo.exe).";
  }
  qvdemo::OwnedBitmap gray16;
  qvdemo::MakeGrayGradient(gray16, 16);
  // A plain hidden window owns the dialogs, as a host's frame would.
  HWND owner = CreateWindowExW(0, L"STATIC", L"QUORVELIX tour", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr,
                               GetModuleHandleW(nullptr), nullptr);
  const auto rows = qvdemo::RunTour(library, owner, {photo.Get(), gray16.Get()}, folder);
  if (owner != nullptr) DestroyWindow(owner);
  if (!qvdemo::WriteTourPage(folder, rows, note)) {
    Say("qvdemo: index.html could not be written\n");
    return 2;
  }
  size_t failed = 0;
  for (const auto& row : rows) {
    if (!row.failures.empty()) {
      ++failed;
      Say("qvdemo: " + row.exportName + ": " + row.failures.front() + "\n");
    }
  }
  Say("qvdemo: toured " + std::to_string(rows.size()) + " dialogs, " + std::to_string(failed) + " failed\n");
  return failed == 0 ? 0 : 1;
}

int RunWindowMode(HINSTANCE instance, const std::wstring& imagePath, int showCommand) {
  qvdemo::DialogLibrary library;
  qvdemo::DemoWindow window(instance, library, ProgramFolder() + L"\\" + kSampleFile);
  if (!window.Create(imagePath, showCommand)) return 2;
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (TranslateAcceleratorW(window.Handle(), window.Accelerators(), &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int showCommand) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  int exitCode = 2;
  if (Q_DlgInit(0) != QV_SUCCESS) {
    Say("qvdemo: the dialog kernel did not start\n");
  } else {
    std::vector<std::wstring> args = Arguments();
    if (!TakeLanguage(args)) {
      Say("qvdemo: --lang takes de or en\n");
    } else if (args.size() >= 2 && args[0] == L"--tour") {
      exitCode = RunTourMode(args[1]);
    } else {
      exitCode = RunWindowMode(instance, args.empty() ? std::wstring() : args[0], showCommand);
    }
    Q_DlgFree();
  }
  if (SUCCEEDED(com)) CoUninitialize();
  return exitCode;
}
