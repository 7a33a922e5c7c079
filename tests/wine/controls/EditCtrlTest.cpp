/*
 * The numeric edit box: what typing and pasting may put into it, how its
 * text reads as a value, and when its parent hears that a value was
 * committed.
 */
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "ControlsTestDialog.h"

namespace {

void PutOnClipboard(HWND owner, const wchar_t* text) {
  ASSERT_TRUE(::OpenClipboard(owner));
  ::EmptyClipboard();
  const size_t bytes = (wcslen(text) + 1) * sizeof(wchar_t);
  HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
  std::memcpy(::GlobalLock(memory), text, bytes);
  ::GlobalUnlock(memory);
  ::SetClipboardData(CF_UNICODETEXT, memory);
  ::CloseClipboard();
}

class EditCtrlTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(dialog.Open()); }
  void TearDown() override { ::DestroyWindow(dialog.m_hWnd); }

  void Reset(int numericsOnly, int acceptNegative, const wchar_t* text, int selStart, int selEnd) {
    dialog.m_edit.SetNumericsOnly(numericsOnly);
    dialog.m_edit.SetAcceptNegative(acceptNegative);
    dialog.m_edit.SetWindowText(text);
    dialog.m_edit.SetSel(selStart, selEnd);
  }

  ControlsTestDialog dialog{0, 100, 10, 0};
};

}  // namespace

TEST_F(EditCtrlTest, TypedCharactersAreFilteredByTheResultingText) {
  struct Case {
    int numericsOnly;
    int acceptNegative;
    const wchar_t* initial;
    int selStart;
    int selEnd;
    const wchar_t* typed;
    const wchar_t* expected;
  };
  const Case cases[] = {
      {1, 0, L"", 0, 0, L"1a2.3.-4", L"12.34"},  // letters, a second point and a minus refused
      {1, 1, L"12", 2, 2, L"-", L"12"},          // a minus only in front
      {1, 1, L"12", 0, 0, L"-", L"-12"},        {1, 1, L"-12", 0, 0, L"-", L"-12"},  // not a second one
      {1, 1, L"12.5", 0, 4, L"-", L"-"},                                             // replacing the whole text
      {1, 0, L"7", 0, 1, L"-", L"7"},      // no minus without SetAcceptNegative
      {1, 0, L"1.5", 1, 2, L".", L"1.5"},  // a point may replace the point
      {1, 0, L"1.5", 3, 3, L" +e", L"1.5"},     {0, 0, L"", 0, 0, L"ab-.", L"ab-."},  // a plain edit box takes anything
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.typed);
    Reset(c.numericsOnly, c.acceptNegative, c.initial, c.selStart, c.selEnd);
    ControlsTestDialog::Type(dialog.m_edit.m_hWnd, c.typed);
    EXPECT_EQ(dialog.m_edit.GetWindowText(), c.expected);
  }
  // Backspace still edits.
  Reset(1, 0, L"123", 3, 3);
  ::SendMessageW(dialog.m_edit.m_hWnd, WM_CHAR, VK_BACK, 1);
  EXPECT_EQ(dialog.m_edit.GetWindowText(), L"12");
}

TEST_F(EditCtrlTest, PastedTextIsJudgedAsAWhole) {
  struct Case {
    int acceptNegative;
    const wchar_t* initial;
    int selStart;
    int selEnd;
    const wchar_t* pasted;
    const wchar_t* expected;
  };
  const Case cases[] = {
      {0, L"", 0, 0, L"12x", L""},       {0, L"", 0, 0, L"7.5", L"7.5"},
      {0, L"3.4", 3, 3, L"1.2", L"3.4"},  // would make two points
      {1, L"99", 0, 2, L"-5", L"-5"},    {0, L"99", 0, 2, L"-5", L"99"},
      {0, L"12", 1, 1, L"0", L"102"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.pasted);
    Reset(1, c.acceptNegative, c.initial, c.selStart, c.selEnd);
    PutOnClipboard(dialog.m_hWnd, c.pasted);
    ::SendMessageW(dialog.m_edit.m_hWnd, WM_PASTE, 0, 0);
    EXPECT_EQ(dialog.m_edit.GetWindowText(), c.expected);
  }
}

