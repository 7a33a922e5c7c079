/*
 * The pieces the demo host stands on: the bitmap owner (moves hand the
 * pixels over exactly once, a failed load keeps the current picture), the
 * generated charts (full sample range, refused depths), and the status
 * bar's result texts.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "OwnedBitmap.h"
#include "ResultCodes.h"
#include "TestChart.h"
#include "qvdriver/TestOutput.h"

namespace qvdemo {
namespace {

TEST(DemoBitmapOwner, MovesHandThePixelsOverAndFailedLoadsKeepThePicture) {
  OwnedBitmap first;
  ASSERT_EQ(MakeColorChart(first, 64, 48), QV_SUCCESS);
  const auto bytes = first.Bytes();
  const uint8_t* pixels = first.Get()->pData;

  OwnedBitmap second(std::move(first));
  EXPECT_FALSE(first.IsAllocated());
  EXPECT_EQ(first.Get()->pData, nullptr);
  EXPECT_EQ(second.Get()->pData, pixels);

  OwnedBitmap third;
  ASSERT_EQ(third.Create(8, 8, 24, QV_ORDER_BGR), QV_SUCCESS);
  third = std::move(second);  // the 8 x 8 picture is freed, the chart moves in
  EXPECT_EQ(third.Bytes(), bytes);
  EXPECT_FALSE(second.IsAllocated());

  EXPECT_NE(third.Load(L"Z:\\no\\such\\picture.png"), QV_SUCCESS);
  EXPECT_EQ(third.Bytes(), bytes) << "a failed load must keep the picture";

  OwnedBitmap copy;
  ASSERT_EQ(copy.CopyFrom(*third.Get()), QV_SUCCESS);
  EXPECT_NE(copy.Get()->pData, third.Get()->pData);
  EXPECT_EQ(copy.Bytes(), bytes);

  const std::wstring path = qv::test::TestOutputFile("DemoBitmapOwner", L"chart.png");
  const std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
  CreateDirectoryW(folder.substr(0, folder.find_last_of(L'\\')).c_str(), nullptr);
  CreateDirectoryW(folder.c_str(), nullptr);
  ASSERT_EQ(copy.SavePng(path), QV_SUCCESS);
  OwnedBitmap reloaded;
  ASSERT_EQ(reloaded.Load(path), QV_SUCCESS);
  EXPECT_EQ(reloaded.Bytes(), bytes) << "a saved and reloaded chart must come back unchanged";
}

uint16_t Sample(const BITMAPHANDLE& b, int x, int y) {
  return reinterpret_cast<const uint16_t*>(b.pData + static_cast<size_t>(y) * b.nBytesPerLine)[x];
}

TEST(DemoCharts, CoverTheirWholeRange) {
  for (int bits : {12, 16}) {
    SCOPED_TRACE(bits);
    OwnedBitmap gradient;
    ASSERT_EQ(MakeGrayGradient(gradient, bits, 200, 100), QV_SUCCESS);
    const BITMAPHANDLE& b = *gradient.Get();
    EXPECT_EQ(b.nBitsPerPixel, bits);
    EXPECT_EQ(b.uOrder, QV_ORDER_GRAY);
    const int maxValue = (1 << bits) - 1;
    EXPECT_EQ(Sample(b, 0, 0), 0);
    EXPECT_EQ(Sample(b, 199, 0), maxValue);
    int highest = 0;
    for (int y = 0; y < b.nHeight; ++y) {
      for (int x = 0; x < b.nWidth; ++x) highest = std::max<int>(highest, Sample(b, x, y));
    }
    EXPECT_EQ(highest, maxValue) << "no sample may pass the format's largest value";
  }
  OwnedBitmap refused;
  EXPECT_EQ(MakeGrayGradient(refused, 8), QV_ERROR_INVALID_BITS_PER_PIXEL);
  EXPECT_FALSE(refused.IsAllocated());

  OwnedBitmap chart;
  ASSERT_EQ(MakeColorChart(chart, 300, 240), QV_SUCCESS);
  std::set<uint32_t> colors;
  std::set<int> grays;
  const BITMAPHANDLE& c = *chart.Get();
  for (int y = 0; y < c.nHeight; ++y) {
    const uint8_t* row = c.pData + static_cast<size_t>(y) * c.nBytesPerLine;
    for (int x = 0; x < c.nWidth; ++x) {
      colors.insert(row[3 * x] | row[3 * x + 1] << 8 | row[3 * x + 2] << 16);
      if (row[3 * x] == row[3 * x + 1] && row[3 * x + 1] == row[3 * x + 2]) grays.insert(row[3 * x]);
    }
  }
  EXPECT_GT(colors.size(), 2000u) << "the colour wheel must hold many hues";
  EXPECT_EQ(grays.count(0), 1u);
  EXPECT_EQ(grays.count(255), 1u);
}

TEST(DemoResultTexts, NameTheCodeAndSayUnknownOtherwise) {
  EXPECT_EQ(DescribeResult(QV_DLG_CANCEL).rfind(L"QV_DLG_CANCEL: ", 0), 0u);
  EXPECT_EQ(DescribeResult(QV_ERROR_DLG_NOT_READY).rfind(L"QV_ERROR_DLG_NOT_READY: ", 0), 0u);
  EXPECT_EQ(DescribeResult(-99999), L"unknown result -99999");
}

}  // namespace
}  // namespace qvdemo
