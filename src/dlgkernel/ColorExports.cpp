/*
 * The C exports of the color models: the ten conversions, the component-range
 * query and the color names. Each checks that its input record is readable and
 * valid and its output writable before anything is written.
 */
#include <cstring>
#include <cwchar>

#include "AddressCheck.h"
#include "ColorModels.h"
#include "ColorNames.h"
#include "ExportGuard.h"
#include "LabConverter.h"
#include "qv/qvdlgkrn.h"

namespace {

template <typename In, typename Out, typename Convert>
int ConvertRecord(const In* pIn, Out* pOut, Convert convert) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!qv::IsValidAddress(pIn, sizeof(In), qv::Access::Read) ||
        !qv::IsValidAddress(pOut, sizeof(Out), qv::Access::Write))
      return QV_ERROR_INVALID_PARAMETER;
    const In input = *pIn;  // a copy, so that overlapping records are harmless
    if (!qv::IsValid(input)) return QV_ERROR_INVALID_PARAMETER;
    *pOut = convert(input);
    return QV_SUCCESS;
  });
}

struct ComponentRange {
  int nIndex;
  int nValue;
};

const ComponentRange kComponentRanges[] = {
    {QV_RANGE_HUE_MAX, 359},       {QV_RANGE_SATURATION_MAX, 100}, {QV_RANGE_BRIGHTNESS_MAX, 100},
    {QV_RANGE_LIGHTNESS_MAX, 100}, {QV_RANGE_CYAN_MAX, 100},       {QV_RANGE_MAGENTA_MAX, 100},
    {QV_RANGE_YELLOW_MAX, 100},    {QV_RANGE_BLACK_MAX, 100},      {QV_RANGE_L_MAX, 100},
    {QV_RANGE_L_MIN, 0},           {QV_RANGE_A_MAX, 127},          {QV_RANGE_A_MIN, -128},
    {QV_RANGE_B_MAX, 127},         {QV_RANGE_B_MIN, -128},
};

const wchar_t* NameOf(COLORREF crColor) {
  return qv::FindColorName(static_cast<std::uint8_t>(crColor & 0xFF), static_cast<std::uint8_t>((crColor >> 8) & 0xFF),
                           static_cast<std::uint8_t>((crColor >> 16) & 0xFF));
}

}  // namespace

QV_EXTERN_C int Q_DlgRGBToHSB(const QVRGB* pIn, QVHSB* pOut) { return ConvertRecord(pIn, pOut, qv::RgbToHsb); }
QV_EXTERN_C int Q_DlgRGBToHLS(const QVRGB* pIn, QVHLS* pOut) { return ConvertRecord(pIn, pOut, qv::RgbToHls); }
QV_EXTERN_C int Q_DlgRGBToCMY(const QVRGB* pIn, QVCMY* pOut) { return ConvertRecord(pIn, pOut, qv::RgbToCmy); }
QV_EXTERN_C int Q_DlgRGBToCMYK(const QVRGB* pIn, QVCMYK* pOut) { return ConvertRecord(pIn, pOut, qv::RgbToCmyk); }
QV_EXTERN_C int Q_DlgHSBToRGB(const QVHSB* pIn, QVRGB* pOut) { return ConvertRecord(pIn, pOut, qv::HsbToRgb); }
QV_EXTERN_C int Q_DlgHLSToRGB(const QVHLS* pIn, QVRGB* pOut) { return ConvertRecord(pIn, pOut, qv::HlsToRgb); }
QV_EXTERN_C int Q_DlgCMYToRGB(const QVCMY* pIn, QVRGB* pOut) { return ConvertRecord(pIn, pOut, qv::CmyToRgb); }
QV_EXTERN_C int Q_DlgCMYKToRGB(const QVCMYK* pIn, QVRGB* pOut) { return ConvertRecord(pIn, pOut, qv::CmykToRgb); }

QV_EXTERN_C int Q_DlgRGBToLab(const QVRGB* pIn, QVLAB* pOut) {
  return ConvertRecord(pIn, pOut, [](const QVRGB& c) { return qv::LabConverter::Instance().ToLab(c); });
}

QV_EXTERN_C int Q_DlgLabToRGB(const QVLAB* pIn, QVRGB* pOut) {
  return ConvertRecord(pIn, pOut, [](const QVLAB& c) { return qv::LabConverter::Instance().FromLab(c); });
}

QV_EXTERN_C int Q_DlgGetComponentRange(int nIndex, int* pnValue) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!qv::IsValidAddress(pnValue, sizeof(*pnValue), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    for (const auto& range : kComponentRanges) {
      if (range.nIndex == nIndex) {
        *pnValue = range.nValue;
        return QV_SUCCESS;
      }
    }
    return QV_ERROR_NOT_FOUND;
  });
}

QV_EXTERN_C int Q_DlgGetColorNameLen(COLORREF crColor, unsigned int* puLen) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!qv::IsValidAddress(puLen, sizeof(*puLen), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    const wchar_t* name = NameOf(crColor);
    if (!name) return QV_ERROR_NOT_FOUND;
    *puLen = static_cast<unsigned int>(std::wcslen(name));
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DlgGetColorName(COLORREF crColor, wchar_t* pBuf, unsigned int uBufLen) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (uBufLen == 0 || !qv::IsValidAddress(pBuf, uBufLen * sizeof(wchar_t), qv::Access::Write))
      return QV_ERROR_INVALID_PARAMETER;
    const wchar_t* name = NameOf(crColor);
    if (!name) return QV_ERROR_NOT_FOUND;
    const std::size_t length = std::wcslen(name);
    if (length + 1 > uBufLen) return QV_ERROR_BUFFER_TOO_SMALL;
    std::memcpy(pBuf, name, (length + 1) * sizeof(wchar_t));
    return QV_SUCCESS;
  });
}
