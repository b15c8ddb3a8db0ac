#include "RealTimePlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include "EffectInstance.h"
#include "EffectRunner.h"
#include "RegisterEffects.h"
#include "SignalSource.h"

using namespace std::chrono_literals;

namespace {

EffectInstance openSampleDelay() {
  RegisterEffects();
  const ComponentDescription wanted{FourCharCode("aufx"), FourCharCode("sdly")};
  return openEffect(FindNextComponent(nullptr, &wanted));
}

float* const* channels(std::vector<float> (&memory)[2], UInt32 frames) {
  static thread_local float* pointers[2];
  for (int c = 0; c < 2; ++c) {
    memory[c].resize(frames);
    pointers[c] = memory[c].data();
  }
  return pointers;
}

}  // namespace

TEST(RealTimePlayer, PlaysAtTheSignalsPaceAndStopsAtOnceAsOftenAsAsked) {
  const EffectInstance effect = openSampleDelay();
  std::string error;
  const auto runner = EffectRunner::make(effect.get(), {}, error);
  ASSERT_NE(runner, nullptr) << error;
  auto source = SignalSource::named("noise", 44100, error);
  testing::internal::CaptureStderr();
  const auto start = std::chrono::steady_clock::now();
  {
    RealTimePlayer player(*runner, *source);
    for (int round = 0; round < 3; ++round) {
      player.start();
      player.start();
      EXPECT_TRUE(player.isPlaying());
      EXPECT_NE(player.outputName(), "");
      std::this_thread::sleep_for(60ms);
      const auto before = std::chrono::steady_clock::now();
      player.stop();
      EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
      EXPECT_FALSE(player.isPlaying());
    }
    player.start();  // ended by the destructor
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");  // drivers complain at length when there is no card

  // The samples that come next tell how much of the loop was played.
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  auto fresh = SignalSource::named("noise", 44100, error);
  std::vector<float> whole[2], next[2];
  const auto loop = static_cast<UInt32>(fresh->loopFrames());
  fresh->read(channels(whole, loop), 2, loop);
  source->read(channels(next, 8), 2, 8);
  const auto found = std::search(whole[0].begin(), whole[0].end(), next[0].begin(), next[0].end());
  const auto played = static_cast<double>(found - whole[0].begin());
  EXPECT_GE(played, 3 * 512);
  EXPECT_LE(played, (elapsed.count() + 0.3) * 44100);
}
