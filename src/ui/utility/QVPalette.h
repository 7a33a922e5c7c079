/*
 * CQVPalette: the palette editor's standard palettes and sorts over a
 * qvfw::CPalette. The tables and the orders themselves need no window and
 * live in PaletteTables.h; this class only moves a palette's entries out of
 * the handle, sorts them and puts them back.
 */
#pragma once

#include <windows.h>

#include "Palette.h"
#include "PaletteTables.h"

class CQVPalette {
 public:
  static constexpr const auto& m_NetscapePalette = qvutil::kNetscapePalette;
  static constexpr const auto& m_MSI_ExplorerPalette = qvutil::kExplorerPalette;
  static constexpr const auto& m_SVGAPalette256 = qvutil::kSvgaPalette;
  static constexpr const auto& m_WindowsSystemPalette = qvutil::kWindowsSystemPalette;
  static constexpr const auto& m_UniformPalette = qvutil::kUniformPalette;

  // Each sorts the first `count` entries of the palette in place and leaves
  // the rest alone. A count above the palette's size sorts the whole
  // palette; FALSE for a palette without a handle or a negative count.
  static BOOL SortHSB(qvfw::CPalette& palette, int count);
  static BOOL SortHue(qvfw::CPalette& palette, int count);
  static BOOL SortSaturation(qvfw::CPalette& palette, int count);
  static BOOL SortBrightness(qvfw::CPalette& palette, int count);
  static BOOL SortRGB(qvfw::CPalette& palette, int count);

 private:
  static BOOL Sort(qvfw::CPalette& palette, int count, qvutil::PaletteOrder order);
};
