/*
 * What the tests of the single-value dialogs share: one row per export (its
 * call, its operation, its control and string ids, its range), an owner
 * window, bitmaps with known pixels, and a driven call of an export. The
 * seven structures share one layout, so every test works on a brightness
 * structure and each row's call casts it to its own type.
 */
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "OwnedBitmap.h"
#include "qv/qvdlgclr.h"
#include "qvdriver/DialogDriver.h"

namespace qv::test {

struct ToneExport {
  const char* name;
  int (*call)(HWND, QVBRIGHTNESSDLGPARAMS*);
  int (*operation)(BITMAPHANDLE*, int);
  unsigned dialogId;
  unsigned titleString;
  unsigned groupString;
  int sliderId;
  int editId;
  int groupId;
  int beforeLabelId;
  int afterLabelId;
  int minimum;
  int maximum;
  bool refusesSigned;
  int previewValue;  // a value that visibly changes every color of the test bitmap
};

const std::vector<ToneExport>& ToneExports();
const ToneExport& ToneExportNamed(const std::string& name);

constexpr int kToolbarId = 21206;
constexpr int kBeforeViewId = 21205;
constexpr int kAfterViewId = 21204;
constexpr int kHelpId = 9;
constexpr int kCmdZoomNormal = 21210;

// A hidden top-level window to own the dialogs.
class OwnerWindow {
 public:
  OwnerWindow();
  ~OwnerWindow();
  OwnerWindow(const OwnerWindow&) = delete;
  OwnerWindow& operator=(const OwnerWindow&) = delete;
  HWND Handle() const { return m_window; }

 private:
  HWND m_window;
};

// A bitmap owned by the test (freed by the kernel at the end).
class TestBitmap {
 public:
  BITMAPHANDLE* Get() { return m_bitmap.get(); }
  const BITMAPHANDLE* Get() const { return m_bitmap.get(); }
  // The pixel bytes, row by row without padding, for byte-exact comparisons.
  std::vector<unsigned char> Pixels() const;
  // Red, green and blue of a 24-bit pixel.
  COLORREF ColorAt(int x, int y) const;

 private:
  qvtest::OwnedBitmap m_bitmap;
};

// The three test colors (dark 20 %, middle 50 %, bright 30 % of the width, in that order from the left), so
// that flat areas survive the preview's reduction and the median intensity lies in the middle stripe.
constexpr COLORREF kDarkColor = RGB(120, 30, 40);
constexpr COLORREF kMiddleColor = RGB(60, 160, 90);
constexpr COLORREF kBrightColor = RGB(230, 200, 60);
constexpr int kStripedWidth = 320;
constexpr int kStripedHeight = 240;
void MakeStripedBitmap(TestBitmap& bitmap);
// The stripes' x centres, in the order of the colors above.
std::vector<int> StripeCentres();
// A 16-bit gray bitmap with a ramp.
void MakeGray16Bitmap(TestBitmap& bitmap, bool signedSamples);
// A copy of `source` with the export's operation applied.
void ApplyOperation(const ToneExport& e, const TestBitmap& source, int value, TestBitmap& result, int* code = nullptr);

QVBRIGHTNESSDLGPARAMS ToneParams(uint32_t flags, BITMAPHANDLE* bitmap, int32_t value);
bool SameBytes(const QVBRIGHTNESSDLGPARAMS& a, const QVBRIGHTNESSDLGPARAMS& b);

RunResult DriveTone(const ToneExport& e, HWND owner, QVBRIGHTNESSDLGPARAMS& params, const Script& script,
                    const RunOptions& options = {});

// The text of a dialog kernel string.
std::wstring KernelString(unsigned id);

// True when `image` holds at least `share` of pixels within 3 of `color` on every channel.
bool ShowsColor(const Image& image, COLORREF color, double share);
// Every color fills a fair share of the pane (a stripe's area shrinks with the reduction to the pane and its
// edges blend, so the share asked for is well below the stripe's width).
bool PaneShows(const DialogView& v, int paneId, const std::vector<COLORREF>& colors);
// The colors at the stripes' centres, in the order of StripeCentres().
std::vector<COLORREF> StripeColors(const TestBitmap& bitmap);

// Every stripe's color fills a fair share of the pane (its area shrinks with the reduction to the pane and
// its edges blend, so the share asked for is well below the stripe's width).
bool PaneShows(const DialogView& v, int paneId, const std::vector<COLORREF>& colors);

// The colors at the stripes' centres of a 24-bit bitmap.
std::vector<COLORREF> StripeColors(const TestBitmap& bitmap);

}  // namespace qv::test
