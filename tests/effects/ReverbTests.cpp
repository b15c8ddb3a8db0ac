// The reverb: that it decays, and in its time; density and brightness.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>
#include <random>

#include "EffectBench.h"

namespace {

enum : AudioUnitParameterID {
  mix,
  smallLargeMix,
  smallSize,
  largeSize,
  preDelay,
  largeDelay,
  smallDensity,
  largeDensity,
  largeRange,
  smallBrightness,
  largeBrightness,
  smallRange,
  modulationRate,
  modulationDepth
};

/// One room alone and standing still, of which all frequencies decay alike.
struct Room {
  bool isLarge;
  double size, rate = 44100;

  /// Its answer to an impulse, with a few more parameters.
  std::vector<float> response(
      double seconds, std::initializer_list<std::pair<AudioUnitParameterID, double>> more = {}) const {
    EffectBench bench("mrev", {rate, 1, 1});
    bench.set({{smallLargeMix, isLarge ? 100 : 0},
               {isLarge ? largeSize : smallSize, size},
               {smallBrightness, 1},
               {largeBrightness, 1},
               {modulationDepth, 0}});
    bench.set(more);
    bench.reset();
    return bench.render(impulse(1, static_cast<size_t>(seconds * rate)))[0];
  }
};

size_t onset(const std::vector<float>& samples) {
  const auto loud = [](float sample) { return std::fabs(sample) > 1e-4f; };
  return static_cast<size_t>(std::find_if(samples.begin(), samples.end(), loud) - samples.begin());
}

/// Seconds for 60 dB, from where all that is still to come lies 5 to 35 dB under the whole.
template <class Sample>
double decayTime(const std::vector<Sample>& samples, double rate) {
  std::vector<double> rest(samples.size() + 1);
  for (size_t i = samples.size(); i-- > 0;) rest[i] = rest[i + 1] + double{samples[i]} * samples[i];
  const auto fallsBelow = [&](double level) {
    const double energy = rest[0] * std::pow(10, level / 10);
    return std::find_if(rest.begin(), rest.end(), [&](double r) { return r < energy; }) - rest.begin();
  };
  return 2 * static_cast<double>(fallsBelow(-35) - fallsBelow(-5)) / rate;
}

/// Of a tenth of a second: how evenly its energy lies on all samples, 1 for noise.
double echoDensity(const std::vector<float>& samples, size_t from) {
  double sum = 0, energy = 0;
  for (size_t i = from; i < from + 4410; ++i) {
    sum += std::fabs(samples[i]);
    energy += double{samples[i]} * samples[i];
  }
  return sum * sum / energy / 4410 * std::numbers::pi / 2;
}

double level(const std::vector<float>& samples, double rate, double from, double to) {
  double energy = 1e-20;
  const auto end = static_cast<size_t>(to * rate);
  for (auto i = static_cast<size_t>(from * rate); i < end; ++i) energy += double{samples[i]} * samples[i];
  return 10 * std::log10(energy / ((to - from) * rate));
}

/// Noise of 0.1 seconds, and that what follows falls at least half as fast as the larger room must. The bits
/// of `corner`: which end of its range each parameter of the loops has.
void expectDecay(double rate, UInt32 quality, unsigned corner) {
  EffectBench bench("mrev", {rate, 1, 1});
  bench.setQuality(quality);
  unsigned bit = 0;
  for (const auto id : {largeSize, smallSize, largeRange, smallRange, smallBrightness, largeBrightness,
                        modulationRate, modulationDepth})
    bench.set(id, partOf(bench.parameter(id), static_cast<float>(corner >> bit++ & 1)));
  bench.reset();
  auto input = noise(1, static_cast<size_t>(1.5 * rate), 1);
  std::fill(input[0].begin() + static_cast<std::ptrdiff_t>(0.1 * rate), input[0].end(), 0.0f);
  const auto output = bench.render(input)[0];
  const double early = level(output, rate, 0.5, 0.75), late = level(output, rate, 1.25, 1.5);
  const double size = corner & 1 ? 0.15 : corner & 2 ? 0.05 : 0.005;
  const double fall = 0.75 * 60 / (40 * size);
  EXPECT_LT(late, std::max(early - 0.5 * fall, -110.0)) << rate << " " << corner;
}

}  // namespace

