// Sets a colour dialog's visible texts from the dialog kernel's string table when it opens: the title, the
// OK, Cancel and Help buttons, and the dialog's own (control, string) pairs. The template's texts stay only
// where the kernel has none.
#pragma once

#include <cstddef>

#include "Wnd.h"

namespace qvdlg {

struct TextId {
  int controlId;
  unsigned stringId;
};

void SetDialogTexts(qvfw::CWnd& dialog, unsigned titleString, const TextId* texts, size_t count);

template <size_t N>
void SetDialogTexts(qvfw::CWnd& dialog, unsigned titleString, const TextId (&texts)[N]) {
  SetDialogTexts(dialog, titleString, texts, N);
}

}  // namespace qvdlg
