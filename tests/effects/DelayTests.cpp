// The delays: exact where they can be, in between where they cannot, and what feedback adds.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "EffectBench.h"

namespace {

enum : AudioUnitParameterID { mix, delayTime, feedback, cutoff };

/// That noise comes out after so many frames as it went in, and silence before.
void expectDelayed(EffectBench& bench, UInt32 frames) {
  bench.reset();
  const auto input = noise(2, frames + 3000, 1.0f);
  const auto output = bench.render(input);
  EXPECT_EQ(std::count(output[1].begin(), output[1].begin() + frames, 0.0f), frames);
  for (size_t c = 0; c < 2; ++c)
    EXPECT_TRUE(std::equal(output[c].begin() + frames, output[c].end(), input[c].begin())) << frames;
}

}  // namespace

TEST(Delays, MeetWholeNumbersOfFramesExactly) {
  EffectBench inFrames("sdly", {.maximumFrames = 512});
  for (const UInt32 frames : {0u, 1u, 511u, 512u, 44100u}) {
    inFrames.set(0, frames);
    expectDelayed(inFrames, frames);
  }
  for (const double rate : {8000.0, 44100.0, 384000.0}) {
    EffectBench inSeconds("dely", {.sampleRate = rate});
    for (const double frames : {0.0, 1.0, 2.0, 441.0, 3 * rate}) {
      inSeconds.set({{mix, 100}, {delayTime, frames / rate}, {feedback, 0}});
      expectDelayed(inSeconds, static_cast<UInt32>(frames));
    }
  }
}

// Quiet sound through the limiter, and transposing without any blend.
TEST(Delays, AreTheLatencyWhereTheSoundIsLeftAlone) {
  for (const double rate : {8000.0, 11025.0, 384000.0}) {
    EffectBench limiter("lmtr", {.sampleRate = rate}), pitcher("tmpt", {.sampleRate = rate});
    expectDelayed(limiter, static_cast<UInt32>(std::lround(limiter.latency() * rate)));
    const auto latency = static_cast<UInt32>(std::lround(pitcher.latency() * rate));
    for (const UInt32 quality : {127u, 0u}) {
      pitcher.setQuality(quality);
      pitcher.set({{1, quality ? -2400 : 700}, {2, 0}, {3, quality ? 1 : 0}});
      expectDelayed(pitcher, latency);
    }
  }
}

TEST(Delay, LiesBetweenTwoFramesWhereTheTimeDoes) {
  EffectBench bench("dely");
  for (const double frames : {0.4, 1.5, 3.5, 22050.5}) {
    bench.set({{mix, 100}, {delayTime, frames / 44100}, {feedback, 0}});
    bench.reset();
    const auto output = bench.render(sine(1000, 0, 40000))[0];
    const double turn = 2 * std::numbers::pi * 1000 / 44100, allowed = frames < 3 ? 0.003 : 2e-4;
    for (size_t i = 30000; i < output.size(); ++i)
      ASSERT_NEAR(output[i], std::sin(turn * (static_cast<double>(i) - frames)), allowed) << frames;
  }
}

// Without any delay the loop takes one frame. The mix lets 0.8 of the input and 0.6 of the echoes through.
TEST(Delay, ComesBackWithTheFeedback) {
  for (const double frames : {0.0, 100.0}) {
    for (const double percent : {-100.0, -50.0, 25.0}) {
      EffectBench bench("dely", {.inputs = 1, .outputs = 1});
      bench.set({{mix, 36}, {delayTime, frames / 44100}, {feedback, percent}, {cutoff, 22050}});
      bench.reset();
      const auto output = bench.render(impulse(1, 10000))[0];
      for (size_t i = 0; i < output.size(); ++i) {
        const double echo = (static_cast<double>(i) - frames) / std::max(1.0, frames);
        const bool heard = echo >= 0 && echo == std::floor(echo);
        const double dry = i == 0 ? 0.8 : 0, wet = heard ? 0.6 * std::pow(percent / 100, echo) : 0;
        ASSERT_NEAR(output[i], dry + wet, 1e-6) << percent << " " << i;
      }
    }
  }
}

TEST(Delay, DampsTheSecondEchoButNotTheFirst) {
  EffectBench bench("dely");
  bench.set({{mix, 100}, {delayTime, 0.2}, {feedback, 100}, {cutoff, 2000}});
  bench.reset();
  const auto output = bench.render(impulse(2, 30000))[1];
  const auto echo = std::span(output).subspan(8820);
  EXPECT_NEAR(magnitude(echo.first(8820), 2000), 1, 1e-3);
  EXPECT_NEAR(magnitude(echo.subspan(8820, 8820), 2000), std::numbers::sqrt2 / 2, 0.005);
}
