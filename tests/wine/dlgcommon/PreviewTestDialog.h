/*
 * A before/after dialog for the tests: one brightness value on a slider,
 * previewed through PrepareEffectBitmap like the library's tone dialogs,
 * with hooks the tests use to change the value, the flags and the texts.
 */
#pragma once

#include <functional>

#include "QVBeforeAfterDlg.h"
#include "SliderCtrl.h"

class CPreviewTestDialog : public CQVBeforeAfterDlg {
 public:
  static constexpr unsigned kDialogId = 19;

  explicit CPreviewTestDialog(BITMAPHANDLE* bitmap);

  // Sets the value as a slider drag does (position, then DoUpdateValues).
  void SetLevel(int level);
  int Level() const { return m_level; }
  // The number of PrepareEffectBitmap calls and the value of the last one.
  int EffectRuns() const { return m_effectRuns; }
  int LastEffectLevel() const { return m_lastEffectLevel; }

  // Runs inside OnInitDialog after the base (flags, layout changes).
  std::function<void(CPreviewTestDialog&)> onInit;
  bool neighbourhood = false;
  bool failEffect = false;

  int PrepareEffectBitmap(CQVBitmap& bitmap) override;
  bool IsNeighbourhoodEffect() const override { return neighbourhood; }
  using CQVBaseDialog::ShiftOkCancelBtns;

 protected:
  BOOL OnInitDialog() override;
  void DoDataExchange(qvfw::CDataExchange* pDX) override;
  void OnHScroll(UINT code, UINT position, qvfw::CWnd* scrollBar) override;

 private:
  qvfw::CSliderCtrl m_slider;
  int m_level = 0;
  int m_effectRuns = 0;
  int m_lastEffectLevel = 0;
};
