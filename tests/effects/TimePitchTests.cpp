// Transposing: exact pitch and delay with every engine, and changes that cannot be heard as such.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <thread>

#include "EffectBench.h"

namespace {

enum : AudioUnitParameterID { pitch = 1, smoothness = 3 };

constexpr UInt32 qualities[] = {127, 96, 64, 32, 0};

/// That a tone of 440 Hz was transposed by that, from the time between its first and last zero.
void expectPitch(const std::vector<float>& output, size_t from, double cents) {
  const auto samples = std::span(output).subspan(from, 30000);
  std::vector<double> zeros;  // upwards, in frames
  for (size_t i = 1; i < samples.size(); ++i)
    if (samples[i - 1] < 0 && samples[i] >= 0)
      zeros.push_back(static_cast<double>(i) - samples[i] / (samples[i] - samples[i - 1]));
  ASSERT_GT(zeros.size(), 100);
  const double heard = static_cast<double>(zeros.size() - 1) / (zeros.back() - zeros.front()) * 44100;
  EXPECT_NEAR(1200 * std::log2(heard / 440), cents, 2);
}

/// That no sample is further from the last than in a tone of -12 dBFS and that pitch, or little more.
void expectNoStep(const std::vector<float>& samples, size_t from, double cents) {
  double step = 0;
  for (size_t i = from; i + 1 < samples.size(); ++i)
    step = std::max<double>(step, std::fabs(samples[i + 1] - samples[i]));
  EXPECT_LT(step, 1.3 * 0.25 * 2 * std::numbers::pi * 440 * std::exp2(cents / 1200) / 44100);
}

}  // namespace

TEST(TimePitch, TransposesExactlyInEveryQualityAndSmoothnessAndBendsWithoutAStep) {
  for (const UInt32 quality : qualities) {
    for (const double smooth : {0.0, 0.5, 1.0}) {
      SCOPED_TRACE(std::to_string(quality) + " " + std::to_string(smooth));
      EffectBench bench("tmpt");
      bench.setQuality(quality);
      bench.set({{pitch, -1200}, {smoothness, smooth}});
      bench.reset();
      const auto output = bench.render(sine(440, -12, 98000), 49000, [&] { bench.set(pitch, 701.955); })[1];
      expectPitch(output, 17000, -1200);
      expectPitch(output, 65000, 701.955);
      expectNoStep(output, 20000, 701.955);
    }
  }
}

// The middle of a swell of 0.1 seconds, also after the pitch had been another one.
TEST(TimePitch, KeepsTheTimeAtEveryPitch) {
  constexpr double middle = 33000;
  std::vector<float> swell(66000);
  for (size_t i = 0; i < swell.size(); ++i) {
    const double s = (static_cast<double>(i) - middle) / 44100;  // seconds
    swell[i] = static_cast<float>(0.5 * std::exp(-1250 * s * s) * std::sin(2 * std::numbers::pi * 440 * s));
  }
  for (const UInt32 quality : qualities) {
    for (const auto& [before, cents] : {std::pair(0, 700), {1200, -1200}}) {
      EffectBench bench("tmpt", {.inputs = 1, .outputs = 1});
      bench.setQuality(quality);
      bench.set(pitch, before);
      bench.reset();
      const auto output = bench.render({swell}, 10000, [&] { bench.set(pitch, cents); })[0];
      double energy = 0, moment = 0;
      for (size_t i = 0; i < output.size(); ++i) {
        const double square = output[i] * output[i];
        energy += square;
        moment += static_cast<double>(i) * square;
      }
      const double late = (moment / energy - middle) / 44100 - bench.latency();
      const double allowed = cents == -1200 ? 0.025 : quality >= 96 ? 0.008 : 0.016;
      EXPECT_NEAR(late, 0, allowed) << quality << " " << before << " " << cents;
    }
  }
}

TEST(TimePitch, ChangesItsEngineAndWindowWithoutAStep) {
  for (const auto& [quality, smooth] : {std::pair(0u, 0.5), {64u, 1.0}}) {
    EffectBench bench("tmpt"), unchanged("tmpt");
    for (EffectBench* each : {&bench, &unchanged}) {
      each->set(pitch, 300);
      each->reset();
    }
    std::vector<float> output;
    int changed = 0;  // rounds since the new engine, which is made on another thread, is heard
    for (int round = 0; round < 200 && changed < 4; ++round) {
      if (round == 1) bench.setQuality(quality);
      if (round == 1) bench.set(smoothness, smooth);
      const auto input = sine(440, -12, 22050), more = bench.render(input);
      output.insert(output.end(), more[0].begin(), more[0].end());
      if (changed > 0 || more != unchanged.render(input)) ++changed;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_EQ(changed, 4);
    expectNoStep(output, 20000, 300);
    expectPitch(output, output.size() - 32000, 300);
  }
}
