/*
 * CQVGrayFamilyDlg: what the gray scale, colored gray and balance colors dialogs share on top of the
 * before/after base: the caption and the shared button and pane texts from the dialog kernel, the flag word
 * turned into the preview layout, and OK running the effect on the caller's bitmap under QVDLG_AUTO_PROCESS.
 * Each dialog supplies its own controls, its copy operations and the effect, once for the preview copy
 * (PrepareEffectBitmap) and once for the caller's bitmap (ApplyToCallersBitmap), with the same values, so
 * the after pane shows what OK produces.
 */
#pragma once

#include <windows.h>

#include <cstdint>

#include "QVBeforeAfterDlg.h"
#include "qv/qverror.h"

class CQVGrayFamilyDlg : public CQVBeforeAfterDlg {
 public:
  // The template's numbers: its id, the number the dialog is known by, its title string and pane labels.
  struct Face {
    UINT templateId;
    unsigned dialogId;
    unsigned titleString;
    int beforeLabelId;
    int afterLabelId;
  };

  CQVGrayFamilyDlg(const Face& face, qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved);

  // The result of the effect run on the caller's bitmap at OK (QV_SUCCESS when none was made).
  int GetProcessResult() const { return m_nProcessResult; }

 protected:
  // The effect with the dialog's current values on the caller's bitmap, in place; the operation's result.
  virtual int ApplyToCallersBitmap(BITMAPHANDLE* bitmap) = 0;

  // The base's, then the flags, the control fitting and the Help button's place.
  BOOL OnInitDialog() override;
  void OnOK() override;
  // Caption, OK, Cancel, Help, "Before" and "After"; the dialogs add their group boxes and labels.
  void SetDialogStrings() override;

  // The zoom state and flags every copy-in takes.
  void TakeCommonFields(int32_t zoomToFit, uint32_t flags);
  uint32_t GetFlags() const { return m_uFlags; }

 private:
  Face m_face;
  uint32_t m_uFlags = 0;
  int m_nProcessResult = QV_SUCCESS;
};
