/*
 * The color conversions: known anchor colors, agreement of the Lab transform
 * with lcms2 (as a reference only), stability of every model under a round
 * trip through RGB, and refusal of bad records.
 */
#include <gtest/gtest.h>
#include <lcms2.h>

#include <cmath>
#include <cstdlib>
#include <tuple>

#include "ColorModels.h"
#include "LabConverter.h"
#include "qv/qvdlgkrn.h"

namespace {

bool operator==(const QVRGB& a, const QVRGB& b) {
  return a.nRed == b.nRed && a.nGreen == b.nGreen && a.nBlue == b.nBlue;
}

double DeltaE(const cmsCIELab& a, const cmsCIELab& b) {
  return std::sqrt((a.L - b.L) * (a.L - b.L) + (a.a - b.a) * (a.a - b.a) + (a.b - b.b) * (a.b - b.b));
}

// sRGB <-> Lab (D50) transforms of lcms2, released with the fixture.
class LcmsReference : public ::testing::Test {
 protected:
  void SetUp() override {
    cmsHPROFILE srgb = cmsCreate_sRGBProfile();
    cmsHPROFILE lab = cmsCreateLab4Profile(nullptr);
    m_toLab = cmsCreateTransform(srgb, TYPE_RGB_DBL, lab, TYPE_Lab_DBL, INTENT_RELATIVE_COLORIMETRIC,
                                 cmsFLAGS_NOOPTIMIZE);
    m_fromLab = cmsCreateTransform(lab, TYPE_Lab_DBL, srgb, TYPE_RGB_DBL, INTENT_RELATIVE_COLORIMETRIC,
                                   cmsFLAGS_NOOPTIMIZE);
    cmsCloseProfile(srgb);
    cmsCloseProfile(lab);
    ASSERT_NE(m_toLab, nullptr);
    ASSERT_NE(m_fromLab, nullptr);
  }
  void TearDown() override {
    if (m_toLab) cmsDeleteTransform(m_toLab);
    if (m_fromLab) cmsDeleteTransform(m_fromLab);
  }
  cmsCIELab ReferenceLab(double r, double g, double b) const {
    const double rgb[3] = {r, g, b};
    cmsCIELab lab;
    cmsDoTransform(m_toLab, rgb, &lab, 1);
    return lab;
  }
  void ReferenceRgb(const cmsCIELab& lab, double rgb[3]) const { cmsDoTransform(m_fromLab, &lab, rgb, 1); }

  cmsHTRANSFORM m_toLab = nullptr;
  cmsHTRANSFORM m_fromLab = nullptr;
};

}  // namespace

TEST(ColorModels, AnchorColors) {
  struct Case {
    QVRGB rgb;
    QVHSB hsb;
    QVHLS hls;
    QVCMYK cmyk;
  };
  const Case cases[] = {
      {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0, 100}},
      {{255, 255, 255}, {0, 0, 100}, {0, 100, 0}, {0, 0, 0, 0}},
      {{255, 0, 0}, {0, 100, 100}, {0, 50, 100}, {0, 100, 100, 0}},
      {{0, 255, 0}, {120, 100, 100}, {120, 50, 100}, {100, 0, 100, 0}},
      {{0, 0, 255}, {240, 100, 100}, {240, 50, 100}, {100, 100, 0, 0}},
      {{255, 255, 0}, {60, 100, 100}, {60, 50, 100}, {0, 0, 100, 0}},
      {{128, 0, 128}, {300, 100, 50}, {300, 25, 100}, {0, 100, 0, 50}},
      {{255, 128, 128}, {0, 50, 100}, {0, 75, 100}, {0, 50, 50, 0}},
      {{102, 51, 153}, {270, 67, 60}, {270, 40, 50}, {33, 67, 0, 40}},
  };
  for (const auto& c : cases) {
    QVHSB hsb{};
    QVHLS hls{};
    QVCMYK cmyk{};
    QVCMY cmy{};
    ASSERT_EQ(Q_DlgRGBToHSB(&c.rgb, &hsb), QV_SUCCESS);
    ASSERT_EQ(Q_DlgRGBToHLS(&c.rgb, &hls), QV_SUCCESS);
    ASSERT_EQ(Q_DlgRGBToCMYK(&c.rgb, &cmyk), QV_SUCCESS);
    ASSERT_EQ(Q_DlgRGBToCMY(&c.rgb, &cmy), QV_SUCCESS);
    SCOPED_TRACE(testing::Message() << c.rgb.nRed << "," << c.rgb.nGreen << "," << c.rgb.nBlue);
    EXPECT_EQ(std::tie(hsb.nHue, hsb.nSaturation, hsb.nBrightness),
              std::tie(c.hsb.nHue, c.hsb.nSaturation, c.hsb.nBrightness));
    EXPECT_EQ(std::tie(hls.nHue, hls.nLightness, hls.nSaturation),
              std::tie(c.hls.nHue, c.hls.nLightness, c.hls.nSaturation));
    EXPECT_EQ(std::tie(cmyk.nCyan, cmyk.nMagenta, cmyk.nYellow, cmyk.nBlack),
              std::tie(c.cmyk.nCyan, c.cmyk.nMagenta, c.cmyk.nYellow, c.cmyk.nBlack));
    EXPECT_EQ(std::make_tuple(cmy.nCyan, cmy.nMagenta, cmy.nYellow),
              std::make_tuple(255 - c.rgb.nRed, 255 - c.rgb.nGreen, 255 - c.rgb.nBlue));
  }
  // A hue just below red must wrap to 0, never come out as 360.
  const QVRGB nearlyRed{255, 0, 1};
  QVHSB hsb{};
  ASSERT_EQ(Q_DlgRGBToHSB(&nearlyRed, &hsb), QV_SUCCESS);
  EXPECT_EQ(hsb.nHue, 0);
}

