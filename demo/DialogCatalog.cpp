/*
 * The table of the 21 dialog exports. Each row fills its own structure type
 * with values a host would start from, runs the matching Qvkrnx operation
 * with whatever the dialog returned, and frees what the dialog handed over
 * (GlobalAlloc'd tables, palettes, bitmap lists), so the demo shows hosts the
 * whole contract of each call in a few lines.
 */
#include "DialogCatalog.h"

#include <cstdarg>
#include <cstdio>

#include "qv/qvdlgclr.h"
#include "qv/qvimgops.h"

namespace qvdemo {
namespace {

// Fills the common head and tail shared by the bitmap dialogs.
template <typename T>
T Head(BITMAPHANDLE* bitmap, uint32_t flags) {
  T p{};
  p.uStructSize = sizeof(T);
  p.pBitmap = bitmap;
  p.bZoomToFit = 1;
  p.uDlgFlags = flags;
  return p;
}

std::wstring Format(const wchar_t* format, ...) {
  wchar_t text[256];
  va_list args;
  va_start(args, format);
  std::vswprintf(text, sizeof text / sizeof text[0], format, args);
  va_end(args);
  return text;
}

int MaxSample(const BITMAPHANDLE* bitmap) {
  if (bitmap == nullptr) return 255;
  if (bitmap->nBitsPerPixel == 12) return 4095;
  if (bitmap->nBitsPerPixel == 48 || bitmap->nBitsPerPixel == 64) return 65535;
  if (bitmap->nBitsPerPixel == 16 && bitmap->uOrder == QV_ORDER_GRAY) return 65535;
  return 255;
}

// The seven single-value dialogs share one 48-byte shape; the brightness structure stands for all.
using SingleParams = QVBRIGHTNESSDLGPARAMS;

void FillSingle(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  SingleParams p = Head<SingleParams>(bitmap, flags);
  p.nBrightness = value;
  params.Store(p);
}

template <int (*Operation)(BITMAPHANDLE*, int, unsigned int)>
int ApplySigned(ParamBlock& params, BITMAPHANDLE* bitmap) {
  return Operation(bitmap, params.Load<SingleParams>().nBrightness, 0);
}

template <int (*Operation)(BITMAPHANDLE*, unsigned int, unsigned int)>
int ApplyUnsigned(ParamBlock& params, BITMAPHANDLE* bitmap) {
  return Operation(bitmap, static_cast<unsigned>(params.Load<SingleParams>().nBrightness), 0);
}

template <const wchar_t* Name>
std::wstring DescribeSingle(ParamBlock& params) {
  return Format(L"%ls = %d", Name, static_cast<int>(params.Load<SingleParams>().nBrightness));
}

constexpr wchar_t kBrightness[] = L"nBrightness";
constexpr wchar_t kContrast[] = L"nContrast";
constexpr wchar_t kHue[] = L"nHue";
constexpr wchar_t kSaturation[] = L"nSaturation";
constexpr wchar_t kHistoContrast[] = L"nHistoContrast";
constexpr wchar_t kLevels[] = L"uLevels";
constexpr wchar_t kThreshold[] = L"uThreshold";

void FillGamma(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<QVGAMMAADJUSTMENTDLGPARAMS>(bitmap, flags);
  p.uRedGamma = p.uGreenGamma = p.uBlueGamma = static_cast<uint32_t>(value);
  p.bAllChannels = 1;
  params.Store(p);
}

int ApplyGamma(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVGAMMAADJUSTMENTDLGPARAMS>();
  return Q_GammaCorrectBitmapExt(bitmap, p.uRedGamma, p.uGreenGamma, p.uBlueGamma, 0);
}

std::wstring DescribeGamma(ParamBlock& params) {
  const auto p = params.Load<QVGAMMAADJUSTMENTDLGPARAMS>();
  return Format(L"gamma x100 = %u, %u, %u", p.uRedGamma, p.uGreenGamma, p.uBlueGamma);
}

void FillIntensityDetect(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<QVINTENSITYDETECTDLGPARAMS>(bitmap, flags);
  p.uLow = static_cast<uint32_t>(value);
  p.uHigh = static_cast<uint32_t>(MaxSample(bitmap));
  p.uChannel = 0;
  p.crInColor = RGB(255, 255, 255);
  p.crOutColor = RGB(0, 0, 0);
  params.Store(p);
}

int ApplyIntensityDetect(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVINTENSITYDETECTDLGPARAMS>();
  return Q_IntensityDetectBitmap(bitmap, p.uLow, p.uHigh, p.crInColor, p.crOutColor, p.uChannel, 0);
}

std::wstring DescribeIntensityDetect(ParamBlock& params) {
  const auto p = params.Load<QVINTENSITYDETECTDLGPARAMS>();
  return Format(L"uLow = %u, uHigh = %u, uChannel = 0x%03X", p.uLow, p.uHigh, p.uChannel);
}

void FillLocalHisto(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<QVLOCALHISTOEQUALIZEDLGPARAMS>(bitmap, flags);
  p.nWidth = p.nHeight = value;
  p.nXExt = p.nYExt = value / 2;
  p.uColorSpace = 2;
  p.uSmooth = 3;
  params.Store(p);
}

int ApplyLocalHisto(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVLOCALHISTOEQUALIZEDLGPARAMS>();
  return Q_LocalHistoEqualizeBitmap(bitmap, p.nWidth, p.nHeight, p.nXExt, p.nYExt, p.uColorSpace, p.uSmooth, 0);
}

std::wstring DescribeLocalHisto(ParamBlock& params) {
  const auto p = params.Load<QVLOCALHISTOEQUALIZEDLGPARAMS>();
  return Format(L"tile %d x %d, extension %d, %d, uColorSpace = %u, uSmooth = %u", static_cast<int>(p.nWidth),
                static_cast<int>(p.nHeight), static_cast<int>(p.nXExt), static_cast<int>(p.nYExt), p.uColorSpace,
                p.uSmooth);
}

void FillGrayScale(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int) {
  auto p = Head<QVGRAYSCALEDLGPARAMS>(bitmap, flags);
  p.nRedFactor = 299;
  p.nGreenFactor = 587;
  p.nBlueFactor = 114;
  params.Store(p);
}

int ApplyGrayScale(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVGRAYSCALEDLGPARAMS>();
  return Q_GrayScaleBitmapExt(bitmap, p.nRedFactor, p.nGreenFactor, p.nBlueFactor, 0);
}

std::wstring DescribeGrayScale(ParamBlock& params) {
  const auto p = params.Load<QVGRAYSCALEDLGPARAMS>();
  return Format(L"weights = %d, %d, %d", static_cast<int>(p.nRedFactor), static_cast<int>(p.nGreenFactor),
                static_cast<int>(p.nBlueFactor));
}

// value warms the gray: red up and blue down by the same share, a sepia-like tint.
void FillColoredGray(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<QVCOLOREDGRAYDLGPARAMS>(bitmap, flags);
  p.nRedFactor = 299;
  p.nGreenFactor = 587;
  p.nBlueFactor = 114;
  p.nRedGrayFactor = value;
  p.nGreenGrayFactor = 0;
  p.nBlueGrayFactor = -value;
  params.Store(p);
}

int ApplyColoredGray(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVCOLOREDGRAYDLGPARAMS>();
  return Q_ConvertToColoredGray(bitmap, p.nRedFactor, p.nGreenFactor, p.nBlueFactor, p.nRedGrayFactor,
                                p.nGreenGrayFactor, p.nBlueGrayFactor, 0);
}

std::wstring DescribeColoredGray(ParamBlock& params) {
  const auto p = params.Load<QVCOLOREDGRAYDLGPARAMS>();
  return Format(L"weights = %d, %d, %d; gray factors = %d, %d, %d", static_cast<int>(p.nRedFactor),
                static_cast<int>(p.nGreenFactor), static_cast<int>(p.nBlueFactor), static_cast<int>(p.nRedGrayFactor),
                static_cast<int>(p.nGreenGrayFactor), static_cast<int>(p.nBlueGrayFactor));
}

QVBALANCINGRECORD Record(double red, double green, double blue) {
  QVBALANCINGRECORD r{};
  r.uStructSize = sizeof r;
  r.fToRed = red;
  r.fToGreen = green;
  r.fToBlue = blue;
  return r;
}

// value is the percentage of red kept in the red channel (0..100): below 100 cools the picture.
void FillBalance(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<QVBALANCECOLORSDLGPARAMS>(bitmap, flags);
  p.RedFactor = Record(value / 100.0, 0, 0);
  p.GreenFactor = Record(0, 1, 0);
  p.BlueFactor = Record(0, 0, 1);
  params.Store(p);
}

int ApplyBalance(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVBALANCECOLORSDLGPARAMS>();
  return Q_BalanceColors(bitmap, &p.RedFactor, &p.GreenFactor, &p.BlueFactor, 0);
}

std::wstring DescribeBalance(ParamBlock& params) {
  const auto p = params.Load<QVBALANCECOLORSDLGPARAMS>();
  return Format(L"red from %.2f, %.2f, %.2f; green from %.2f, %.2f, %.2f; blue from %.2f, %.2f, %.2f",
                p.RedFactor.fToRed, p.RedFactor.fToGreen, p.RedFactor.fToBlue, p.GreenFactor.fToRed,
                p.GreenFactor.fToGreen, p.GreenFactor.fToBlue, p.BlueFactor.fToRed, p.BlueFactor.fToGreen,
                p.BlueFactor.fToBlue);
}

// value is the window's width in percent of the sample range, centred on the middle.
void FillWindowLevel(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<QVWINDOWLEVELDLGPARAMS>(bitmap, flags);
  const int highBit = (bitmap != nullptr && bitmap->nHighBit > 0) ? bitmap->nHighBit : 15;
  const int maxValue = (1 << (highBit + 1)) - 1;
  std::vector<RGBQUAD>& lut = params.Lut();
  lut.assign(static_cast<size_t>(maxValue) + 1, RGBQUAD{});
  const int half = static_cast<int>(static_cast<long long>(maxValue) * value / 200);
  p.pLUT = lut.data();
  p.uLUTLength = static_cast<uint32_t>(lut.size());
  p.nLowBit = 0;
  p.nHighBit = highBit;
  p.nLow = maxValue / 2 - half;
  p.nHigh = maxValue / 2 + half;
  p.crStart = RGB(0, 0, 0);
  p.crEnd = RGB(255, 255, 255);
  p.nFactor = 0;
  p.uFillFlags = QV_WLFILL_COLOR_RAMP | QV_WLFILL_LINEAR;
  Q_WindowLevelFillLUT(lut.data(), p.uLUTLength, p.crStart, p.crEnd, p.nLow, p.nHigh, 0, highBit, 0, maxValue,
                       p.nFactor, p.uFillFlags);
  params.Store(p);
}

int ApplyWindowLevel(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVWINDOWLEVELDLGPARAMS>();
  return Q_WindowLevel(bitmap, p.nLowBit, p.nHighBit, p.pLUT, p.uLUTLength, QV_WL_PAINT);
}

std::wstring DescribeWindowLevel(ParamBlock& params) {
  const auto p = params.Load<QVWINDOWLEVELDLGPARAMS>();
  return Format(L"nLow = %d, nHigh = %d, bits %d..%d", static_cast<int>(p.nLow), static_cast<int>(p.nHigh),
                static_cast<int>(p.nLowBit), static_cast<int>(p.nHighBit));
}

void FillColor(ParamBlock& params, BITMAPHANDLE*, uint32_t flags, int value) {
  QVCOLORDLGPARAMS p{};
  p.uStructSize = sizeof p;
  p.crColor = static_cast<COLORREF>(value);
  p.uColorSpace = 0x10;
  p.uDlgFlags = flags & ~QVDLG_AUTO_PROCESS;
  params.Store(p);
}

std::wstring DescribeColor(ParamBlock& params) {
  const auto p = params.Load<QVCOLORDLGPARAMS>();
  return Format(L"crColor = RGB(%u, %u, %u), uColorSpace = 0x%X", GetRValue(p.crColor), GetGValue(p.crColor),
                GetBValue(p.crColor), p.uColorSpace);
}

void FillPalette(ParamBlock& params, BITMAPHANDLE*, uint32_t flags, int) {
  QVCUSTOMIZEPALETTEDLGPARAMS p{};
  p.uStructSize = sizeof p;
  p.uDlgFlags = flags & ~QVDLG_AUTO_PROCESS;
  params.Store(p);
}

void ReleasePalette(ParamBlock& params) {
  const auto p = params.Load<QVCUSTOMIZEPALETTEDLGPARAMS>();
  if (p.hResultPalette != nullptr) DeleteObject(static_cast<HGDIOBJ>(p.hResultPalette));
}

std::wstring DescribePalette(ParamBlock& params) {
  const auto p = params.Load<QVCUSTOMIZEPALETTEDLGPARAMS>();
  int entries = 0;
  if (p.hResultPalette != nullptr) entries = GetPaletteEntries(static_cast<HPALETTE>(p.hResultPalette), 0, 0, nullptr);
  return Format(L"palette of %d colors, bApply = %u", entries, p.bApply);
}

// The table length the curve dialogs use for this bitmap: one entry per sample value.
uint32_t TableLength(const BITMAPHANDLE* bitmap) { return static_cast<uint32_t>(MaxSample(bitmap)) + 1; }

void FillRemapIntensity(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int) {
  auto p = Head<QVREMAPINTENSITYDLGPARAMS>(bitmap, flags);
  p.uChannel = 0;
  p.uTableLength = TableLength(bitmap);
  params.Store(p);
}

int ApplyRemapIntensity(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVREMAPINTENSITYDLGPARAMS>();
  const uint32_t* tables[] = {p.puMasterTable, p.puRedTable, p.puGreenTable, p.puBlueTable};
  const uint32_t* table = p.uChannel < 4 ? tables[p.uChannel] : nullptr;
  return Q_RemapBitmapIntensity(bitmap, table, p.uTableLength, p.uChannel, 0);
}

void FreeTable(uint32_t* table) {
  if (table != nullptr) GlobalFree(static_cast<HGLOBAL>(table));
}

void ReleaseRemapIntensity(ParamBlock& params) {
  const auto p = params.Load<QVREMAPINTENSITYDLGPARAMS>();
  FreeTable(p.puMasterTable);
  FreeTable(p.puRedTable);
  FreeTable(p.puGreenTable);
  FreeTable(p.puBlueTable);
}

std::wstring DescribeRemapIntensity(ParamBlock& params) {
  const auto p = params.Load<QVREMAPINTENSITYDLGPARAMS>();
  return Format(L"uChannel = %u, tables of %u entries", p.uChannel, p.uTableLength);
}

void FillRemapHue(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int) {
  auto p = Head<QVREMAPHUEDLGPARAMS>(bitmap, flags);
  p.uTableLength = TableLength(bitmap);
  params.Store(p);
}

int ApplyRemapHue(ParamBlock& params, BITMAPHANDLE* bitmap) {
  const auto p = params.Load<QVREMAPHUEDLGPARAMS>();
  return Q_RemapBitmapHue(bitmap, p.puMaskTable, p.puHueTable, p.puSaturationTable, p.puValueTable, p.uTableLength, 0);
}

void ReleaseRemapHue(ParamBlock& params) {
  const auto p = params.Load<QVREMAPHUEDLGPARAMS>();
  FreeTable(p.puMaskTable);
  FreeTable(p.puHueTable);
  FreeTable(p.puSaturationTable);
  FreeTable(p.puValueTable);
}

std::wstring DescribeRemapHue(ParamBlock& params) {
  return Format(L"tables of %u entries", params.Load<QVREMAPHUEDLGPARAMS>().uTableLength);
}

// value is the target bits per pixel; an optimized palette with Floyd-Steinberg dithering.
void FillColorRes(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<QVCOLORRESDLGPARAMS>(bitmap, flags);
  p.uBitsPerPixel = static_cast<uint32_t>(value);
  p.uColorResFlags = 0x10000u | 0x2u;
  params.Store(p);
}

void ReleaseColorRes(ParamBlock& params) {
  const auto p = params.Load<QVCOLORRESDLGPARAMS>();
  if (p.hPalette != nullptr) DeleteObject(static_cast<HGDIOBJ>(p.hPalette));
}

std::wstring DescribeColorRes(ParamBlock& params) {
  const auto p = params.Load<QVCOLORRESDLGPARAMS>();
  return Format(L"uBitsPerPixel = %u, uColorResFlags = 0x%05X", p.uBitsPerPixel, p.uColorResFlags);
}

// value is the dot dimension; clustered dots at 45 degrees.
template <typename T>
void FillHalftone(ParamBlock& params, BITMAPHANDLE* bitmap, uint32_t flags, int value) {
  auto p = Head<T>(bitmap, flags);
  p.uDimension = static_cast<uint32_t>(value);
  p.nAngle = 4500;
  p.uType = 0;
  params.Store(p);
}

template <typename T>
void ReleaseHalftone(ParamBlock& params) {
  const auto p = params.Load<T>();
  if (p.hChosenPatterns != nullptr) Q_DestroyBitmapList(p.hChosenPatterns, 0);
}

template <typename T>
std::wstring DescribeHalftone(ParamBlock& params) {
  const auto p = params.Load<T>();
  return Format(L"uType = %u, nAngle = %d, uDimension = %u", p.uType, static_cast<int>(p.nAngle), p.uDimension);
}

constexpr COLORREF kOrange = RGB(230, 120, 30);

}  // namespace

const std::vector<DialogEntry>& DialogCatalog() {
  using T = TourControl;
  using I = ImageKind;
  static const std::vector<DialogEntry> kCatalog = {
      {"Q_DlgBrightness", L"&Brightness...", I::Photo, FillSingle, ApplySigned<Q_ChangeBitmapIntensity>, nullptr,
       DescribeSingle<kBrightness>, 0, 400, T::Trackbar, 3101},
      {"Q_DlgContrast", L"&Contrast...", I::Photo, FillSingle, ApplySigned<Q_ChangeBitmapContrast>, nullptr,
       DescribeSingle<kContrast>, 0, 500, T::Trackbar, 3701},
      {"Q_DlgHue", L"&Hue...", I::Photo, FillSingle, ApplySigned<Q_ChangeBitmapHue>, nullptr, DescribeSingle<kHue>, 0,
       120, T::Trackbar, 7501},
      {"Q_DlgSaturation", L"&Saturation...", I::Photo, FillSingle, ApplySigned<Q_ChangeBitmapSaturation>, nullptr,
       DescribeSingle<kSaturation>, 0, -800, T::Trackbar, 11501},
      {"Q_DlgHistoContrast", L"Histogram c&ontrast...", I::Photo, FillSingle, ApplySigned<Q_HistoContrastBitmap>,
       nullptr, DescribeSingle<kHistoContrast>, 0, 600, T::Trackbar, 7201},
      {"Q_DlgPosterize", L"&Posterize...", I::Photo, FillSingle, ApplyUnsigned<Q_PosterizeBitmap>, nullptr,
       DescribeSingle<kLevels>, 64, 4, T::Trackbar, 10301},
      {"Q_DlgSolarize", L"So&larize...", I::Photo, FillSingle, ApplyUnsigned<Q_SolarizeBitmap>, nullptr,
       DescribeSingle<kThreshold>, 255, 128, T::Trackbar, 12201},
      {"Q_DlgGammaAdjustment", L"&Gamma...", I::Photo, FillGamma, ApplyGamma, nullptr, DescribeGamma, 100, 220, T::None,
       0},
      {"Q_DlgIntensityDetect", L"&Intensity detect...", I::Photo, FillIntensityDetect, ApplyIntensityDetect, nullptr,
       DescribeIntensityDetect, 0, 140, T::Trackbar, 7801},
      {"Q_DlgLocalHistoEqualize", L"Local histogram &equalization...", I::Photo, FillLocalHisto, ApplyLocalHisto,
       nullptr, DescribeLocalHisto, 64, 2, T::ListEntry, 8512},
      {"Q_DlgGrayScale", L"Gray sc&ale...", I::Photo, FillGrayScale, ApplyGrayScale, nullptr, DescribeGrayScale, 0, 2,
       T::MarkerSlider, 7002},
      {"Q_DlgColoredGray", L"Colored g&ray...", I::Photo, FillColoredGray, ApplyColoredGray, nullptr,
       DescribeColoredGray, 0, 2, T::MarkerSlider, 3406},
      {"Q_DlgBalanceColors", L"Balance colo&rs...", I::Photo, FillBalance, ApplyBalance, nullptr, DescribeBalance, 100,
       60, T::ValueCombo, 2705},
      {"Q_DlgWindowLevel", L"&Window level...", I::Gray16, FillWindowLevel, ApplyWindowLevel, nullptr,
       DescribeWindowLevel, 100, 40, T::None, 0},
      {"Q_DlgColor", L"Color pic&ker...", I::None, FillColor, nullptr, nullptr, DescribeColor,
       static_cast<int>(kOrange), static_cast<int>(kOrange), T::None, 0},
      {"Q_DlgCustomizePalette", L"Palette e&ditor...", I::None, FillPalette, nullptr, ReleasePalette, DescribePalette,
       0, 0, T::None, 0},
      {"Q_DlgRemapIntensity", L"Remap i&ntensity...", I::Photo, FillRemapIntensity, ApplyRemapIntensity,
       ReleaseRemapIntensity, DescribeRemapIntensity, 0, 0, T::None, 0},
      {"Q_DlgRemapHue", L"Remap h&ue...", I::Photo, FillRemapHue, ApplyRemapHue, ReleaseRemapHue, DescribeRemapHue, 0,
       0, T::None, 0},
      {"Q_DlgColorRes", L"Color resolu&tion...", I::Photo, FillColorRes, nullptr, ReleaseColorRes, DescribeColorRes, 24,
       4, T::None, 0},
      {"Q_DlgHalftone", L"Hal&ftone...", I::Photo, FillHalftone<QVHALFTONEDLGPARAMS>, nullptr,
       ReleaseHalftone<QVHALFTONEDLGPARAMS>, DescribeHalftone<QVHALFTONEDLGPARAMS>, 8, 6, T::None, 0},
      {"Q_DlgHalftoneA", L"Halftone (narrow &list)...", I::Photo, FillHalftone<QVHALFTONEDLGPARAMSA>, nullptr,
       ReleaseHalftone<QVHALFTONEDLGPARAMSA>, DescribeHalftone<QVHALFTONEDLGPARAMSA>, 8, 6, T::None, 0},
  };
  return kCatalog;
}

const DialogEntry* FindDialogEntry(const std::string& exportName) {
  for (const DialogEntry& entry : DialogCatalog()) {
    if (exportName == entry.exportName) return &entry;
  }
  return nullptr;
}

}  // namespace qvdemo
