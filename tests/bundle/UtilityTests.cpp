#include <gtest/gtest.h>

#include "EditorStage.h"
#include "NSGraphicsContext.h"
#include "NSImageUtils.h"
#include "jxAppleAUView.h"

namespace {

class Utility : public testing::Test, public EditorStage {};

TEST_F(Utility, NinePiecesKeepTheirCornersAndLimitThemByTheTarget) {
  // Red grows by 4 a column, green by 4 a row: every pixel tells where it came from.
  const auto image = NSImage::initWithSize({60, 60});
  image->lockFocus([] {
    for (int y = 0; y < 60; ++y)
      for (int x = 0; x < 60; ++x) {
        vellColor_alpha(static_cast<uint32_t>(x * 4 << 16 | y * 4 << 8), 1)->set();
        NSBezierPath::fillRect(NSMakeRect(static_cast<float>(x), static_cast<float>(y), 1, 1));
      }
  });
  const std::pair<float, float> rows[] = {{30, 14},
                                          {100, 20}};  // side of the target, its corners: 20 asked for
  for (const auto& [side, corner] : rows) {
    const NSRect target{{0, 0}, {side, side}};
    const Bitmap picture = painted(target.size, 1, [&] {
      drawInRect_cornerSizeX_cornerSizeY_operation_fraction(*image, target, 20, 20, NSCompositeSourceOver, 1);
    });
    for (float i = 0; i < side; ++i) {
      const float fromEnd = side - 1 - i;
      const bool isCorner = i < corner || fromEnd < corner;
      const float from = i < corner ? i
                         : isCorner
                             ? 59 - fromEnd
                             : corner + (i + 0.5f - corner) * (60 - 2 * corner) / (side - 2 * corner) - 0.5f;
      const float tolerance = isCorner ? 0 : 10;  // the middle is stretched, evenly
      EXPECT_NEAR(at(picture, i, 2)[0], 4 * from, tolerance) << side << " at " << i;
      EXPECT_NEAR(at(picture, 2, i)[1], 4 * from, tolerance) << side << " at " << i;
      EXPECT_EQ(at(picture, i, 2)[1], 8);
    }
  }
}

class IdleCounter : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  void idle() override { ++count; }
  int count = 0;
};

TEST_F(Utility, IdleComesWhileTheWindowShowsAnEffect) {
  auto view = std::make_shared<IdleCounter>(NSMakeRect(0, 0, 420, 158));
  NSRunLoop& loop = NSRunLoop::currentRunLoop();
  const size_t timers = loop.timerCount();
  show(view);
  unit = openTestEffect();
  const auto ticks = [&] {
    view->count = 0;
    advance(1);
    return view->count;
  };
  view->startTimerWithInterval(0.1);
  EXPECT_EQ(ticks(), 0) << "no effect yet";
  view->setAU(jxAUwrapper::wrapperWithAU(unit.get()));
  EXPECT_EQ(ticks(), 10);
  view->startTimerWithInterval(0.1);
  EXPECT_EQ(loop.timerCount(), timers + 1) << "in place of the first";
  for (const auto mode : {NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode, NSDefaultRunLoopMode}) {
    loop.setCurrentMode(mode);
    EXPECT_EQ(ticks(), 10);
  }
  window->orderOut(nullptr);
  EXPECT_EQ(ticks(), 0);
  window->makeKeyAndOrderFront();
  EXPECT_EQ(ticks(), 10) << "the timer went on";
}

}  // namespace
