#include <stdexcept>

#include "AUEventListener.h"
#include "NSTimer.h"
#include "TestEffect.h"
#include "ViewBench.h"

namespace {

class Target : public NSObject {
 public:
  explicit Target(std::function<void()> call) : call_(std::move(call)) {}
  const Class& isa() const override {
    static const Class c = Class::of<Target>("Target", NSObject::record()).answers<&Target::tick>("tick:");
    return c;
  }
  void tick(NSTimer*) { call_(); }

 private:
  std::function<void()> call_;
};

class Guards : public ViewBench {
 protected:
  void call() {
    if (++calls == 1) throw std::runtime_error("broken");
  }
  void click() {
    const auto view = add("a", NSMakeRect(10, 10, 20, 20));
    view->onDown = view->onUp = [this] { call(); };
    ViewBench::click({15, 15});
  }
  void tick() {
    const auto target = std::make_shared<Target>([this] { call(); });
    for (int i = 0; i < 2; ++i)
      NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
          0.1, target.get(), NSSelectorFromString("tick:"), nullptr, false);
    NSRunLoop unrelated;
    clock.advance(unrelated, 1);
    turn();
  }
  void tell() {
    AUEventListenerRef listener = nullptr;
    AUEventListenerCreate(
        [](void* self, void*, const AudioUnitEvent*, UInt64, Float32) { static_cast<Guards*>(self)->call(); },
        this, &NSRunLoop::currentRunLoop(), NSDefaultRunLoopMode, 0, 0, &listener);
    const auto event = AudioUnitEvent::parameterChange(addressOf(unit, gainParameter));
    for (void* object : {static_cast<void*>(this), static_cast<void*>(&unit)})
      AUEventListenerAddEventType(listener, object, &event);
    hostSets(unit, gainParameter, 5);
    turn();
    AUListenerDispose(listener);
  }
  void render() {
    const AURenderCallback supply = [](void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32,
                                       AudioBufferList*) -> OSStatus {
      static_cast<Guards*>(self)->call();
      return noErr;
    };
    setGlobal(unit, kAudioUnitProperty_SetRenderCallback, AURenderCallbackStruct{supply, this},
              kAudioUnitScope_Input);
    AudioUnitInitialize(unit.get());
    AudioBufferList data{.mNumberBuffers = 2, .mBuffers = {}};
    EXPECT_EQ(AudioUnitRender(unit.get(), nullptr, nullptr, 0, 16, &data), paramErr);
    EXPECT_EQ(AudioUnitRender(unit.get(), nullptr, nullptr, 0, 16, &data), noErr);
  }
  void post() {
    for (int i = 0; i < 2; ++i) NSRunLoop::currentRunLoop().post([this] { call(); });
    turn();
  }

  Unit unit = openTestEffect();
  int calls = 0;
};

}  // namespace

// Each kind of call is made twice in one turn, and the first one throws.
TEST_F(Guards, WhatThrowsStopsNobodyElseInTheSameTurn) {
  const std::pair<const char*, std::function<void()>> kinds[] = {{"event", [this] { click(); }},
                                                                 {"timer", [this] { tick(); }},
                                                                 {"event listener", [this] { tell(); }},
                                                                 {"audio unit", [this] { render(); }},
                                                                 {"posted call", [this] { post(); }}};
  for (const auto& [kind, callTwice] : kinds) {
    calls = 0;
    forgetLog();
    EXPECT_NO_THROW(callTwice()) << kind;
    EXPECT_EQ(calls, 2) << kind;
    EXPECT_EQ(log, Lines{std::string(kind) + " failed: broken"});
  }
}
