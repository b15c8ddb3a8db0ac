#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Class.h"
#include "LogLines.h"
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
    if (endsItself) timer->invalidate();
    throw std::runtime_error("stops only this tick");
  }

  std::vector<NSTimeInterval> times;
  bool endsItself = false;
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

  LogLines log;
  VirtualClock clock;
  NSRunLoop loop;
  std::shared_ptr<Ticker> ticker = std::make_shared<Ticker>();
};

}  // namespace

TEST(RunLoop, APostThatThrowsStopsNoOther) {
  LogLines log;
  NSRunLoop loop;
  bool isServed = false;
  loop.post([] { throw std::runtime_error("broken"); });
  loop.post([&] { isServed = true; });
  loop.runTurn();
  EXPECT_TRUE(isServed);
  EXPECT_EQ(log.take(), std::vector<std::string>{"posted call failed: broken"});
}

TEST(RunLoop, APostFromAnotherThreadEndsTheWait) {
  NSRunLoop loop;
  std::promise<bool> isHere;
  std::thread poster([&, here = std::this_thread::get_id()] {
    loop.post([&] {
      isHere.set_value(std::this_thread::get_id() == here);
      loop.stop();
    });
    auto served = isHere.get_future();
    EXPECT_EQ(served.wait_for(std::chrono::seconds(8)), std::future_status::ready);
    EXPECT_TRUE(served.get());
  });
  loop.run(NSDate::timeIntervalSinceReferenceDate() + 10);
  poster.join();
}

TEST_F(Timers, KeepTheirGridAndDropMissedTicks) {
  const NSTimeInterval start = clock.now();
  timer();
  clock.advance(loop, 0.25);
  ASSERT_EQ(ticks(), 2u);

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
  ticker->endsItself = true;
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
