/*
 * CQVColorPickerCtrl: a push button of a template that shows a colour as a
 * swatch and lets the user choose another in the system's colour dialog
 * (a click, Space, or Enter while it has the focus). The colour dialog's
 * sixteen custom colours offer the colours of up to two palettes given with
 * SetPalette (an image's own palette and one made for the screen, say), so
 * colours of the image are one click away.
 *
 * A colour the user picks that differs from the shown one sends WM_NOTIFY
 * with code kNotifyColorChanged (1) to the parent, once; cancelling, or
 * picking the same colour again, sends nothing, and SetRGB never does.
 *
 * The button is drawn by the control itself (BS_OWNERDRAW): its parent must
 * be a framework window, which reflects WM_DRAWITEM and BN_CLICKED back to
 * the control.
 */
#pragma once

#include <windows.h>

#include "Button.h"
#include "Palette.h"

class CQVColorPickerCtrl : public qvfw::CButton {
 public:
  static constexpr UINT kNotifyColorChanged = 1;
  static constexpr int kCustomColorCount = 16;

  CQVColorPickerCtrl();
  ~CQVColorPickerCtrl() override;

  // The shown colour (0x00BBGGRR); the high byte is ignored. No notification.
  void SetRGB(COLORREF color);
  COLORREF GetRGBColorRef() const { return m_color; }
  // Copies both palettes' colours (either may be null) into the custom
  // colours: each gets up to half of the sixteen, or all of them when the
  // other is empty, sampled evenly over the palette when it has more. Slots
  // no palette fills keep what the user mixed before.
  void SetPalette(qvfw::CPalette* first, qvfw::CPalette* second);
  const COLORREF* GetCustomColors() const { return m_customColors; }

  // Opens the colour dialog, as a click does. True when the user picked a
  // new colour (the parent has been told).
  bool PickColor();

  // Takes over a push button and makes it owner-drawn.
  BOOL SubclassWindow(HWND window) override;

  // Draws the button in `rect` for the owner-draw state bits (ODS_SELECTED,
  // ODS_FOCUS, ODS_DISABLED).
  void Paint(HDC dc, const RECT& rect, UINT state) const;

 protected:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
  UINT OnGetDlgCode(MSG* msg) override;
  void OnKeyDown(UINT key, UINT repeat, UINT flags) override;

 private:
  COLORREF m_color = RGB(0, 0, 0);
  COLORREF m_customColors[kCustomColorCount];
  bool m_choosing = false;  // the colour dialog is open: a second click must not open another
};
