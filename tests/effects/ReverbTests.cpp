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

constexpr RenderFormat mono(double rate) {
  return {rate, 1, 1};
}

/// One room alone and standing still, of which all frequencies decay alike.
void plainRoom(EffectBench& bench, bool large, double size) {
  bench.set({{smallLargeMix, large ? 100 : 0},
             {large ? largeSize : smallSize, size},
             {smallBrightness, 1},
             {largeBrightness, 1},
             {modulationDepth, 0}});
}

std::vector<float> response(EffectBench& bench, double seconds, double rate = 44100) {
  bench.reset();
  return bench.render(impulse(1, static_cast<size_t>(seconds * rate)))[0];
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

/// Part of a tenth of a second's samples beyond the deviation of their surroundings, 1 for noise. (J. Abel
/// and P. Huang, A simple, robust measure of reverberation echo density, 2006.)
double echoDensity(const std::vector<float>& samples, size_t from) {
  constexpr size_t window = 882, windows = 9;
  double beyond = 0;
  for (size_t w = 0, start = from; w < windows; ++w, start += window / 2) {
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

/// Noise of 0.1 seconds, and that what follows falls at least half as fast as the larger room must. The bits
/// of `corner`: which end of its range each parameter of the loops has.
void expectDecay(double rate, UInt32 quality, unsigned corner) {
  EffectBench bench("mrev", mono(rate));
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
        EffectBench bench("mrev", mono(rate));
        plainRoom(bench, large, size);
        EXPECT_NEAR(decayTime(response(bench, 60 * size + 0.2, rate), rate) / (40 * size), 1,
                    rate < 1000 ? 0.15 : 0.06)
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
        EffectBench bench("mrev", mono(rate));
        plainRoom(bench, large, 0.03);
        bench.set(large ? largeBrightness : smallBrightness, brightness);
        const auto samples = response(bench, 1.5, rate);
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
  for (const auto& [size, range] : {std::pair(0.02, 0.9), {0.035, 0.5}, {0.05, 0.1}, {0.08, 0.5}}) {
    for (const bool large : {false, true}) {
      if (!large && size > 0.05) continue;
      double before = 0;
      for (const double density : {0.0, 0.4, 1.0}) {
        EffectBench bench("mrev", mono(44100));
        plainRoom(bench, large, size);
        bench.set({{large ? largeRange : smallRange, range},
                   {large ? largeDensity : smallDensity, density},
                   {modulationDepth, 0.2}});
        const auto samples = response(bench, 1.2);
        const auto onset = std::find_if(samples.begin(), samples.end(),
                                        [](float sample) { return std::fabs(sample) > 1e-4f; });
        const double now = echoDensity(samples, static_cast<size_t>(onset - samples.begin()));
        EXPECT_GT(now, before) << size << " " << density;
        before = now;
        EXPECT_NEAR(echoDensity(samples, 44100), 1, 0.12) << "the tail " << size;
      }
    }
  }
}

TEST(MatrixReverb, BeginsAfterItsDelaysDiffersBetweenTheEarsAndLeavesTheDrySideAlone) {
  for (const bool large : {false, true}) {
    EffectBench bench("mrev", mono(44100));
    plainRoom(bench, large, 0.01);
    std::ptrdiff_t begins[2];
    for (const bool late : {false, true}) {
      bench.set({{preDelay, late ? 0.02 : 0.01}, {largeDelay, late ? 0.05 : 0.02}});
      const auto samples = response(bench, 0.5);
      begins[late] =
          std::find_if(samples.begin(), samples.end(), [](float s) { return s != 0; }) - samples.begin();
    }
    EXPECT_EQ(begins[1] - begins[0], large ? 1764 : 441);
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
