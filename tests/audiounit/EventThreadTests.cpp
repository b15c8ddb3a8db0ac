#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "AUEventListener.h"
#include "AUEventQueue.h"
#include "TestEffect.h"

TEST(EventQueue, LosesAndDoublesNothingAndKeepsEachThreadsOrder) {
  constexpr int threadCount = 4;
  constexpr int perThread = 65536;
  AUEventQueue<std::pair<int, int>, 64> queue;
  std::vector<std::thread> threads;
  for (int t = 0; t < threadCount; ++t)
    threads.emplace_back([&, t] {
      for (int i = 0; i < perThread; ++i)
        while (!queue.push({t, i})) std::this_thread::yield();
    });
  int next[threadCount] = {};
  const NSTimeInterval tooLate = NSDate::timeIntervalSinceReferenceDate() + 60;
  std::pair<int, int> entry;
  for (int taken = 0; taken < threadCount * perThread;) {
    if (queue.pop(entry)) {
      EXPECT_EQ(entry.second, next[entry.first]++);
      ++taken;
    } else {
      ASSERT_LT(NSDate::timeIntervalSinceReferenceDate(), tooLate) << "only " << taken << " came";
      std::this_thread::yield();
    }
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_FALSE(queue.pop(entry));
}

TEST(EventThreads, ChangesFromOtherThreadsArriveOnTheLoopsThreadUpToTheLast) {
  const auto ids = {gainParameter, freqParameter, textParameter};
  NSRunLoop loop;
  const Unit unit = openTestEffect();
  const Unit passing = openTestEffect();
  struct Heard {
    std::thread::id here = std::this_thread::get_id();
    std::map<UInt32, float> last;
    int strays = 0;
  } heard;
  const auto dispatch = [](void* data, void*, const AudioUnitEvent* event, UInt64, Float32 value) {
    auto& result = *static_cast<Heard*>(data);
    if (std::this_thread::get_id() != result.here) ++result.strays;
    result.last[event->mArgument.mParameter.mParameterID] = value;
  };
  const auto listen = [&](const Unit& to, AudioUnitParameterID id, AUEventListenerRef listener) {
    const auto event = AudioUnitEvent::parameterChange(addressOf(to, id));
    AUEventListenerAddEventType(listener, &heard, &event);
  };
  const auto create = [&] {
    AUEventListenerRef listener = nullptr;
    EXPECT_EQ(AUEventListenerCreate(dispatch, &heard, &loop, NSDefaultRunLoopMode, 0.002, 0.002, &listener),
              noErr);
    return listener;
  };
  const AUEventListenerRef listener = create();
  for (const AudioUnitParameterID id : ids) listen(unit, id, listener);

  std::atomic<int> running{3};
  std::vector<std::thread> threads;
  for (const AudioUnitParameterID id : ids)
    threads.emplace_back([&, id] {
      for (int i = 0; i < 20000; ++i) hostSets(unit, id, static_cast<float>(i % 37));
      hostSets(unit, id, 30);
      --running;
    });
  while (running > 0) {  // meanwhile listeners and registrations come and go
    const AUEventListenerRef other = create();
    listen(passing, gainParameter, other);
    AUListenerDispose(other);
    loop.runTurn();
  }
  for (std::thread& thread : threads) thread.join();
  loop.run(NSDate::timeIntervalSinceReferenceDate() + 0.05);  // an interval after the last change has passed
  AUListenerDispose(listener);
  EXPECT_EQ(heard.strays, 0);
  EXPECT_EQ(heard.last, (std::map<UInt32, float>{{gainParameter, 10},  // its limit
                                                 {freqParameter, 30},
                                                 {textParameter, 30}}));
}
