/*
 * CQVIntensityDetectDlg: the intensity detect dialog. A low and a high bound (each a slider mirrored by a numeric
 * edit box, as in the single-value dialogs), a channel mode (the whole pixel's intensity, or chosen colour
 * channels) and the "In" and "Out" colours a per-channel run paints with. The preview shows the effect live; at
 * OK under QVDLG_AUTO_PROCESS the same effect runs on the caller's bitmap.
 */
#pragma once

#include <windows.h>

#include <cstdint>

#include "ComboBox.h"
#include "QVBeforeAfterDlg.h"
#include "QVColorPickerCtrl.h"
#include "QVEditCtrl.h"
#include "SliderCtrl.h"
#include "ToneMember.h"
#include "qv/qvdlgclr.h"
#include "qv/qverror.h"

class CQVIntensityDetectDlg : public CQVBeforeAfterDlg {
 public:
  CQVIntensityDetectDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved);

  int CopyIn(const QVINTENSITYDETECTDLGPARAMS& params);
  int CopyOut(QVINTENSITYDETECTDLGPARAMS& params) const;
  int GetProcessResult() const { return m_nProcessResult; }

  int PrepareEffectBitmap(CQVBitmap& bitmap) override;

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;
  void SetDialogStrings() override;
  void DoDataExchange(qvfw::CDataExchange* pDX) override;

  void OnHScroll(UINT code, UINT position, qvfw::CWnd* scrollBar) override;
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

 private:
  // One bound: its edit box, slider, range, value and the edit-sync flag that keeps writes from code from
  // coming back as typing.
  struct Bound {
    CQVEditCtrl edit;
    qvfw::CSliderCtrl slider;
    qvdlg::ToneRange range{0, 255};
    int value = 0;
    int lastPreviewed = 255;
    int editSync = 1;
  };

  void ApplyRangeRule();
  void InitBound(Bound& bound);
  void SetBoundEdit(Bound& bound, int value);
  void OnBoundSlider(Bound& bound);
  void OnBoundEdit(Bound& bound);
  void OnBoundValidate(Bound& bound);
  void EnableColorControls(bool enable);
  void InitPickerPalettes();
  void OnChannelModeChanged();
  void OnChannelBoxClicked(int boxId, uint32_t bit);
  void OnColorChanged(CQVColorPickerCtrl& picker, COLORREF& stored);

  Bound m_low;
  Bound m_high;
  qvfw::CComboBox m_channelMode;
  CQVColorPickerCtrl m_inPicker;
  CQVColorPickerCtrl m_outPicker;
  qvfw::CPalette m_ownPalette;
  qvfw::CPalette m_screenPalette;
  uint32_t m_uChannel = 0;
  COLORREF m_crIn = RGB(255, 0, 0);
  COLORREF m_crOut = RGB(0, 0, 255);
  uint32_t m_uFlags = 0;
  int m_nProcessResult = QV_SUCCESS;
};