TEST_F(EditCtrlTest, ValuesReadAndWriteAsNumbers) {
  struct Case {
    double set;
    const wchar_t* text;
  };
  const Case written[] = {{-12.5, L"-12.5"}, {1000, L"1000"}, {0, L"0"}, {0.125, L"0.125"}, {-0.0, L"0"}};
  for (const Case& c : written) {
    dialog.m_edit.SetValue(c.set);
    EXPECT_EQ(dialog.m_edit.GetWindowText(), c.text);
    EXPECT_DOUBLE_EQ(dialog.m_edit.GetValue(), c.set);
  }
  const Case read[] = {{0, L""}, {0, L"-"}, {0, L"."}, {3.25, L"3.25"}, {-7, L"-7"}, {5, L"5."}};
  for (const Case& c : read) {
    dialog.m_edit.SetWindowText(c.text);
    EXPECT_DOUBLE_EQ(dialog.m_edit.GetValue(), c.set) << "text \"" << static_cast<const void*>(c.text) << "\"";
  }
}

TEST_F(EditCtrlTest, CommitNotifiesOnceForEachNewText) {
  dialog.clampEdit = true;
  Reset(1, 1, L"", 0, 0);
  dialog.m_edit.SetValue(0);
  dialog.m_edit.SetSel(0, -1);
  dialog.log.clear();

  // Typing alone commits nothing; Enter does, and the dialog clamps.
  ControlsTestDialog::Type(dialog.m_edit.m_hWnd, L"1200");
  EXPECT_EQ(dialog.NotificationsFrom(IDC_CT_NUMBER), 0);
  ::SendMessageW(dialog.m_edit.m_hWnd, WM_KEYDOWN, VK_RETURN, 1);
  EXPECT_EQ(dialog.NotificationsFrom(IDC_CT_NUMBER), 1);
  EXPECT_EQ(dialog.m_edit.GetWindowText(), L"1000");

  // Nothing new to commit: no notification.
  ::SendMessageW(dialog.m_edit.m_hWnd, WM_KEYDOWN, VK_RETURN, 1);
  EXPECT_EQ(dialog.NotificationsFrom(IDC_CT_NUMBER), 1);

  // A value the program writes is not the user's commit.
  dialog.m_edit.SetValue(5);
  ::SendMessageW(dialog.m_edit.m_hWnd, WM_KEYDOWN, VK_RETURN, 1);
  EXPECT_EQ(dialog.NotificationsFrom(IDC_CT_NUMBER), 1);

  // Focus leaving after a change commits; leaving again without one does not.
  dialog.m_edit.SetFocus();
  dialog.m_edit.SetSel(0, -1);
  ControlsTestDialog::Type(dialog.m_edit.m_hWnd, L"-7");
  ::SetFocus(dialog.GetDlgItemHandle(IDC_CT_BEFORE));
  EXPECT_EQ(dialog.NotificationsFrom(IDC_CT_NUMBER), 2);
  EXPECT_DOUBLE_EQ(dialog.m_edit.GetValue(), -7);
  dialog.m_edit.SetFocus();
  ::SetFocus(dialog.GetDlgItemHandle(IDC_CT_BEFORE));
  EXPECT_EQ(dialog.NotificationsFrom(IDC_CT_NUMBER), 2);
}

TEST_F(EditCtrlTest, EnterInADialogCommitsBeforeTheDefaultButtonActs) {
  Reset(1, 0, L"", 0, 0);
  dialog.m_edit.SetFocus();
  ControlsTestDialog::Type(dialog.m_edit.m_hWnd, L"3");
  dialog.log.clear();
  ::PostMessageW(dialog.m_edit.m_hWnd, WM_KEYDOWN, VK_RETURN, 1);
  dialog.Pump();
  const std::vector<std::wstring> expected = {L"notify " + std::to_wstring(IDC_CT_NUMBER) + L" 1", L"ok"};
  EXPECT_EQ(dialog.log, expected);
}
