/*
 * CQVValueCombo's value handling. One value (m_value) is the truth; the
 * list selection and the edit text only show it. Changes made by the user go
 * through ChangeValue, which decides whether the parent hears of them now
 * (committed) or later (tracking under FLAGS_NOTRACKNOTIFY).
 */
#include "QVValueCombo.h"

#include <algorithm>
#include <climits>
#include <cwctype>
#include <string>

#include "NumericText.h"
#include "ParentNotify.h"
#include "Placeholder.h"
#include "ValueList.h"

namespace {
constexpr int kDropDownHeight = 200;  // pixels of open list below a placeholder's own height

std::wstring ClassNameOf(HWND window) {
  wchar_t name[64] = {};
  ::GetClassNameW(window, name, 64);
  return name;
}

bool IsComboBoxClass(HWND window) {
  std::wstring name = ClassNameOf(window);
  std::transform(name.begin(), name.end(), name.begin(), [](wchar_t c) { return std::towlower(c); });
  return name == L"combobox";
}
}  // namespace

CQVValueCombo::CQVValueCombo(int minimum, int maximum, int listStep, int arrowStep)
    : m_minimum(std::min(minimum, maximum)),
      m_maximum(std::max(minimum, maximum)),
      m_listStep(std::max(0, listStep)),
      m_arrowStep(arrowStep > 0 ? arrowStep : 1),
      m_method(listStep > 0 ? qvctl::kValueListLinear : qvctl::kValueListDoubling),
      m_value(std::min(minimum, maximum)),
      m_reportedValue(m_value),
      m_edit(*this) {
  m_listValues = qvctl::ComputeValueList(m_minimum, m_maximum, m_listStep, m_method);
}

CQVValueCombo::~CQVValueCombo() = default;

int CQVValueCombo::Clamp(long long value) const {
  return static_cast<int>(std::min<long long>(std::max<long long>(value, m_minimum), m_maximum));
}

void CQVValueCombo::SetRange(int minimum, int maximum) {
  m_minimum = std::min(minimum, maximum);
  m_maximum = std::max(minimum, maximum);
  m_value = Clamp(m_value);
  m_reportedValue = m_value;
  RebuildList();
}

void CQVValueCombo::GetRange(int& minimum, int& maximum) const {
  minimum = m_minimum;
  maximum = m_maximum;
}

void CQVValueCombo::SetValue(int value) {
  m_value = Clamp(value);
  m_reportedValue = m_value;
  ShowValue();
}

void CQVValueCombo::SetComputationMethod(int method) {
  m_method = method == qvctl::kValueListDoubling ? qvctl::kValueListDoubling : qvctl::kValueListLinear;
  RebuildList();
}

void CQVValueCombo::RebuildList() {
  m_listValues = qvctl::ComputeValueList(m_minimum, m_maximum, m_listStep, m_method);
  if (!m_hWnd) return;
  m_showing = true;
  ResetContent();
  for (int value : m_listValues) AddString(qvctl::FormatNumber(value).c_str());
  m_showing = false;
  ShowValue();
}

// Selects the list entry of the value when there is one, so the open list
// starts there; otherwise shows the number as text with nothing selected.
void CQVValueCombo::ShowValue() {
  if (!m_hWnd) return;
  m_showing = true;
  const auto found = std::find(m_listValues.begin(), m_listValues.end(), m_value);
  if (found != m_listValues.end()) {
    SetCurSel(static_cast<int>(found - m_listValues.begin()));
  } else {
    SetCurSel(-1);
  }
  SetWindowText(qvctl::FormatNumber(m_value).c_str());
  m_showing = false;
}

void CQVValueCombo::ChangeValue(int value, bool tracking) {
  m_value = Clamp(value);
  if (!tracking || !(m_flags & FLAGS_NOTRACKNOTIFY)) FlushNotification();
}

void CQVValueCombo::FlushNotification() {
  // Typing "100" over 100 passes through 10 on the way; the parent hears
  // only of a value that differs from what it last knew.
  if (m_value == m_reportedValue) return;
  m_reportedValue = m_value;
  if (!(m_flags & FLAGS_NOPARENTNOTIFY)) qvctl::NotifyParent(m_hWnd, kNotifyValueChanged);
}

void CQVValueCombo::StepValue(int steps) {
  ChangeValue(Clamp(static_cast<long long>(m_value) + static_cast<long long>(steps) * m_arrowStep), false);
  ShowValue();
}

