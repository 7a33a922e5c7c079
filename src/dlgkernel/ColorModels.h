/*
 * Conversions between the integer color records of the dialogs. RGB is the hub:
 * every model converts to and from it. Inputs are validated by the callers
 * (IsValid), so the conversions themselves cannot fail.
 */
#pragma once

#include "qv/qvdlgkrn.h"

namespace qv {

bool IsValid(const QVRGB& c);
bool IsValid(const QVHSB& c);
bool IsValid(const QVHLS& c);
bool IsValid(const QVCMY& c);
bool IsValid(const QVCMYK& c);
bool IsValid(const QVLAB& c);

QVHSB RgbToHsb(const QVRGB& c);
QVRGB HsbToRgb(const QVHSB& c);
QVHLS RgbToHls(const QVRGB& c);
QVRGB HlsToRgb(const QVHLS& c);
QVCMY RgbToCmy(const QVRGB& c);
QVRGB CmyToRgb(const QVCMY& c);
QVCMYK RgbToCmyk(const QVRGB& c);
QVRGB CmykToRgb(const QVCMYK& c);

}  // namespace qv
