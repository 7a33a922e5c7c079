/*
 * What the tests of the gray scale, colored gray and balance colors dialogs
 * share: a run of the export that makes the user's changes and presses
 * Cancel (structure and bitmap must stay byte for byte), then the same
 * changes with OK, leaving a screenshot; and the stripe colors and pixels of
 * an operation run on a copy of the caller's bitmap, to compare with the
 * after pane and with what OK did.
 */
#ifndef QV_DLGCLR_GRAYFIXTURE_H
#define QV_DLGCLR_GRAYFIXTURE_H

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "ToneFixture.h"
#include "qvdriver/TestOutput.h"

namespace qv::test {

// The stripe colors and all pixels of `operation` applied to a copy of `source`.
struct Applied {
  std::vector<COLORREF> colors;
  std::vector<unsigned char> pixels;
};
Applied ApplyToCopy(const TestBitmap& source, const std::function<int(BITMAPHANDLE*)>& operation);

// Runs the export twice with the steps `change` adds: first ending in Cancel, which must leave `params` and
// `bitmap` as they were, then ending in OK, which must return QV_DLG_OK. The caller checks what OK wrote.
template <class Params>
void CancelThenOk(int (*call)(HWND, Params*), Params& params, const TestBitmap& bitmap,
                  const std::function<void(Script&)>& change, const std::wstring& screenshot) {
  OwnerWindow owner;
  RunOptions options;
  options.stepWaitMs = 8000;
  const Params before = params;
  const auto pixels = bitmap.Pixels();
  Script cancel;
  change(cancel);
  cancel.ClickCancel();
  RunResult result = DialogDriver().Run([&] { return call(owner.Handle(), &params); }, cancel, options);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_CANCEL);
  EXPECT_EQ(std::memcmp(&params, &before, sizeof params), 0) << "Cancel wrote into the structure";
  EXPECT_TRUE(bitmap.Pixels() == pixels) << "Cancel changed the bitmap";

  Script ok;
  change(ok);
  ok.Do("save a screenshot", [&](StepContext& c) { c.Require(SaveTestScreenshot(c.Target(), "dlgclr", screenshot)); })
      .ClickOk();
  result = DialogDriver().Run([&] { return call(owner.Handle(), &params); }, ok, options);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_OK);
}

}  // namespace qv::test

#endif
