/*
 * CQVValueCombo: a combo box for a whole number within a range. The user
 * types a value, picks one from the drop-down list, or steps it with the
 * arrow keys and the mouse wheel; typed values are validated and clamped to
 * the range when committed (Enter, or the focus leaving the combo).
 *
 * Construction takes (minimum, maximum, list step, arrow step): the list
 * holds the values from minimum to maximum by the list step (0 picks a step
 * itself, see SetComputationMethod); the arrow keys and the wheel move the
 * value by the arrow step (0 means 1). So (10, 500, 10, 0) lists 10, 20, ...,
 * 500 and steps by 1, and (0, 255, 128, 0) lists 0, 128, 255.
 *
 * Every change of value made by the user sends WM_NOTIFY with code
 * kNotifyValueChanged (1) to the parent. FLAGS_NOTRACKNOTIFY holds the
 * notification back while the user is still typing or moving through the
 * open list, and sends it once on commit; FLAGS_NOPARENTNOTIFY sends none at
 * all (a dialog sets it while writing values itself). SetValue and SetRange
 * never notify; a value set outside the range is clamped to the nearer end.
 *
 * The combo either subclasses a combo box of the template or takes over a
 * placeholder control (a static, say): it then creates itself with the
 * placeholder's id, rectangle, place in the tab order, font, visibility and
 * enabled state, and destroys the placeholder. Its parent must be a framework
 * window: the combo learns of list picks, typing and focus loss from its own
 * notifications, which the parent reflects back to it.
 */
#pragma once

#include <vector>

#include "ComboBox.h"
#include "QVValueComboEdit.h"

class CQVValueCombo : public qvfw::CComboBox {
 public:
  enum : UINT {
    FLAGS_NOTRACKNOTIFY = 0x0001,
    FLAGS_NOPARENTNOTIFY = 0x0002,
  };
  static constexpr UINT kNotifyValueChanged = 1;

  CQVValueCombo(int minimum = 0, int maximum = 100, int listStep = 0, int arrowStep = 0);
  ~CQVValueCombo() override;

  void SetRange(int minimum, int maximum);
  void GetRange(int& minimum, int& maximum) const;
  void SetValue(int value);
  int GetValue() const { return m_value; }
  UINT GetFlags() const { return m_flags; }
  void SetFlags(UINT flags) { m_flags = flags; }
  // How the list is built when no list step is given: 0 evenly spaced
  // values (at most 64 entries), 1 doubling values (minimum, the powers of
  // two above it, maximum). A combo constructed with a list step of 0 starts
  // with doubling, one with a step with even spacing.
  void SetComputationMethod(int method);
  int GetComputationMethod() const { return m_method; }
  const std::vector<int>& GetListValues() const { return m_listValues; }

  BOOL SubclassWindow(HWND window) override;
  BOOL SubclassDlgItem(UINT id, CWnd* parent) override;

  // Used by the inner edit box.
  void StepValue(int steps);
  void PageValue(int pages);
  void CommitTyped();
  bool AllowsNegative() const { return m_minimum < 0; }

 protected:
  BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
  void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
  BOOL OnMouseWheel(UINT flags, short delta, POINT point) override;

 private:
  int Clamp(long long value) const;
  void RebuildList();
  void ShowValue();
  void ChangeValue(int value, bool tracking);
  void FlushNotification();
  void OnEditChange();
  void OnSelChange();
  bool AttachInnerEdit();

  int m_minimum;
  int m_maximum;
  int m_listStep;
  int m_arrowStep;
  int m_method;
  int m_value;
  UINT m_flags = 0;
  int m_reportedValue;  // the value the parent last heard of (or set itself)
  bool m_showing = false;
  int m_wheelRemainder = 0;
  std::vector<int> m_listValues;
  CQVValueComboEdit m_edit;
};
