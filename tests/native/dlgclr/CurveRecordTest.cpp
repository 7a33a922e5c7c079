// The curve record rules both curve dialogs share: which records a table of each length accepts, how points
// move between table lengths (exactly 257 times between 256 and 65536, points that fall together merged so
// a table can still be built), and which table length each kind of bitmap gets.
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

std::string Text(const CurveRecord& r) {
  std::string s;
  for (int i = 0; i < r.count; ++i) s += "(" + std::to_string(r.points[i].x) + "," + std::to_string(r.points[i].y) + ")";
  return s;
}

TEST(CurveRecordCheck, EachRuleRefusesItsOwnCase) {
  CurveRecord most = Record(QV_CURVE_MODE_LINE, 1, {});
  for (int i = 0; i < QV_CURVE_MAX_POINTS; ++i) most.points[most.count++] = {i * 8 + (i == 31 ? 7 : 0), i};
  CurveRecord tooMany = most;
  tooMany.count = 33;
  struct Case {
    const char* name;
    CurveRecord record;
    uint32_t length;
    CurveCheck expected;
  };
  const Case cases[] = {
      {"two points", Record(1, 1, {{0, 0}, {255, 255}}), 256, CurveCheck::kValid},
      {"32 points", most, 256, CurveCheck::kValid},
      {"33 points", tooMany, 256, CurveCheck::kBadPointCount},
      {"one point", Record(1, 1, {{0, 0}}), 256, CurveCheck::kBadPointCount},
      {"mode 0", Record(0, 1, {{0, 0}, {255, 255}}), 256, CurveCheck::kBadMode},
      {"mode 5", Record(5, 1, {{0, 0}, {255, 255}}), 256, CurveCheck::kBadMode},
      {"first x 1", Record(1, 1, {{1, 0}, {255, 255}}), 256, CurveCheck::kFirstXNotZero},
      {"last x one short", Record(1, 1, {{0, 0}, {254, 255}}), 256, CurveCheck::kLastXNotEnd},
      {"last x of another length", Record(1, 1, {{0, 0}, {255, 255}}), 4096, CurveCheck::kLastXNotEnd},
      {"last x 65535", Record(1, 1, {{0, 0}, {65535, 65535}}), 65536, CurveCheck::kValid},
      {"y equal to the length", Record(1, 1, {{0, 0}, {255, 256}}), 256, CurveCheck::kPointOutOfRange},
      {"negative y", Record(1, 1, {{0, -1}, {255, 0}}), 256, CurveCheck::kPointOutOfRange},
      {"inner x beyond the end", Record(1, 1, {{0, 0}, {300, 5}, {255, 255}}), 256, CurveCheck::kPointOutOfRange},
      {"two points on one x", Record(1, 1, {{0, 0}, {9, 5}, {9, 6}, {255, 255}}), 256, CurveCheck::kXNotIncreasing},
      {"points out of order", Record(1, 1, {{0, 0}, {9, 5}, {8, 6}, {255, 255}}), 256, CurveCheck::kXNotIncreasing},
      {"exponential -100", Record(2, -100, {{0, 0}, {255, 255}}), 256, CurveCheck::kValid},
      {"exponential 100", Record(2, 100, {{0, 0}, {255, 255}}), 256, CurveCheck::kValid},
      {"exponential -101", Record(2, -101, {{0, 0}, {255, 255}}), 256, CurveCheck::kFactorOutOfRange},
      {"exponential 101", Record(2, 101, {{0, 0}, {255, 255}}), 256, CurveCheck::kFactorOutOfRange},
      {"logarithm 0", Record(3, 0, {{0, 0}, {255, 255}}), 256, CurveCheck::kValid},
      {"logarithm -1", Record(3, -1, {{0, 0}, {255, 255}}), 256, CurveCheck::kFactorOutOfRange},
      {"logarithm 101", Record(3, 101, {{0, 0}, {255, 255}}), 256, CurveCheck::kFactorOutOfRange},
      {"curve points ignore the factor", Record(1, -5000, {{0, 0}, {255, 255}}), 256, CurveCheck::kValid},
      {"line points ignore the factor", Record(4, 5000, {{0, 0}, {255, 255}}), 256, CurveCheck::kValid},
  };
  for (const Case& c : cases) EXPECT_EQ(CheckCurveRecord(c.record, c.length), c.expected) << c.name;
}

TEST(CurveRescale, CoordinatesScaleByTheTableEnds) {
  struct Case {
    uint32_t value, from, to, expected;
  };
  const Case cases[] = {
      {0, 256, 65536, 0},      {255, 256, 65536, 65535}, {128, 256, 65536, 128 * 257}, {1, 256, 65536, 257},
      {32768, 65536, 256, 127}, {65535, 65536, 256, 255}, {256, 65536, 256, 0},         {257, 65536, 256, 1},
      {4095, 4096, 65536, 65535}, {2048, 4096, 256, 127}, {1, 256, 4096, 16},          {65535, 65536, 65536, 65535},
  };
  for (const Case& c : cases)
    EXPECT_EQ(RescaleCoordinate(c.value, c.from, c.to), c.expected) << c.value << " " << c.from << "->" << c.to;
}

TEST(CurveRescale, RecordsStayValidForTheNewLength) {
  struct Case {
    const char* name;
    CurveRecord record;
    uint32_t from, to;
    std::string expected;
  };
  const Case cases[] = {
      {"up by 257", Record(1, 1, {{0, 3}, {128, 40}, {255, 255}}), 256, 65536, "(0,771)(32896,10280)(65535,65535)"},
      {"down, points falling together keep the first", Record(4, 1, {{0, 0}, {100, 10}, {200, 20}, {300, 30}, {65535, 65535}}),
       65536, 256, "(0,0)(1,0)(255,255)"},
      {"down, every inner point onto the start", Record(1, 1, {{0, 9}, {100, 60000}, {65535, 0}}), 65536, 256,
       "(0,0)(255,0)"},
      {"same length", Record(1, 1, {{0, 3}, {255, 9}}), 256, 256, "(0,3)(255,9)"},
  };
  for (const Case& c : cases) {
    CurveRecord r = c.record;
    RescaleCurveRecord(r, c.from, c.to);
    EXPECT_EQ(Text(r), c.expected) << c.name;
    EXPECT_EQ(CheckCurveRecord(r, c.to), CurveCheck::kValid) << c.name;
  }
}

TEST(CurveTableLength, FollowsTheBitmapsKind) {
  struct Case {
    bool usable;
    int bitsPerPixel;
    uint32_t order;
    uint32_t expected;
  };
  const Case cases[] = {
      {true, 12, QV_ORDER_GRAY, 4096},  {true, 16, QV_ORDER_GRAY, 65536}, {true, 16, QV_ORDER_BGR, 256},
      {true, 48, QV_ORDER_BGR, 65536},  {true, 64, QV_ORDER_RGB, 65536},  {true, 24, QV_ORDER_BGR, 256},
      {true, 32, QV_ORDER_BGR, 256},    {true, 8, QV_ORDER_GRAY, 256},    {true, 1, QV_ORDER_BGR, 256},
      {false, 16, QV_ORDER_GRAY, 256},  {false, 48, QV_ORDER_BGR, 256},
  };
  for (const Case& c : cases)
    EXPECT_EQ(CurveTableLength(c.usable, c.bitsPerPixel, c.order), c.expected) << c.bitsPerPixel << " " << c.order;
}

}  // namespace
}  // namespace qvdlg
