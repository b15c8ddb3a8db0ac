#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "Class.h"
#include "NSRunLoop.h"
#include "NSTimer.h"

namespace {

class Ticker : public NSObject {
 public:
  static const Class& record() {
    static const Class c = Class::of<Ticker>("Ticker", NSObject::record()).answers<&Ticker::tick>("tick:");
    return c;
  }
  const Class& isa() const override { return record(); }
  void tick(NSTimer* timer) {
    times.push_back(NSDate::timeIntervalSinceReferenceDate());
    if (onTick) onTick(*timer);
  }

  std::vector<NSTimeInterval> times;
  std::function<void(NSTimer&)> onTick;
};

class Timers : public testing::Test {
 protected:
  /// One that repeats every 0.1 seconds.
  std::shared_ptr<NSTimer> timer() {
    const auto made =
        std::make_shared<NSTimer>(0.1, ticker.get(), NSSelectorFromString("tick:"), nullptr, true);
    loop.addTimer_forMode(made, NSDefaultRunLoopMode);
    return made;
  }
  size_t ticks() const { return ticker->times.size(); }

  VirtualClock clock;
  NSRunLoop loop;
  std::shared_ptr<Ticker> ticker = std::make_shared<Ticker>();
};

}  // namespace

TEST_F(Timers, KeepTheirGridAndDropMissedTicks) {
  const NSTimeInterval start = clock.now();
  timer();
  clock.advance(loop, 0.25);
  ASSERT_EQ(ticks(), 2u);
  EXPECT_NEAR(ticker->times[1] - start, 0.2, 1e-9);

  // The host pumps nothing for a while: one tick late, then on the old grid again.
  NSRunLoop unrelated;
  clock.advance(unrelated, 0.5);  // to 0.75
  loop.runTurn();
  loop.runTurn();
  EXPECT_EQ(ticks(), 3u);
  clock.advance(loop, 0.1);
  ASSERT_EQ(ticks(), 4u);
  EXPECT_NEAR(ticker->times[3] - start, 0.8, 1e-9);
}

TEST_F(Timers, OfAnotherModeAreHeldBackAndEndInsideTheirOwnTick) {
  const auto t = timer();
  std::weak_ptr<Ticker> watched = ticker;
  ticker->onTick = [](NSTimer& self) {
    self.invalidate();
    self.invalidate();
  };
  loop.setCurrentMode(NSEventTrackingRunLoopMode);
  clock.advance(loop, 1);
  EXPECT_EQ(ticks(), 0u);
  loop.setCurrentMode(NSDefaultRunLoopMode);
  loop.runTurn();
  EXPECT_EQ(ticks(), 1u);
  EXPECT_FALSE(t->isValid());
  EXPECT_EQ(loop.timerCount(), 0u);
  ticker = nullptr;
  EXPECT_TRUE(watched.expired());
}
