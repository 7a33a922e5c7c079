/*
 * Dialogs: modeless and modal dialogs from this program's template, data
 * exchange in both directions, the default OK and Cancel commands, and
 * notifications offered to the child's own object before the dialog's
 * handler. Keys through the message filter and the dialog manager are tested
 * on the base dialogs (F1) and the tone dialogs (Tab, Escape, Enter).
 */
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Button.h"
#include "ComboBox.h"
#include "Dialog.h"
#include "Edit.h"
#include "FrameworkTestIds.h"
#include "Module.h"
#include "SliderCtrl.h"

using qvfw::CDataExchange;
using qvfw::CDialog;
using qvfw::CWnd;

namespace {

constexpr UINT kRunScript = WM_APP + 1;
constexpr UINT_PTR kWatchdogTimer = 99;
constexpr int kWatchdogResult = -2;

void InitControls() {
  INITCOMMONCONTROLSEX init{sizeof(init), ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
  ::InitCommonControlsEx(&init);
}

// A button whose object takes its own clicks when asked to.
class SelfHandlingButton : public qvfw::CButton {
 public:
  bool takeClicks = false;
  int clicksSeen = 0;

 protected:
  BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM, LRESULT* result) override {
    if (message != WM_COMMAND || HIWORD(wParam) != BN_CLICKED) return FALSE;
    ++clicksSeen;
    *result = 0;
    return takeClicks ? TRUE : FALSE;
  }
};

class RecordingSlider : public qvfw::CSliderCtrl {
 public:
  int scrollsSeen = 0;

 protected:
  BOOL OnChildNotify(UINT message, WPARAM, LPARAM, LRESULT*) override {
    if (message == WM_HSCROLL) ++scrollsSeen;
    return FALSE;
  }
};

class TestDialog : public CDialog {
 public:
  TestDialog() : CDialog(IDD_FRAMEWORK_TEST) {}

  int m_number = 42;
  int m_checked = 1;
  int m_comboIndex = 1;
  qvfw::CEdit m_edit;
  SelfHandlingButton m_press;
  RecordingSlider m_slider;
  qvfw::CComboBox m_combo;

  std::vector<std::wstring> log;
  CWnd* lastScrollBar = nullptr;
  // Runs inside the modal loop, posted from OnInitDialog.
  void (*script)(TestDialog&) = nullptr;

 protected:
  BOOL OnInitDialog() override {
    BOOL result = CDialog::OnInitDialog();
    log.push_back(L"init");
    if (script) {
      PostMessage(kRunScript);
      // A script that fails to close the dialog must fail the test, not hang it.
      SetTimer(kWatchdogTimer, 10000);
    }
    return result;
  }
  void DoDataExchange(CDataExchange* pDX) override {
    qvfw::DDX_Control(pDX, IDC_FW_NUMBER, m_edit);
    qvfw::DDX_Control(pDX, IDC_FW_PRESS, m_press);
    qvfw::DDX_Control(pDX, IDC_FW_SLIDER, m_slider);
    qvfw::DDX_Control(pDX, IDC_FW_COMBO, m_combo);
    if (!pDX->m_bSaveAndValidate && m_combo.GetCount() == 0) {
      m_combo.AddString(L"zero");
      m_combo.AddString(L"one");
      m_combo.AddString(L"two");
    }
    qvfw::DDX_Text(pDX, IDC_FW_NUMBER, m_number);
    qvfw::DDX_Check(pDX, IDC_FW_CHECK, m_checked);
    qvfw::DDX_CBIndex(pDX, IDC_FW_COMBO, m_comboIndex);
  }
  void OnOK() override {
    log.push_back(L"ok");
    CDialog::OnOK();
  }
  void OnCancel() override {
    log.push_back(L"cancel");
    CDialog::OnCancel();
  }
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
    if (LOWORD(wParam) == IDC_FW_PRESS && HIWORD(wParam) == BN_CLICKED) {
      log.push_back(L"press");
      return TRUE;
    }
    return CDialog::OnCommand(wParam, lParam);
  }
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    log.push_back(L"notify " + std::to_wstring(header->idFrom) + L" " + std::to_wstring(header->code));
    *result = 77;
    return TRUE;
  }
  void OnHScroll(UINT code, UINT, CWnd* scrollBar) override {
    log.push_back(L"hscroll " + std::to_wstring(code));
    lastScrollBar = scrollBar;
  }
  void OnTimer(UINT_PTR id) override {
    if (id == kWatchdogTimer) EndDialog(kWatchdogResult);
  }
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == kRunScript) {
      script(*this);
      return 0;
    }
    return CDialog::WindowProc(message, wParam, lParam);
  }
};

class DialogTest : public ::testing::Test {
 protected:
  void SetUp() override { InitControls(); }
};

}  // namespace

