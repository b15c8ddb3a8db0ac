// The delay line: exact where it can be, in between where it cannot, what feedback adds, changes.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "EffectBench.h"

namespace {

enum : AudioUnitParameterID { mix, delayTime, feedback, cutoff };

}  // namespace

TEST(Delay, MeetsWholeNumbersOfFramesExactly) {
  for (const double rate : {8000.0, 44100.0, 384000.0}) {
    EffectBench bench("dely", {.sampleRate = rate});
    for (const double frames : {0.0, 1.0, 2.0, 3.0, 441.0, 7919.0, 3 * rate}) {
      bench.set({{mix, 100}, {delayTime, frames / rate}, {feedback, 0}});
      bench.reset();
      const auto input = noise(2, static_cast<size_t>(frames) + 1000, 1.0f);
      const auto output = bench.render(input, 512);
      const auto shift = static_cast<std::ptrdiff_t>(frames);
      for (size_t c = 0; c < 2; ++c)
        EXPECT_TRUE(std::equal(output[c].begin() + shift, output[c].end(), input[c].begin()))
            << rate << " " << frames;
    }
  }
}

TEST(Delay, LiesBetweenTwoFramesWhereTheTimeDoes) {
  EffectBench bench("dely");
  for (const double frames : {0.4, 1.5, 2.25, 3.5, 100.37, 22050.5}) {
    bench.set({{mix, 100}, {delayTime, frames / 44100}, {feedback, 0}});
    bench.reset();
    const double turn = 2 * std::numbers::pi * 1000 / 44100;
    const auto output = bench.render(sine(1000, 0, 40000), 512)[0];
    for (size_t i = 30000; i < output.size(); ++i)
      ASSERT_NEAR(output[i], std::sin(turn * (static_cast<double>(i) - frames)), frames < 3 ? 0.003 : 2e-4)
          << frames;
  }
}

TEST(Delay, ComesBackWithTheFeedbackAndForEverAtAHundredPerCent) {
  for (const double frames : {1.0, 100.0}) {
    for (const double percent : {-100.0, -50.0, 25.0, 100.0}) {
      EffectBench bench("dely", {.inputs = 1, .outputs = 1});
      bench.set({{mix, 100}, {delayTime, frames / 44100}, {feedback, percent}, {cutoff, 22050}});
      bench.reset();
      const auto output = bench.render(impulse(1, 10000), 512)[0];
      for (size_t i = 0; i < output.size(); ++i) {
        const auto echo = static_cast<double>(i) / frames - 1;
        const bool heard = echo >= 0 && echo == std::floor(echo);
        ASSERT_NEAR(output[i], heard ? std::pow(percent / 100, echo) : 0, 1e-6) << percent << " " << i;
      }
      EXPECT_EQ(std::fabs(percent) == 100, bench.tailTime() == 30);
    }
  }
}

TEST(Delay, TakesOneFrameInTheLoopWithoutAnyDelay) {
  EffectBench bench("dely", {.inputs = 1, .outputs = 1});
  bench.set({{mix, 100}, {delayTime, 0}, {feedback, -50}, {cutoff, 22050}});
  bench.reset();
  const auto output = bench.render(impulse(1, 20), 20)[0];
  for (size_t i = 0; i < output.size(); ++i)
    EXPECT_NEAR(output[i], std::pow(-0.5, static_cast<double>(i)), 1e-6);
}

TEST(Delay, DampsTheSecondEchoButNotTheFirst) {
  EffectBench bench("dely");
  bench.set({{mix, 100}, {delayTime, 0.2}, {feedback, 100}, {cutoff, 2000}});
  bench.reset();
  auto input = sine(2000, 0, 44100);
  for (auto& channel : input) std::fill(channel.begin() + 8000, channel.end(), 0.0f);
  const auto output = bench.render(input, 512)[1];
  const auto peak = [&](std::ptrdiff_t from) {
    return *std::max_element(output.begin() + from, output.begin() + from + 4000);
  };
  EXPECT_NEAR(peak(8820 + 3000), 1, 1e-3);
  EXPECT_NEAR(peak(2 * 8820 + 3000), std::numbers::sqrt2 / 2, 0.005);
}

TEST(Delay, ChangesWithoutAClick) {
  for (const AudioUnitParameterID id : {mix, delayTime, feedback, cutoff}) {
    for (const bool up : {true, false}) {
      EffectBench bench("dely");
      constexpr std::pair<double, double> ends[] = {{0, 100}, {0.0001, 0.0123}, {-80, 80}, {10, 22050}};
      const auto [least, most] = ends[id];
      bench.set({{delayTime, 0.0123}, {id, up ? least : most}});
      bench.reset();
      const auto output =
          bench.renderAround(sine(100, -12, 88200), 44320, [&] { bench.set(id, up ? most : least); });
      EXPECT_LT(largestBend(output[0], 40000), 0.003) << id << up;
      bench.reset();
      const auto steady = bench.render(sine(100, -12, 88200), 512);
      for (size_t i = 80000; i < 88200; ++i) ASSERT_NEAR(output[0][i], steady[0][i], 1e-4) << id << " " << i;
    }
  }
}
