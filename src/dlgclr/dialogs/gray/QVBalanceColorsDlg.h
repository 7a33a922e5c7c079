/*
 * CQVBalanceColorsDlg: rebuilds each colour channel as a weighted mix of the source's red, green and blue.
 * Nine weights, three for each new channel, each a percentage 0..100 edited in its own value combo; the
 * structure holds them as fractions. The weights are independent: nothing makes a channel's three add up
 * to 100, so a user may brighten or darken a channel as well as mix it.
 */
#pragma once

#include <array>
#include <memory>

#include "QVGrayFamilyDlg.h"
#include "QVValueCombo.h"
#include "qv/qvdlgclr.h"

class CQVBalanceColorsDlg : public CQVGrayFamilyDlg {
 public:
  static constexpr int kWeightCount = 9;  // new red's (to red, to green, to blue), then new green's, new blue's

  CQVBalanceColorsDlg(qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved);
  ~CQVBalanceColorsDlg() override;

  // Fractions outside 0..1 come in as 0. Never fails.
  int CopyIn(const QVBALANCECOLORSDLGPARAMS& params);
  // The weights as fractions, each record's size, the zoom state; the OK run's result.
  int CopyOut(QVBALANCECOLORSDLGPARAMS& params) const;

  int PrepareEffectBitmap(CQVBitmap& bitmap) override;

 protected:
  int ApplyToCallersBitmap(BITMAPHANDLE* bitmap) override;
  BOOL OnInitDialog() override;
  void SetDialogStrings() override;
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

 private:
  using Records = std::array<QVBALANCINGRECORD, 3>;
  Records MakeRecords() const;

  std::array<std::unique_ptr<CQVValueCombo>, kWeightCount> m_combos;
  std::array<double, kWeightCount> m_percents{};
};
