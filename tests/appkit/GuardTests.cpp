#include <stdexcept>

#include "AUEventListener.h"
#include "NSTimer.h"
#include "TestEffect.h"
#include "ViewBench.h"

namespace {

/// Two calls of each kind that the platform makes in one turn, of which the first throws.
class Guards : public ViewBench {
 protected:
  class Target : public NSObject {
   public:
    explicit Target(Guards& guards) : guards_(guards) {}
    const Class& isa() const override {
      static const Class c = Class::of<Target>("Target", NSObject::record()).answers<&Target::tick>("tick:");
      return c;
    }
    void tick(NSTimer*) { guards_.call(); }

   private:
    Guards& guards_;
  };

  void call() {
    if (++calls == 1) throw std::runtime_error("broken");
  }
  void clickTheView() {
    const auto view = add("a", NSMakeRect(10, 10, 20, 20));
    view->onDown = view->onUp = [this] { call(); };
    click({15, 15});
  }
  void letTimersTick() {
    const auto target = std::make_shared<Target>(*this);
    for (int i = 0; i < 2; ++i)
      NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
          0.1, target.get(), NSSelectorFromString("tick:"), nullptr, false);
    NSRunLoop unrelated;
    clock.advance(unrelated, 1);
    turn();
  }
  void tellListeners() {
    const auto hear = [](void* self, void*, const AudioUnitEvent*, UInt64, Float32) {
      static_cast<Guards*>(self)->call();
    };
    AUEventListenerRef listener = nullptr;
    AUEventListenerCreate(hear, this, &NSRunLoop::currentRunLoop(), NSDefaultRunLoopMode, 0, 0, &listener);
    const auto event = AudioUnitEvent::parameterChange(addressOf(unit, gainParameter));
    for (void* object : {static_cast<void*>(&clock), static_cast<void*>(&unit)})
      AUEventListenerAddEventType(listener, object, &event);
    hostSets(unit, gainParameter, 5);
    turn();
    AUListenerDispose(listener);
  }
  void renderTwice() {
    const auto supply = [](void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32, AudioBufferList*) {
      static_cast<Guards*>(self)->call();
      return OSStatus{noErr};
    };
    setGlobal(unit, kAudioUnitProperty_SetRenderCallback, AURenderCallbackStruct{supply, this},
              kAudioUnitScope_Input);
    AudioUnitInitialize(unit.get());
    AudioBufferList data{.mNumberBuffers = 2, .mBuffers = {}};
    EXPECT_EQ(AudioUnitRender(unit.get(), nullptr, nullptr, 0, 16, &data), paramErr);
    EXPECT_EQ(AudioUnitRender(unit.get(), nullptr, nullptr, 0, 16, &data), noErr);
  }

  Unit unit = openTestEffect();
  int calls = 0;
};

}  // namespace

TEST_F(Guards, WhatThrowsStopsNobodyElseInTheSameTurn) {
  NSRunLoop& loop = NSRunLoop::currentRunLoop();
  const std::pair<const char*, std::function<void()>> kinds[] = {
      {"event", [&] { clickTheView(); }},
      {"timer", [&] { letTimersTick(); }},
      {"event listener", [&] { tellListeners(); }},
      {"audio unit", [&] { renderTwice(); }},
      {"posted call", [&] { loop.post([&] { call(); }), loop.post([&] { call(); }), turn(); }},
  };
  for (const auto& [kind, callTwice] : kinds) {
    calls = 0;
    forgetLog();
    EXPECT_NO_THROW(callTwice()) << kind;
    EXPECT_EQ(calls, 2) << kind;
    EXPECT_EQ(log, Lines{std::string(kind) + " failed: broken"});
  }
}
