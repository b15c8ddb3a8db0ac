#include "NSRunLoop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

class Observer : public RunLoopObserver {
 public:
  explicit Observer(std::function<void()> run) : run_(std::move(run)) {}
  void runPhase(NSTimeInterval) override { run_(); }
  NSTimeInterval nextDue() const override { return due; }
  NSTimeInterval due = never;

 private:
  std::function<void()> run_;
};

}  // namespace

TEST(RunLoop, ATurnServesPostsThenDeliveriesThenDrawing) {
  VirtualClock clock;
  NSRunLoop loop;
  std::vector<std::string> order;
  Observer drawing([&] { order.push_back("draw"); });
  Observer delivery([&] { order.push_back("deliver"); });
  loop.addObserver(drawing, RunLoopObserver::Phase::drawing);
  loop.addObserver(delivery, RunLoopObserver::Phase::delivery);
  loop.post([&] {
    order.push_back("post");
    loop.post([&] { order.push_back("posted by a post"); });
  });
  loop.runTurn();
  EXPECT_EQ(order, (std::vector<std::string>{"post", "deliver", "draw"}));
  EXPECT_LE(loop.nextDue(), clock.now());  // the second post waits
  loop.runTurn();
  EXPECT_EQ(order[3], "posted by a post");
}

TEST(RunLoop, APostFromAnotherThreadEndsTheWait) {
  NSRunLoop loop;
  std::thread::id ranOn;
  std::thread poster([&] {
    loop.post([&] {
      ranOn = std::this_thread::get_id();
      loop.stop();
    });
  });
  loop.run(NSDate::timeIntervalSinceReferenceDate() + 60);
  poster.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(RunLoop, ObserversMayRemoveEachOtherInTheMiddleOfATurn) {
  NSRunLoop loop;
  int served = 0;
  std::unique_ptr<Observer> second;
  Observer first([&] {
    loop.removeObserver(*second);
    second = nullptr;
  });
  second = std::make_unique<Observer>([&] { ++served; });
  Observer third([&] { ++served; });
  for (Observer* observer : {&first, second.get(), &third})
    loop.addObserver(*observer, RunLoopObserver::Phase::delivery);
  loop.runTurn();
  EXPECT_EQ(served, 1);
}

TEST(RunLoop, DescriptorsAreServedWhileReadableAndMayRemoveThemselves) {
  NSRunLoop loop;
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  int served = 0;
  loop.addDescriptor(ends[0], [&] {
    if (++served == 2) loop.removeDescriptor(ends[0]);
  });
  loop.runTurn();
  EXPECT_EQ(served, 0);
  ASSERT_EQ(write(ends[1], "x", 1), 1);
  for (int turn = 0; turn < 4; ++turn) loop.runTurn();
  EXPECT_EQ(served, 2);
  close(ends[0]);
  close(ends[1]);
}

TEST(RunLoop, TheVirtualClockStopsAtEachDueTimeAndStandsStillInATurn) {
  VirtualClock clock;
  NSRunLoop loop;
  const NSTimeInterval start = clock.now();
  std::vector<NSTimeInterval> times;
  Observer observer([&] {
    times.push_back(clock.now() - start);
    observer.due = times.size() == 1 ? start + 0.5 : RunLoopObserver::never;
  });
  loop.addObserver(observer, RunLoopObserver::Phase::delivery);
  clock.advance(loop, 2);
  EXPECT_EQ(times, (std::vector<NSTimeInterval>{0, 0.5, 2}));
}
