/*
 * CPalette: an owned logical palette (HPALETTE). Move-only; the handle is
 * deleted with the object unless Detach gave it away.
 */
#pragma once

#include <windows.h>

#include <vector>

#include "UniqueHandle.h"

namespace qvfw {

class CPalette {
 public:
  CPalette() = default;
  CPalette(CPalette&&) noexcept = default;
  CPalette& operator=(CPalette&&) noexcept = default;

  // From `count` (1..256) entries; FALSE if the palette exists already or
  // the arguments are bad.
  BOOL CreatePalette(const PALETTEENTRY* entries, int count);
  // A copy of another palette's entries.
  BOOL CreateCopy(HPALETTE source);
  BOOL Attach(HPALETTE palette);
  HPALETTE Detach() { return m_palette.Release(); }
  BOOL DeleteObject();

  int GetEntryCount() const;
  UINT GetPaletteEntries(UINT start, UINT count, PALETTEENTRY* entries) const;
  UINT SetPaletteEntries(UINT start, UINT count, const PALETTEENTRY* entries);
  std::vector<PALETTEENTRY> GetAllEntries() const;

  HPALETTE GetSafeHandle() const { return m_palette.Get(); }
  operator HPALETTE() const { return m_palette.Get(); }

 private:
  UniquePalette m_palette;
};

}  // namespace qvfw
