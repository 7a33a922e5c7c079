/*
 * The process-wide state of the dialog kernel on Windows: whether the host has
 * initialised it, and the dialog font (the host's, or the system message font
 * the kernel made and owns).
 */
#pragma once

#include <windows.h>

#include <mutex>

#include "FontHandle_win.h"

namespace qv {

class DlgKernelState {
 public:
  static DlgKernelState& Instance();

  void Init();
  bool Free();  // false when it was not initialised
  bool IsReady() const;

  void SetHostFont(HFONT hFont);  // null: back to the system message font
  HFONT Font();

 private:
  DlgKernelState() = default;
  static HFONT CreateMessageFont();

  mutable std::mutex m_mutex;
  bool m_ready = false;
  HFONT m_hostFont = nullptr;
  FontHandle m_messageFont;
};

}  // namespace qv
