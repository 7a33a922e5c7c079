/*
 * Enters the multithreaded apartment when the thread has none yet; a thread already in an apartment (the
 * host's UI thread usually is in a single-threaded one) keeps it, and RPC_E_CHANGED_MODE is not an error.
 */
#include "ComScope_win.h"

#include <objbase.h>

namespace qv {

ComScope::ComScope() {
  const HRESULT hr = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  if (SUCCEEDED(hr)) {
    m_ok = true;
    m_uninit = true;  // S_OK and S_FALSE both need the matching CoUninitialize
  } else {
    m_ok = hr == RPC_E_CHANGED_MODE;
  }
}

ComScope::~ComScope() {
  if (m_uninit) CoUninitialize();
}

}  // namespace qv
