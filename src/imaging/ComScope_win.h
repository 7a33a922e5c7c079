/*
 * COM initialisation for the duration of one export call. A host thread may already have entered an
 * apartment of either kind; then COM is usable as it is and nothing is undone at the end.
 */
#pragma once

#include <windows.h>

namespace qv {

class ComScope {
 public:
  ComScope();
  ~ComScope();
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;
  // False when COM could not be used on this thread at all.
  bool Ok() const { return m_ok; }

 private:
  bool m_ok = false;
  bool m_uninit = false;
};

}  // namespace qv