TEST(MatrixReverb, DecaysInEveryCornerOfItsLoops) {
  for (const UInt32 quality : {127u, 96u, 0u})
    for (unsigned corner = 0; corner < 256; ++corner) expectDecay(500, quality, corner);
  std::mt19937 random(3);
  for (const UInt32 quality : {127u, 64u, 32u}) expectDecay(384000, quality, random() % 256 | 1);
}

TEST(MatrixReverb, DiesAwayInFortyTimesItsSizeAtEveryRate) {
  for (const double rate : {500.0, 8000.0, 44100.0}) {
    for (const bool large : {false, true}) {
      for (const double size : {0.006, 0.02, large ? 0.12 : 0.045}) {
        const auto samples = Room{large, size, rate}.response(60 * size + 0.2);
        EXPECT_NEAR(decayTime(samples, rate) / (40 * size), 1, rate < 1000 ? 0.15 : 0.06)
            << rate << " " << size;
      }
    }
  }
}

// Of three per cent of the spectrum at either end.
TEST(MatrixReverb, IsDuskyByItsBrightnessFrom0HzToHalfTheRate) {
  std::array<double, 64> window;
  for (int k = 0; k < 64; ++k) window[k] = std::pow(std::sin(std::numbers::pi * (k + 0.5) / 64), 2);
  for (const double rate : {8000.0, 44100.0}) {
    for (const bool large : {false, true}) {
      for (const double brightness : {0.2, 0.6, 1.0}) {
        const auto id = large ? largeBrightness : smallBrightness;
        const auto samples = Room{large, 0.03, rate}.response(1.5, {{id, brightness}});
        std::vector<double> bottom, top;
        for (size_t i = 0; i + 64 < samples.size(); ++i) {
          double even = 0, odd = 0;
          for (size_t k = 0; k < 64; ++k) (k % 2 ? odd : even) += samples[i + k] * window[k];
          bottom.push_back(even + odd);
          top.push_back(even - odd);
        }
        EXPECT_NEAR(decayTime(top, rate) / decayTime(bottom, rate), brightness, 0.2 * brightness) << rate;
      }
    }
  }
}

TEST(MatrixReverb, IsDenserTheHigherItsDensity) {
  for (const auto& [size, range] : {std::pair(0.02, 0.9), {0.035, 0.5}, {0.05, 0.1}}) {
    for (const bool large : {false, true}) {
      double before = 0;
      for (const double density : {0.0, 0.4, 1.0}) {
        const auto samples = Room{large, size}.response(1.2, {{large ? largeRange : smallRange, range},
                                                              {large ? largeDensity : smallDensity, density},
                                                              {modulationDepth, 0.2}});
        const double now = echoDensity(samples, onset(samples));
        EXPECT_GT(now, before) << size << " " << density;
        before = now;
        EXPECT_NEAR(echoDensity(samples, 44100), 1, 0.12) << "the tail " << size;
      }
    }
  }
}

TEST(MatrixReverb, BeginsAfterItsDelaysDiffersBetweenTheEarsAndLeavesTheDrySideAlone) {
  for (const bool large : {false, true}) {
    const size_t early = onset(Room{large, 0.01}.response(0.5, {{preDelay, 0.01}, {largeDelay, 0.02}}));
    const size_t late = onset(Room{large, 0.01}.response(0.5, {{preDelay, 0.02}, {largeDelay, 0.05}}));
    EXPECT_EQ(late - early, large ? 1764 : 441);
  }
  EffectBench bench("mrev", {44100, 1, 2});
  const auto wet = bench.render(impulse(1, 44100));
  const auto product = [&](size_t a, size_t b) {
    return std::inner_product(wet[a].begin(), wet[a].end(), wet[b].begin(), 0.0);
  };
  EXPECT_LT(std::fabs(product(0, 1)), 0.2 * std::sqrt(product(0, 0) * product(1, 1)));
  EffectBench dry("mrev");
  dry.set(mix, 0);
  dry.reset();
  const auto input = noise(2, 5000, 0.5f);
  EXPECT_EQ(dry.render(input), input);
}
