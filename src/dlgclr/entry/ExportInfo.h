/*
 * What the entry sequence needs to know about each export: the structure size it demands, how much of the
 * structure it probes, where the flag word lies, whether a bitmap of signed samples is refused, and the
 * template and dialog number of its dialog. The other dialogs add their rows as they arrive. Portable, so
 * the argument checks run in native tests too.
 */
#pragma once

#include <cstdint>

namespace qvdlg {

struct ExportInfo {
  const char* name;
  uint32_t expectedSize;  // uStructSize must equal this exactly
  uint32_t probedSize;    // bytes that must be readable and writable (the palette editor probes more)
  uint32_t flagsOffset;   // offset of uDlgFlags
  bool refusesSigned;     // a bitmap of signed samples gives QV_ERROR_UNSUPPORTED_BITMAP
  bool testsBitmap;       // false for the dialogs that take no bitmap
  unsigned templateId;
  unsigned dialogId;
};

enum class ExportId {
  kBrightness,
  kContrast,
  kHue,
  kSaturation,
  kHistoContrast,
  kPosterize,
  kSolarize,
  kBalanceColors,
  kGrayScale,
  kColoredGray,
  kIntensityDetect,
  kLocalHistoEqualize,
};

constexpr int kExportCount = 12;

const ExportInfo& ExportInfoOf(ExportId id);

}  // namespace qvdlg
