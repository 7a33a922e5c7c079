/*
 * CSliderCtrl: a trackbar of a template, wrapped for its range, position and
 * ticks.
 */
#pragma once

#include <commctrl.h>

#include "Wnd.h"

namespace qvfw {

class CSliderCtrl : public CWnd {
 public:
  void SetRange(int minimum, int maximum, BOOL redraw = FALSE) {
    SendMessage(TBM_SETRANGEMIN, FALSE, minimum);
    SendMessage(TBM_SETRANGEMAX, redraw, maximum);
  }
  int GetRangeMin() const { return static_cast<int>(SendMessage(TBM_GETRANGEMIN)); }
  int GetRangeMax() const { return static_cast<int>(SendMessage(TBM_GETRANGEMAX)); }
  int GetPos() const { return static_cast<int>(SendMessage(TBM_GETPOS)); }
  void SetPos(int position) { SendMessage(TBM_SETPOS, TRUE, position); }
  void SetTicFreq(int frequency) { SendMessage(TBM_SETTICFREQ, static_cast<WPARAM>(frequency)); }
  int SetPageSize(int size) { return static_cast<int>(SendMessage(TBM_SETPAGESIZE, 0, size)); }
  int SetLineSize(int size) { return static_cast<int>(SendMessage(TBM_SETLINESIZE, 0, size)); }
};

}  // namespace qvfw
