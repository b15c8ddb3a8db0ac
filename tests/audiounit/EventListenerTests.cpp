#include "AUEventListener.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "TestEffect.h"

namespace {

using Log = std::vector<std::string>;

/// Writes what it hears into the common log, as "name id=ten times the value" or "name Pid".
struct Hearer {
  std::string name;
  std::function<void()> then = [] {};
};

class Listeners : public testing::Test {
 protected:
  ~Listeners() override { disposeAll(); }

  AUEventListenerRef create() {
    AUEventListenerRef listener = nullptr;
    AUEventListenerCreate(&dispatch, this, &loop, NSDefaultRunLoopMode, 0.05, 0.05, &listener);
    listeners.push_back(listener);
    return listener;
  }
  void dispose(AUEventListenerRef listener) {
    AUListenerDispose(listener);
    std::erase(listeners, listener);
  }
  void disposeAll() {
    while (!listeners.empty()) dispose(listeners.back());
  }
  void add(AUEventListenerRef listener, Hearer& hearer, AudioUnitParameterID id = gainParameter) {
    const auto event = AudioUnitEvent::parameterChange(addressOf(unit, id));
    AUEventListenerAddEventType(listener, &hearer, &event);
  }
  void addProperty(AUEventListenerRef listener, Hearer& hearer, AudioUnitPropertyID id) {
    const auto event = AudioUnitEvent::propertyChange({unit.get(), id, kAudioUnitScope_Global, 0});
    AUEventListenerAddEventType(listener, &hearer, &event);
  }
  void remove(AUEventListenerRef listener, Hearer& hearer) {
    const auto event = AudioUnitEvent::parameterChange(addressOf(unit, gainParameter));
    AUEventListenerRemoveEventType(listener, &hearer, &event);
  }
  void set(AudioUnitParameterID id, float value, AUEventListenerRef sender = nullptr,
           void* object = nullptr) {
    const AudioUnitParameter parameter = addressOf(unit, id);
    AUParameterSet(sender, object, &parameter, value, 0);
  }

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

 private:
  static void dispatch(void* self, void* object, const AudioUnitEvent* event, UInt64, Float32 value) {
    auto& hearer = *static_cast<Hearer*>(object);
    const std::string id = std::to_string(event->mArgument.mParameter.mParameterID);
    static_cast<Listeners*>(self)->log.push_back(
        hearer.name + (event->mEventType == kAudioUnitEvent_PropertyChange
                           ? " P" + id
                           : " " + id + "=" + std::to_string(std::lround(value * 10))));
    hearer.then();
  }
};

}  // namespace

TEST_F(Listeners, HearTheFirstChangeAtOnceAndAStreamOncePerInterval) {
  add(create(), a);
  set(gainParameter, 0.1f);
  loop.setCurrentMode(NSEventTrackingRunLoopMode);
  EXPECT_EQ(heardIn(1), Log{});  // neither inside the call nor in another mode
  loop.setCurrentMode(NSDefaultRunLoopMode);
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
  EXPECT_EQ(loop.nextDue(), RunLoopObserver::never);
}

TEST_F(Listeners, KeepTheOrderOfFirstChangesAndLeaveOutOnlyTheSendingPair) {
  const AUEventListenerRef one = create(), two = create();
  add(one, a);
  add(one, b);
  add(one, a, freqParameter);
  addProperty(one, a, kAudioUnitProperty_PresentPreset);
  set(freqParameter, 100);
  setGlobal(unit, kAudioUnitProperty_PresentPreset, AUPreset{1, nullptr});
  set(gainParameter, 0.3f);
  set(freqParameter, 200);
  EXPECT_EQ(heardIn(1), (Log{"a 1=2000", "a P36", "a 0=3", "b 0=3"}));

  add(two, a);
  set(gainParameter, 1, one, &a);
  EXPECT_EQ(heardIn(1), (Log{"b 0=10", "a 0=10"}));
}

TEST_F(Listeners, OnlyWhatADispatchTakesAwayHearsNothingMore) {
  AUEventListenerRef one = nullptr, two = nullptr;
  const struct {
    const char* what;
    std::function<void()> then;
    Log expected;
  } rows[] = {
      {"the other object", [&] { remove(one, b); }, {"a 0=10", "c 0=10"}},
      {"the listener that dispatches", [&] { dispose(one); }, {"a 0=10", "c 0=10"}},
      {"the listener whose turn comes next", [&] { dispose(two); }, {"a 0=10", "b 0=10"}},
      {"the instance", [&] { unit = nullptr; }, {"a 0=10"}},
      {"nothing, but throws", [] { throw std::runtime_error(""); }, {"a 0=10", "b 0=10", "c 0=10"}},
  };
  for (const auto& row : rows) {
    unit = openTestEffect();
    one = create();
    two = create();
    Hearer c{"c"};
    add(one, a);
    add(one, b);
    add(two, c);
    a.then = row.then;
    set(gainParameter, 1);
    EXPECT_EQ(heardIn(1), row.expected) << row.what;
    disposeAll();
  }
}

TEST_F(Listeners, AnOverflowLosesNothing) {
  const AUEventListenerRef listener = create();
  add(listener, a);
  add(listener, b, freqParameter);
  for (int change = 0; change < 20000; ++change) set(gainParameter, 1);
  set(freqParameter, 100);  // does not fit any more
  EXPECT_EQ(heardIn(1), (Log{"a 0=10", "b 1=1000"}));
}

TEST_F(Listeners, HearOfAPropertyOnlyWhenItChanged) {
  addProperty(create(), a, kAudioUnitProperty_SampleRate);
  for (const Log& expected : {Log{"a P2"}, Log{}}) {
    setGlobal(unit, kAudioUnitProperty_SampleRate, 48000.0);
    EXPECT_EQ(heardIn(1), expected);
  }
}
