#include "AUEventListener.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "NSLog.h"
#include "TestEffect.h"

namespace {

/// Whom a test registers: it writes what it hears into the common log, as "name id=value" or "name Pid".
struct Hearer {
  std::string name;
  std::function<void()> then = [] {};
};

class Listeners : public testing::Test {
 protected:
  ~Listeners() override {
    for (AUEventListenerRef listener : listeners) AUListenerDispose(listener);
  }

  AUEventListenerRef create(NSRunLoopMode mode = NSDefaultRunLoopMode) {
    AUEventListenerRef listener = nullptr;
    EXPECT_EQ(AUEventListenerCreate(&dispatch, this, &loop, mode, 0.05, 0.05, &listener), noErr);
    listeners.push_back(listener);
    return listener;
  }
  void dispose(AUEventListenerRef listener) {
    AUListenerDispose(listener);
    std::erase(listeners, listener);
  }

  static void dispatch(void* self, void* object, const AudioUnitEvent* event, UInt64, Float32 value) {
    auto& hearer = *static_cast<Hearer*>(object);
    const UInt32 id = event->mArgument.mParameter.mParameterID;
    static_cast<Listeners*>(self)->log.push_back(
        hearer.name + (event->mEventType == kAudioUnitEvent_PropertyChange
                           ? " P" + std::to_string(id)
                           : " " + std::to_string(id) + "=" + std::to_string(std::lround(value * 10))));
    hearer.then();
  }

  AudioUnitEvent parameterEvent(UInt32 id) const {
    return AudioUnitEvent::parameterChange({unit.get(), id, 0, 0});
  }
  AudioUnitEvent propertyEvent(UInt32 id) const {
    return AudioUnitEvent::propertyChange({unit.get(), id, 0, 0});
  }
  void add(AUEventListenerRef listener, Hearer& hearer, const AudioUnitEvent& event) {
    EXPECT_EQ(AUEventListenerAddEventType(listener, &hearer, &event), noErr);
  }
  void set(UInt32 id, float value, AUEventListenerRef sender = nullptr, void* object = nullptr) {
    const AudioUnitParameter parameter{unit.get(), id, 0, 0};
    EXPECT_EQ(AUParameterSet(sender, object, &parameter, value, 0), noErr);
  }

  using Log = std::vector<std::string>;
  /// What was heard since the last look.
  Log heard() { return std::exchange(log, {}); }
  Log heardIn(NSTimeInterval seconds) {
    clock.advance(loop, seconds);
    return heard();
  }

  VirtualClock clock;
  NSRunLoop loop;
  Unit unit = openTestEffect();
  Log log;
  std::vector<AUEventListenerRef> listeners;
  Hearer a{"a"};
  Hearer b{"b"};
};

}  // namespace

TEST_F(Listeners, HearTheFirstChangeAtOnceAndAStreamOncePerInterval) {
  const AUEventListenerRef listener = create();
  add(listener, a, parameterEvent(gainParameter));
  set(gainParameter, 0.1f);
  EXPECT_EQ(log, Log{});                   // never inside the call
  EXPECT_LE(loop.nextDue(), clock.now());  // a host that sleeps until then must not oversleep
  loop.runTurn();
  EXPECT_EQ(heard(), Log{"a 0=1"});

  // A change every hundredth of a second: at 0.05 the latest so far, at 0.1 again, and the last one.
  std::map<int, Log> atHundredth;
  for (int hundredth = 1; hundredth <= 20; ++hundredth) {
    if (hundredth <= 12) set(gainParameter, static_cast<float>(hundredth) / 10);
    clock.advance(loop, 0.01);
    if (Log now = heard(); !now.empty()) atHundredth[hundredth] = now;
  }
  EXPECT_EQ(atHundredth, (std::map<int, Log>{{5, {"a 0=5"}}, {10, {"a 0=10"}}, {15, {"a 0=12"}}}));

  set(gainParameter, 0);
  loop.runTurn();
  EXPECT_EQ(heard(), Log{"a 0=0"});
  EXPECT_EQ(loop.nextDue(), RunLoopObserver::never);
}

TEST_F(Listeners, KeepTheOrderOfFirstChanges) {
  const AUEventListenerRef listener = create();
  add(listener, a, parameterEvent(gainParameter));
  add(listener, b, parameterEvent(gainParameter));
  add(listener, a, parameterEvent(freqParameter));
  add(listener, a, propertyEvent(36));
  set(freqParameter, 100);
  setGlobal(unit, 36, AUPreset{1, nullptr});
  set(gainParameter, 0.3f);
  set(freqParameter, 200);
  EXPECT_EQ(heardIn(1), (Log{"a 1=2000", "a P36", "a 0=3", "b 0=3"}));
}

TEST_F(Listeners, LeaveOutOnlyTheSendingPair) {
  const AUEventListenerRef one = create();
  const AUEventListenerRef two = create();
  add(one, a, parameterEvent(gainParameter));
  add(one, b, parameterEvent(gainParameter));
  add(two, a, parameterEvent(gainParameter));
  set(gainParameter, 1, one, &a);
  EXPECT_EQ(heardIn(1), (Log{"b 0=10", "a 0=10"}));
  set(gainParameter, 1, nullptr, &a);
  EXPECT_EQ(heardIn(1), (Log{"a 0=10", "b 0=10", "a 0=10"}));
}

