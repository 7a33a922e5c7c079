/*
 * What every operation owes its caller beyond the formula: regions (pixels outside stay byte for byte),
 * the argument checks (null, unallocated, wrong size, undefined flags, values out of range, tables of the
 * wrong length, formats it refuses) leaving the bitmap untouched, and progress and abort through the status
 * callback.
 */
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "TestImage.h"

namespace opstest {
namespace {

using Call = std::function<int(BITMAPHANDLE* b, unsigned flags)>;

struct Op {
  std::string name;
  Call call;
  bool changesGray;    // false for operations that leave gray images as they are
  bool acceptsSigned;  // works on signed gray
};

unsigned TableLength(const BITMAPHANDLE* b) {
  if (!b || b->uStructSize != sizeof(BITMAPHANDLE)) return 256;
  if (b->nBitsPerPixel == 12) return 4096;
  if ((b->nBitsPerPixel == 16 && b->uOrder == QV_ORDER_GRAY) || b->nBitsPerPixel >= 48) return 65536;
  return 256;
}

const QVBALANCINGRECORD kRed{28, 0, 0, 1}, kGreen{28, 0, 1, 0}, kBlue{28, 1, 0, 0};

const std::vector<Op>& Ops() {
  static const std::vector<Op> ops = {
      {"intensity", [](BITMAPHANDLE* b, unsigned f) { return Q_ChangeBitmapIntensity(b, 300, f); }, true, true},
      {"contrast", [](BITMAPHANDLE* b, unsigned f) { return Q_ChangeBitmapContrast(b, 300, f); }, true, true},
      {"hue", [](BITMAPHANDLE* b, unsigned f) { return Q_ChangeBitmapHue(b, 90, f); }, false, false},
      {"saturation", [](BITMAPHANDLE* b, unsigned f) { return Q_ChangeBitmapSaturation(b, 500, f); }, false, false},
      {"histo contrast", [](BITMAPHANDLE* b, unsigned f) { return Q_HistoContrastBitmap(b, 300, f); }, true, true},
      {"posterize", [](BITMAPHANDLE* b, unsigned f) { return Q_PosterizeBitmap(b, 4, f); }, true, true},
      {"solarize", [](BITMAPHANDLE* b, unsigned f) { return Q_SolarizeBitmap(b, 100, f); }, true, true},
      {"gamma", [](BITMAPHANDLE* b, unsigned f) { return Q_GammaCorrectBitmapExt(b, 200, 150, 50, f); }, true, false},
      {"gamma signed", [](BITMAPHANDLE* b, unsigned f) { return Q_GammaCorrectBitmapSigned(b, 200, f); }, true, true},
      {"intensity detect",
       [](BITMAPHANDLE* b, unsigned f) { return Q_IntensityDetectBitmap(b, 50, 200, 0xFF, 0xFF00, 0, f); }, true,
       false},
      {"gray scale", [](BITMAPHANDLE* b, unsigned f) { return Q_GrayScaleBitmapExt(b, 299, 587, 114, f); }, false,
       false},
      {"colored gray",
       [](BITMAPHANDLE* b, unsigned f) { return Q_ConvertToColoredGray(b, 299, 587, 114, 200, 0, -300, f); }, false,
       false},
      {"balance", [](BITMAPHANDLE* b, unsigned f) { return Q_BalanceColors(b, &kRed, &kGreen, &kBlue, f); }, false,
       false},
      {"remap intensity",
       [](BITMAPHANDLE* b, unsigned f) {
         std::vector<unsigned> t(TableLength(b));
         for (size_t i = 0; i < t.size(); ++i) t[i] = static_cast<unsigned>(t.size() - 1 - i);
         return Q_RemapBitmapIntensity(b, t.data(), static_cast<unsigned>(t.size()), 0, f);
       },
       true, false},
      {"remap hue",
       [](BITMAPHANDLE* b, unsigned f) {
         std::vector<unsigned> v(TableLength(b));
         for (size_t i = 0; i < v.size(); ++i) v[i] = static_cast<unsigned>(i / 2);
         return Q_RemapBitmapHue(b, nullptr, nullptr, nullptr, v.data(), static_cast<unsigned>(v.size()), f);
       },
       true, false},
      {"local histo",
       [](BITMAPHANDLE* b, unsigned f) { return Q_LocalHistoEqualizeBitmap(b, 6, 5, 2, 2, QV_LHE_RGB, 2, f); }, true,
       true},
  };
  return ops;
}

bool IsColorOnly(const std::string& name) { return name == "colored gray" || name == "balance"; }

TEST(Regions, PixelsOutsideStayByteForByte) {
  // A mask region with holes, inside a bounding rectangle away from the edges, then across the full width.
  const int w = 40, h = 30;
  for (const RECT bounds : {RECT{5, 4, 33, 25}, RECT{0, 4, w, 25}}) {
    std::vector<uint8_t> mask((bounds.right - bounds.left) * (bounds.bottom - bounds.top));
    for (size_t i = 0; i < mask.size(); ++i) mask[i] = (i % 7 < 4) ? 1 : 0;
    for (const Format& f : AllFormats()) {
      if (f.bits <= 8 && f.order != QV_ORDER_GRAY) continue;  // indexed: refused, see below
      for (const Op& op : Ops()) {
        if ((IsColorOnly(op.name) && f.order == QV_ORDER_GRAY) || (f.isSigned && !op.acceptsSigned)) continue;
        TestBitmap t(f, w, h, 3);
        ASSERT_EQ(Q_SetBitmapRgnMask(t.get(), &bounds, mask.data(), bounds.right - bounds.left, 0), QV_SUCCESS);
        TestBitmap before(f, w, h, 3);
        ASSERT_EQ(op.call(t.get(), 0), QV_SUCCESS) << op.name << " on " << f.name;
        int changedInside = 0;
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) {
            const bool inBox = x >= bounds.left && x < bounds.right && y >= bounds.top && y < bounds.bottom;
            const bool inside = inBox && mask[(y - bounds.top) * (bounds.right - bounds.left) + (x - bounds.left)];
            if (!inside) {
              ASSERT_EQ(t.PixelBytes(x, y), before.PixelBytes(x, y))
                  << op.name << " on " << f.name << " changed " << x << "," << y << " outside the region";
            } else {
              changedInside += t.PixelBytes(x, y) != before.PixelBytes(x, y);
            }
          }
        if (op.changesGray || f.order != QV_ORDER_GRAY) {
          EXPECT_GT(changedInside, 0) << op.name << " on " << f.name << " changed nothing inside the region";
        }
      }
    }
  }
}

TEST(Regions, IndexedImagesWithARegionAreRefusedUntouched) {
  const Format indexed{"Indexed8", 8, QV_ORDER_BGR, false};
  for (const Op& op : Ops()) {
    TestBitmap t(indexed, 16, 16);
    const RECT r{2, 2, 9, 9};
    ASSERT_EQ(Q_SetBitmapRgnRect(t.get(), &r, 0), QV_SUCCESS);
    const Snapshot before(t);
    EXPECT_EQ(op.call(t.get(), 0), QV_ERROR_UNSUPPORTED_FORMAT) << op.name;
    EXPECT_EQ(0, std::memcmp(t.b().Palette, before.palette.data(), sizeof(RGBQUAD) * before.palette.size())) << op.name;
  }
}

TEST(ArgumentChecks, EveryOperationRefusesBadBitmapsAndFlags) {
  const Format bgr24{"Bgr24", 24, QV_ORDER_BGR, false};
  for (const Op& op : Ops()) {
    EXPECT_EQ(op.call(nullptr, 0), QV_ERROR_INVALID_PARAMETER) << op.name;
    BITMAPHANDLE unallocated;
    ASSERT_EQ(Q_InitBitmap(&unallocated, sizeof unallocated, 8, 8, 24, 0), QV_SUCCESS);
    EXPECT_EQ(op.call(&unallocated, 0), QV_ERROR_BITMAP_NOT_ALLOCATED) << op.name;
    TestBitmap t(bgr24, 8, 8);
    const Snapshot before(t);
    t.get()->uStructSize = sizeof(BITMAPHANDLE) - 8;
    EXPECT_EQ(op.call(t.get(), 0), QV_ERROR_INVALID_STRUCT_SIZE) << op.name;
    t.get()->uStructSize = sizeof(BITMAPHANDLE);
    EXPECT_EQ(op.call(t.get(), 0x80000000u), QV_ERROR_INVALID_FLAGS) << op.name;
    EXPECT_EQ(t.Pixels(), before.pixels) << op.name;
  }
}

TEST(ArgumentChecks, SignedGrayIsRefusedWhereNoSignedRuleExists) {
  for (const char* name : {"SignedGray12", "SignedGray16"}) {
    const Format f{name, name[10] == '1' ? 12 : 16, QV_ORDER_GRAY, true};
    for (const Op& op : Ops()) {
      TestBitmap t(f, 8, 8);
      const Snapshot before(t);
      const int rc = op.call(t.get(), 0);
      if (op.acceptsSigned) {
        EXPECT_EQ(rc, QV_SUCCESS) << op.name << " on " << name;
      } else {
        EXPECT_EQ(rc, QV_ERROR_UNSUPPORTED_FORMAT) << op.name << " on " << name;
        EXPECT_EQ(t.Pixels(), before.pixels) << op.name;
      }
    }
  }
}

TEST(ArgumentChecks, OutOfRangeValuesAndTablesLeaveTheBitmap) {
  const Format gray16{"Gray16", 16, QV_ORDER_GRAY, false}, bgr24{"Bgr24", 24, QV_ORDER_BGR, false};
  std::vector<unsigned> t256(256), t65536(65536);
  const QVBALANCINGRECORD wrongSize{27, 1, 0, 0}, huge{28, 17, 0, 0}, nan{28, 0, 0, std::nan("")};
  struct Bad {
    const Format* format;
    std::string what;
    Call call;
    int expected;
  };
  const std::vector<Bad> bad = {
      {&bgr24, "brightness 1001", [](BITMAPHANDLE* b, unsigned) { return Q_ChangeBitmapIntensity(b, 1001, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "brightness -1001", [](BITMAPHANDLE* b, unsigned) { return Q_ChangeBitmapIntensity(b, -1001, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "contrast 1001", [](BITMAPHANDLE* b, unsigned) { return Q_ChangeBitmapContrast(b, 1001, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "hue 361", [](BITMAPHANDLE* b, unsigned) { return Q_ChangeBitmapHue(b, 361, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "saturation -1001", [](BITMAPHANDLE* b, unsigned) { return Q_ChangeBitmapSaturation(b, -1001, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "histo 2000", [](BITMAPHANDLE* b, unsigned) { return Q_HistoContrastBitmap(b, 2000, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "histo center 256 on 8 bits",
       [](BITMAPHANDLE* b, unsigned) { return Q_HistoContrastBitmapExt(b, 100, 256, 0); }, QV_ERROR_INVALID_PARAMETER},
      {&gray16, "histo center -1", [](BITMAPHANDLE* b, unsigned) { return Q_HistoContrastBitmapExt(b, 100, -1, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "posterize 1", [](BITMAPHANDLE* b, unsigned) { return Q_PosterizeBitmap(b, 1, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "posterize 65", [](BITMAPHANDLE* b, unsigned) { return Q_PosterizeBitmap(b, 65, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "solarize 256 on 8 bits", [](BITMAPHANDLE* b, unsigned) { return Q_SolarizeBitmap(b, 256, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&gray16, "solarize 65536", [](BITMAPHANDLE* b, unsigned) { return Q_SolarizeBitmap(b, 65536, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "gamma 0", [](BITMAPHANDLE* b, unsigned) { return Q_GammaCorrectBitmapExt(b, 0, 100, 100, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "gamma 1001", [](BITMAPHANDLE* b, unsigned) { return Q_GammaCorrectBitmapExt(b, 100, 100, 1001, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&gray16, "signed gamma 0", [](BITMAPHANDLE* b, unsigned) { return Q_GammaCorrectBitmapSigned(b, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "detect high 256",
       [](BITMAPHANDLE* b, unsigned) { return Q_IntensityDetectBitmap(b, 0, 256, 0, 0, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "detect channel 0x1000",
       [](BITMAPHANDLE* b, unsigned) { return Q_IntensityDetectBitmap(b, 0, 25, 0, 0, 0x1000, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "gray weights 300x3",
       [](BITMAPHANDLE* b, unsigned) { return Q_GrayScaleBitmapExt(b, 300, 300, 300, 0); }, QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "gray weights 1200,-200,0",
       [](BITMAPHANDLE* b, unsigned) { return Q_GrayScaleBitmapExt(b, 1200, -200, 0, 0); }, QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "colored gray tint 1001",
       [](BITMAPHANDLE* b, unsigned) { return Q_ConvertToColoredGray(b, 299, 587, 114, 0, 1001, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&gray16, "colored gray on gray",
       [](BITMAPHANDLE* b, unsigned) { return Q_ConvertToColoredGray(b, 299, 587, 114, 0, 0, 0, 0); },
       QV_ERROR_UNSUPPORTED_FORMAT},
      {&gray16, "balance on gray",
       [](BITMAPHANDLE* b, unsigned) { return Q_BalanceColors(b, &kRed, &kGreen, &kBlue, 0); },
       QV_ERROR_UNSUPPORTED_FORMAT},
      {&bgr24, "balance null record",
       [](BITMAPHANDLE* b, unsigned) { return Q_BalanceColors(b, &kRed, nullptr, &kBlue, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "balance record size 27",
       [&](BITMAPHANDLE* b, unsigned) { return Q_BalanceColors(b, &kRed, &wrongSize, &kBlue, 0); },
       QV_ERROR_INVALID_STRUCT_SIZE},
      {&bgr24, "balance weight 17",
       [&](BITMAPHANDLE* b, unsigned) { return Q_BalanceColors(b, &huge, &kGreen, &kBlue, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "balance weight NaN",
       [&](BITMAPHANDLE* b, unsigned) { return Q_BalanceColors(b, &kRed, &kGreen, &nan, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "local histo tile width 0",
       [](BITMAPHANDLE* b, unsigned) { return Q_LocalHistoEqualizeBitmap(b, 0, 4, 0, 0, 1, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "local histo tile height -1",
       [](BITMAPHANDLE* b, unsigned) { return Q_LocalHistoEqualizeBitmap(b, 4, -1, 0, 0, 1, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "local histo x extension -1",
       [](BITMAPHANDLE* b, unsigned) { return Q_LocalHistoEqualizeBitmap(b, 4, 4, -1, 0, 1, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "local histo y extension -5",
       [](BITMAPHANDLE* b, unsigned) { return Q_LocalHistoEqualizeBitmap(b, 4, 4, 0, -5, 1, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "local histo color space 0",
       [](BITMAPHANDLE* b, unsigned) { return Q_LocalHistoEqualizeBitmap(b, 4, 4, 0, 0, 0, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "local histo color space 3",
       [](BITMAPHANDLE* b, unsigned) { return Q_LocalHistoEqualizeBitmap(b, 4, 4, 0, 0, 3, 0, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "local histo smoothing 10",
       [](BITMAPHANDLE* b, unsigned) { return Q_LocalHistoEqualizeBitmap(b, 4, 4, 0, 0, 1, 10, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "remap null table",
       [](BITMAPHANDLE* b, unsigned) { return Q_RemapBitmapIntensity(b, nullptr, 256, 0, 0); }, QV_ERROR_INVALID_TABLE},
      {&bgr24, "remap 65536 on 8 bits",
       [&](BITMAPHANDLE* b, unsigned) { return Q_RemapBitmapIntensity(b, t65536.data(), 65536, 0, 0); },
       QV_ERROR_INVALID_TABLE},
      {&gray16, "remap 256 on 16 bits",
       [&](BITMAPHANDLE* b, unsigned) { return Q_RemapBitmapIntensity(b, t256.data(), 256, 0, 0); },
       QV_ERROR_INVALID_TABLE},
      {&bgr24, "remap channel 4",
       [&](BITMAPHANDLE* b, unsigned) { return Q_RemapBitmapIntensity(b, t256.data(), 256, 4, 0); },
       QV_ERROR_INVALID_PARAMETER},
      {&bgr24, "remap hue 4096 on 8 bits",
       [&](BITMAPHANDLE* b, unsigned) {
         return Q_RemapBitmapHue(b, nullptr, t65536.data(), nullptr, nullptr, 4096, 0);
       },
       QV_ERROR_INVALID_TABLE},
      {&bgr24, "remap hue unmapped mask",
       [&](BITMAPHANDLE* b, unsigned) {
         return Q_RemapBitmapHue(b, reinterpret_cast<const unsigned*>(16), nullptr, nullptr, nullptr, 256, 0);
       },
       QV_ERROR_INVALID_TABLE},
  };
  for (const Bad& c : bad) {
    TestBitmap t(*c.format, 9, 5);
    const Snapshot before(t);
    EXPECT_EQ(c.call(t.get(), 0), c.expected) << c.what;
    EXPECT_EQ(t.Pixels(), before.pixels) << c.what;
  }
}

struct Progress {
  std::vector<int> seen;
  int stopAt = 1000;
};

int Record(int percent, void* user) {
  auto* p = static_cast<Progress*>(user);
  p->seen.push_back(percent);
  return percent >= p->stopAt ? QV_ERROR_USER_ABORT : QV_SUCCESS;
}

TEST(StatusCallback, ReportsProgressAndStopsWhenAsked) {
  const Format bgr24{"Bgr24", 24, QV_ORDER_BGR, false};
  for (const Op& op : Ops()) {
    TestBitmap t(bgr24, 256, 512);
    Progress progress;
    ASSERT_EQ(Q_SetStatusCallBack(Record, &progress, 0), QV_SUCCESS);
    EXPECT_EQ(op.call(t.get(), 0), QV_SUCCESS) << op.name;
    ASSERT_FALSE(progress.seen.empty()) << op.name;
    EXPECT_EQ(progress.seen.back(), 100) << op.name;
    for (size_t i = 1; i < progress.seen.size(); ++i)
      if (progress.seen[i] < progress.seen[i - 1] && progress.seen[i] != 0) ADD_FAILURE() << op.name << " went back";

    Progress stop;
    stop.stopAt = 0;
    ASSERT_EQ(Q_SetStatusCallBack(Record, &stop, 0), QV_SUCCESS);
    EXPECT_EQ(op.call(t.get(), 0), QV_ERROR_USER_ABORT) << op.name;
    ASSERT_EQ(Q_SetStatusCallBack(nullptr, nullptr, 0), QV_SUCCESS);
  }
}

}  // namespace
}  // namespace opstest
