/*
 * The tour: every dialog the library exports, opened in turn on the sample
 * image, its main control moved to an interesting value through the dialog
 * driver, the dialog photographed, OK pressed, and the pictures before and
 * after written beside a row for the page.
 */
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "DialogCatalog.h"
#include "DialogLibrary.h"
#include "DialogRunner.h"
#include "qvdriver/Script.h"

namespace qvdemo {

struct TourRow {
  std::string exportName;
  std::wstring title;           // the menu text without its mnemonic
  int result = 0;               // what the call returned
  std::wstring values;          // the values the dialog returned
  std::wstring screenshotFile;  // file names inside the tour folder; empty when not written
  std::wstring beforeFile;
  std::wstring afterFile;
  bool changed = false;               // the after picture differs from the before picture
  std::vector<std::string> failures;  // steps that failed, files that could not be written
};

struct TourImages {
  const BITMAPHANDLE* photo = nullptr;   // 24-bit colour
  const BITMAPHANDLE* gray16 = nullptr;  // for the window-level dialog
};

// The main value the structure is filled with: the neutral one when the tour moves a control to the tour
// value, the tour value itself when it moves nothing.
int TourStartValue(const DialogEntry& entry);

// The driver steps of one dialog: move the main control (if it has one the
// tour knows), let the preview catch up, photograph the dialog into
// `screenshotPath` (skipped when empty), then press OK or Cancel.
qv::test::Script TourScript(const DialogEntry& entry, const std::wstring& screenshotPath, bool pressOk);

// Runs one dialog as the tour does, on `bitmap`, pressing OK or Cancel.
DialogOutcome DriveDialog(const DialogEntry& entry, DialogCall call, HWND owner, BITMAPHANDLE* bitmap, ApplyMode mode,
                          const std::wstring& screenshotPath, bool pressOk, std::vector<std::string>* failures);

// Every exported dialog of the catalog, in catalog order; pictures go into `folder`.
std::vector<TourRow> RunTour(const DialogLibrary& library, HWND owner, const TourImages& images,
                             const std::wstring& folder);

// Creates the folder and its parents; true when it exists afterwards.
bool EnsureFolder(const std::wstring& folder);

}  // namespace qvdemo
