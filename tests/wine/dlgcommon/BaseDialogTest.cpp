/*
 * What every dialog gets from its base: the help callback from the Help
 * button, F1 and the title-bar "?"; the position point; fitting controls to
 * longer texts; OK and Cancel taking the hidden Help button's place.
 */
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "DialogFixture.h"
#include "PreviewTestIds.h"
#include "QVGeneral.h"
#include "TestImages.h"

namespace {

using dlgtest::Drive;
using qv::test::DialogView;
using qv::test::Script;
using qv::test::StepContext;

struct HelpCall {
  unsigned dialogId;
  int controlId;
  void* userData;
};
std::vector<HelpCall> g_helpCalls;

void RecordHelp(unsigned dialogId, int controlId, void* userData) {
  g_helpCalls.push_back(HelpCall{dialogId, controlId, userData});
}

RECT InDialog(HWND dialog, HWND control) {
  RECT r{};
  GetWindowRect(control, &r);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

TEST(BaseDialog, HelpCallbackGetsDialogIdControlIdAndUserData) {
  g_helpCalls.clear();
  int tag = 0;
  CPreviewTestDialog dialog(nullptr);
  EXPECT_EQ(dialog.SetHelpCallback(&RecordHelp), 1);
  EXPECT_EQ(dialog.SetHelpCallBackUserData(&tag), 1);
  EXPECT_EQ(dialog.GetHelpCallback(), &RecordHelp);
  Script script;
  script.Do("press Help", [](StepContext& c) { c.Require(c.View().Click(IDC_TEST_HELP)); })
      .Do("press F1 in the edit box", [](StepContext& c) { c.Require(c.View().PostKey(IDC_TEST_EDIT, VK_F1)); })
      .Do("ask for help on the slider with the title-bar button",
          [](StepContext& c) {
            HWND slider = c.View().Control(IDC_TEST_SLIDER);
            HELPINFO info{sizeof(HELPINFO), HELPINFO_WINDOW, IDC_TEST_SLIDER, slider, 0, {10, 10}};
            SendMessageW(c.Target(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
          })
      .Expect("three calls so far", [](const DialogView&) { return g_helpCalls.size() == 3; })
      .ClickCancel();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  ASSERT_EQ(g_helpCalls.size(), 3u);
  const int expectedControls[] = {0, IDC_TEST_EDIT, IDC_TEST_SLIDER};
  for (size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(g_helpCalls[i].dialogId, CPreviewTestDialog::kDialogId);
    EXPECT_EQ(g_helpCalls[i].controlId, expectedControls[i]);
    EXPECT_EQ(g_helpCalls[i].userData, &tag);
  }

  // Without a callback F1 and Help do nothing and nothing crashes.
  g_helpCalls.clear();
  CPreviewTestDialog silent(nullptr);
  Script quiet;
  quiet
      .Do("press Help and F1",
          [](StepContext& c) {
            c.Require(c.View().Click(IDC_TEST_HELP));
            c.Require(c.View().PostKey(IDC_TEST_EDIT, VK_F1));
          })
      .ClickCancel();
  const auto quietResult = Drive(silent, quiet);
  EXPECT_TRUE(quietResult.Ok()) << quietResult.Report();
  EXPECT_TRUE(g_helpCalls.empty());
}

TEST(BaseDialog, ThePositionPointPlacesTheDialogAndIsProcessWide) {
  POINT where{130, 95};
  POINT* previous = CQVBaseDialog::SetPositionPoint(&where);
  EXPECT_EQ(CQVBaseDialog::SetPositionPoint(&where), &where) << "the setter returns the previous point";
  for (int round = 0; round < 2; ++round) {
    SCOPED_TRACE(round);
    CPreviewTestDialog dialog(nullptr);
    RECT placed{};
    Script script;
    script.Do("read the frame", [&](StepContext& c) { GetWindowRect(c.Target(), &placed); }).ClickCancel();
    const auto result = Drive(dialog, script);
    EXPECT_TRUE(result.Ok()) << result.Report();
    EXPECT_EQ(placed.left, where.x);
    EXPECT_EQ(placed.top, where.y);
    where = POINT{210, 140};  // read when the dialog opens, not when set
  }
  // A point that cannot be read is ignored rather than trusted.
  CQVBaseDialog::SetPositionPoint(reinterpret_cast<POINT*>(16));
  CPreviewTestDialog dialog(nullptr);
  Script script;
  script.ClickCancel();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  CQVBaseDialog::SetPositionPoint(previous);
}

TEST(BaseDialog, AutoFitWidensALongLabelAndMovesItsRowButNeverShrinks) {
  CPreviewTestDialog dialog(nullptr);
  RECT label{}, slider{}, edit{}, cancel{}, frame{};
  RECT labelAfter{}, sliderAfter{}, editAfter{}, cancelAfter{}, frameAfter{};
  int widened = -1, again = -1, missing = -1;
  dialog.onInit = [&](CPreviewTestDialog& d) {
    HWND h = d.m_hWnd;
    EXPECT_EQ(CQVGeneral::AutoFitControls(h, nullptr, nullptr, 0, 1, nullptr, 0, 0), 0) << "the template fits";
    SetDlgItemTextW(h, IDC_TEST_LABEL, L"Brightness applied to the picture:");
    label = InDialog(h, GetDlgItem(h, IDC_TEST_LABEL));
    slider = InDialog(h, GetDlgItem(h, IDC_TEST_SLIDER));
    edit = InDialog(h, GetDlgItem(h, IDC_TEST_EDIT));
    cancel = InDialog(h, GetDlgItem(h, IDCANCEL));
    GetWindowRect(h, &frame);
    widened = CQVGeneral::AutoFitControls(h, nullptr, nullptr, 0, 1, nullptr, 0, 0);
    missing = CQVGeneral::MissingTextWidth(GetDlgItem(h, IDC_TEST_LABEL), d.GetFont());
    labelAfter = InDialog(h, GetDlgItem(h, IDC_TEST_LABEL));
    sliderAfter = InDialog(h, GetDlgItem(h, IDC_TEST_SLIDER));
    editAfter = InDialog(h, GetDlgItem(h, IDC_TEST_EDIT));
    cancelAfter = InDialog(h, GetDlgItem(h, IDCANCEL));
    GetWindowRect(h, &frameAfter);
    SetDlgItemTextW(h, IDC_TEST_LABEL, L"L:");
    again = CQVGeneral::AutoFitControls(h, nullptr, nullptr, 0, 1, nullptr, 0, 0);
  };
  Script script;
  script.ClickCancel();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_EQ(widened, 1);
  EXPECT_EQ(missing, 0) << "the label now holds its text";
  const int growth = (labelAfter.right - labelAfter.left) - (label.right - label.left);
  EXPECT_GT(growth, 0);
  EXPECT_EQ(sliderAfter.left - slider.left, growth) << "the slider to its right moves along";
  EXPECT_EQ(editAfter.left - edit.left, growth);
  EXPECT_TRUE(EqualRect(&cancel, &cancelAfter)) << "another row stays";
  EXPECT_GE(frameAfter.right - frameAfter.left, frame.right - frame.left);
  EXPECT_EQ(again, 0) << "a shorter text never shrinks anything";
  EXPECT_EQ(CQVGeneral::AutoFitControls(nullptr, nullptr, nullptr, 0, 1, nullptr, 0, 0), QV_ERROR_INVALID_PARAMETER);
}

TEST(BaseDialog, OkAndCancelTakeTheHiddenHelpButtonsPlace) {
  CPreviewTestDialog dialog(nullptr);
  RECT help{}, ok{}, cancel{}, okAfter{}, cancelAfter{};
  dialog.onInit = [&](CPreviewTestDialog& d) {
    HWND h = d.m_hWnd;
    help = InDialog(h, GetDlgItem(h, IDC_TEST_HELP));
    ok = InDialog(h, GetDlgItem(h, IDOK));
    cancel = InDialog(h, GetDlgItem(h, IDCANCEL));
    ShowWindow(GetDlgItem(h, IDC_TEST_HELP), SW_HIDE);
    d.ShiftOkCancelBtns(0);
    okAfter = InDialog(h, GetDlgItem(h, IDOK));
    cancelAfter = InDialog(h, GetDlgItem(h, IDCANCEL));
  };
  Script script;
  script.ClickCancel();
  const auto result = Drive(dialog, script);
  EXPECT_TRUE(result.Ok()) << result.Report();
  EXPECT_TRUE(EqualRect(&cancelAfter, &help)) << "Cancel is where Help was";
  EXPECT_EQ(okAfter.left - ok.left, help.left - cancel.left) << "OK moves by the same step";
  EXPECT_EQ(okAfter.top, ok.top);
}

}  // namespace