TEST_F(Listeners, WaitForTheirMode) {
  const AUEventListenerRef listener = create();
  add(listener, a, parameterEvent(gainParameter));
  add(listener, b, parameterEvent(gainParameter));
  loop.setCurrentMode(NSEventTrackingRunLoopMode);
  set(gainParameter, 0.5f);
  set(gainParameter, 0.6f);
  EXPECT_EQ(heardIn(1), Log{});
  loop.setCurrentMode(NSDefaultRunLoopMode);
  // A menu that the first one opens holds back the second.
  a.then = [&] { loop.setCurrentMode(NSEventTrackingRunLoopMode); };
  EXPECT_EQ(heardIn(1), Log{"a 0=6"});
  loop.setCurrentMode(NSDefaultRunLoopMode);
  EXPECT_EQ(heardIn(1), Log{"b 0=6"});
}

TEST_F(Listeners, AnExceptionStopsNobodyElse) {
  const AUEventListenerRef listener = create();
  add(listener, a, parameterEvent(gainParameter));
  add(listener, b, parameterEvent(gainParameter));
  a.then = [] { throw std::runtime_error("broken"); };
  Log lines;
  const auto before = NSSetLogSink([&](std::string_view line) { lines.emplace_back(line); });
  set(gainParameter, 1);
  EXPECT_EQ(heardIn(1), (Log{"a 0=10", "b 0=10"}));
  NSSetLogSink(before);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_NE(lines[0].find("broken"), std::string::npos);
}

TEST_F(Listeners, WhatADispatchTakesAwayHearsNothingMore) {
  const struct {
    const char* what;
    std::function<void(AUEventListenerRef, AUEventListenerRef)> act;
    Log expected;
  } rows[] = {
      {"the other object",
       [&](auto one, auto) {
         const auto event = parameterEvent(gainParameter);
         AUEventListenerRemoveEventType(one, &b, &event);
       },
       {"a 0=10", "c 0=10"}},
      {"itself",
       [&](auto one, auto) {
         const auto event = parameterEvent(gainParameter);
         AUEventListenerRemoveEventType(one, &a, &event);
       },
       {"a 0=10", "b 0=10", "c 0=10"}},
      {"the listener that dispatches", [&](auto one, auto) { dispose(one); }, {"a 0=10", "c 0=10"}},
      {"the listener whose turn comes next", [&](auto, auto two) { dispose(two); }, {"a 0=10", "b 0=10"}},
      {"the instance", [&](auto, auto) { unit = nullptr; }, {"a 0=10"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    unit = openTestEffect();
    const AUEventListenerRef one = create();
    const AUEventListenerRef two = create();
    Hearer c{"c"};
    add(one, a, parameterEvent(gainParameter));
    add(one, b, parameterEvent(gainParameter));
    add(two, c, parameterEvent(gainParameter));
    bool acted = false;
    a.then = [&] {
      if (!std::exchange(acted, true)) row.act(one, two);
    };
    set(gainParameter, 1);
    EXPECT_EQ(heardIn(1), row.expected);
    while (!listeners.empty()) dispose(listeners.back());
  }
}

TEST_F(Listeners, NothingOfAClosedInstanceReachesOneAtTheSameAddress) {
  const AUEventListenerRef listener = create();
  for (int attempt = 0; attempt < 20; ++attempt) {
    const AudioUnit address = unit.get();
    add(listener, a, parameterEvent(gainParameter));
    set(gainParameter, 1);
    unit = nullptr;
    unit = openTestEffect();
    add(listener, b, parameterEvent(gainParameter));
    EXPECT_EQ(heardIn(1), Log{});
    set(gainParameter, 1);
    EXPECT_EQ(heardIn(1), Log{"b 0=10"});
    if (unit.get() == address) return;  // the case that matters has been tried
  }
}

TEST_F(Listeners, AnOverflowLosesNothing) {
  const AUEventListenerRef listener = create();
  add(listener, a, parameterEvent(gainParameter));
  add(listener, b, parameterEvent(freqParameter));
  for (int change = 0; change < 20000; ++change) set(gainParameter, 1);
  set(freqParameter, 100);  // does not fit any more
  EXPECT_EQ(heardIn(1), (Log{"a 0=10", "b 1=1000"}));
  set(freqParameter, 200);
  EXPECT_EQ(heardIn(1), Log{"b 1=2000"});
}

TEST_F(Listeners, HearOfAPropertyOnlyWhenItChanged) {
  const AUEventListenerRef listener = create();
  for (const UInt32 id : {2, 12, 14, 26, 27, 28, 36}) add(listener, a, propertyEvent(id));
  static_cast<TestEffect*>(unit.get())->setLatency(0.25);
  static_cast<TestEffect*>(unit.get())->setLatency(0.25);
  HostCallbackInfo callbacks;
  callbacks.hostUserData = this;
  const struct {
    std::function<void()> act;
    Log expected;
  } rows[] = {
      {[] {}, {"a P12"}},
      {[&] { setGlobal(unit, 2, 48000.0); }, {"a P2"}},
      {[&] { setGlobal(unit, 2, 48000.0); }, {}},
      {[&] { setGlobal(unit, 26, UInt32{64}); }, {"a P26"}},
      {[&] { setGlobal(unit, 26, UInt32{64}); }, {}},
      {[&] { setGlobal(unit, 27, callbacks); }, {"a P27"}},
      {[&] { setGlobal(unit, 27, callbacks); }, {}},
      {[&] {
         setGlobal(unit, 36, AUPreset{1, nullptr});
       },
       {"a P36"}},
      {[&] {
         setGlobal(unit, 36, AUPreset{1, nullptr});
       },
       {}},
      {[&] { AudioUnitSetParameter(unit.get(), gainParameter, 0, 0, 3, 0); }, {}},
      {[&] {
         setGlobal(unit, 28, AUPreset{1, nullptr});
       },
       {"a P28"}},  // the knob goes back: a change
  };
  for (const auto& row : rows) {
    row.act();
    EXPECT_EQ(heardIn(1), row.expected) << &row - rows;
  }
}
