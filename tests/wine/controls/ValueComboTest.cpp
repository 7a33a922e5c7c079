/*
 * The value combo: its list, how it takes over a placeholder, typed and
 * committed values, stepping, picking from the list, and which of these
 * the parent hears about under each flag.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ControlsTestDialog.h"
#include "ValueList.h"

namespace {

std::vector<int> Values(std::initializer_list<int> values) { return std::vector<int>(values); }

std::vector<std::wstring> ListTexts(const CQVValueCombo& combo) {
  std::vector<std::wstring> texts;
  for (int i = 0; i < combo.GetCount(); ++i) texts.push_back(combo.GetLBText(i));
  return texts;
}

class ValueComboTest : public ::testing::Test {
 protected:
  void Open(int minimum, int maximum, int listStep, int arrowStep, UINT flags) {
    dialog = std::make_unique<ControlsTestDialog>(minimum, maximum, listStep, arrowStep);
    dialog->m_combo.SetFlags(flags);
    ASSERT_TRUE(dialog->Open());
    dialog->log.clear();
  }
  void TearDown() override {
    if (dialog && dialog->m_hWnd) ::DestroyWindow(dialog->m_hWnd);
  }
  void TypeAndEnter(const wchar_t* text) {
    HWND edit = dialog->ComboEdit();
    ::SendMessageW(edit, EM_SETSEL, 0, -1);
    ControlsTestDialog::Type(edit, text);
    ::SendMessageW(edit, WM_KEYDOWN, VK_RETURN, 1);
  }
  void Key(UINT key) { ::SendMessageW(dialog->ComboEdit(), WM_KEYDOWN, key, 1); }
  int Notifications() const { return dialog->NotificationsFrom(IDC_CT_PLACEHOLDER); }

  std::unique_ptr<ControlsTestDialog> dialog;
};

}  // namespace

TEST(ValueListTest, ListsFollowRangeStepAndMethod) {
  struct Case {
    int minimum, maximum, step, method;
    size_t count;
    std::vector<int> head;
    int last;
  };
  const Case cases[] = {
      {10, 500, 10, qvctl::kValueListLinear, 50, Values({10, 20, 30}), 500},
      {0, 255, 128, qvctl::kValueListLinear, 3, Values({0, 128, 255}), 255},
      {0, 9, 0, qvctl::kValueListLinear, 10, Values({0, 1, 2}), 9},
      {0, 6300, 0, qvctl::kValueListLinear, 64, Values({0, 100, 200}), 6300},
      {1, 1000, 0, qvctl::kValueListDoubling, 11, Values({1, 2, 4, 8}), 1000},
      {0, 5, 0, qvctl::kValueListDoubling, 5, Values({0, 1, 2, 4}), 5},
      {-8, 3, 0, qvctl::kValueListDoubling, 5, Values({-8, 0, 1, 2}), 3},
      {1, 2147483647, 0, qvctl::kValueListDoubling, 32, Values({1, 2}), 2147483647},
      {-2147483647 - 1, 2147483647, 1, qvctl::kValueListLinear, qvctl::kMaxListEntries, Values({-2147483647 - 1}),
       2147483647},
      {500, 10, 10, qvctl::kValueListLinear, 50, Values({10, 20}), 500},  // reversed range
      {7, 7, 0, qvctl::kValueListLinear, 1, Values({7}), 7},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.minimum) + ".." + std::to_string(c.maximum));
    const std::vector<int> list = qvctl::ComputeValueList(c.minimum, c.maximum, c.step, c.method);
    ASSERT_EQ(list.size(), c.count);
    EXPECT_TRUE(std::equal(c.head.begin(), c.head.end(), list.begin()));
    EXPECT_EQ(list.back(), c.last);
    for (size_t i = 1; i < list.size(); ++i) ASSERT_LT(list[i - 1], list[i]);
  }
}

TEST_F(ValueComboTest, TakesOverThePlaceholderInPlace) {
  Open(10, 500, 10, 0, 0);
  HWND combo = dialog->GetDlgItemHandle(IDC_CT_PLACEHOLDER);
  ASSERT_EQ(combo, dialog->m_combo.m_hWnd);
  wchar_t className[32] = {};
  ::GetClassNameW(combo, className, 32);
  EXPECT_EQ(_wcsicmp(className, L"ComboBox"), 0);
  EXPECT_EQ(dialog->m_combo.GetFont(), dialog->GetFont());
  EXPECT_TRUE(dialog->m_combo.GetStyle() & WS_VISIBLE);  // the dialog itself stays hidden in these tests

  // Where the template put the placeholder.
  RECT expected{80, 30, 140, 44};
  ::MapDialogRect(dialog->m_hWnd, &expected);
  RECT actual{};
  dialog->m_combo.GetWindowRect(&actual);
  dialog->ScreenToClient(&actual);
  EXPECT_EQ(actual.left, expected.left);
  EXPECT_EQ(actual.top, expected.top);
  EXPECT_EQ(actual.right, expected.right);

  EXPECT_EQ(ListTexts(dialog->m_combo).size(), 50u);
  EXPECT_EQ(dialog->m_combo.GetLBText(0), L"10");
  EXPECT_EQ(dialog->m_combo.GetLBText(49), L"500");

  // A real combo box of the template is subclassed as it is.
  EXPECT_EQ(dialog->m_realCombo.m_hWnd, dialog->GetDlgItemHandle(IDC_CT_REALCOMBO));
  EXPECT_EQ(ListTexts(dialog->m_realCombo), (std::vector<std::wstring>{L"0", L"1", L"2", L"3", L"4"}));
}

TEST_F(ValueComboTest, TypedValuesAreClampedOnCommit) {
  struct Case {
    UINT flags;
    const wchar_t* typed;
    int value;
    const wchar_t* text;
    int notifications;
  };
  const Case cases[] = {
      {0, L"250", 250, L"250", 2},  // "25" and "250" while typing; "2" is below the range
      {CQVValueCombo::FLAGS_NOTRACKNOTIFY, L"250", 250, L"250", 1},  // once, on Enter
      {CQVValueCombo::FLAGS_NOTRACKNOTIFY, L"9999", 500, L"500", 1},
      {CQVValueCombo::FLAGS_NOTRACKNOTIFY, L"5", 10, L"10", 1},
      {CQVValueCombo::FLAGS_NOTRACKNOTIFY, L"100", 100, L"100", 0},  // unchanged value
      {CQVValueCombo::FLAGS_NOTRACKNOTIFY, L"x-", 100, L"100", 0},   // refused characters; the value is shown again
      {CQVValueCombo::FLAGS_NOPARENTNOTIFY, L"250", 250, L"250", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.typed);
    Open(10, 500, 10, 0, c.flags);
    dialog->m_combo.SetValue(100);
    TypeAndEnter(c.typed);
    EXPECT_EQ(dialog->m_combo.GetValue(), c.value);
    EXPECT_EQ(dialog->m_combo.GetWindowText(), c.text);
    EXPECT_EQ(Notifications(), c.notifications);
    EXPECT_EQ(dialog->m_combo.GetFlags(), c.flags);
    TearDown();
  }
}

TEST_F(ValueComboTest, FocusLeavingCommitsTheTypedValue) {
  Open(-100, 100, 1, 0, CQVValueCombo::FLAGS_NOTRACKNOTIFY);
  dialog->m_combo.SetValue(0);
  HWND edit = dialog->ComboEdit();
  ::SetFocus(edit);
  ::SendMessageW(edit, EM_SETSEL, 0, -1);
  ControlsTestDialog::Type(edit, L"-250");
  EXPECT_EQ(Notifications(), 0);
  ::SetFocus(dialog->GetDlgItemHandle(IDC_CT_AFTER));
  EXPECT_EQ(dialog->m_combo.GetValue(), -100);
  EXPECT_EQ(dialog->m_combo.GetWindowText(), L"-100");
  EXPECT_EQ(Notifications(), 1);
}

TEST_F(ValueComboTest, ArrowKeysAndWheelStepTheValue) {
  struct Case {
    UINT flags;
    int expectedNotifications;
  };
  for (const Case c :
       {Case{0, 6}, Case{CQVValueCombo::FLAGS_NOTRACKNOTIFY, 6}, Case{CQVValueCombo::FLAGS_NOPARENTNOTIFY, 0}}) {
    SCOPED_TRACE(c.flags);
    Open(10, 500, 10, 2, c.flags);
    dialog->m_combo.SetValue(100);
    Key(VK_UP);
    EXPECT_EQ(dialog->m_combo.GetValue(), 102);
    EXPECT_EQ(dialog->m_combo.GetWindowText(), L"102");
    Key(VK_DOWN);
    Key(VK_DOWN);
    EXPECT_EQ(dialog->m_combo.GetValue(), 98);
    Key(VK_PRIOR);  // the next list entry up
    EXPECT_EQ(dialog->m_combo.GetValue(), 100);
    EXPECT_EQ(dialog->m_combo.GetCurSel(), 9);
    Key(VK_NEXT);
    EXPECT_EQ(dialog->m_combo.GetValue(), 90);
    ::SendMessageW(dialog->ComboEdit(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(dialog->m_combo.GetValue(), 92);
    // At the end of the range a step changes nothing and says nothing.
    dialog->m_combo.SetValue(500);
    Key(VK_UP);
    EXPECT_EQ(dialog->m_combo.GetValue(), 500);
    EXPECT_EQ(Notifications(), c.expectedNotifications);
    TearDown();
  }
}

TEST_F(ValueComboTest, PickingFromTheListNotifies) {
  for (UINT flags : {0u, static_cast<UINT>(CQVValueCombo::FLAGS_NOPARENTNOTIFY)}) {
    Open(0, 255, 128, 0, flags);
    dialog->m_combo.SetCurSel(1);
    dialog->SendMessage(WM_COMMAND, MAKEWPARAM(IDC_CT_PLACEHOLDER, CBN_SELCHANGE),
                        reinterpret_cast<LPARAM>(dialog->m_combo.m_hWnd));
    EXPECT_EQ(dialog->m_combo.GetValue(), 128);
    EXPECT_EQ(Notifications(), flags ? 0 : 1);
    TearDown();
  }
}

TEST_F(ValueComboTest, ProgramWritesAreClampedAndSilent) {
  Open(10, 500, 10, 0, 0);
  dialog->m_combo.SetValue(9999);
  EXPECT_EQ(dialog->m_combo.GetValue(), 500);
  EXPECT_EQ(dialog->m_combo.GetWindowText(), L"500");
  EXPECT_EQ(dialog->m_combo.GetCurSel(), 49);
  dialog->m_combo.SetValue(15);  // not in the list: shown as text, nothing selected
  EXPECT_EQ(dialog->m_combo.GetWindowText(), L"15");
  EXPECT_EQ(dialog->m_combo.GetCurSel(), -1);

  dialog->m_combo.SetRange(0, 12);
  EXPECT_EQ(dialog->m_combo.GetValue(), 12);
  int minimum = -1, maximum = -1;
  dialog->m_combo.GetRange(minimum, maximum);
  EXPECT_EQ(minimum, 0);
  EXPECT_EQ(maximum, 12);
  EXPECT_EQ(ListTexts(dialog->m_combo), (std::vector<std::wstring>{L"0", L"10", L"12"}));

  // Doubling lists ignore the step.
  dialog->m_combo.SetComputationMethod(qvctl::kValueListDoubling);
  EXPECT_EQ(ListTexts(dialog->m_combo), (std::vector<std::wstring>{L"0", L"1", L"2", L"4", L"8", L"12"}));
  EXPECT_EQ(Notifications(), 0);
}
