// What a limiter promises: silence about its work, full scale at most, its times and its latency.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "EffectBench.h"
#include "LookAheadEnvelope.h"

namespace {

using Samples = EffectBench::Samples;

}  // namespace

TEST(PeakLimiter, DelaysByItsLatencyAndLeavesQuietSoundAlone) {
  for (const double rate : {8000.0, 11025.0, 44100.0, 96000.0, 384000.0}) {
    EffectBench bench("lmtr", {.sampleRate = rate});
    EXPECT_NEAR(bench.latency(), 0.03, 0.5 / rate);
    const auto delay = std::lround(bench.latency() * rate);
    for (const double attack : {0.001, 0.03}) {
      bench.set(0, attack);
      bench.reset();
      const auto input = noise(2, 30000, 1.0f);
      const auto output = bench.render(input);
      for (size_t c = 0; c < 2; ++c) {
        EXPECT_TRUE(std::equal(output[c].begin() + delay, output[c].end(), input[c].begin())) << rate;
        EXPECT_EQ(std::count(output[c].begin(), output[c].begin() + delay, 0.0f), delay) << rate;
      }
    }
  }
}

TEST(PeakLimiter, NeverExceedsFullScale) {
  constexpr size_t frames = 60000;
  Samples impulses(2, std::vector<float>(frames, 0.001f));
  Samples square(2, std::vector<float>(frames));
  for (size_t i = 0; i < frames; ++i) square[0][i] = square[1][i] = i / 441 % 2 ? 1.0f : -1.0f;
  for (size_t i = 97; i < frames; i += i / 4) impulses[i % 2][i] = i % 3 ? 1.0f : -0.7f;
  for (const double rate : {8000.0, 44100.0, 384000.0}) {
    for (const Samples& input : {noise(2, frames, 1.0f), square, impulses, sine(30, 0, frames, rate)}) {
      for (const double attack : {0.001, 0.012, 0.03}) {
        EffectBench bench("lmtr", {.sampleRate = rate});
        bench.set({{0, attack}, {1, 0.001}, {2, 40}});
        bench.reset();
        float peak = 0;
        for (const auto& channel : bench.render(input, 64))
          for (const float sample : channel) peak = std::max(peak, std::fabs(sample));
        EXPECT_LE(peak, 1.0f) << rate << " " << attack;
        EXPECT_GT(peak, 0.99f) << rate << " " << attack;
      }
    }
  }
}

TEST(PeakLimiter, ReducesOverTheAttackAndRecoversInTheDecay) {
  for (const double attack : {0.002, 0.012, 0.03}) {
    EffectBench bench("lmtr", {.inputs = 1, .outputs = 1});
    bench.set({{0, attack}, {1, 0.05}});
    bench.reset();
    Samples input(1, std::vector<float>(44100, 0.1f));
    input[0][20000] = 10;
    const auto output = bench.render(input, 512)[0];
    const auto reduction = [&](double seconds) {  // after the peak is heard
      const auto i = static_cast<size_t>(21323 + std::lround(seconds * 44100));
      return 20 * std::log10(input[0][i - 1323] / output[i]);
    };
    EXPECT_NEAR(reduction(-attack - 0.0001), 0, 1e-4) << attack;
    EXPECT_NEAR(reduction(-attack / 2), 10, 0.3) << attack;
    EXPECT_NEAR(reduction(0), 20, 1e-4) << attack;
    EXPECT_NEAR(reduction(attack + 0.1) / reduction(attack + 0.05), std::exp(-1), 0.01) << attack;
  }
}

// Nothing is left for a clamp to cut off, and nothing jumps, even while the attack is being changed.
TEST(LookAheadEnvelope, IsNeverBelowTheDemandOfTheFrameThatIsHeard) {
  constexpr UInt32 lookAhead = 240, highest = 60;  // frames, dB
  std::mt19937 source(5);
  const auto random = [&](UInt32 below) { return static_cast<UInt32>(source() % below); };
  LookAheadEnvelope envelope;
  envelope.setLookAhead(lookAhead);
  envelope.setDecay(0.995);
  for (const auto& [pause, leastAttack] : {std::pair(1u, 1u), {50, 1}, {300, 60}, {900, 60}}) {
    envelope.clear(lookAhead);
    std::vector<double> demands;
    double before = 0;
    for (size_t i = 0; i < 200000; ++i) {
      if (i % pause == 0) envelope.setAttack(leastAttack + random(lookAhead - leastAttack + 1));
      demands.push_back(random(100) == 0 ? random(highest) : 0);
      const double given = envelope.next(demands[i]);
      ASSERT_LE(std::fabs(given - before), 2 * highest / leastAttack) << pause << " " << i;
      if (i >= lookAhead) {
        ASSERT_GE(given, demands[i - lookAhead] - 1e-6) << pause << " " << i;
      }
      before = given;
    }
  }
}
