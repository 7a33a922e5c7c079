/*
 * The seven single-value dialogs (brightness, contrast, hue, saturation, histogram contrast, posterize and
 * solarize) differ only in numbers, strings and the effect they run; this table holds those differences so
 * that one implementation serves all seven. Portable: it is read by the dialogs on Windows and by the
 * native tests of the value rules.
 */
#pragma once

#include <cstdint>

namespace qvdlg {

enum class ToneEffect { kBrightness, kContrast, kHue, kSaturation, kHistoContrast, kPosterize, kSolarize };

struct ToneRange {
  int minimum;
  int maximum;
  bool Contains(int64_t value) const { return value >= minimum && value <= maximum; }
};

struct ToneMember {
  ToneEffect effect;
  unsigned templateId;
  unsigned dialogId;        // the number the dialog is known by, e.g. towards the help callback
  bool signedValue;         // the structure's value field is signed
  ToneRange range;          // solarize: the range before the bitmap widens it
  int defaultValue;         // before the caller's value is taken
  int fallback;             // what an out-of-range caller value becomes
  bool acceptNegative;      // the edit box takes a leading minus
  int textLimit;            // characters the edit box holds
  bool setTickFrequency;    // the slider gets TBM_SETTICFREQ 0
  bool sliderBeforeUpdate;  // a typed value moves the slider before the preview is refreshed
  unsigned titleString;     // dialog kernel string ids
  unsigned groupString;
  int sliderId;  // template control ids
  int editId;
  int groupId;
  int beforeLabelId;
  int afterLabelId;
};

const ToneMember& ToneMemberOf(ToneEffect effect);

// All seven, in the order of ToneEffect.
constexpr int kToneMemberCount = 7;
const ToneMember* ToneMembers();

}  // namespace qvdlg