TEST_F(DialogTest, ModelessDialogLoadsDataAndMapsItsObject) {
  TestDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_FRAMEWORK_TEST));
  HWND window = dialog.m_hWnd;
  EXPECT_EQ(CWnd::FromHandlePermanent(window), &dialog);
  EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_USER), reinterpret_cast<LONG_PTR>(&dialog));
  EXPECT_EQ(dialog.log, std::vector<std::wstring>{L"init"});
  EXPECT_EQ(dialog.GetDlgItemText(IDC_FW_NUMBER), L"42");
  EXPECT_EQ(dialog.IsDlgButtonChecked(IDC_FW_CHECK), static_cast<UINT>(BST_CHECKED));
  EXPECT_EQ(dialog.m_combo.GetCurSel(), 1);
  EXPECT_EQ(CWnd::FromHandlePermanent(dialog.GetDlgItemHandle(IDC_FW_NUMBER)), &dialog.m_edit);

  // OK saves the data and ends the dialog, but a modeless window stays
  // until its owner destroys it.
  dialog.SetDlgItemText(IDC_FW_NUMBER, L"8");
  dialog.SendMessage(WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
  EXPECT_EQ(dialog.m_number, 8);
  EXPECT_EQ(dialog.GetEndResult(), IDOK);
  EXPECT_TRUE(::IsWindow(window));

  ::DestroyWindow(window);
  EXPECT_EQ(dialog.m_hWnd, nullptr);
  EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
  // The children were destroyed with the dialog and their objects let go.
  EXPECT_EQ(dialog.m_edit.m_hWnd, nullptr);
  EXPECT_EQ(dialog.m_slider.m_hWnd, nullptr);
}

TEST_F(DialogTest, ChildNotificationsGoToTheChildObjectFirst) {
  TestDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_FRAMEWORK_TEST));
  dialog.log.clear();

  dialog.m_press.Click();
  EXPECT_EQ(dialog.m_press.clicksSeen, 1);
  EXPECT_EQ(dialog.log, std::vector<std::wstring>{L"press"});

  dialog.m_press.takeClicks = true;
  dialog.m_press.Click();
  EXPECT_EQ(dialog.m_press.clicksSeen, 2);
  EXPECT_EQ(dialog.log.size(), 1u) << "a notification the child took must not reach the dialog";

  // A trackbar's scroll: offered to the slider object, then the dialog's
  // handler with the slider's own object as the scroll bar.
  dialog.SendMessage(WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, 5), reinterpret_cast<LPARAM>(dialog.m_slider.m_hWnd));
  EXPECT_EQ(dialog.m_slider.scrollsSeen, 1);
  ASSERT_EQ(dialog.log.size(), 2u);
  EXPECT_EQ(dialog.log[1], L"hscroll " + std::to_wstring(TB_THUMBTRACK));
  EXPECT_EQ(dialog.lastScrollBar, &dialog.m_slider);

  // WM_NOTIFY from a child: the dialog's result comes back to the sender.
  NMHDR header{dialog.m_slider.m_hWnd, IDC_FW_SLIDER, NM_RELEASEDCAPTURE};
  const LRESULT result = dialog.SendMessage(WM_NOTIFY, IDC_FW_SLIDER, reinterpret_cast<LPARAM>(&header));
  EXPECT_EQ(result, 77);
  EXPECT_EQ(dialog.log.back(), L"notify " + std::to_wstring(IDC_FW_SLIDER) + L" " +
                                   std::to_wstring(static_cast<UINT>(NM_RELEASEDCAPTURE)));
  ::DestroyWindow(dialog.m_hWnd);
}

TEST_F(DialogTest, ModalOkSavesDataAndCancelLeavesIt) {
  struct Case {
    const wchar_t* name;
    void (*script)(TestDialog&);
    INT_PTR expectedResult;
    int expectedNumber;
    int expectedChecked;
    int expectedComboIndex;
  };
  const Case cases[] = {
      {L"ok",
       [](TestDialog& d) {
         d.SetDlgItemText(IDC_FW_NUMBER, L"-17");
         d.CheckDlgButton(IDC_FW_CHECK, BST_UNCHECKED);
         d.m_combo.SetCurSel(2);
         d.PostMessage(WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
       },
       IDOK, -17, 0, 2},
      {L"cancel",
       [](TestDialog& d) {
         d.SetDlgItemText(IDC_FW_NUMBER, L"99");
         d.CheckDlgButton(IDC_FW_CHECK, BST_UNCHECKED);
         d.PostMessage(WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
       },
       IDCANCEL, 42, 1, 1},
      // Text that is no whole number keeps the dialog open on OK; the script
      // then cancels, and nothing was written.
      {L"invalid",
       [](TestDialog& d) {
         d.SetDlgItemText(IDC_FW_NUMBER, L"12abc");
         d.CheckDlgButton(IDC_FW_CHECK, BST_UNCHECKED);
         d.SendMessage(WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
         if (d.GetEndResult() == 0) d.PostMessage(WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
       },
       IDCANCEL, 42, 1, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TestDialog dialog;
    dialog.script = c.script;
    EXPECT_EQ(dialog.DoModal(), c.expectedResult);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.m_number, c.expectedNumber);
    EXPECT_EQ(dialog.m_checked, c.expectedChecked);
    EXPECT_EQ(dialog.m_comboIndex, c.expectedComboIndex);
  }
}

TEST_F(DialogTest, TemplatesLoadFromTheModuleHoldingTheFramework) {
  EXPECT_EQ(qvfw::ModuleInstance(), ::GetModuleHandleW(nullptr));
  EXPECT_NE(::FindResourceW(qvfw::ModuleInstance(), MAKEINTRESOURCEW(IDD_FRAMEWORK_TEST), RT_DIALOG), nullptr);
  // A template that does not exist: DoModal reports failure, nothing hangs.
  CDialog absent(4242);
  EXPECT_EQ(absent.DoModal(), -1);
}
