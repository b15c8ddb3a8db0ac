#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "AUEventListener.h"
#include "TestEffect.h"

TEST(EventThreads, ChangesFromOtherThreadsArriveOnTheLoopsThreadUpToTheLast) {
  const auto ids = {gainParameter, freqParameter, textParameter};
  NSRunLoop loop;
  const Unit unit = openTestEffect();
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
  EXPECT_EQ(heard.strays, 0);
  EXPECT_EQ(heard.last, (std::map<UInt32, float>{{gainParameter, 10},  // its limit
                                                 {freqParameter, 30},
                                                 {textParameter, 30}}));
}
