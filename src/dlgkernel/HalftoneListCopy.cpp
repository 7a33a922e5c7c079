/*
 * Building the wide copy of a narrow halftone pattern list. Every pointer of
 * the source is checked before it is read (the header, the entry array, each
 * name), and a count beyond the documented limit is taken as damage.
 */
#include "HalftoneListCopy.h"

#include "AddressCheck.h"
#include "NarrowText.h"
#include "StringProbe.h"

namespace qv {

int HalftoneListCopy::Create(const QVHALFTONELISTA* pSource, std::unique_ptr<HalftoneListCopy>& copy) {
  if (!IsValidAddress(pSource, sizeof(*pSource), Access::Read)) return QV_ERROR_INVALID_PARAMETER;
  const QVHALFTONELISTA header = *pSource;
  if (header.uCount > QV_HALFTONE_MAX_PATTERNS) return QV_ERROR_INVALID_PARAMETER;
  if (header.uCount > 0 && !IsValidAddress(header.pEntries, header.uCount * sizeof(QVHALFTONEPATTERNA), Access::Read))
    return QV_ERROR_INVALID_PARAMETER;

  std::unique_ptr<HalftoneListCopy> result(new HalftoneListCopy());
  result->m_entries.resize(header.uCount);
  result->m_names.resize(header.uCount);
  result->m_hasName.resize(header.uCount);
  for (uint32_t i = 0; i < header.uCount; ++i) {
    const QVHALFTONEPATTERNA& source = header.pEntries[i];
    QVHALFTONEPATTERNW& entry = result->m_entries[i];
    entry.uStructSize = sizeof(QVHALFTONEPATTERNW);
    entry.pBitmap = source.pBitmap;
    entry.pUserData = source.pUserData;
    if (source.pszName) {
      std::size_t length = 0;
      if (!SafeStringLength(source.pszName, QV_HALFTONE_MAX_NAME, &length)) return QV_ERROR_INVALID_PARAMETER;
      if (!NarrowToWide(source.pszName, length, result->m_names[i])) return QV_ERROR_INVALID_PARAMETER;
      result->m_hasName[i] = true;
    }
  }
  result->m_list.uStructSize = sizeof(QVHALFTONELISTW);
  result->m_list.uReserved1 = header.uReserved1;
  result->m_list.uReserved2 = header.uReserved2;
  result->m_list.uCount = header.uCount;
  result->Link();
  copy = std::move(result);
  return QV_SUCCESS;
}

// Points the header at the entries and the entries at their names, once all
// strings are in place (the strings never move afterwards).
void HalftoneListCopy::Link() {
  m_list.pEntries = m_entries.empty() ? nullptr : m_entries.data();
  for (std::size_t i = 0; i < m_entries.size(); ++i) m_entries[i].pszName = m_hasName[i] ? &m_names[i][0] : nullptr;
}

}  // namespace qv
