/*
 * CQVLocalHistoEqualizeDlg: the local histogram equalization dialog. The neighbourhood window's width and
 * height, its X and Y extension and the smoothing across tile seams, each in a value combo, and the colour
 * space in a list; the limits come from the caller's bitmap or its region. The effect depends on each pixel's
 * neighbourhood, so the preview runs it at full resolution over what the view covers; with the Apply button
 * (the export shows it for QVDLG_SHOW_APPLY) it runs only when the user asks.
 */
#pragma once

#include <windows.h>

#include "Button.h"
#include "ComboBox.h"
#include "LocalHistoRules.h"
#include "QVBeforeAfterDlg.h"
#include "QVValueCombo.h"
#include "qv/qvdlgclr.h"
#include "qv/qverror.h"

class CQVLocalHistoEqualizeDlg : public CQVBeforeAfterDlg {
 public:
  CQVLocalHistoEqualizeDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved);

  int CopyIn(const QVLOCALHISTOEQUALIZEDLGPARAMS& params);
  int CopyOut(QVLOCALHISTOEQUALIZEDLGPARAMS& params) const;
  int GetProcessResult() const { return m_nProcessResult; }
  const qvdlg::LheValues& GetValues() const { return m_values; }
  const qvdlg::LheLimits& GetLimits() const { return m_limits; }

  int PrepareEffectBitmap(CQVBitmap& bitmap) override;
  bool IsNeighbourhoodEffect() const override { return true; }

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;
  void SetDialogStrings() override;
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

 private:
  void DecideLimits();
  void InitCombos();
  void FillColorSpaces();
  void OnWindowValueChanged(CQVValueCombo& combo, int& stored);
  void OnSmoothChanged();
  void OnColorSpaceChanged();
  void UpdateUnlessSuppressed();

  CQVValueCombo m_widthCombo{0, 0, 0, 0};
  CQVValueCombo m_heightCombo{0, 0, 0, 0};
  CQVValueCombo m_xExtCombo{0, 0, 0, 0};
  CQVValueCombo m_yExtCombo{0, 0, 0, 0};
  CQVValueCombo m_smoothCombo{0, 9, 0, 0};
  qvfw::CComboBox m_colorSpace;
  qvfw::CButton m_okButton;
  qvfw::CButton m_cancelButton;
  qvdlg::LheValues m_values;
  qvdlg::LheLimits m_limits;
  uint32_t m_uFlags = 0;
  int m_nProcessResult = QV_SUCCESS;
  bool m_updatesSuppressed = false;
};
