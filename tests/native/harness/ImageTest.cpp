/*
 * Captured-pixel queries: the colour counts, near-colour shares, crops and
 * point reads that decide whether a screenshot shows what a test expects.
 */
#include <gtest/gtest.h>

#include "qvdriver/Image.h"

namespace qv::test {
namespace {

// A 4x3 image: columns 0-1 red, column 2 green, column 3 blue; row 2 has a
// dark red pixel at (0,2).
Image Sample() {
  Image image;
  image.width = 4;
  image.height = 3;
  for (int y = 0; y < 3; ++y) {
    image.pixels.push_back(Bgra{0, 0, 255, 255});
    image.pixels.push_back(Bgra{0, 0, 255, 255});
    image.pixels.push_back(Bgra{0, 255, 0, 255});
    image.pixels.push_back(Bgra{255, 0, 0, 255});
  }
  image.pixels[8] = Bgra{0, 0, 250, 0};
  return image;
}

TEST(CapturedImage, PointReadsAreRowMajorAndOutsidePointsAreBlack) {
  const Image image = Sample();
  EXPECT_TRUE(image.At(2, 1).SameColor(Bgra{0, 255, 0}));
  EXPECT_TRUE(image.At(3, 0).SameColor(Bgra{255, 0, 0}));
  EXPECT_EQ(image.At(0, 2).r, 250);
  for (auto [x, y] : {std::pair{-1, 0}, {4, 0}, {0, -1}, {0, 3}, {1 << 30, 1 << 30}}) {
    Bgra p = image.At(x, y);
    EXPECT_EQ(p.r + p.g + p.b + p.a, 0) << x << "," << y;
  }
  EXPECT_EQ(Image{}.At(0, 0).a, 0);
}

TEST(CapturedImage, ColourCountIgnoresAlphaAndStopsAtTheLimit) {
  const Image image = Sample();
  EXPECT_EQ(image.CountColors(), 4u);
  EXPECT_EQ(image.CountColors(2), 2u);
  Image flat;
  flat.width = 2;
  flat.height = 1;
  flat.pixels = {Bgra{7, 7, 7, 0}, Bgra{7, 7, 7, 255}};
  EXPECT_EQ(flat.CountColors(), 1u) << "alpha must not make two colours";
  EXPECT_TRUE(flat.IsBlank());
  EXPECT_FALSE(image.IsBlank());
  EXPECT_TRUE(Image{}.IsBlank());
  EXPECT_TRUE(Image{}.Empty());
}

TEST(CapturedImage, ShareNearCountsWithinToleranceOnEveryChannel) {
  const Image image = Sample();
  EXPECT_DOUBLE_EQ(image.ShareNear(Bgra{0, 0, 255}, 0), 5.0 / 12.0);
  EXPECT_DOUBLE_EQ(image.ShareNear(Bgra{0, 0, 255}, 5), 6.0 / 12.0) << "250 is within 5 of 255";
  EXPECT_DOUBLE_EQ(image.ShareNear(Bgra{0, 0, 255}, 4), 5.0 / 12.0) << "but not within 4";
  EXPECT_DOUBLE_EQ(image.ShareNear(Bgra{0, 128, 128}, 127), 0.0) << "green and red channels both checked";
  EXPECT_DOUBLE_EQ(Image{}.ShareNear(Bgra{}, 255), 0.0);
}

TEST(CapturedImage, CropsAreClippedToTheImage) {
  const Image image = Sample();
  struct Case {
    int x0, y0, x1, y1;
    int width, height;
    Bgra topLeft;
  };
  const Case cases[] = {
      {2, 0, 4, 3, 2, 3, Bgra{0, 255, 0}}, {-5, -5, 1, 1, 1, 1, Bgra{0, 0, 255}}, {3, 2, 99, 99, 1, 1, Bgra{255, 0, 0}},
      {3, 1, 1, 2, 0, 1, Bgra{}},          {10, 10, 20, 20, 0, 0, Bgra{}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.x0 << "," << c.y0 << " .. " << c.x1 << "," << c.y1);
    Image crop = image.Crop(c.x0, c.y0, c.x1, c.y1);
    EXPECT_EQ(crop.width, c.width);
    EXPECT_EQ(crop.height, c.height);
    ASSERT_EQ(crop.pixels.size(), static_cast<size_t>(c.width) * c.height);
    if (!crop.Empty()) {
      EXPECT_TRUE(crop.At(0, 0).SameColor(c.topLeft));
    }
  }
  Image bottom = image.Crop(0, 2, 4, 3);
  EXPECT_EQ(bottom.At(0, 0).r, 250) << "rows are taken from the right place";
}

}  // namespace
}  // namespace qv::test
