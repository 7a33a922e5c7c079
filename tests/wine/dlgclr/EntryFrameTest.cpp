/*
 * The checks every single-value export makes around its dialog that only
 * Windows can show, run for all seven: structures in reserved, read-only or
 * truncated memory (probed through VirtualQuery), the owner window, then OK
 * writing back and Cancel writing nothing. The order of the checks, sizes and
 * demanded bitmaps are tested natively. Each case is named after the
 * behaviour; the export is the parameter.
 */
#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>

#include "ToneFixture.h"

namespace qv::test {
namespace {

class EveryToneExport : public ::testing::TestWithParam<ToneExport> {
 protected:
  const ToneExport& E() const { return GetParam(); }
  OwnerWindow m_owner;
};

TEST_P(EveryToneExport, UnmappedReadOnlyAndTruncatedStructuresGiveInvalidParameter) {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  const SIZE_T page = info.dwPageSize;
  auto* reserved = static_cast<unsigned char*>(VirtualAlloc(nullptr, 2 * page, MEM_RESERVE, PAGE_NOACCESS));
  ASSERT_NE(reserved, nullptr);
  EXPECT_EQ(E().call(m_owner.Handle(), reinterpret_cast<QVBRIGHTNESSDLGPARAMS*>(reserved)), QV_ERROR_INVALID_PARAMETER)
      << "reserved, not committed";

  ASSERT_NE(VirtualAlloc(reserved, page, MEM_COMMIT, PAGE_READWRITE), nullptr);
  const auto good = ToneParams(0, nullptr, 0);
  // Ends exactly at the end of the committed page: fine as far as memory goes, so the null owner decides.
  auto* flush = reinterpret_cast<QVBRIGHTNESSDLGPARAMS*>(reserved + page - sizeof good);
  std::memcpy(flush, &good, sizeof good);
  EXPECT_EQ(E().call(nullptr, flush), QV_ERROR_DLG_FAILED);
  // Runs 8 bytes into the reserved page.
  auto* straddling = reinterpret_cast<QVBRIGHTNESSDLGPARAMS*>(reserved + page - sizeof good + 8);
  std::memcpy(straddling, &good, sizeof good - 8);
  EXPECT_EQ(E().call(m_owner.Handle(), straddling), QV_ERROR_INVALID_PARAMETER);

  DWORD old = 0;
  std::memcpy(reserved, &good, sizeof good);
  ASSERT_TRUE(VirtualProtect(reserved, page, PAGE_READONLY, &old));
  EXPECT_EQ(E().call(m_owner.Handle(), reinterpret_cast<QVBRIGHTNESSDLGPARAMS*>(reserved)), QV_ERROR_INVALID_PARAMETER)
      << "read-only";
  VirtualFree(reserved, 0, MEM_RELEASE);
}

TEST_P(EveryToneExport, AMissingOwnerWindowFailsTheDialog) {
  auto params = ToneParams(0, nullptr, 0);
  const auto before = params;
  EXPECT_EQ(E().call(nullptr, &params), QV_ERROR_DLG_FAILED);
  EXPECT_EQ(E().call(reinterpret_cast<HWND>(static_cast<uintptr_t>(0x5a5a0)), &params), QV_ERROR_DLG_FAILED);
  HWND gone = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
  DestroyWindow(gone);
  EXPECT_EQ(E().call(gone, &params), QV_ERROR_DLG_FAILED);
  EXPECT_TRUE(SameBytes(params, before));
}

TEST_P(EveryToneExport, WithoutFlagsANullBitmapRunsWithoutPreview) {
  auto params = ToneParams(0, nullptr, E().maximum);
  Script script;
  script
      .Expect("no preview: views, labels and toolbar hidden",
              [this](const DialogView& v) {
                return v.Visible(kBeforeViewId) != true && v.Visible(kAfterViewId) != true &&
                       v.Visible(E().beforeLabelId) == false && v.Visible(E().afterLabelId) == false &&
                       v.Visible(kToolbarId) != true;
              })
      .Expect("the value came in", [this](const DialogView& v) { return v.TrackbarPos(E().sliderId) == E().maximum; })
      .ClickOk();
  RunResult result = DriveTone(E(), m_owner.Handle(), params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_OK);
  EXPECT_EQ(params.nBrightness, E().maximum);
}

TEST_P(EveryToneExport, OkWritesTheValueAndTheZoomStateBack) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  const auto pixels = bitmap.Pixels();
  auto params = ToneParams(QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL, bitmap.Get(), E().minimum);
  const int chosen = E().previewValue;
  Script script;
  script.Do("drag the slider", [&](StepContext& c) { c.Require(c.View().SetTrackbar(E().sliderId, chosen)); })
      .Expect("the edit follows", [&](const DialogView& v) { return v.Text(E().editId) == std::to_wstring(chosen); })
      .Do("zoom the preview to 100 %", [](StepContext& c) { c.Require(c.View().Command(kCmdZoomNormal)); })
      .ClickOk();
  RunResult result = DriveTone(E(), m_owner.Handle(), params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_OK);
  EXPECT_EQ(params.nBrightness, chosen);
  EXPECT_EQ(params.bZoomToFit, 0) << "the zoom state at close is written back";
  EXPECT_EQ(bitmap.Pixels(), pixels) << "without QVDLG_AUTO_PROCESS the bitmap stays as it was";
}

TEST_P(EveryToneExport, CancelAfterManyPreviewsLeavesStructureAndBitmapUntouched) {
  TestBitmap bitmap;
  MakeStripedBitmap(bitmap);
  const auto pixels = bitmap.Pixels();
  int helpCalls = 0;
  auto params = ToneParams(QVDLG_SHOW_PREVIEW | QVDLG_SHOW_TOOL_ZOOMLEVEL | 0x70u, bitmap.Get(), E().minimum);
  params.pfnHelpCallback = [](unsigned, int, void* user) { ++*static_cast<int*>(user); };
  params.pHelpCallBackUserData = &helpCalls;
  const auto before = params;
  Script script;
  for (int step = 1; step <= 4; ++step) {
    const int value = E().minimum + (E().maximum - E().minimum) * step / 5;
    script.Do("preview " + std::to_string(value),
              [&, value](StepContext& c) { c.Require(c.View().SetTrackbar(E().sliderId, value)); });
  }
  script
      .Do("type a value",
          [&](StepContext& c) { c.Require(c.View().SetEditText(E().editId, std::to_wstring(E().maximum))); })
      .Expect("the slider follows the box",
              [&](const DialogView& v) { return v.TrackbarPos(E().sliderId) == E().maximum; })
      .ClickCancel();
  RunResult result = DriveTone(E(), m_owner.Handle(), params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(result.returnValue, QV_DLG_CANCEL);
  EXPECT_TRUE(SameBytes(params, before)) << "Cancel wrote into the structure";
  EXPECT_EQ(bitmap.Pixels(), pixels) << "Cancel changed the bitmap";
}

TEST_P(EveryToneExport, TextsComeFromTheKernelAndHelpReportsTheDialogId) {
  struct HelpLog {
    unsigned dialogId = 0;
    int controlId = -1;
    int calls = 0;
  } log;
  auto params = ToneParams(0, nullptr, 0);
  params.pfnHelpCallback = [](unsigned dialogId, int controlId, void* user) {
    auto* l = static_cast<HelpLog*>(user);
    l->dialogId = dialogId;
    l->controlId = controlId;
    ++l->calls;
  };
  params.pHelpCallBackUserData = &log;
  Script script;
  script
      .Do("read the texts",
          [&](StepContext& c) {
            const DialogView v = c.View();
            if (v.Caption() != KernelString(E().titleString)) c.Fail("caption is not the title string");
            if (v.Text(E().groupId) != KernelString(E().groupString)) c.Fail("group box is not the group string");
            if (v.Text(IDOK) != KernelString(0) || v.Text(IDCANCEL) != KernelString(1) ||
                v.Text(kHelpId) != KernelString(2))
              c.Fail("button texts are not the kernel's");
            if (v.Text(E().beforeLabelId) != KernelString(3) || v.Text(E().afterLabelId) != KernelString(4))
              c.Fail("Before/After labels are not the kernel's");
            if (v.Visible(kHelpId) != true) c.Fail("Help is hidden although a callback is set");
          })
      .Do("press Help", [](StepContext& c) { c.Require(c.View().Click(kHelpId)); })
      .ClickCancel();
  RunResult result = DriveTone(E(), m_owner.Handle(), params, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(log.calls, 1);
  EXPECT_EQ(log.dialogId, E().dialogId);
  EXPECT_EQ(log.controlId, 0);
}

INSTANTIATE_TEST_SUITE_P(SingleValue, EveryToneExport, ::testing::ValuesIn(ToneExports()),
                         [](const ::testing::TestParamInfo<ToneExport>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace qv::test
