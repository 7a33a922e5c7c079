/*
 * The curve record rules both curve dialogs share: which records a table of each length accepts, how points
 * move between table lengths (exactly 257 times between 256 and 65536; points that fall together are merged
 * so a table can still be built), and which table length each kind of bitmap gets.
 */
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "CurveRecord.h"
#include "qv/qvkrn.h"

namespace qvdlg {
namespace {

CurveRecord Record(uint32_t mode, int32_t factor, std::initializer_list<POINT> points) {
  CurveRecord r;
  r.mode = mode;
  r.factor = factor;
  for (const POINT& p : points) r.points[r.count++] = p;
  return r;
}

TEST(CurveRecordCheck, EachRuleRefusesItsOwnCase) {
  CurveRecord full = Record(4, 1, {});
  for (int i = 0; i < QV_CURVE_MAX_POINTS; ++i) full.points[full.count++] = {i * 8 + (i == 31 ? 7 : 0), i};
  CurveRecord tooMany = full;
  tooMany.count = 33;
  using C = CurveCheck;
  struct Case {
    CurveRecord record;
    uint32_t length;
    CurveCheck expected;
  };
  const Case cases[] = {
      {Record(1, 1, {{0, 0}, {255, 255}}), 256, C::kValid},
      {full, 256, C::kValid},
      {tooMany, 256, C::kBadPointCount},
      {Record(1, 1, {{0, 0}}), 256, C::kBadPointCount},
      {Record(0, 1, {{0, 0}, {255, 255}}), 256, C::kBadMode},
      {Record(1, 1, {{1, 0}, {255, 255}}), 256, C::kFirstXNotZero},
      {Record(1, 1, {{0, 0}, {254, 255}}), 256, C::kLastXNotEnd},
      {Record(1, 1, {{0, 0}, {255, 255}}), 4096, C::kLastXNotEnd},
      {Record(1, 1, {{0, 0}, {255, 256}}), 256, C::kPointOutOfRange},
      {Record(1, 1, {{0, 0}, {9, 5}, {9, 6}, {255, 255}}), 256, C::kXNotIncreasing},
      {Record(2, 100, {{0, 0}, {255, 255}}), 256, C::kValid},
      {Record(2, -101, {{0, 0}, {255, 255}}), 256, C::kFactorOutOfRange},
      {Record(3, 0, {{0, 0}, {255, 255}}), 256, C::kValid},
      {Record(3, -1, {{0, 0}, {255, 255}}), 256, C::kFactorOutOfRange},
      {Record(3, 101, {{0, 0}, {255, 255}}), 256, C::kFactorOutOfRange},
      {Record(4, 5000, {{0, 0}, {255, 255}}), 256, C::kValid},
  };
  for (const Case& c : cases) EXPECT_EQ(CheckCurveRecord(c.record, c.length), c.expected) << "case " << &c - cases;
}

TEST(CurveRescale, CoordinatesScaleByTheTableEndsAndMergedPointsGiveWay) {
  struct Case {
    uint32_t value, from, to, expected;
  };
  const Case cases[] = {{0, 256, 65536, 0},       {255, 256, 65536, 65535}, {128, 256, 65536, 128 * 257},
                        {32768, 65536, 256, 127}, {65535, 65536, 256, 255}, {257, 65536, 256, 1},
                        {2048, 4096, 256, 127},   {1, 256, 4096, 16}};
  for (const Case& c : cases) EXPECT_EQ(RescaleCoordinate(c.value, c.from, c.to), c.expected) << c.value;

  CurveRecord down = Record(4, 1, {{0, 0}, {100, 10}, {200, 20}, {300, 30}, {65535, 65535}});
  RescaleCurveRecord(down, 65536, 256);
  ASSERT_EQ(down.count, 3) << "x 100 and 200 fell onto x 0";
  EXPECT_EQ(down.points[1].x, 1);
  EXPECT_EQ(down.points[2].x, 255);
  EXPECT_EQ(CheckCurveRecord(down, 256), CurveCheck::kValid);
}

TEST(CurveTableLength, FollowsTheBitmapsKind) {
  struct Case {
    bool usable;
    int bitsPerPixel;
    uint32_t order, expected;
  };
  const Case cases[] = {
      {true, 12, QV_ORDER_GRAY, 4096}, {true, 16, QV_ORDER_GRAY, 65536}, {true, 16, QV_ORDER_BGR, 256},
      {true, 48, QV_ORDER_BGR, 65536}, {true, 64, QV_ORDER_RGB, 65536},  {true, 24, QV_ORDER_BGR, 256},
      {true, 8, QV_ORDER_GRAY, 256},   {false, 16, QV_ORDER_GRAY, 256},  {false, 48, QV_ORDER_BGR, 256},
  };
  for (const Case& c : cases)
    EXPECT_EQ(CurveTableLength(c.usable, c.bitsPerPixel, c.order), c.expected) << c.bitsPerPixel << " " << c.order;
}

}  // namespace
}  // namespace qvdlg
