/*
 * The value rules of the intensity detect dialog: the range both bounds share for each kind of bitmap, the
 * caller's bounds against it (taken unsigned, the minimum replacing what lies outside) and the channel bits the
 * mode and boxes make.
 */
#include <gtest/gtest.h>

#include "IntensityDetectRules.h"
#include "qv/qvkrn.h"

namespace qvdlg {
namespace {

TEST(IntensityRange, FollowsGrayTestLutFlagAndDepthAndOtherwiseKeepsTheCurrentMaximum) {
  struct Case {
    int grayKind;
    uint32_t flags;
    int bitsPerPixel;
    int current;
    int expected;
  };
  const Case cases[] = {
      {0, 0, 24, 4095, 255},  // colour: always 255 below 48 bits, whatever was there
      {0, 0, 48, 255, 65535},
      {0, 0, 16, 255, 255},  // 5-6-5 colour
      {1, 0, 8, 300, 300},   // 8-bit gray keeps the current maximum
      {1, 0, 12, 255, 4095},
      {1, 0, 16, 255, 65535},
      {0, QV_BMF_USELUT, 16, 255, 65535},  // painted through its LUT counts as gray
      {0, QV_BMF_USELUT, 48, 255, 255},    // ... and then 48 bits is not a gray depth
      {2, QV_BMF_ALLOCATED, 24, 255, 255},
  };
  for (const Case& c : cases)
    EXPECT_EQ(IntensityRangeMaximum(c.grayKind, c.flags, c.bitsPerPixel, c.current), c.expected)
        << c.grayKind << " " << c.flags << " " << c.bitsPerPixel;
}

TEST(IntensityBounds, InsideIsTakenOutsideBecomesTheMinimumAndNothingTiesLowToHigh) {
  struct Case {
    uint32_t raw;
    ToneRange range;
    int expected;
  };
  const Case cases[] = {
      {0, {0, 255}, 0},
      {255, {0, 255}, 255},
      {256, {0, 255}, 0},
      {300, {0, 255}, 0},
      {300, {0, 65535}, 300},
      {65535, {0, 65535}, 65535},
      {65536, {0, 65535}, 0},
      {0xFFFFFFFFu, {0, 255}, 0},  // huge unsigned, not -1
      {0x80000000u, {0, 65535}, 0},
  };
  for (const Case& c : cases) EXPECT_EQ(TakeIntensityBound(c.raw, c.range), c.expected) << c.raw;
  // Low above high is kept as given: each bound is checked on its own.
  EXPECT_EQ(TakeIntensityBound(200, kIntensityStartRange), 200);
  EXPECT_EQ(TakeIntensityBound(10, kIntensityStartRange), 10);
}

TEST(IntensityChannels, ModeAndBoxesMakeTheBits) {
  struct Case {
    uintptr_t mode;
    uint32_t bits;
    bool red, green, blue;
    uint32_t expected;
  };
  const Case cases[] = {
      {0, kIntensityRed | kIntensityBlue, true, true, true, 0},  // intensity mode clears everything
      {1, 0, false, false, false, 0},
      {1, 0, true, false, false, kIntensityRed},
      {1, 0, false, true, false, kIntensityGreen},
      {1, 0, false, false, true, kIntensityBlue},
      {1, 0, true, true, true, 0x111},
      {1, kIntensityGreen, true, false, false, 0x011},  // bits are added, never taken away
  };
  for (const Case& c : cases)
    EXPECT_EQ(ChannelBitsForMode(c.mode, c.bits, c.red, c.green, c.blue), c.expected) << c.mode << " " << c.bits;

  EXPECT_EQ(WithChannelBit(0x101, kIntensityGreen, true), 0x111u);
  EXPECT_EQ(WithChannelBit(0x111, kIntensityRed, false), 0x110u);
  EXPECT_EQ(WithChannelBit(0x110, kIntensityRed, false), 0x110u);
}

}  // namespace
}  // namespace qvdlg
