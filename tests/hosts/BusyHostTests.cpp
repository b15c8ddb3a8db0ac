// Every thread of the stand-alone host at work: audio, automation and the interface with a hand on it. What
// it is for is to run under the thread sanitizer, for as many seconds as TOVIN_BUSY_SECONDS says.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

#include "EditorStage.h"
#include "EffectParameters.h"
#include "EffectRunner.h"
#include "RealTimePlayer.h"
#include "SignalSource.h"

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
std::jthread automation(EditorStage& stage) {
  return std::jthread([&stage, list = effectParameters(stage.unit.get())](const std::stop_token& stop) {
    std::minstd_rand random(1);
    while (!stop.stop_requested()) {
      const EffectParameter& p = list[random() % list.size()];
      const float part = static_cast<float>(random()) / static_cast<float>(random.max());
      stage.set(p.id, p.minValue + part * (p.maxValue - p.minValue));
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
}

void useByHand(EditorStage& stage, double seconds) {
  std::minstd_rand random(2);
  const auto within = [&](float extent) { return static_cast<float>(random() % 1000) / 1000 * extent; };
  const auto anywhere = [&] {
    const float x = within(NSWidth(stage.editor->frame()));
    return NSPoint{x, within(NSHeight(stage.editor->frame()))};
  };
  const double end = NSDate::timeIntervalSinceReferenceDate() + seconds;
  while (NSDate::timeIntervalSinceReferenceDate() < end) {
    stage.press(anywhere());
    for (int i = 0; i < 4; ++i) {
      stage.moveBy(within(20) - 10, within(20) - 10);
      run(0.01);
    }
    stage.release();
    stage.wheel(anywhere(), 1);
    run(0.01);
  }
}

TEST(BusyHost, PlaysFollowsAndIsTurnedAtOnce) {
  EditorStage::bundle();
  for (const Component effect : allEffects()) {
    SCOPED_TRACE(effectCode(effect));
    EditorStage stage;
    stage.open(effect);
    NSDate::setClock(nullptr);  // from here on time is real
    std::string error;
    const auto runner = EffectRunner::make(stage.unit.get(), {sampleRate}, error);
    auto source = SignalSource::named("noise", sampleRate, error);
    ASSERT_TRUE(runner && source) << error;
    RealTimePlayer player(*runner, *source);
    player.start();
    const std::jthread automated = automation(stage);
    useByHand(stage, secondsInAll() / 15);
    EXPECT_GT(stage.takeDamage().size(), 3u);
    stage.window->close();
  }
}

}  // namespace
