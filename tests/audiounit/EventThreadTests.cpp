#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "AUEventListener.h"
#include "AUEventQueue.h"
#include "TestEffect.h"

TEST(EventQueue, LosesAndDoublesNothingAndKeepsEachThreadsOrder) {
  constexpr int threadCount = 4, perThread = 65536;
  AUEventQueue<std::pair<int, int>, 64> queue;
  std::vector<std::jthread> threads;
  for (int t = 0; t < threadCount; ++t)
    threads.emplace_back([&queue, t] {
      for (int i = 0; i < perThread; ++i)
        while (!queue.push({t, i})) std::this_thread::yield();
    });
  int next[threadCount] = {};
  std::pair<int, int> entry;
  for (int taken = 0; taken < threadCount * perThread;)
    if (queue.pop(entry)) {
      EXPECT_EQ(entry.second, next[entry.first]++);
      ++taken;
    } else {
      std::this_thread::yield();
    }
}

TEST(EventThreads, ChangesFromOtherThreadsArriveUpToTheLast) {
  const auto ids = {gainParameter, freqParameter, textParameter};
  NSRunLoop loop;
  const Unit unit = openTestEffect();
  std::map<UInt32, float> heard;
  const auto dispatch = [](void* data, void*, const AudioUnitEvent* event, UInt64, Float32 value) {
    (*static_cast<std::map<UInt32, float>*>(data))[event->mArgument.mParameter.mParameterID] = value;
  };
  const auto listen = [&] {
    AUEventListenerRef listener = nullptr;
    AUEventListenerCreate(dispatch, &heard, &loop, NSDefaultRunLoopMode, 0.002, 0.002, &listener);
    for (const AudioUnitParameterID id : ids) {
      const auto event = AudioUnitEvent::parameterChange(addressOf(unit, id));
      AUEventListenerAddEventType(listener, &heard, &event);
    }
    return listener;
  };
  const AUEventListenerRef listener = listen();

  std::atomic<int> running{3};
  std::vector<std::thread> threads;
  for (const AudioUnitParameterID id : ids)
    threads.emplace_back([&, id] {
      for (int i = 0; i < 20000; ++i) hostSets(unit, id, static_cast<float>(i % 37));
      hostSets(unit, id, 30);
      --running;
    });
  while (running > 0) {  // meanwhile listeners and registrations come and go
    AUListenerDispose(listen());
    loop.runTurn();
  }
  for (std::thread& thread : threads) thread.join();
  loop.run(NSDate::timeIntervalSinceReferenceDate() + 0.05);  // an interval after the last change has passed
  AUListenerDispose(listener);
  EXPECT_EQ(heard, (std::map<UInt32, float>{{gainParameter, 10},  // its limit
                                            {freqParameter, 30},
                                            {textParameter, 30}}));
}
