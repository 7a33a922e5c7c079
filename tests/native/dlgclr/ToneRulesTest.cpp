/*
 * The value rules of the single-value dialogs: taking the caller's value (the range minimum replaces an
 * out-of-range value, never the nearer end), the solarize range for each kind of bitmap, and what typing and
 * committing in the edit box do.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

#include "ToneRules.h"
#include "qv/qvkrn.h"

namespace qvdlg {
namespace {

TEST(CallerValue, InsideTheRangeItStaysOutsideItBecomesTheFallbackForEveryMember) {
  for (int i = 0; i < kToneMemberCount; ++i) {
    const ToneMember& m = ToneMembers()[i];
    SCOPED_TRACE(m.templateId);
    EXPECT_EQ(TakeCallerValue(m, m.range, m.range.minimum), m.range.minimum);
    EXPECT_EQ(TakeCallerValue(m, m.range, m.range.maximum), m.range.maximum);
    EXPECT_EQ(TakeCallerValue(m, m.range, m.range.maximum + 1), m.fallback);
    EXPECT_EQ(TakeCallerValue(m, m.range, m.range.minimum - 1), m.fallback);
    EXPECT_EQ(m.fallback, m.range.minimum) << "the replacement is the minimum, not the nearer end";
  }
}

TEST(CallerValue, FieldsAreWidenedAsTheirTypeSays) {
  const ToneMember& brightness = ToneMemberOf(ToneEffect::kBrightness);
  const ToneMember& posterize = ToneMemberOf(ToneEffect::kPosterize);
  const ToneMember& hue = ToneMemberOf(ToneEffect::kHue);
  struct Case {
    const ToneMember* member;
    uint32_t field;
    int expected;
  };
  const Case cases[] = {
      {&brightness, static_cast<uint32_t>(-250), -250},
      {&brightness, 0x80000000u, -1000},
      {&hue, static_cast<uint32_t>(-181), -180},
      // As unsigned, -5 is a huge level count, not a negative one.
      {&posterize, static_cast<uint32_t>(-5), 2},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TakeCallerValue(*c.member, c.member->range, WidenField(*c.member, c.field)), c.expected)
        << c.member->templateId << " field " << c.field;
  }
}

TEST(SolarizeRange, FollowsGrayTestLutFlagAndDepthAndKeepsItsStartWhenTheTestFails) {
  struct Case {
    int grayKind;
    uint32_t flags;
    int bitsPerPixel;
    int maximum;
  };
  const Case cases[] = {
      {0, 0, 24, 255},
      {0, 0, 8, 255},
      {0, 0, 48, 65535},
      {0, 0, 64, 65535},
      {0, 0, 16, 255},
      {0, 0, 12, 255},
      {1, 0, 16, 65535},
      {2, 0, 12, 4095},
      {3, 0, 8, 255},
      {1, 0, 48, 255},
      {0, QV_BMF_USELUT, 16, 65535},
      {0, QV_BMF_USELUT, 12, 4095},
      {0, QV_BMF_USELUT, 48, 255},
      // A failed gray test widens nothing, whichever branch the depth or the LUT flag would pick.
      {-13, 0, 16, 255},
      {-2, 0, 48, 255},
      {-13, QV_BMF_USELUT, 12, 255},
  };
  for (const Case& c : cases) {
    const ToneRange r = SolarizeRangeFor(c.grayKind, c.flags, c.bitsPerPixel);
    EXPECT_EQ(r.minimum, 0);
    EXPECT_EQ(r.maximum, c.maximum) << "gray " << c.grayKind << " flags " << c.flags << " bpp " << c.bitsPerPixel;
  }
}

TEST(EditBox, TypingTakesOnlyNewValuesInsideTheRange) {
  const ToneRange r{-1000, 1000};
  EXPECT_EQ(TypedValueToTake(400, 0, r), 400);
  EXPECT_EQ(TypedValueToTake(-1000, 0, r), -1000);
  EXPECT_EQ(TypedValueToTake(400, 400, r), std::nullopt) << "no change, no preview";
  EXPECT_EQ(TypedValueToTake(1200, 0, r), std::nullopt) << "left in the box until it is committed";
  EXPECT_EQ(TypedValueToTake(-1001, 0, r), std::nullopt);
  EXPECT_EQ(TypedValueToTake(-12.9, 0, r), -12) << "truncated toward zero";
  EXPECT_EQ(TypedValueToTake(1000.5, 0, r), 1000);
  EXPECT_EQ(TypedValueToTake(1e300, 0, r), std::nullopt);
  EXPECT_EQ(TypedValueToTake(std::numeric_limits<double>::quiet_NaN(), 5, r), 0);
}

TEST(EditBox, CommittingWritesTheNearerEndOnlyForNumbersBeyondTheRange) {
  const ToneRange r{2, 64};
  EXPECT_EQ(CommittedValueToWrite(1, r), 2);
  EXPECT_EQ(CommittedValueToWrite(0, r), 2) << "an empty box reads as 0";
  EXPECT_EQ(CommittedValueToWrite(999, r), 64);
  EXPECT_EQ(CommittedValueToWrite(64.7, r), std::nullopt);
  EXPECT_EQ(CommittedValueToWrite(30, r), std::nullopt);
  EXPECT_EQ(CommittedValueToWrite(-1e300, r), 2);
}

TEST(MemberTable, EditLimitsHoldEveryValueOfTheStartingRange) {
  for (int i = 0; i < kToneMemberCount; ++i) {
    const ToneMember& m = ToneMembers()[i];
    const size_t widest = std::max(std::to_string(m.range.minimum).size(), std::to_string(m.range.maximum).size());
    EXPECT_GE(static_cast<size_t>(m.textLimit), widest) << m.templateId;
    EXPECT_EQ(m.acceptNegative, m.range.minimum < 0) << m.templateId;
    EXPECT_EQ(static_cast<int>(m.effect), i) << "the table is indexed by effect";
  }
}

}  // namespace
}  // namespace qvdlg
