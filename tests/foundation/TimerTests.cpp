#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "Class.h"
#include "NSException.h"
#include "NSLog.h"
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
  std::shared_ptr<NSTimer> timer(NSTimeInterval interval, bool repeats,
                                 NSRunLoopMode mode = NSDefaultRunLoopMode) {
    const auto made =
        std::make_shared<NSTimer>(interval, ticker.get(), NSSelectorFromString("tick:"), nullptr, repeats);
    loop.addTimer_forMode(made, mode);
    return made;
  }
  size_t ticks() const { return ticker->times.size(); }

  VirtualClock clock;
  NSRunLoop loop;
  std::shared_ptr<Ticker> ticker = std::make_shared<Ticker>();
};

/// A clock that a test puts where it wants.
class SetClock : public Clock {
 public:
  explicit SetClock(NSTimeInterval start) : time(start), previous_(NSDate::setClock(this)) {}
  ~SetClock() override { NSDate::setClock(previous_); }
  NSTimeInterval now() const override { return time; }
  NSTimeInterval time;

 private:
  Clock* previous_;
};

}  // namespace

TEST_F(Timers, KeepTheirGridAndDropMissedTicks) {
  const NSTimeInterval start = clock.now();
  timer(0.1, true);
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

TEST_F(Timers, OneTimerInThreeModesTicksOnceInWhicheverIsOn) {
  const auto t = timer(0.1, true);
  loop.addTimer_forMode(t, NSEventTrackingRunLoopMode);
  loop.addTimer_forMode(t, NSModalPanelRunLoopMode);
  for (const auto mode : {NSDefaultRunLoopMode, NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode}) {
    const size_t before = ticks();
    loop.setCurrentMode(mode);
    clock.advance(loop, 0.1);
    EXPECT_EQ(ticks(), before + 1);
  }
}

TEST_F(Timers, OfAnotherModeAreHeldBack) {
  timer(0.1, true);
  loop.setCurrentMode(NSEventTrackingRunLoopMode);
  clock.advance(loop, 1);
  EXPECT_EQ(ticks(), 0u);
  loop.setCurrentMode(NSDefaultRunLoopMode);
  loop.runTurn();
  EXPECT_EQ(ticks(), 1u);
}

TEST_F(Timers, EndInsideTheirOwnTickAndFreeTheirTarget) {
  const auto t = timer(0.1, true);
  std::weak_ptr<Ticker> watched = ticker;
  ticker->onTick = [](NSTimer& self) {
    self.invalidate();
    self.invalidate();
  };
  clock.advance(loop, 0.1);
  EXPECT_FALSE(t->isValid());
  EXPECT_EQ(loop.timerCount(), 0u);
  ticker = nullptr;
  EXPECT_TRUE(watched.expired());
}

TEST_F(Timers, AnExceptionInATickIsLoggedAndTheOthersTick) {
  size_t lines = 0;
  const auto before = NSSetLogSink([&](std::string_view) { ++lines; });
  ticker->onTick = [&](NSTimer&) {
    if (ticks() == 1) throw NSException("name", "reason");
  };
  timer(0.1, false);
  timer(0.1, false);
  clock.advance(loop, 0.1);
  NSSetLogSink(before);
  EXPECT_EQ(ticks(), 2u);
  EXPECT_EQ(lines, 1u);
}
