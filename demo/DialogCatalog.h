/*
 * What the demo knows about each of the 21 dialog exports: its name (looked up
 * in Qvdlgclrx.dll at run time, so only the dialogs that exist are offered),
 * its menu text, how to fill its structure, which kernel operation applies
 * the values it returns, what it hands back that the caller must release,
 * and how the tour drives it (its main control and an interesting value).
 */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ParamBlock.h"
#include "qv/qvkrn.h"

namespace qvdemo {

// The picture a dialog works on: the colour photograph, a 16-bit gray image
// (the window-level dialog takes nothing else), or none at all.
enum class ImageKind { Photo, Gray16, None };

// How the tour moves the main control; None leaves the interesting value in the structure instead.
// Trackbar sets a track bar to the tour value; ValueCombo picks the tour value from a value combo's list;
// MarkerSlider focuses a multi-marker slider (its first marker) and presses Page Down as often as the tour
// value says (Page Up for a negative one), each press a tenth of the slider's range, as a user would;
// ListEntry picks the entry of the tour value's index in a combo's list.
enum class TourControl { None, Trackbar, ValueCombo, MarkerSlider, ListEntry };

struct DialogEntry {
  const char* exportName;
  const wchar_t* menuText;
  ImageKind image;
  // Writes the whole structure: size, bitmap, zoom to fit, the flags and the main value.
  void (*fill)(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int mainValue);
  // Runs the kernel operation with the returned values; null where the kernel has no such operation.
  int (*apply)(ParamBlock& params, BITMAPHANDLE* bitmap);
  // Frees the tables, palettes or lists the dialog handed to the caller; null where there are none.
  void (*release)(ParamBlock& params);
  // The returned values as text for the status bar and the tour page.
  std::wstring (*describe)(ParamBlock& params);
  int neutralValue;  // what the demo offers first: no change
  int tourValue;     // what the tour picks: a change that shows
  TourControl control;
  int mainControlId;  // the control the tour moves (0 with TourControl::None)
};

const std::vector<DialogEntry>& DialogCatalog();
// The entry of an export, or null.
const DialogEntry* FindDialogEntry(const std::string& exportName);

}  // namespace qvdemo
