/*
 * CQVPalette: the sorts read the first entries of the palette, order them
 * with the portable sort and write them back to the same positions.
 */
#include "QVPalette.h"

#include <algorithm>
#include <vector>

BOOL CQVPalette::Sort(qvfw::CPalette& palette, int count, qvutil::PaletteOrder order) {
  if (!palette.GetSafeHandle() || count < 0) return FALSE;
  const int sorted = std::min(count, palette.GetEntryCount());
  if (sorted < 2) return TRUE;
  std::vector<PALETTEENTRY> entries(static_cast<size_t>(sorted));
  const UINT n = static_cast<UINT>(sorted);
  if (palette.GetPaletteEntries(0, n, entries.data()) != n) return FALSE;
  qvutil::SortPaletteEntries(entries.data(), sorted, order);
  return palette.SetPaletteEntries(0, n, entries.data()) == n ? TRUE : FALSE;
}

BOOL CQVPalette::SortHSB(qvfw::CPalette& palette, int count) {
  return Sort(palette, count, qvutil::PaletteOrder::kHSB);
}

BOOL CQVPalette::SortHue(qvfw::CPalette& palette, int count) {
  return Sort(palette, count, qvutil::PaletteOrder::kHue);
}

BOOL CQVPalette::SortSaturation(qvfw::CPalette& palette, int count) {
  return Sort(palette, count, qvutil::PaletteOrder::kSaturation);
}

BOOL CQVPalette::SortBrightness(qvfw::CPalette& palette, int count) {
  return Sort(palette, count, qvutil::PaletteOrder::kBrightness);
}

BOOL CQVPalette::SortRGB(qvfw::CPalette& palette, int count) {
  return Sort(palette, count, qvutil::PaletteOrder::kRGB);
}
