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

/// Of a sine that is known nearly, by how far it turns on between two windows.
double frequency(const std::vector<float>& samples, size_t from, double about) {
  constexpr size_t window = 22050, hop = 8820;
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
  return about + turned * 44100 / (2 * std::numbers::pi * hop);
}

double largestStep(const std::vector<float>& samples, size_t from) {
  double step = 0;
  for (size_t i = from; i + 1 < samples.size(); ++i)
    step = std::max<double>(step, std::fabs(samples[i + 1] - samples[i]));
  return step;
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
      const auto output = bench.render(input, 512);
      for (size_t c = 0; c < 2; ++c)
        EXPECT_TRUE(std::equal(output[c].begin() + delay, output[c].end(), input[c].begin())) << rate;
      EXPECT_EQ(bench.latency(), promised);
    }
  }
}

TEST(TimePitch, TransposesExactlyInEveryQualityAndSmoothness) {
  for (const UInt32 quality : qualities) {
    for (const double smooth : {0.0, 0.5, 1.0}) {
      EffectBench bench("tmpt");
      bench.setQuality(quality);
      for (const auto& [cents, ratio] : {std::pair(701.955, 1.5), std::pair(-1200.0, 0.5)}) {
        bench.set({{pitch, cents}, {smoothness, smooth}});
        bench.reset();
        const auto output = bench.render(sine(440, -12, 66150), 512)[1];
        EXPECT_NEAR(1200 * std::log2(frequency(output, 30000, 440 * ratio) / (440 * ratio)), 0, 2)
            << quality << " " << smooth << " " << cents;
      }
    }
  }
}

// The middle of a swell of 0.1 seconds, also after the pitch had been another one.
TEST(TimePitch, KeepsTheTimeAtEveryPitch) {
  constexpr double middle = 52920;
  EffectBench::Samples swell(2, std::vector<float>(88200));
  for (size_t i = 0; i < 88200; ++i) {
    const double seconds = (static_cast<double>(i) - middle) / 44100;
    swell[0][i] = swell[1][i] = static_cast<float>(0.5 * std::exp(-1250 * seconds * seconds) *
                                                   std::sin(2 * std::numbers::pi * 440 * seconds));
  }
  for (const UInt32 quality : qualities) {
    for (const double before : {0.0, -1200.0, 1200.0}) {
      for (const double cents : {0.0, -1200.0, -500.0, 700.0}) {
        EffectBench bench("tmpt");
        bench.setQuality(quality);
        bench.set({{pitch, before}});
        bench.reset();
        const auto output = bench.renderAround(swell, 10000, [&] { bench.set(pitch, cents); })[0];
        double energy = 0, moment = 0;
        for (size_t i = 0; i < output.size(); ++i) {
          energy += double{output[i]} * output[i];
          moment += static_cast<double>(i) * output[i] * output[i];
        }
        const double late = (moment / energy - middle) / 44100 - bench.latency();
        EXPECT_NEAR(late, 0,
                    cents == -1200  ? 0.025
                    : quality >= 96 ? 0.008
                                    : 0.016)
            << quality << " " << before << " " << cents;
      }
    }
  }
}

TEST(TimePitch, ChangesItsEngineAndWindowWithoutAStep) {
  struct Change {
    UInt32 quality;
    double smoothness, tightness;
  };
  constexpr Change changes[] = {{127, 0.5, 0.5}, {0, 0.5, 0.5}, {64, 1, 0}, {32, 0, 0.5}, {127, 0, 0.5}};
  const auto input = sine(440, -12, 22050);
  for (size_t i = 1; i < std::size(changes); ++i) {
    EffectBench bench("tmpt"), unchanged("tmpt");
    for (EffectBench* each : {&bench, &unchanged}) {
      each->setQuality(changes[i - 1].quality);
      each->set(
          {{pitch, 300}, {smoothness, changes[i - 1].smoothness}, {tightness, changes[i - 1].tightness}});
      each->reset();
    }
    auto output = bench.render(input, 512)[0], expected = unchanged.render(input, 512)[0];
    bench.setQuality(changes[i].quality);
    bench.set(smoothness, changes[i].smoothness);
    for (EffectBench* each : {&bench, &unchanged})  // takes effect at once
      each->set(tightness, changes[i].tightness);
    const auto goOn = [&] {
      const auto more = bench.render(input, 512)[0], same = unchanged.render(input, 512)[0];
      output.insert(output.end(), more.begin(), more.end());
      expected.insert(expected.end(), same.begin(), same.end());
    };
    for (int round = 0; round < 200 && output.back() == expected.back(); ++round) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));  // it is made on another thread
      goOn();
    }
    for (int round = 0; round < 3; ++round) goOn();
    EXPECT_NE(output, expected) << "changed " << i;
    const double heard = 440 * std::exp2(0.25);
    EXPECT_LT(largestStep(output, 20000), 1.1 * 0.25 * 2 * std::numbers::pi * heard / 44100) << i;
    EXPECT_NEAR(1200 * std::log2(frequency(output, output.size() - 32000, heard) / heard), 0, 2) << i;
  }
}

TEST(TimePitch, BendsThePitchWithoutAStep) {
  for (const UInt32 quality : qualities) {
    EffectBench bench("tmpt");
    bench.setQuality(quality);
    const auto output = bench.renderAround(sine(440, -12, 88200), 44100, [&] { bench.set(pitch, 1200); })[0];
    EXPECT_LT(largestStep(output, 20000), 1.3 * 0.25 * 2 * std::numbers::pi * 880 / 44100) << quality;
    EXPECT_NEAR(1200 * std::log2(frequency(output, 57000, 880) / 880), 0, 2) << quality;
  }
}
