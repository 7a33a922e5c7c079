/*
 * The wide copy of a narrow halftone pattern list: owns the list header, the
 * entries and the widened names in one object, so the copy is released in one
 * step. Bitmaps and user data are shared with the source, not duplicated.
 */
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "qv/qvdlgkrn.h"

namespace qv {

class HalftoneListCopy {
 public:
  // Checks and copies the narrow list; QV_SUCCESS and the copy, or an error code.
  static int Create(const QVHALFTONELISTA* pSource, std::unique_ptr<HalftoneListCopy>& copy);

  HalftoneListCopy(const HalftoneListCopy&) = delete;
  HalftoneListCopy& operator=(const HalftoneListCopy&) = delete;

  QVHALFTONELISTW* List() { return &m_list; }

 private:
  HalftoneListCopy() = default;
  void Link();

  QVHALFTONELISTW m_list{};
  std::vector<QVHALFTONEPATTERNW> m_entries;
  std::vector<std::wstring> m_names;
  std::vector<bool> m_hasName;
};

}  // namespace qv
