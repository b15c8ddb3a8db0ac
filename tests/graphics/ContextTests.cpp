#include <gtest/gtest.h>

#include "Canvas.h"
#include "LogLines.h"
#include "NSBezierPath.h"
#include "NSException.h"
#include "NSImage.h"

TEST(GraphicsState, ASaveKeepsTheClipAndARestoreWithoutItThrows) {
  LogLines log;
  const Bitmap bitmap = painted({2, 2}, 1, [] {
    NSBezierPath::bezierPathWithRect(NSMakeRect(0, 0, 1, 2))->addClip();
    NSGraphicsContext::saveGraphicsState();
    NSBezierPath::fillRect(NSMakeRect(0, 0, 2, 1));
    NSGraphicsContext::restoreGraphicsState();
    EXPECT_THROW(NSGraphicsContext::restoreGraphicsState(), NSException);
    NSBezierPath::fillRect(NSMakeRect(0, 1, 2, 1));
  });
  EXPECT_EQ(log.count("*** Assertion failure"), 1);
  EXPECT_EQ(letters(bitmap), (std::vector<std::string>{"k.", "k."}));
}

TEST(Focus, DrawingIntoAnImageLeavesTheContextRoundItAloneAndSuitsItsScale) {
  const auto image = NSImage::initWithSize({2, 2});
  float scale = 0;
  int drawings = 0;
  image->lockFocus([&] {
    scale = NSGraphicsContext::currentContext()->scale();
    ++drawings;
    NSBezierPath::fillRect(NSMakeRect(0, 0, 1, 2));  // a fresh state: black, no matrix
    NSGraphicsContext::currentContext()->translate(2, 0);
    colorOf(green)->set();
  });
  EXPECT_EQ(drawings, 0) << "nobody sees it yet";
  for (const float at : {1.0f, 2.0f, 1.0f}) {
    const Bitmap window = painted({4, 2}, at, [&] {
      colorOf(red)->set();
      NSGraphicsContext::currentContext()->translate(2, 0);
      image->drawInRect_fromRect_operation_fraction({{0, 0}, {2, 2}}, NSZeroRect, NSCompositeSourceOver, 1);
      NSBezierPath::fillRect(NSMakeRect(0, 0, 1, 1));
    });
    EXPECT_EQ(letters(window).front(), at == 1 ? "..k." : "....kk..");
    EXPECT_EQ(letters(window).back(), at == 1 ? "..r." : "....rr..");
  }
  EXPECT_EQ(scale, 2);
  EXPECT_EQ(drawings, 2) << "once for each scale";
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}
