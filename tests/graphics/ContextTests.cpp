#include <gtest/gtest.h>

#include "Canvas.h"
#include "LogLines.h"
#include "NSBezierPath.h"
#include "NSException.h"
#include "NSImage.h"

namespace {

void fillAll(Pixel color) {
  colorOf(color)->set();
  NSBezierPath::fillRect(NSMakeRect(-100, -100, 200, 200));
}

}  // namespace

TEST(GraphicsState, AClipIsCutDownUntilItsStateIsRestored) {
  const Bitmap bitmap = painted({4, 4}, 1, [] {
    fillAll(white);
    NSGraphicsContext::saveGraphicsState();
    NSBezierPath::bezierPathWithRect(NSMakeRect(0, 0, 3, 3))->addClip();
    fillAll(red);
    NSGraphicsContext::saveGraphicsState();
    NSBezierPath::bezierPathWithRect(NSMakeRect(2, 2, 2, 2))->addClip();
    NSBezierPath::fillRect(NSMakeRect(0, 0, 4, 4));
    fillAll(green);
    NSGraphicsContext::restoreGraphicsState();
    NSBezierPath::fillRect(NSMakeRect(0, 0, 1, 4));  // red again, in the outer clip
    NSGraphicsContext::restoreGraphicsState();
    NSBezierPath::fillRect(NSMakeRect(3, 0, 1, 1));  // white again
  });
  EXPECT_EQ(letters(bitmap), (std::vector<std::string>{"wwww", "rrgw", "rrrw", "rrrw"}));
}

TEST(GraphicsState, ARestoreWithoutItsSaveThrowsAndLeavesTheContextUsable) {
  LogLines log;
  const Bitmap bitmap = painted({2, 2}, 1, [] {
    NSGraphicsContext::saveGraphicsState();
    NSGraphicsContext::restoreGraphicsState();
    EXPECT_THROW(NSGraphicsContext::restoreGraphicsState(), NSException);
    fillAll(red);
    EXPECT_THROW(NSImage::initWithSize({2, 2})->unlockFocus(), NSException);
  });
  EXPECT_EQ(log.count("*** Assertion failure"), 2);
  EXPECT_EQ(at(bitmap, 1, 1), red);
}

TEST(Focus, EndingAnInnerOneBringsBackTheContextRoundIt) {
  NSGraphicsContext::setImageScale(1);
  const auto outer = NSImage::initWithSize({4, 2}), inner = NSImage::initWithSize({2, 2});
  const Bitmap window = painted({8, 2}, 1, [&] {
    colorOf(red)->set();
    NSGraphicsContext::currentContext()->translate(6, 0);
    outer->lockFocus();
    NSGraphicsContext::currentContext()->translate(2, 0);
    colorOf(green)->set();
    inner->lockFocus();
    NSBezierPath::fillRect(NSMakeRect(0, 0, 1, 2));  // a fresh state: black, no matrix
    inner->unlockFocus();
    NSBezierPath::fillRect(NSMakeRect(0, 0, 1, 1));
    outer->unlockFocus();
    NSBezierPath::fillRect(NSMakeRect(0, 0, 1, 1));
    const std::pair<const NSImage*, NSRect> shown[] = {{outer.get(), NSMakeRect(-6, 0, 4, 2)},
                                                       {inner.get(), NSMakeRect(-2, 0, 2, 2)}};
    for (const auto& [image, frame] : shown)
      image->drawInRect_fromRect_operation_fraction(frame, NSZeroRect, NSCompositeSourceOver, 1);
  });
  EXPECT_EQ(letters(window), (std::vector<std::string>{"....k...", "..g.k.r."}));
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}