void CQVValueCombo::PageValue(int pages) {
  // A page is one list entry: the neighbour of the value in the list.
  if (m_listValues.empty()) return;
  int target = m_value;
  if (pages > 0) {
    auto next = std::upper_bound(m_listValues.begin(), m_listValues.end(), m_value);
    target = next != m_listValues.end() ? *next : m_listValues.back();
  } else if (pages < 0) {
    auto previous = std::lower_bound(m_listValues.begin(), m_listValues.end(), m_value);
    target = previous != m_listValues.begin() ? *(previous - 1) : m_listValues.front();
  }
  ChangeValue(target, false);
  ShowValue();
}

// The typed text becomes the value: clamped when out of range, and the
// previous value shown again when it is no number at all.
void CQVValueCombo::CommitTyped() {
  double typed = 0;
  if (m_hWnd && qvctl::ParseNumber(GetWindowText(), typed)) {
    const double bounded = std::min<double>(std::max<double>(typed, INT_MIN), INT_MAX);
    ChangeValue(Clamp(static_cast<long long>(bounded)), false);
  }
  FlushNotification();
  ShowValue();
}

void CQVValueCombo::OnEditChange() {
  double typed = 0;
  if (!qvctl::ParseNumber(GetWindowText(), typed)) return;
  // Only a value already within the range counts while typing: "1" on the
  // way to "150" must not be clamped up to the minimum under the user's hands.
  if (typed < m_minimum || typed > m_maximum) return;
  ChangeValue(static_cast<int>(typed), true);
}

void CQVValueCombo::OnSelChange() {
  const int index = GetCurSel();
  if (index < 0 || index >= static_cast<int>(m_listValues.size())) return;
  ChangeValue(m_listValues[static_cast<size_t>(index)], GetDroppedState() != FALSE);
}

BOOL CQVValueCombo::OnChildNotify(UINT message, WPARAM wParam, LPARAM, LRESULT*) {
  if (message != WM_COMMAND || m_showing) return FALSE;
  switch (HIWORD(wParam)) {
    case CBN_EDITCHANGE: OnEditChange(); break;
    case CBN_SELCHANGE: OnSelChange(); break;
    case CBN_CLOSEUP: FlushNotification(); break;
    case CBN_KILLFOCUS: CommitTyped(); break;
    default: break;
  }
  // The parent still sees the combo's own notifications.
  return FALSE;
}

void CQVValueCombo::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  // Only a drop-down list style combo gets keys itself; an editable one
  // gets them through its inner edit box.
  if (!GetDroppedState()) {
    switch (key) {
      case VK_UP: StepValue(1); return;
      case VK_DOWN: StepValue(-1); return;
      case VK_PRIOR: PageValue(1); return;
      case VK_NEXT: PageValue(-1); return;
      default: break;
    }
  }
  Default();
}

BOOL CQVValueCombo::OnMouseWheel(UINT, short delta, POINT) {
  if (GetDroppedState()) return static_cast<BOOL>(Default());
  m_wheelRemainder += delta;
  const int steps = m_wheelRemainder / WHEEL_DELTA;
  m_wheelRemainder -= steps * WHEEL_DELTA;
  if (steps != 0) StepValue(steps);
  return TRUE;
}

bool CQVValueCombo::AttachInnerEdit() {
  COMBOBOXINFO info{};
  info.cbSize = sizeof(info);
  if (!::GetComboBoxInfo(m_hWnd, &info) || !info.hwndItem || info.hwndItem == m_hWnd) return true;  // a drop list
  return m_edit.SubclassWindow(info.hwndItem) != FALSE;
}

BOOL CQVValueCombo::SubclassWindow(HWND window) {
  if (!IsComboBoxClass(window)) return FALSE;
  if (!CComboBox::SubclassWindow(window)) return FALSE;
  AttachInnerEdit();
  RebuildList();
  return TRUE;
}

BOOL CQVValueCombo::SubclassDlgItem(UINT id, CWnd* parent) {
  if (!parent || !parent->m_hWnd || m_hWnd) return FALSE;
  qvctl::Placeholder placeholder;
  if (!qvctl::FindPlaceholder(parent->m_hWnd, id, placeholder)) return FALSE;
  if (IsComboBoxClass(placeholder.window)) return SubclassWindow(placeholder.window);

  RECT rect = placeholder.rect;
  rect.bottom += kDropDownHeight;
  const DWORD style = WS_CHILD | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL |
                      placeholder.visibleAndDisabled;
  if (!CreateEx(0, L"COMBOBOX", L"", style, rect, parent->m_hWnd, id)) return FALSE;
  qvctl::ReplacePlaceholder(placeholder, m_hWnd);
  AttachInnerEdit();
  RebuildList();
  return TRUE;
}
