/*
 * CQVToneDlg: the one implementation behind the seven single-value dialogs. Each tunes one integer with a
 * slider and a numeric edit box and previews its effect; everything that differs between them (range,
 * default, replacement of out-of-range input, edit limits, strings, control ids, the effect) is a row of the
 * member table, so the seven named classes only pick their row.
 *
 * The value is the single source of truth; the slider and the edit box mirror it. While the edit-sync flag
 * is clear, change notifications of the box are ignored, so writing the box from code does not feed back.
 */
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>

#include "Button.h"
#include "QVBeforeAfterDlg.h"
#include "QVEditCtrl.h"
#include "SliderCtrl.h"
#include "ToneMember.h"
#include "qv/qverror.h"

class CQVToneDlg : public CQVBeforeAfterDlg {
 public:
  // What the copy-out hands back: the zoom state and the value's 32 bits as the structure holds them.
  struct Output {
    int32_t zoomToFit;
    uint32_t valueBits;
  };

  CQVToneDlg(qvdlg::ToneEffect effect, qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned reserved);

  // Copy-in: the caller's value (replaced by the member's fallback when out of range), zoom state and
  // flags. Never fails.
  int CopyIn(int32_t zoomToFit, uint32_t valueBits, uint32_t flags);
  Output CopyOut() const;
  // The result of the effect run on the caller's bitmap at OK (QV_SUCCESS when none was made).
  int GetProcessResult() const { return m_nProcessResult; }

  // The copy operations on any of the seven structures, which share one layout: the value's 32 bits at
  // offset 16, the flags at 20.
  template <class Params>
  int CopyIn(const Params& params) {
    static_assert(sizeof(Params) == 48 && offsetof(Params, uDlgFlags) == 20, "a single-value structure");
    uint32_t bits;
    std::memcpy(&bits, reinterpret_cast<const unsigned char*>(&params) + kValueOffset, sizeof bits);
    return CopyIn(params.bZoomToFit, bits, params.uDlgFlags);
  }
  template <class Params>
  int CopyOut(Params& params) const {
    static_assert(sizeof(Params) == 48 && offsetof(Params, uDlgFlags) == 20, "a single-value structure");
    const Output out = CopyOut();
    params.bZoomToFit = out.zoomToFit;
    std::memcpy(reinterpret_cast<unsigned char*>(&params) + kValueOffset, &out.valueBits, sizeof out.valueBits);
    return m_nProcessResult;
  }

  int GetValue() const { return m_nValue; }
  int GetLastPreviewedValue() const { return m_nLastValue; }
  qvdlg::ToneRange GetRange() const { return {m_nRangeMin, m_nRangeMax}; }
  const qvdlg::ToneMember& GetMember() const { return m_member; }

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
  static constexpr size_t kValueOffset = 16;

  void DecideRangeFromBitmap();
  int MedianOfCallersBitmap();
  void OnSliderChanged();
  void OnEditChanged();
  void OnEditValidate();
  void SetEditValue(int value);

  const qvdlg::ToneMember& m_member;
  CQVEditCtrl m_edit;
  qvfw::CSliderCtrl m_slider;
  qvfw::CButton m_okButton;
  qvfw::CButton m_cancelButton;
  int m_nValue;
  int m_nLastValue = 255;
  int m_nRangeMin;
  int m_nRangeMax;
  int m_bEditSync = 1;
  uint32_t m_uFlags = 0;
  int m_nProcessResult = QV_SUCCESS;
  // Histogram contrast: the caller's median intensity, asked once (-1 until then, or when the kernel
  // cannot tell: the preview then fails, as OK's run on that bitmap would).
  int m_nMedian = -1;
  bool m_bMedianAsked = false;
};