TEST_F(LcmsReference, RgbToLabAgreesWithin_0_5_DeltaE) {
  const auto& converter = qv::LabConverter::Instance();
  double worst = 0.0;
  for (int r = 0; r <= 255; r += 15)
    for (int g = 0; g <= 255; g += 15)
      for (int b = 0; b <= 255; b += 15) {
        const cmsCIELab reference = ReferenceLab(r / 255.0, g / 255.0, b / 255.0);
        const qv::LabValue ours = converter.ToLab(r / 255.0, g / 255.0, b / 255.0);
        const double dE = DeltaE(reference, cmsCIELab{ours.L, ours.a, ours.b});
        worst = std::max(worst, dE);
        ASSERT_LE(dE, 0.5) << r << "," << g << "," << b;
        // The exported record is the exact value rounded.
        const QVRGB rgb{r, g, b};
        QVLAB lab{};
        ASSERT_EQ(Q_DlgRGBToLab(&rgb, &lab), QV_SUCCESS);
        EXPECT_LE(std::abs(lab.nL - static_cast<int>(std::lround(reference.L))), 1);
        EXPECT_LE(std::abs(lab.nA - static_cast<int>(std::lround(reference.a))), 1);
        EXPECT_LE(std::abs(lab.nB - static_cast<int>(std::lround(reference.b))), 1);
      }
  std::printf("worst RGB->Lab difference from lcms2: %.4f dE\n", worst);
}

TEST_F(LcmsReference, LabToRgbAgreesWithin_0_5_DeltaE) {
  const auto& converter = qv::LabConverter::Instance();
  double worst = 0.0;
  int inGamutCount = 0;
  for (int L = 0; L <= 100; L += 5)
    for (int a = -120; a <= 120; a += 10)
      for (int b = -120; b <= 120; b += 10) {
        double reference[3];
        ReferenceRgb(cmsCIELab{double(L), double(a), double(b)}, reference);
        double r, g, bl;
        converter.FromLab(qv::LabValue{double(L), double(a), double(b)}, r, g, bl);
        // Out of gamut both sides clip; compare the colors they would show.
        auto clip = [](double v) { return std::min(1.0, std::max(0.0, v)); };
        const cmsCIELab refShown = ReferenceLab(clip(reference[0]), clip(reference[1]), clip(reference[2]));
        const cmsCIELab ourShown = ReferenceLab(clip(r), clip(g), clip(bl));
        const double dE = DeltaE(refShown, ourShown);
        worst = std::max(worst, dE);
        ASSERT_LE(dE, 0.5) << L << "," << a << "," << b;
        // Inside the gamut the exported record is the reference rounded.
        const bool inGamut = clip(reference[0]) == reference[0] && clip(reference[1]) == reference[1] &&
                             clip(reference[2]) == reference[2];
        const QVLAB lab{L, a, b};
        QVRGB rgb{};
        ASSERT_EQ(Q_DlgLabToRGB(&lab, &rgb), QV_SUCCESS);
        if (inGamut) {
          ++inGamutCount;
          EXPECT_LE(std::abs(rgb.nRed - static_cast<int>(std::lround(reference[0] * 255))), 1);
          EXPECT_LE(std::abs(rgb.nGreen - static_cast<int>(std::lround(reference[1] * 255))), 1);
          EXPECT_LE(std::abs(rgb.nBlue - static_cast<int>(std::lround(reference[2] * 255))), 1);
        }
      }
  EXPECT_GT(inGamutCount, 500) << "the grid must reach into the gamut";
  std::printf("worst Lab->RGB difference from lcms2: %.4f dE (%d grid points in gamut)\n", worst, inGamutCount);
}

