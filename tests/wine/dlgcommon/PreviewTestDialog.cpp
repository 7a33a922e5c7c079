/*
 * The tests' before/after dialog.
 */
#include "PreviewTestDialog.h"

#include "PreviewTestIds.h"

CPreviewTestDialog::CPreviewTestDialog(BITMAPHANDLE* bitmap)
    : CQVBeforeAfterDlg(IDD_PREVIEW_TEST, nullptr, bitmap, kDialogId, 0, 1) {}

BOOL CPreviewTestDialog::OnInitDialog() {
  CQVBeforeAfterDlg::OnInitDialog();
  m_slider.SetRange(-1000, 1000, TRUE);
  m_slider.SetPos(m_level);
  ::ShowWindow(GetDlgItemHandle(IDC_TEST_BEFORE), SW_SHOW);
  ::ShowWindow(GetDlgItemHandle(IDC_TEST_AFTER), SW_SHOW);
  if (onInit) onInit(*this);
  return TRUE;
}

void CPreviewTestDialog::DoDataExchange(qvfw::CDataExchange* pDX) {
  CQVBeforeAfterDlg::DoDataExchange(pDX);
  qvfw::DDX_Control(pDX, IDC_TEST_SLIDER, m_slider);
}

void CPreviewTestDialog::SetLevel(int level) {
  m_slider.SetPos(level);
  SendMessage(WM_HSCROLL, TB_THUMBTRACK, reinterpret_cast<LPARAM>(m_slider.m_hWnd));
}

void CPreviewTestDialog::OnHScroll(UINT, UINT, qvfw::CWnd*) {
  const int position = m_slider.GetPos();
  if (position == m_level) return;
  m_level = position;
  DoUpdateValues();
}

int CPreviewTestDialog::PrepareEffectBitmap(CQVBitmap& bitmap) {
  ++m_effectRuns;
  if (failEffect) return 0;
  m_lastEffectLevel = m_level;
  return bitmap.Brightness(m_level);
}
