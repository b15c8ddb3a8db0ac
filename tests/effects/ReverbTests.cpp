// The reverb: that it decays, and in its time; density, brightness and picture; changes while it sounds.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

#include "EffectBench.h"

namespace {

enum : AudioUnitParameterID {
  mix,
  smallLargeMix,
  smallSize,
  largeSize,
  smallDensity = 6,
  largeDensity,
  largeRange,
  smallBrightness,
  largeBrightness,
  smallRange,
  modulationRate,
  modulationDepth,
  parameterCount
};

using Samples = EffectBench::Samples;

/// One room alone and standing still, of which all frequencies decay alike.
void plainRoom(EffectBench& bench, bool large, double size) {
  bench.set({{smallLargeMix, large ? 100 : 0},
             {large ? largeSize : smallSize, size},
             {smallBrightness, 1},
             {largeBrightness, 1},
             {modulationDepth, 0}});
}

/// The last channel's answer to an impulse.
std::vector<float> response(EffectBench& bench, double seconds, double rate = 44100, UInt32 inputs = 1) {
  Samples impulse(inputs, std::vector<float>(static_cast<size_t>(seconds * rate)));
  for (auto& channel : impulse) channel[0] = 1;
  bench.reset();
  return bench.render(impulse, 512).back();
}

/// Seconds for 60 dB, from where all that is still to come lies between these levels under the whole.
template <class Sample>
double decayTime(const std::vector<Sample>& samples, double rate, double from = -5, double to = -35) {
  std::vector<double> rest(samples.size() + 1);
  for (size_t i = samples.size(); i-- > 0;) rest[i] = rest[i + 1] + double{samples[i]} * samples[i];
  const auto fallsBelow = [&](double level) {
    const double energy = rest[0] * std::pow(10, level / 10);
    return std::find_if(rest.begin(), rest.end(), [&](double r) { return r < energy; }) - rest.begin();
  };
  return static_cast<double>(fallsBelow(to) - fallsBelow(from)) / rate * 60 / (from - to);
}

size_t onset(const std::vector<float>& samples) {
  const auto loud = [](float sample) { return std::fabs(sample) > 1e-4f; };
  return static_cast<size_t>(std::find_if(samples.begin(), samples.end(), loud) - samples.begin());
}

/// Part of the samples beyond the deviation of their surroundings, 1 for noise. (J. Abel and P. Huang, A
/// simple, robust measure of reverberation echo density, 2006.)
double echoDensity(const std::vector<float>& samples, size_t from, size_t to) {
  constexpr size_t window = 882;
  double beyond = 0, windows = 0;
  for (size_t start = from; start + window <= to; start += window / 2, ++windows) {
    double energy = 0;
    for (size_t i = start; i < start + window; ++i) energy += double{samples[i]} * samples[i] / window;
    for (size_t i = start; i < start + window; ++i) beyond += samples[i] * samples[i] > energy;
  }
  return beyond / window / windows / 0.3173;
}

double level(const std::vector<float>& samples, double rate, double from, double to) {
  double energy = 1e-20;
  const auto end = static_cast<size_t>(to * rate);
  for (auto i = static_cast<size_t>(from * rate); i < end; ++i) energy += double{samples[i]} * samples[i];
  return 10 * std::log10(energy / ((to - from) * rate));
}

/// Noise of 0.1 seconds, and that what follows falls at least half as fast as the larger room must.
void expectDecay(EffectBench& bench, double rate, unsigned corner) {
  constexpr AudioUnitParameterID inLoop[] = {largeSize,      smallSize,       largeRange,
                                             smallRange,     smallBrightness, largeBrightness,
                                             modulationRate, modulationDepth};
  for (unsigned i = 0; i < std::size(inLoop); ++i) {
    const EffectParameter& p = bench.parameter(inLoop[i]);
    bench.set(inLoop[i], corner >> i & 1 ? p.maxValue : p.minValue);
  }
  bench.reset();
  auto input = noise(1, static_cast<size_t>(1.5 * rate), 1);
  std::fill(input[0].begin() + static_cast<std::ptrdiff_t>(0.1 * rate), input[0].end(), 0.0f);
  const auto output = bench.render(input, 512)[0];
  const double early = level(output, rate, 0.5, 0.75), late = level(output, rate, 1.25, 1.5);
  const double size = corner & 1 ? 0.15 : corner & 2 ? 0.05 : 0.005;
  const double fall = 0.75 * 60 / (40 * size);
  EXPECT_LT(late, std::max(early - 0.5 * fall, -110.0)) << rate << " " << corner;
}

}  // namespace

TEST(MatrixReverb, DecaysInEveryCornerOfItsLoops) {
  for (const UInt32 quality : {127u, 96u, 0u}) {
    for (unsigned corner = 0; corner < 256; ++corner) {
      EffectBench bench("mrev", {500, 1, 1, 512});
      bench.setQuality(quality);
      expectDecay(bench, 500, corner);
    }
  }
  std::mt19937 random(3);
  for (const UInt32 quality : {127u, 64u, 32u}) {
    EffectBench bench("mrev", {384000, 1, 1, 512});
    bench.setQuality(quality);
    expectDecay(bench, 384000, random() % 256 | 1);
  }
}

