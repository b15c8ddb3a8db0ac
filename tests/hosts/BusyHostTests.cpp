// The stand-alone host at work in real time.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <random>
#include <sndfile.hh>
#include <thread>

#include "EditorStage.h"
#include "EffectParameters.h"
#include "EffectRunner.h"
#include "RealTimePlayer.h"
#include "SignalSource.h"

namespace {

/// Noise through an effect.
struct Sound {
  explicit Sound(AudioUnit unit) : runner(EffectRunner::make(unit, {}, error)) {}

  std::string error;
  std::unique_ptr<EffectRunner> runner;
  std::optional<SignalSource> source = SignalSource::named("noise", 44100, error);
  RealTimePlayer player{*runner, *source};
};

std::vector<float> nextOf(SignalSource& source, size_t frames) {
  std::vector<float> left(frames);
  float* const channel = left.data();
  source.read(&channel, 1, static_cast<UInt32>(frames));
  return left;
}

TEST(RealTimePlayer, PlaysAtTheSignalsPaceAndStopsAsOftenAsAsked) {
  EditorStage::bundle();
  const Unit unit = openUnit(registeredEffect("sdly"));
  Sound sound(unit.get());
  testing::internal::CaptureStderr();
  const auto start = std::chrono::steady_clock::now();
  for (int round = 0; round < 3; ++round) {
    sound.player.start();
    EXPECT_TRUE(sound.player.isPlaying());
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    sound.player.stop();
    EXPECT_FALSE(sound.player.isPlaying());
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");  // drivers complain at length when there is no card
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

  // The samples that come next tell how much of the loop was played.
  const auto next = nextOf(*sound.source, 8);
  sound.source->rewind();
  const auto loop = nextOf(*sound.source, sound.source->loopFrames());
  const auto found = std::search(loop.begin(), loop.end(), next.begin(), next.end());
  const auto played = static_cast<double>(found - loop.begin());
  EXPECT_GE(played, 3 * 512);
  EXPECT_LE(played, (elapsed.count() + 0.3) * 44100);
}

TEST(EffectRunner, PullsBothChannelsOfAFileThroughBlocksOfItsSize) {
  const std::string file = testing::TempDir() + "tovin_loop.wav";
  const std::vector<float> frames{0.125f, 0.25f, 0.375f, -0.5f};
  SndfileHandle(file, SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 2, 44100).write(frames.data(), 4);
  EditorStage::bundle();
  const Unit unit = openUnit(registeredEffect("sdly"));
  std::string error;
  const auto runner = EffectRunner::make(unit.get(), {.maximumFrames = 2}, error);
  auto source = SignalSource::named(file, 44100, error);
  std::vector<float> left(5), right(5);
  float* const heard[] = {left.data(), right.data()};
  ASSERT_EQ(runner->pull(*source, heard, 5), noErr);
  EXPECT_EQ(left, (std::vector<float>{0.125f, 0.375f, 0.125f, 0.375f, 0.125f}));
  EXPECT_EQ(right, (std::vector<float>{0.25f, -0.5f, 0.25f, -0.5f, 0.25f}));
}

/// Sets parameters at random, a thousand a second, from a thread of its own.
std::jthread automation(EditorStage& stage) {
  return std::jthread([&stage, list = effectParameters(stage.unit.get())](const std::stop_token& stop) {
    std::minstd_rand random(1);
    while (!stop.stop_requested()) {
      const EffectParameter& p = list[random() % list.size()];
      stage.set(p.id, std::uniform_real_distribution<float>(p.minValue, p.maxValue)(random));
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
}

void useByHand(EditorStage& stage, double seconds) {
  std::minstd_rand random(2);
  const auto within = [&](float extent) { return static_cast<float>(random() % 1000) / 1000 * extent; };
  const NSSize size = stage.editor->frame().size;
  const double end = NSDate::timeIntervalSinceReferenceDate() + seconds;
  while (NSDate::timeIntervalSinceReferenceDate() < end) {
    stage.press({within(size.width), within(size.height)});
    for (int i = 0; i < 4; ++i) {
      stage.moveBy(within(20) - 10, within(20) - 10);
      NSRunLoop::currentRunLoop().run(NSDate::timeIntervalSinceReferenceDate() + 0.01);
    }
    stage.release();
    stage.wheel({within(size.width), within(size.height)}, 1);
  }
}

// Audio, automation and the interface with a hand on it: for the thread sanitizer, and for as many seconds as
// TOVIN_BUSY_SECONDS says.
TEST(BusyHost, PlaysFollowsAndIsTurnedAtOnce) {
  const char* seconds = std::getenv("TOVIN_BUSY_SECONDS");
  EditorStage::bundle();
  for (const Component effect : allEffects()) {
    SCOPED_TRACE(effectCode(effect));
    EditorStage stage;
    stage.open(effect);
    NSDate::setClock(nullptr);  // from here on time is real
    Sound sound(stage.unit.get());
    sound.player.start();
    const std::jthread automated = automation(stage);
    useByHand(stage, (seconds ? std::atof(seconds) : 4) / 15);
    EXPECT_GT(stage.takeDamage().size(), 3u);
    stage.window->close();
  }
}

}  // namespace
