/*
 * Readiness and the dialog font. The default font is the system message font
 * at the system DPI, asked through SystemParametersInfoForDpi where the system
 * has it (Windows 10 1607 and later) and through SystemParametersInfoW
 * otherwise; it is made on first use and released by Q_DlgFree.
 */
#include "DlgKernelState_win.h"

namespace qv {
namespace {

using SystemParametersInfoForDpiFn = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);
using GetDpiForSystemFn = UINT(WINAPI*)();

bool QueryNonClientMetrics(NONCLIENTMETRICSW& metrics) {
  metrics = NONCLIENTMETRICSW{};
  metrics.cbSize = sizeof(metrics);
  HMODULE user32 = GetModuleHandleW(L"user32.dll");
  if (user32) {
    auto forDpi = reinterpret_cast<SystemParametersInfoForDpiFn>(
        reinterpret_cast<void*>(GetProcAddress(user32, "SystemParametersInfoForDpi")));
    auto systemDpi = reinterpret_cast<GetDpiForSystemFn>(
        reinterpret_cast<void*>(GetProcAddress(user32, "GetDpiForSystem")));
    if (forDpi && systemDpi && forDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, systemDpi())) return true;
  }
  return SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0) != FALSE;
}

}  // namespace

DlgKernelState& DlgKernelState::Instance() {
  static DlgKernelState state;
  return state;
}

void DlgKernelState::Init() {
  std::lock_guard<std::mutex> lock(m_mutex);
  m_ready = true;
}

bool DlgKernelState::Free() {
  std::lock_guard<std::mutex> lock(m_mutex);
  if (!m_ready) return false;
  m_ready = false;
  m_hostFont = nullptr;
  m_messageFont.Reset();
  return true;
}

bool DlgKernelState::IsReady() const {
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_ready;
}

void DlgKernelState::SetHostFont(HFONT hFont) {
  std::lock_guard<std::mutex> lock(m_mutex);
  m_hostFont = hFont;
}

HFONT DlgKernelState::Font() {
  std::lock_guard<std::mutex> lock(m_mutex);
  if (m_hostFont) return m_hostFont;
  if (!m_messageFont.Get()) m_messageFont = FontHandle(CreateMessageFont());
  return m_messageFont.Get();
}

HFONT DlgKernelState::CreateMessageFont() {
  NONCLIENTMETRICSW metrics;
  if (!QueryNonClientMetrics(metrics)) return nullptr;
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace qv
