// Every thread of the stand-alone host at work: audio, automation and the interface with a hand on it. What
// it is for is to run under the thread sanitizer, for as many seconds as TOVIN_BUSY_SECONDS says.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

#include "AUEventListener.h"
#include "EditorBundle.h"
#include "EffectInstance.h"
#include "EffectParameters.h"
#include "EffectRunner.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"
#include "RealTimePlayer.h"
#include "RegisterEffects.h"
#include "SignalSource.h"

extern "C" void TovinBundleClasses(std::vector<const Class*>& classes);

namespace {

constexpr double sampleRate = 44100;

double secondsInAll() {
  const char* asked = std::getenv("TOVIN_BUSY_SECONDS");
  return asked ? std::atof(asked) : 4;
}

/// A turn of the run loop that takes some time, as in a program.
void run(double seconds) {
  NSRunLoop::currentRunLoop().run(NSDate::timeIntervalSinceReferenceDate() + seconds);
}

/// Sets parameters at random, a thousand a second, from a thread of its own.
std::jthread automation(AudioUnit unit) {
  return std::jthread([unit, list = effectParameters(unit)](const std::stop_token& stop) {
    std::minstd_rand random(1);
    while (!stop.stop_requested()) {
      const EffectParameter& p = list[random() % list.size()];
      const float part = static_cast<float>(random()) / static_cast<float>(random.max());
      const AudioUnitParameter address{unit, p.id, kAudioUnitScope_Global, 0};
      AUParameterSet(nullptr, nullptr, &address, p.minValue + part * (p.maxValue - p.minValue), 0);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
}

void useByHand(OffscreenDisplay& display, NSSize size, double seconds) {
  std::minstd_rand random(2);
  const auto within = [&](float extent) { return static_cast<float>(random() % 1000) / 1000 * extent; };
  const double end = NSDate::timeIntervalSinceReferenceDate() + seconds;
  while (NSDate::timeIntervalSinceReferenceDate() < end) {
    display.press({100 + within(size.width), 100 + within(size.height)});
    for (int i = 0; i < 4; ++i) {
      display.moveBy(within(20) - 10, within(20) - 10);
      run(0.01);
    }
    display.release();
    display.wheel({100 + within(size.width), 100 + within(size.height)}, 1);
    run(0.01);
  }
}

TEST(BusyHost, PlaysFollowsAndIsTurnedAtOnce) {
  RegisterEffects();
  std::string error;
  const auto bundle = EditorBundle::linked(TOVIN_BUNDLE, &TovinBundleClasses, error);
  ASSERT_TRUE(bundle) << error;
  OffscreenDisplay display;
  const ComponentDescription all{.componentType = FourCharCode("aufx")};
  for (Component c = FindNextComponent(nullptr, &all); c; c = FindNextComponent(c, &all)) {
    SCOPED_TRACE(effectCode(c));
    const EffectInstance effect = openEffect(c);
    const auto runner = EffectRunner::make(effect.get(), {sampleRate}, error);
    auto source = SignalSource::named("noise", sampleRate, error);
    ASSERT_TRUE(runner && source) << error;
    const auto editor = bundle->editorFor(effect.get());
    const auto window = std::make_shared<NSWindow>(NSRect{{100, 100}, editor->frame().size},
                                                   NSTitledWindowMask, NSBackingStoreBuffered, false);
    window->setContentView(editor);
    window->makeKeyAndOrderFront();
    RealTimePlayer player(*runner, *source);
    player.start();
    const std::jthread automated = automation(effect.get());
    useByHand(display, editor->frame().size, secondsInAll() / 15);
    EXPECT_GT(display.windows().front()->takePresented().size(), 3u);
    window->close();
  }
}

}  // namespace
