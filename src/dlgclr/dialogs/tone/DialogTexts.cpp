// The texts of a colour dialog (see DialogTexts.h).
#include "DialogTexts.h"

#include "KernelStrings.h"
#include "QVBaseDialog.h"

namespace qvdlg {
namespace {

void SetText(qvfw::CWnd& dialog, int controlId, unsigned stringId) {
  const std::wstring text = CQVBaseDialog::GetDlgString(stringId);
  if (!text.empty()) dialog.SetDlgItemText(controlId, text.c_str());
}

}  // namespace

void SetDialogTexts(qvfw::CWnd& dialog, unsigned titleString, const TextId* texts, size_t count) {
  const std::wstring title = CQVBaseDialog::GetDlgString(titleString);
  if (!title.empty()) dialog.SetWindowText(title.c_str());
  SetText(dialog, IDOK, kStringOk);
  SetText(dialog, IDCANCEL, kStringCancel);
  SetText(dialog, CQVBaseDialog::kHelpButtonId, kStringHelp);
  for (size_t i = 0; i < count; ++i) SetText(dialog, texts[i].controlId, texts[i].stringId);
}

}  // namespace qvdlg
