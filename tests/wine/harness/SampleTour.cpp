/*
 * Opens the sample dialog under the driver, sets a few values (a nested note
 * dialog included), saves a screenshot of the dialog to the PNG path given on
 * the command line and closes it with OK. Prints the driver's report; exits
 * non-zero when any step failed, so a script can rely on the picture.
 */
#include <windows.h>
#include <shellapi.h>

#include <cstdio>
#include <string>

#include "QvSampleDlg.h"
#include "qvdriver/Capture.h"
#include "qvdriver/DialogDriver.h"
#include "qvdriver/PngFile.h"
#include "qvdriver/TestOutput.h"
#include "resource.h"

namespace {

std::wstring OutputPath() {
  int argc = 0;
  LPWSTR* argv = CommandLineToArgvW(GetCommandLineW(), &argc);
  std::wstring path = argv && argc > 1 ? argv[1] : qv::test::TestOutputFile("SampleTour", L"sample.png");
  LocalFree(argv);
  return path;
}

qv::test::Script TourScript(const std::wstring& png) {
  using qv::test::StepContext;
  qv::test::Script script;
  script.Do("drag the level to 70", [](StepContext& c) { c.Require(c.View().SetTrackbar(IDC_SAMPLE_LEVEL, 70)); })
      .Do("pick the blue channel",
          [](StepContext& c) { c.Require(c.View().SelectComboText(IDC_SAMPLE_CHANNEL, L"Blue")); })
      .Do("open the note dialog", [](StepContext& c) { c.Require(c.View().Click(IDC_SAMPLE_NOTE)); })
      .DoIn(qv::test::WindowQuery::ByCaption(L"Sample Note"), "write a note",
            [](StepContext& c) {
              c.Require(c.View().SetEditText(IDC_NOTE_EDIT, L"driven under Wine"));
              c.Require(c.View().Ok());
            })
      .Do("save the screenshot",
          [png](StepContext& c) { c.Require(qv::test::SavePng(qv::test::CaptureWindow(c.Target()), png)); })
      .ClickOk();
  return script;
}

}  // namespace

int main() {
  const std::wstring png = OutputPath();
  QVSAMPLEDLGPARAMS params{};
  params.uStructSize = sizeof params;
  params.nLevel = 25;
  params.bEnabled = TRUE;
  qv::test::Script script = TourScript(png);
  qv::test::DialogDriver driver;
  qv::test::RunResult result = driver.Run([&] { return Q_ShowSampleDialog(nullptr, &params); }, script);
  std::printf("%s\n", result.Report().c_str());
  if (!result.Ok()) return 1;
  std::printf("screenshot: %ls\n", png.c_str());
  return 0;
}
