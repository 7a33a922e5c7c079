/*
 * The tour drives each dialog exactly as the demo's menu would call it, with
 * the effect applied through the dialog, so the page shows what a user sees:
 * the dialog at the chosen value and the picture it produced. A dialog that
 * fails to open or to be driven still gets its row, with the failure, so the
 * page never hides a broken dialog.
 */
#include "Tour.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "OwnedBitmap.h"
#include "qvdriver/Capture.h"
#include "qvdriver/DialogDriver.h"
#include "qvdriver/PngFile.h"

namespace qvdemo {
namespace {

using qv::test::DialogView;
using qv::test::Script;
using qv::test::StepContext;

constexpr int kSettleTicks = 8;  // ticks the preview gets to redraw after a change

std::wstring MenuTitle(const wchar_t* menuText) {
  std::wstring title;
  for (const wchar_t* c = menuText; *c != 0; ++c) {
    if (*c != L'&' && *c != L'.') title += *c;
  }
  return title;
}

std::wstring Widen(const std::string& text) { return std::wstring(text.begin(), text.end()); }

// A bitmap painted through its window-level table looks different from its samples; the page shows the look.
qv::test::Outcome SaveAsSeen(const BITMAPHANDLE& bitmap, const std::wstring& path) {
  if ((bitmap.uFlags & QV_BMF_USELUT) == 0) {
    const int result = Q_SaveBitmap(path.c_str(), &bitmap, QV_FILE_PNG, 0);
    return result == QV_SUCCESS ? qv::test::Outcome::Ok()
                                : qv::test::Outcome::Fail("saving a picture failed with " + std::to_string(result));
  }
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = bitmap.nWidth;
  info.bmiHeader.biHeight = -bitmap.nHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  ReleaseDC(nullptr, screen);
  HBITMAP section = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  qv::test::Image image;
  if (section != nullptr && bits != nullptr) {
    HGDIOBJ old = SelectObject(memory, section);
    const RECT whole{0, 0, bitmap.nWidth, bitmap.nHeight};
    Q_PaintBitmap(memory, &bitmap, &whole, &whole, 0);
    GdiFlush();
    image.width = bitmap.nWidth;
    image.height = bitmap.nHeight;
    const auto* pixels = static_cast<const qv::test::Bgra*>(bits);
    image.pixels.assign(pixels, pixels + static_cast<size_t>(image.width) * image.height);
    SelectObject(memory, old);
    DeleteObject(section);
  }
  DeleteDC(memory);
  if (image.Empty()) return qv::test::Outcome::Fail("painting the windowed picture failed");
  return qv::test::SavePng(image, path);
}

TourRow RunOne(const DialogEntry& entry, DialogCall call, HWND owner, const TourImages& images,
               const std::wstring& folder) {
  TourRow row;
  row.exportName = entry.exportName;
  row.title = MenuTitle(entry.menuText);
  const std::wstring stem = Widen(row.exportName.substr(std::min<size_t>(5, row.exportName.size())));
  row.screenshotFile = stem + L"-dialog.png";

  OwnedBitmap working;
  const BITMAPHANDLE* source = entry.image == ImageKind::Gray16 ? images.gray16 : images.photo;
  if (entry.image != ImageKind::None) {
    if (source == nullptr || working.CopyFrom(*source) != QV_SUCCESS) {
      row.failures.push_back("no picture to work on");
      return row;
    }
    row.beforeFile = stem + L"-before.png";
    const auto saved = SaveAsSeen(*working.Get(), folder + L"\\" + row.beforeFile);
    if (!saved) row.failures.push_back(saved.Message());
  }
  const std::vector<unsigned char> beforeBytes = working.Bytes();

  const DialogOutcome outcome = DriveDialog(entry, call, owner, working.Get(), ApplyMode::ThroughDialog,
                                            folder + L"\\" + row.screenshotFile, true, &row.failures);
  row.result = outcome.LastResult();
  row.values = outcome.values;
  if (entry.image != ImageKind::None) {
    row.afterFile = stem + L"-after.png";
    const auto saved = SaveAsSeen(*working.Get(), folder + L"\\" + row.afterFile);
    if (!saved) row.failures.push_back(saved.Message());
    row.changed = working.Bytes() != beforeBytes || (working.Get()->uFlags & QV_BMF_USELUT) != 0;
  }
  return row;
}

}  // namespace

int TourStartValue(const DialogEntry& entry) {
  return entry.control == TourControl::None ? entry.tourValue : entry.neutralValue;
}

Script TourScript(const DialogEntry& entry, const std::wstring& screenshotPath, bool pressOk) {
  Script script;
  const int id = entry.mainControlId;
  const int value = entry.tourValue;
  if (entry.control == TourControl::Trackbar) {
    script.Do("move the main control to " + std::to_string(value),
              [id, value](StepContext& c) { c.Require(c.View().SetTrackbar(id, value)); });
  } else if (entry.control == TourControl::ValueCombo) {
    script.Do("pick " + std::to_string(value) + " in the main control",
              [id, value](StepContext& c) { c.Require(c.View().SelectComboText(id, std::to_wstring(value))); });
  } else if (entry.control == TourControl::MarkerSlider) {
    script.Do("page the main control's first marker " + std::to_string(value) + " times", [id, value](StepContext& c) {
      for (int i = 0; i < std::abs(value); ++i) c.Require(c.View().PressKey(id, value > 0 ? VK_NEXT : VK_PRIOR));
    });
  } else if (entry.control == TourControl::ListEntry) {
    script.Do("pick entry " + std::to_string(value) + " of the main list",
              [id, value](StepContext& c) { c.Require(c.View().SelectComboIndex(id, value)); });
  }
  // A counter shared by the step's retries: the preview redraws over the next few ticks.
  auto ticks = std::make_shared<int>(0);
  script.Do("let the preview catch up", [ticks](StepContext& c) {
    if (++*ticks < kSettleTicks) c.Retry("the preview may still be drawing");
  });
  if (!screenshotPath.empty()) {
    script.Do("photograph the dialog", [screenshotPath](StepContext& c) {
      c.Require(qv::test::SavePng(qv::test::CaptureWindow(c.Target()), screenshotPath));
    });
  }
  if (pressOk) {
    script.ClickOk();
  } else {
    script.ClickCancel();
  }
  return script;
}

DialogOutcome DriveDialog(const DialogEntry& entry, DialogCall call, HWND owner, BITMAPHANDLE* bitmap, ApplyMode mode,
                          const std::wstring& screenshotPath, bool pressOk, std::vector<std::string>* failures) {
  const Script script = TourScript(entry, screenshotPath, pressOk);
  const int startValue = TourStartValue(entry);
  qv::test::RunResult run;
  auto invoker = [&](const std::function<int()>& makeCall) {
    run = qv::test::DialogDriver().Run(makeCall, script);
    return run.returnValue;
  };
  DialogOutcome outcome = RunDialog(entry, call, owner, bitmap, mode, startValue, invoker);
  if (failures != nullptr) failures->insert(failures->end(), run.failures.begin(), run.failures.end());
  return outcome;
}

std::vector<TourRow> RunTour(const DialogLibrary& library, HWND owner, const TourImages& images,
                             const std::wstring& folder) {
  std::vector<TourRow> rows;
  for (const DialogEntry& entry : DialogCatalog()) {
    DialogCall call = library.Find(entry.exportName);
    if (call != nullptr) rows.push_back(RunOne(entry, call, owner, images, folder));
  }
  return rows;
}

bool EnsureFolder(const std::wstring& folder) {
  for (size_t i = 0; i <= folder.size(); ++i) {
    if (i == folder.size() || folder[i] == L'\\' || folder[i] == L'/') {
      const std::wstring part = folder.substr(0, i);
      // "C:" and the empty prefix of a rooted path are drives, not folders to create.
      if (part.empty() || (part.size() == 2 && part[1] == L':')) continue;
      CreateDirectoryW(part.c_str(), nullptr);
    }
  }
  const DWORD attributes = GetFileAttributesW(folder.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace qvdemo
