#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <memory>
#include <thread>
#include <vector>

#include "AUEventListener.h"
#include "AUEventQueue.h"
#include "TestEffect.h"

namespace {

/// Several threads push at once while this one pops, or, when the queue holds everything, before it does.
template <size_t Capacity>
void pushFromManyThreads() {
  constexpr int threadCount = 4;
  constexpr int perThread = 65536;
  const auto queue = std::make_unique<AUEventQueue<std::pair<int, int>, Capacity>>();
  std::vector<std::thread> threads;
  std::atomic<int> ready{0};
  for (int t = 0; t < threadCount; ++t)
    threads.emplace_back([&, t] {
      for (++ready; ready < threadCount;) std::this_thread::yield();
      for (int i = 0; i < perThread; ++i)
        while (!queue->push({t, i})) std::this_thread::yield();
    });
  if (Capacity >= threadCount * perThread)
    for (std::thread& thread : threads) thread.join();

  int next[threadCount] = {};
  const NSTimeInterval tooLate = NSDate::timeIntervalSinceReferenceDate() + 60;
  std::pair<int, int> entry;
  for (int taken = 0; taken < threadCount * perThread;) {
    if (queue->pop(entry)) {
      ASSERT_EQ(entry.second, next[entry.first]++);
      ++taken;
      continue;
    }
    if (NSDate::timeIntervalSinceReferenceDate() > tooLate) {
      ADD_FAILURE() << "only " << taken << " came";
      break;
    }
    std::this_thread::yield();
  }
  for (std::thread& thread : threads)
    if (thread.joinable()) thread.join();
  EXPECT_FALSE(queue->pop(entry));
}

}  // namespace

TEST(EventQueue, LosesAndDoublesNothingAndKeepsEachThreadsOrder) {
  pushFromManyThreads<64>();
  pushFromManyThreads<4 * 65536>();
}

TEST(EventThreads, ChangesFromOtherThreadsArriveOnTheLoopsThreadUpToTheLast) {
  NSRunLoop loop;
  const Unit unit = openTestEffect();
  const Unit passing = openTestEffect();
  struct Heard {
    std::thread::id here = std::this_thread::get_id();
    std::map<UInt32, float> last;
    int strays = 0;
  } heard;
  AUEventListenerRef listener = nullptr;
  const auto dispatch = [](void* data, void*, const AudioUnitEvent* event, UInt64, Float32 value) {
    auto& result = *static_cast<Heard*>(data);
    if (std::this_thread::get_id() != result.here) ++result.strays;
    result.last[event->mArgument.mParameter.mParameterID] = value;
  };
  ASSERT_EQ(AUEventListenerCreate(dispatch, &heard, &loop, NSDefaultRunLoopMode, 0.002, 0.002, &listener),
            noErr);
  for (const AudioUnitParameterID id : {gainParameter, freqParameter, textParameter}) {
    const auto event = AudioUnitEvent::parameterChange({unit.get(), id, 0, 0});
    AUEventListenerAddEventType(listener, &heard, &event);
  }

  std::atomic<int> running{3};
  std::vector<std::thread> threads;
  for (const AudioUnitParameterID id : {gainParameter, freqParameter, textParameter})
    threads.emplace_back([&, id] {
      const AudioUnitParameter parameter{unit.get(), id, 0, 0};
      for (int i = 0; i < 20000; ++i)
        AUParameterSet(nullptr, nullptr, &parameter, static_cast<float>(i % 37), 0);
      AUParameterSet(nullptr, nullptr, &parameter, 30, 0);
      --running;
    });
  // Meanwhile listeners and registrations come and go.
  const auto churn = [&] {
    AUEventListenerRef other = nullptr;
    AUEventListenerCreate(dispatch, &heard, &loop, NSDefaultRunLoopMode, 0.05, 0.05, &other);
    const auto event = AudioUnitEvent::parameterChange({passing.get(), 0, 0, 0});
    AUEventListenerAddEventType(other, &heard, &event);
    AUListenerDispose(other);
  };
  while (running > 0) {
    churn();
    loop.runTurn();
  }
  for (std::thread& thread : threads) thread.join();
  loop.run(NSDate::timeIntervalSinceReferenceDate() + 0.05);  // an interval after the last change has passed
  AUListenerDispose(listener);
  EXPECT_EQ(heard.strays, 0);
  EXPECT_EQ(heard.last,
            (std::map<UInt32, float>{
                {gainParameter, 10}, {freqParameter, 30}, {textParameter, 30}}));  // the gain's limit is 10
}
