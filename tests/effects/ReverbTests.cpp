// The reverb: that it decays, and in its time, and as bright.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "EffectBench.h"

namespace {

// Parameters, by their numbers.
constexpr AudioUnitParameterID smallLargeMix = 1, smallSize = 2, largeSize = 3, preDelay = 4, largeDelay = 5,
                               largeRange = 8, smallBrightness = 9, largeBrightness = 10, smallRange = 11,
                               modulationRate = 12, modulationDepth = 13;

/// One room alone and standing still, of which all frequencies decay alike: its answer to an impulse, with a
/// few more parameters.
std::vector<float> response(bool isLarge, double size, double rate, double seconds,
                            std::initializer_list<std::pair<AudioUnitParameterID, double>> more = {}) {
  EffectBench bench("mrev", {rate, 1, 1});
  bench.set({{smallLargeMix, isLarge ? 100 : 0}, {isLarge ? largeSize : smallSize, size}});
  bench.set({{smallBrightness, 1}, {largeBrightness, 1}, {modulationDepth, 0}});
  bench.set(more);
  bench.reset();
  return bench.render(impulse(1, static_cast<size_t>(seconds * rate)))[0];
}

size_t onset(const std::vector<float>& samples) {
  const auto loud = [](float sample) { return std::fabs(sample) > 1e-4f; };
  return static_cast<size_t>(std::find_if(samples.begin(), samples.end(), loud) - samples.begin());
}

/// Seconds for 60 dB, from where all that is still to come lies 5 to 35 dB under the whole.
double decayTime(const std::vector<float>& samples, double rate) {
  std::vector<double> rest(samples.size() + 1);
  for (size_t i = samples.size(); i-- > 0;) rest[i] = rest[i + 1] + double{samples[i]} * samples[i];
  const auto fallsBelow = [&](double level) {
    const double energy = rest[0] * std::pow(10, level / 10);
    return std::find_if(rest.begin(), rest.end(), [&](double r) { return r < energy; }) - rest.begin();
  };
  return 2 * static_cast<double>(fallsBelow(-35) - fallsBelow(-5)) / rate;
}

}  // namespace

// At least half as fast as the larger room must. The bits of `corner` are the ends of the ranges.
TEST(MatrixReverb, DecaysInEveryCornerOfItsLoops) {
  const AudioUnitParameterID ofLoops[] = {largeSize,       smallSize,       largeRange,     smallRange,
                                          smallBrightness, largeBrightness, modulationRate, modulationDepth};
  for (const UInt32 quality : {127u, 96u, 0u}) {
    for (unsigned corner = 0; corner < 256; ++corner) {
      EffectBench bench("mrev", {500, 1, 1});
      bench.setQuality(quality);
      for (const EffectParameter& p : bench.parameters()) {
        const auto bit = std::find(std::begin(ofLoops), std::end(ofLoops), p.id) - ofLoops;
        if (bit < 8) bench.set(p.id, corner >> bit & 1 ? p.maxValue : p.minValue);
      }
      bench.reset();
      auto input = noise(1, 50, 1);
      input[0].resize(750);
      const auto output = bench.render(input)[0];
      const auto energy = [&](std::ptrdiff_t from) {  // of a quarter of a second
        const auto start = output.begin() + from;
        return std::inner_product(start, start + 125, start, 0.0);
      };
      const double fall = 0.75 * 60 / (40 * (corner & 1 ? 0.15 : corner & 2 ? 0.05 : 0.005));  // dB
      EXPECT_LT(energy(625), std::max(energy(250) * std::pow(10, -fall / 20), 1e-9)) << corner;
    }
  }
}

TEST(MatrixReverb, DiesAwayInFortyTimesItsSizeAtEveryRate) {
  for (const double rate : {500.0, 8000.0, 44100.0}) {
    for (const bool large : {false, true}) {
      for (const double size : {0.006, large ? 0.12 : 0.045}) {
        const auto samples = response(large, size, rate, 60 * size + 0.2);
        EXPECT_NEAR(decayTime(samples, rate) / (40 * size), 1, rate < 1000 ? 0.15 : 0.06)
            << rate << " " << size;
      }
    }
  }
}

TEST(MatrixReverb, IsDuskyByItsBrightnessFrom0HzToHalfTheRate) {
  for (const double rate : {8000.0, 44100.0}) {
    for (const bool large : {false, true}) {
      for (const double brightness : {0.2, 1.0}) {
        const auto id = large ? largeBrightness : smallBrightness;
        const auto decay = [&](float sign) {  // of three per cent of the spectrum at one end
          auto samples = response(large, 0.03, rate, 1.5, {{id, brightness}});
          for (int pass = 0; pass < 200; ++pass)
            for (size_t i = samples.size() - 1; i > 0; --i)
              samples[i] = (samples[i] + sign * samples[i - 1]) / 2;
          return decayTime(samples, rate);
        };
        EXPECT_NEAR(decay(-1) / decay(1), brightness, 0.2 * brightness) << rate;
      }
    }
  }
}

TEST(MatrixReverb, BeginsAfterItsDelaysAndDiffersBetweenTheEars) {
  for (const bool large : {false, true}) {
    const auto early = response(large, 0.01, 44100, 0.5, {{preDelay, 0.01}, {largeDelay, 0.02}});
    const auto late = response(large, 0.01, 44100, 0.5, {{preDelay, 0.02}, {largeDelay, 0.05}});
    EXPECT_EQ(onset(late) - onset(early), large ? 1764 : 441);
  }
  EffectBench bench("mrev", {44100, 1, 2});
  const auto wet = bench.render(impulse(1, 44100));
  const auto product = [&](size_t a, size_t b) {
    return std::inner_product(wet[a].begin(), wet[a].end(), wet[b].begin(), 0.0);
  };
  EXPECT_LT(std::fabs(product(0, 1)), 0.2 * std::sqrt(product(0, 0) * product(1, 1)));
}
