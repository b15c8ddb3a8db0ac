// What a limiter promises: silence about its work, full scale at most, its times and its latency.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "EffectBench.h"

using Samples = EffectBench::Samples;

TEST(PeakLimiter, DelaysByItsLatencyAndLeavesQuietSoundAlone) {
  for (const double rate : {8000.0, 11025.0, 384000.0}) {
    EffectBench bench("lmtr", {.sampleRate = rate});
    EXPECT_NEAR(bench.latency(), 0.03, 0.5 / rate);
    const auto delay = std::lround(bench.latency() * rate);
    const auto input = noise(2, 30000, 1.0f), output = bench.render(input);
    EXPECT_EQ(std::count(output[0].begin(), output[0].begin() + delay, 0.0f), delay) << rate;
    for (size_t c = 0; c < 2; ++c)
      EXPECT_TRUE(std::equal(output[c].begin() + delay, output[c].end(), input[c].begin())) << rate;
  }
}

// Also while the attack is changed.
TEST(PeakLimiter, NeverExceedsFullScale) {
  constexpr size_t frames = 60000;
  Samples impulses(2, std::vector<float>(frames, 0.001f));
  for (size_t i = 97; i < frames; i += i / 4) impulses[i % 2][i] = i % 3 ? 1.0f : -0.7f;
  for (const double rate : {8000.0, 384000.0}) {
    for (const Samples& input : {noise(2, frames, 1.0f), impulses, sine(30, 0, frames, rate)}) {
      EffectBench bench("lmtr", {.sampleRate = rate});
      bench.set({{0, 0.03}, {1, 0.001}, {2, 40}});
      bench.reset();
      float peak = 0;
      for (const auto& channel : bench.renderAround(input, frames / 2, [&] { bench.set(0, 0.001); }))
        for (const float sample : channel) peak = std::max(peak, std::fabs(sample));
      EXPECT_LE(peak, 1.0f) << rate;
      EXPECT_GT(peak, 0.99f) << rate;
    }
  }
}

// Both channels alike: the peak is on the left, what it does is read on the right.
TEST(PeakLimiter, ReducesOverTheAttackAndRecoversInTheDecay) {
  for (const double attack : {0.002, 0.03}) {
    EffectBench bench("lmtr");
    bench.set({{0, attack}, {1, 0.05}});
    bench.reset();
    Samples input(2, std::vector<float>(44100, 0.1f));
    input[0][20000] = 10;
    const auto output = bench.render(input)[1];
    const auto reduction = [&](double seconds) {  // after the peak is heard
      return 20 * std::log10(0.1 / output[21323 + std::lround(seconds * 44100)]);
    };
    EXPECT_NEAR(reduction(-attack - 0.0001), 0, 1e-4) << attack;
    EXPECT_NEAR(reduction(-attack / 2), 10, 0.3) << attack;
    EXPECT_NEAR(reduction(0), 20, 1e-4) << attack;
    EXPECT_NEAR(reduction(attack + 0.1) / reduction(attack + 0.05), std::exp(-1), 0.01) << attack;
  }
}
