// Transposing: exact pitch and delay with every engine, and changes that cannot be heard as such.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <complex>
#include <numbers>
#include <thread>

#include "EffectBench.h"

namespace {

enum : AudioUnitParameterID { pitch = 1, blend, smoothness, tightness };

constexpr UInt32 qualities[] = {127, 96, 64, 32, 0};

double ratioOf(double cents) {
  return std::exp2(cents / 1200);
}

/// That a tone of 440 Hz was transposed by that: how far it turns on between two windows, in cents.
void expectPitch(const std::vector<float>& samples, size_t from, double cents) {
  constexpr size_t window = 22050, hop = 8820;
  const double about = 440 * ratioOf(cents);
  const auto phase = [&](size_t start) {
    std::complex<double> sum;
    for (size_t i = 0; i < window; ++i) {
      const double weight = std::pow(std::sin(std::numbers::pi * static_cast<double>(i) / window), 2);
      const double turn = -2 * std::numbers::pi * about * static_cast<double>(start + i) / 44100;
      sum += std::polar(weight * samples[start + i], turn);
    }
    return std::arg(sum);
  };
  const double turned = std::remainder(phase(from + hop) - phase(from), 2 * std::numbers::pi);
  const double heard = about + turned * 44100 / (2 * std::numbers::pi * hop);
  EXPECT_NEAR(1200 * std::log2(heard / about), 0, 2);
}

/// That no sample is further from the last than in a tone of -12 dBFS and that pitch, or little more.
void expectNoStep(const std::vector<float>& samples, size_t from, double cents) {
  double step = 0;
  for (size_t i = from; i + 1 < samples.size(); ++i)
    step = std::max<double>(step, std::fabs(samples[i + 1] - samples[i]));
  EXPECT_LT(step, 1.3 * 0.25 * 2 * std::numbers::pi * 440 * ratioOf(cents) / 44100);
}

}  // namespace

TEST(TimePitch, WithoutBlendIsTheInputLaterByItsLatencyWhateverTheSetting) {
  for (const double rate : {8000.0, 44100.0, 96000.0}) {
    EffectBench bench("tmpt", {.sampleRate = rate});
    const double promised = bench.latency();
    const auto delay = static_cast<std::ptrdiff_t>(std::lround(promised * rate));
    EXPECT_NEAR(promised * rate, static_cast<double>(delay), 1e-6);
    const auto input = noise(2, static_cast<size_t>(delay) + 5000, 1.0f);
    for (const UInt32 quality : {127u, 0u}) {
      bench.setQuality(quality);
      bench.set({{blend, 0}, {pitch, quality ? -2400 : 700}, {smoothness, quality ? 1 : 0}});
      bench.reset();
      const auto output = bench.render(input);
      for (size_t c = 0; c < 2; ++c)
        EXPECT_TRUE(std::equal(output[c].begin() + delay, output[c].end(), input[c].begin())) << rate;
      EXPECT_EQ(bench.latency(), promised);
    }
  }
}

TEST(TimePitch, TransposesExactlyInEveryQualityAndSmoothnessAndBendsWithoutAStep) {
  for (const UInt32 quality : qualities) {
    for (const double smooth : {0.0, 0.5, 1.0}) {
      SCOPED_TRACE(std::to_string(quality) + " " + std::to_string(smooth));
      EffectBench bench("tmpt");
      bench.setQuality(quality);
      bench.set({{pitch, -1200}, {smoothness, smooth}});
      bench.reset();
      const auto output =
          bench.renderAround(sine(440, -12, 98000), 49000, [&] { bench.set(pitch, 701.955); })[1];
      expectPitch(output, 17000, -1200);
      expectPitch(output, 65000, 701.955);
      expectNoStep(output, 20000, 701.955);
    }
  }
}

// The middle of a swell of 0.1 seconds, also after the pitch had been another one.
TEST(TimePitch, KeepsTheTimeAtEveryPitch) {
  constexpr double middle = 33000;
  EffectBench::Samples swell(2, std::vector<float>(66000));
  for (size_t i = 0; i < 66000; ++i) {
    const double seconds = (static_cast<double>(i) - middle) / 44100;
    swell[0][i] = swell[1][i] = static_cast<float>(0.5 * std::exp(-1250 * seconds * seconds) *
                                                   std::sin(2 * std::numbers::pi * 440 * seconds));
  }
  for (const UInt32 quality : qualities) {
    for (const auto& [before, cents] : {std::pair(0, 700), {-1200, 0}, {1200, -1200}, {1200, -500}}) {
      EffectBench bench("tmpt");
      bench.setQuality(quality);
      bench.set(pitch, before);
      bench.reset();
      const auto output = bench.renderAround(swell, 10000, [&] { bench.set(pitch, cents); })[0];
      double energy = 0, moment = 0;
      for (size_t i = 0; i < output.size(); ++i) {
        energy += double{output[i]} * output[i];
        moment += static_cast<double>(i) * output[i] * output[i];
      }
      const double late = (moment / energy - middle) / 44100 - bench.latency();
      const double allowed = cents == -1200 ? 0.025 : quality >= 96 ? 0.008 : 0.016;
      EXPECT_NEAR(late, 0, allowed) << quality << " " << before << " " << cents;
    }
  }
}

TEST(TimePitch, ChangesItsEngineAndWindowWithoutAStep) {
  struct Kind {
    UInt32 quality;
    double smoothness;
  };
  constexpr Kind kinds[] = {{127, 0.5}, {0, 0.5}, {64, 1}, {32, 0}, {127, 0}};
  const auto input = sine(440, -12, 22050);
  for (size_t i = 1; i < std::size(kinds); ++i) {
    SCOPED_TRACE(i);
    EffectBench bench("tmpt"), unchanged("tmpt");
    for (EffectBench* each : {&bench, &unchanged}) {
      each->setQuality(kinds[i - 1].quality);
      each->set({{pitch, 300}, {smoothness, kinds[i - 1].smoothness}});
      each->reset();
    }
    std::vector<float> output;
    bool isChanged = false;
    const auto goOn = [&] {
      const auto more = bench.render(input)[0];
      output.insert(output.end(), more.begin(), more.end());
      if (!isChanged) isChanged = more != unchanged.render(input)[0];
    };
    goOn();
    bench.setQuality(kinds[i].quality);
    bench.set(smoothness, kinds[i].smoothness);
    for (int round = 0; round < 200 && !isChanged; ++round) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));  // it is made on another thread
      goOn();
    }
    for (int round = 0; round < 3; ++round) goOn();
    EXPECT_TRUE(isChanged);
    expectNoStep(output, 20000, 300);
    expectPitch(output, output.size() - 32000, 300);
  }
}
