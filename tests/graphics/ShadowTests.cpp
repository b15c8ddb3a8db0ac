#include <gtest/gtest.h>

#include <cmath>

#include "Canvas.h"
#include "NSAffineTransform.h"
#include "NSBezierPath.h"
#include "NSShadow.h"

namespace {

void setShadow(Pixel color, NSSize offset, float blurRadius) {
  NSShadow shadow;
  shadow.setShadowColor(colorOf(color));
  shadow.setShadowOffset(offset);
  shadow.setShadowBlurRadius(blurRadius);
  shadow.set();
}

}  // namespace

TEST(Shadow, FallsDownOnTheScreenInScaledPixelsWhateverTheMatrix) {
  const std::pair<float, int> cases[] = {{0.0f, 1}, {0.0f, 2}, {90.0f, 1}, {180.0f, 2}};
  for (const auto& [degrees, scale] : cases) {
    const Bitmap bitmap = painted({60, 60}, static_cast<float>(scale), [&, turn = degrees] {
      NSGraphicsContext::saveGraphicsState();
      setShadow(blue, {5, -6}, 0);
      auto transform = NSAffineTransform::transform();
      transform.translateXBy_yBy(30, 30);
      transform.rotateByDegrees(turn);
      transform.concat();
      colorOf(red)->set();
      NSBezierPath::fillRect(NSMakeRect(12, 12, 4, 4));
      NSGraphicsContext::restoreGraphicsState();
      NSBezierPath::fillRect(NSMakeRect(0, 36, 2, 2));  // throws none any more
    });
    const auto boundsOf = [&](Pixel color) {
      return boundsWhere(bitmap, [color](const Pixel& pixel) { return pixel == color; });
    };
    auto expected = boundsOf(red);
    ASSERT_EQ(expected[2] - expected[0], 4 * scale);
    for (size_t i = 0; i < 4; ++i) expected[i] += (i % 2 ? 6 : 5) * scale;
    EXPECT_EQ(boundsOf(blue), expected) << degrees << " at scale " << scale;
  }
}

TEST(Shadow, TakesTheShapesAlphaTimesItsColours) {
  const Bitmap bitmap = painted({20, 20}, 1, [] {
    setShadow({0, 0, 255, 128}, {0, -10}, 0);
    colorOf(red)->colorWithAlphaComponent(0.5f)->set();
    NSBezierPath::fillRect(NSMakeRect(0, 10, 20, 10));
  });
  EXPECT_NEAR(at(bitmap, 10, 5)[3], 64, 1);
  EXPECT_NEAR(at(bitmap, 10, 15)[3], 128, 1);  // the shape itself lies in no shadow
}

TEST(Shadow, BlurIsAGaussianOfHalfTheRadius) {
  const std::pair<float, int> cases[] = {{1.0f, 1}, {7.0f, 2}, {16.0f, 1}};
  for (const auto& [radius, scale] : cases) {
    const Bitmap bitmap = painted({120, 120}, static_cast<float>(scale), [&, r = radius] {
      setShadow(blue, {0, -70}, r);
      NSBezierPath::fillRect(NSMakeRect(-60, 120, 240, 60));  // its shadow's edges are at 110 and 50
    });
    const double sigma = radius / 2 * static_cast<float>(scale);
    for (int pixel = -20; pixel < 20; ++pixel) {  // downwards from the lower edge
      const double share = 0.5 * std::erfc((pixel + 0.5) / (sigma * std::sqrt(2.0)));
      EXPECT_NEAR(bitmap.pixel(60 * scale, 70 * scale + pixel)[3], 255 * share, 8) << radius << " " << pixel;
    }
  }
}
