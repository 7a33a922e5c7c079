/*
 * CPreviewToolbar: the preview's toolbar, six buttons by index (0 zoom 100 %,
 * 1 zoom to fit, 2 separator, 3 split view, 4 effect on/off, 5 reset view).
 * The glyphs are drawn at run time at a size taken from the dialog font, so
 * the static library needs no bitmap resource and the buttons scale with the
 * font. Button texts serve as tooltips (no text rows are shown); they are
 * the dialog kernel's texts for the preview buttons.
 */
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "UniqueHandle.h"

struct ImageListTraits {
  using Handle = HIMAGELIST;
  static void Free(HIMAGELIST handle) { ImageList_Destroy(handle); }
};
using UniqueImageList = qvfw::UniqueHandle<ImageListTraits>;

class CPreviewToolbar {
 public:
  struct Commands {
    int zoomNormal, zoomFit, splitView, effectToggle, resetView;
  };

  // Creates the toolbar as a child of `dialog` at its top-left; false on failure.
  bool Create(HWND dialog, int id, HFONT font, const Commands& commands);
  HWND Handle() const { return m_toolbar; }
  // Checks or clears a check button by command (no effect for deleted ones).
  void SetChecked(int command, bool checked);
  // The size the remaining buttons need.
  SIZE NeededSize() const;
  int ButtonCount() const;

 private:
  HWND m_toolbar = nullptr;
  UniqueImageList m_images;
};