TEST(MatrixReverb, DiesAwayInFortyTimesItsSizeAtEveryRate) {
  for (const double rate : {500.0, 8000.0, 44100.0}) {
    for (const bool large : {false, true}) {
      for (const double size : {0.006, 0.02, large ? 0.12 : 0.045}) {
        EffectBench bench("mrev", {rate, 1, 1, 512});
        plainRoom(bench, large, size);
        EXPECT_NEAR(decayTime(response(bench, 60 * size + 0.2, rate), rate) / (40 * size), 1,
                    rate < 1000 ? 0.15 : 0.06)
            << rate << " " << size;
      }
    }
  }
}

TEST(MatrixReverb, IsDuskyByItsBrightnessFrom0HzToHalfTheRate) {
  for (const double rate : {8000.0, 44100.0}) {
    for (const double brightness : {0.2, 0.6, 1.0}) {
      EffectBench bench("mrev", {rate, 1, 1, 512});
      plainRoom(bench, true, 0.03);
      bench.set(largeBrightness, brightness);
      const auto samples = response(bench, 1.5, rate);
      std::array<double, 64> window;
      for (int k = 0; k < 64; ++k) window[k] = std::pow(std::sin(std::numbers::pi * (k + 0.5) / 64), 2);
      std::vector<double> bottom, top;  // what is within three per cent of either end
      for (size_t i = 0; i + 64 < samples.size(); ++i) {
        double even = 0, odd = 0;
        for (size_t k = 0; k < 64; k += 2) {
          even += samples[i + k] * window[k];
          odd += samples[i + k + 1] * window[k + 1];
        }
        bottom.push_back(even + odd);
        top.push_back(even - odd);
      }
      EXPECT_NEAR(decayTime(top, rate) / decayTime(bottom, rate), brightness, 0.2 * brightness) << rate;
    }
  }
}

TEST(MatrixReverb, IsDenserTheHigherItsDensity) {
  std::mt19937 random(8);
  const auto between = [&](double low, double high) {
    return low + (high - low) * static_cast<double>(random()) / 4294967296.0;
  };
  for (int setting = 0; setting < 8; ++setting) {
    const bool large = setting % 2;
    const double size = large ? between(0.03, 0.1) : between(0.02, 0.05);
    const double range = between(0, 1);
    double before = 0;
    for (const double density : {0.0, 0.4, 1.0}) {
      EffectBench bench("mrev", {44100, 1, 1, 512});
      plainRoom(bench, large, size);
      bench.set({{large ? largeRange : smallRange, range},
                 {large ? largeDensity : smallDensity, density},
                 {modulationDepth, 0.2}});
      const auto samples = response(bench, 1.2);
      const size_t start = onset(samples);
      const double now = echoDensity(samples, start, start + 4410);
      EXPECT_GT(now, before) << setting << " " << density;
      before = now;
      EXPECT_NEAR(echoDensity(samples, 44100, 50000), 1, 0.12) << "the tail " << setting;
    }
  }
}

TEST(MatrixReverb, FillsItsPictureAtFiveHundredHertz) {
  EffectBench bench("mrev", {500, 1, 2, 1024});
  bench.set(mix, 1);
  const auto samples = response(bench, 2.048, 500);
  const auto peak = [&](size_t from, size_t to) {
    float highest = 0;
    for (size_t i = from; i < to; ++i) highest = std::max(highest, std::fabs(samples[i]));
    return 20 * std::log10(highest);
  };
  EXPECT_GT(peak(1, 100), -25);
  EXPECT_LT(peak(1, 100), -10);
  EXPECT_GT(peak(200, 250), -50);
  EXPECT_LT(peak(900, 1024), -50);
  double before = -200;
  for (const double brightness : {0.1, 0.4, 1.0}) {  // bends the curve down from the same beginning
    bench.set({{smallBrightness, brightness}, {largeBrightness, brightness}});
    const auto bent = response(bench, 1, 500);
    EXPECT_NEAR(level(bent, 500, 0.03, 0.06), level(samples, 500, 0.03, 0.06), 1.5) << brightness;
    const double now = level(bent, 500, 0.4, 0.8);
    EXPECT_GT(now, before + 2) << brightness;
    before = now;
  }
}

TEST(MatrixReverb, ChangesWithoutAClickAndBecomesWhatItWasTold) {
  for (AudioUnitParameterID id = 0; id <= parameterCount; ++id) {
    for (const bool up : {true, false}) {
      const auto input = sine(100, -12, 3 * 44100);
      const auto change = [&](EffectBench& bench, bool high) {
        if (id == parameterCount) return bench.setQuality(high ? 127 : 0);
        const EffectParameter& p = bench.parameter(id);
        bench.set(id, high ? p.maxValue : p.minValue);
      };
      EffectBench bench("mrev");
      bench.set({{mix, 50}, {largeSize, 0.03}});
      change(bench, !up);
      bench.reset();
      const auto output = bench.renderAround(input, 22160, [&] { change(bench, up); });
      EXPECT_LT(largestBend(output[1], 20000), 0.003) << id << up;
      if (id == largeSize || id == modulationRate) continue;  // too long to wait for; another phase
      bench.reset();
      const auto steady = bench.render(input, 512);
      for (size_t i = 3 * 44100 - 500; i < 3 * 44100; ++i)
        ASSERT_NEAR(output[1][i], steady[1][i], 0.002) << id << up;
    }
  }
}