// A value shown in a model, converted to RGB and back, must come back within one unit, so that the color
// picker's numbers do not drift; hue only where one degree is representable in 8-bit RGB, saturation only away
// from black. The models' own functions are used: each export's argument probe is far too slow for the grid.
TEST(ColorModels, EveryModelRoundTripsThroughRgbWithinOneUnit) {
  auto near = [](int a, int b) { return std::abs(a - b) <= 1; };
  auto nearHue = [](int a, int b) {
    const int d = std::abs(a - b) % 360;
    return std::min(d, 360 - d) <= 1;
  };
  for (int r = 0; r <= 255; r += 5)
    for (int g = 0; g <= 255; g += 5)
      for (int b = 0; b <= 255; b += 5) {
        SCOPED_TRACE(testing::Message() << r << "," << g << "," << b);
        const QVRGB rgb{r, g, b};
        const int maxV = std::max({r, g, b}), minV = std::min({r, g, b});
        const bool hueStable = maxV - minV >= 64;
        const QVHSB hsb = qv::RgbToHsb(rgb), hsb2 = qv::RgbToHsb(qv::HsbToRgb(hsb));
        EXPECT_TRUE(near(hsb.nBrightness, hsb2.nBrightness));
        EXPECT_TRUE(maxV < 64 || near(hsb.nSaturation, hsb2.nSaturation));
        EXPECT_TRUE(!hueStable || nearHue(hsb.nHue, hsb2.nHue)) << hsb.nHue << " vs " << hsb2.nHue;

        const QVHLS hls = qv::RgbToHls(rgb), hls2 = qv::RgbToHls(qv::HlsToRgb(hls));
        EXPECT_TRUE(near(hls.nLightness, hls2.nLightness));
        EXPECT_TRUE(!hueStable || (near(hls.nSaturation, hls2.nSaturation) && nearHue(hls.nHue, hls2.nHue)));

        EXPECT_TRUE(qv::CmyToRgb(qv::RgbToCmy(rgb)) == rgb);

        const QVCMYK cmyk = qv::RgbToCmyk(rgb), cmyk2 = qv::RgbToCmyk(qv::CmykToRgb(cmyk));
        EXPECT_TRUE(near(cmyk.nBlack, cmyk2.nBlack));
        EXPECT_TRUE(maxV < 64 || (near(cmyk.nCyan, cmyk2.nCyan) && near(cmyk.nMagenta, cmyk2.nMagenta) &&
                                  near(cmyk.nYellow, cmyk2.nYellow)));

        const auto& lc = qv::LabConverter::Instance();
        const QVLAB lab = lc.ToLab(rgb), lab2 = lc.ToLab(lc.FromLab(lab));
        EXPECT_TRUE(near(lab.nL, lab2.nL) && near(lab.nA, lab2.nA) && near(lab.nB, lab2.nB))
            << lab.nL << "," << lab.nA << "," << lab.nB << " vs " << lab2.nL << "," << lab2.nA << "," << lab2.nB;
      }
}

TEST(ColorModels, BadRecordsAreRefusedAndLeaveTheOutputAlone) {
  const QVRGB sentinel{-7, -7, -7};
  QVRGB out = sentinel;
  const QVHSB badHsb[] = {{360, 50, 50}, {-1, 50, 50}, {0, 101, 50}, {0, 50, -1}};
  for (const auto& c : badHsb) EXPECT_EQ(Q_DlgHSBToRGB(&c, &out), QV_ERROR_INVALID_PARAMETER);
  const QVHLS badHls{10, 101, 0};
  EXPECT_EQ(Q_DlgHLSToRGB(&badHls, &out), QV_ERROR_INVALID_PARAMETER);
  const QVCMY badCmy{256, 0, 0};
  EXPECT_EQ(Q_DlgCMYToRGB(&badCmy, &out), QV_ERROR_INVALID_PARAMETER);
  const QVCMYK badCmyk{0, 0, 0, 101};
  EXPECT_EQ(Q_DlgCMYKToRGB(&badCmyk, &out), QV_ERROR_INVALID_PARAMETER);
  const QVLAB badLab[] = {{101, 0, 0}, {50, 128, 0}, {50, 0, -129}};
  for (const auto& c : badLab) EXPECT_EQ(Q_DlgLabToRGB(&c, &out), QV_ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(out == sentinel);

  const QVRGB badRgb{0, 256, 0};
  QVLAB lab{1, 2, 3};
  EXPECT_EQ(Q_DlgRGBToLab(&badRgb, &lab), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lab.nL, 1);
  const QVRGB good{10, 20, 30};
  EXPECT_EQ(Q_DlgRGBToLab(nullptr, &lab), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgRGBToLab(&good, nullptr), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgRGBToHSB(reinterpret_cast<const QVRGB*>(0x10), nullptr), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgRGBToCMYK(&good, reinterpret_cast<QVCMYK*>(0x10)), QV_ERROR_INVALID_PARAMETER);
}
