#include <gtest/gtest.h>

#include "Canvas.h"
#include "NSGraphicsContext.h"
#include "NSImageUtils.h"

namespace {

TEST(Images, NinePiecesKeepTheirCornersAndLimitThemByTheTarget) {
  // Red grows by 4 a column, green by 4 a row: every pixel tells where it came from.
  const auto image = NSImage::initWithSize({60, 60});
  image->lockFocus([] {
    for (int y = 0; y < 60; ++y)
      for (int x = 0; x < 60; ++x) {
        vellColor_alpha(static_cast<uint32_t>(x * 4 << 16 | y * 4 << 8), 1)->set();
        NSBezierPath::fillRect(NSMakeRect(static_cast<float>(x), static_cast<float>(y), 1, 1));
      }
  });
  const struct {
    float side, place, from;  // of the target, in it and in the image
  } rows[] = {{30, 13, 13},      {30, 16, 46},      {30, 29, 59}, {100, 19, 19},
              {100, 35, 24.67f}, {100, 64, 34.33f}, {100, 80, 40}};
  for (const auto& [side, place, from] : rows) {
    const NSRect target = NSMakeRect(0, 0, side, side);
    const Bitmap picture = painted(target.size, 1, [&] {
      drawInRect_cornerSizeX_cornerSizeY_operation_fraction(*image, target, 20, 20, NSCompositeSourceOver, 1);
    });
    EXPECT_NEAR(at(picture, place, 2)[0], 4 * from, 2) << side << " at " << place;
    EXPECT_NEAR(at(picture, 2, place)[1], 4 * from, 2) << side << " at " << place;
  }
}

}  // namespace
