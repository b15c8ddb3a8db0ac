// Compressors: levels against the curve, times and bands; and what holds for all that ride the gain.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>

#include "EffectBench.h"

namespace {

using Samples = EffectBench::Samples;

/// Of a sine, in dBFS, over the second half.
double level(const std::vector<float>& samples) {
  double sum = 0;
  for (size_t i = samples.size() / 2; i < samples.size(); ++i) sum += double{samples[i]} * samples[i];
  return 10 * std::log10(4 * sum / static_cast<double>(samples.size()));
}

/// The corners of the curve as a graph would join them.
double curve(double in, double top, double t, double h, double e = -200, double ratio = 1) {
  e = std::min(e, t);
  if (in < e) return e - (e - in) * ratio;
  if (in < t) return in;
  return t + (in - t) * (std::min(top, t + h) - t) / (top - t);
}

/// No band compresses, and these crossovers.
void splitOnly(EffectBench& bench, std::array<double, 3> crossovers) {
  for (UInt32 b = 0; b < 4; ++b) bench.set({{5 + b, 0}, {9 + b, 40}});
  for (UInt32 i = 0; i < 3; ++i) bench.set({{2 + i, crossovers[i]}});
}

/// Crossovers between which a tone of 1 kHz is in one band alone.
constexpr std::array<double, 3> aloneIn[] = {
    {22050, 22050, 22050}, {20, 22050, 22050}, {20, 20, 22050}, {20, 20, 20}};

constexpr double rates[] = {8000, 11025, 44100, 96000, 384000};

}  // namespace

TEST(DynamicsProcessor, FollowsItsCurveAndShowsTheAmount) {
  struct Setting {
    double threshold, headroom, ratio, expansionThreshold, gain;
  };
  for (const Setting& s :
       {Setting{-20, 5, 2, -60, 0}, Setting{-40, 0.1, 4, -45, 0}, Setting{-30, 40, 1.5, -10, 6},
        Setting{0, 40, 1, 0, -12}, Setting{-10, 12, 3, -30, 20}}) {
    EffectBench bench("dcmp");
    bench.set({{0, s.threshold}, {1, s.headroom}, {2, s.ratio}, {3, s.expansionThreshold}, {6, s.gain}});
    for (double in = -60; in <= 0; in += 5) {
      bench.reset();
      const double wanted = curve(in, 30, s.threshold, s.headroom, s.expansionThreshold, s.ratio);
      EXPECT_NEAR(level(bench.render(sine(1000, in, 88200), 512)[1]), wanted + s.gain, 0.1)
          << s.threshold << " " << in;
      EXPECT_NEAR(bench.value(1000), in > s.threshold ? in - wanted : 0, 0.1) << s.threshold << " " << in;
    }
  }
}

TEST(MultibandCompressor, FollowsItsCurveInEachBandAndShowsTheAmount) {
  for (UInt32 band = 0; band < 4; ++band) {
    EffectBench bench("mcmp");
    const double t = bench.value(5 + band);
    const double h = bench.value(9 + band);
    splitOnly(bench, aloneIn[band]);
    bench.set({{5 + band, t}, {9 + band, h}});
    for (double in = -60; in <= 0; in += 5) {
      bench.reset();
      const double wanted = curve(in, 10, t, h);
      EXPECT_NEAR(level(bench.render(sine(1000, in, 88200), 512)[0]), wanted, 0.1) << band << " " << in;
      for (UInt32 b = 0; b < 4; ++b)
        EXPECT_NEAR(bench.value(1000 * (b + 1)), b == band ? in - wanted : 0, 0.1) << band << b << " " << in;
    }
  }
}

TEST(Compressors, MeasureTonesOfEveryPitchAndRate) {
  for (const double rate : rates) {
    for (const double frequency : {50.0, 300.0, 0.18 * rate}) {
      EffectBench bench("dcmp", {.sampleRate = rate});
      const auto frames = static_cast<size_t>(2 * rate);
      EXPECT_NEAR(level(bench.render(sine(frequency, -6, frames, rate), 512)[0]), curve(-6, 30, -20, 5), 0.5)
          << rate << " " << frequency;
    }
  }
}

TEST(Compressors, ReachAttackAndReleaseInTheirTimes) {
  for (const double rate : rates) {
    EffectBench bench("dcmp", {.sampleRate = rate, .inputs = 1, .outputs = 1});
    bench.set({{4, 0.02}, {5, 0.1}});
    const auto frames = static_cast<size_t>(rate);
    Samples input(1, std::vector<float>(2 * frames, 0.01f));  // -40, 0 and again -40 dBFS
    std::fill_n(input[0].begin() + static_cast<std::ptrdiff_t>(frames / 2), frames / 2, 1.0f);
    const auto output = bench.render(input, 512)[0];
    const double reduction = -curve(0, 30, -20, 5);
    const auto at = [&](double seconds) {
      const auto i = static_cast<size_t>(seconds * rate);
      return 20 * std::log10(input[0][i] / output[i]);
    };
    EXPECT_NEAR(at(0.52), reduction * (1 - std::exp(-1)), 0.02 * reduction) << rate;
    EXPECT_NEAR(at(0.99), reduction, 0.01) << rate;
    EXPECT_NEAR(at(1.005), reduction, 0.01) << "held " << rate;
    EXPECT_NEAR(at(1.11), reduction * std::exp(-1), 0.02 * reduction) << rate;
  }
}

TEST(DynamicsProcessor, OpensInTheAttackAndClosesInTheRelease) {
  EffectBench bench("dcmp", {.inputs = 1, .outputs = 1});
  bench.set({{0, 20}, {2, 2}, {3, -20}, {4, 0.01}, {5, 0.1}});
  Samples input(1, std::vector<float>(88200, 0.01f));  // -40, -20 and again -40 dBFS
  std::fill_n(input[0].begin() + 44100, 22050, 0.1f);
  const auto output = bench.render(input, 512)[0];
  const auto at = [&](double seconds) {
    const auto i = static_cast<size_t>(seconds * 44100);
    return 20 * std::log10(input[0][i] / output[i]);
  };
  EXPECT_NEAR(at(0.99), 20, 0.1);
  EXPECT_NEAR(at(1.01), 20 * std::exp(-1), 0.2);
  EXPECT_NEAR(at(1.49), 0, 0.01);
  EXPECT_NEAR(at(1.61), 20 * (1 - std::exp(-1)), 0.2);
}

TEST(Compressors, GiveBothChannelsTheSameGain) {
  for (const char* code : {"dcmp", "mcmp", "lmtr"}) {
    EffectBench bench(code);
    auto input = sine(1000, 12, 44100);
    for (float& sample : input[1]) sample *= 0.01f;
    const auto output = bench.render(input, 512);
    EXPECT_LT(level(output[0]), 5) << code;
    EXPECT_NEAR(level(output[0]) - level(output[1]), 40, 0.01) << code;
  }
}

TEST(MultibandCompressor, AddsUpFlatWhateverTheCrossovers) {
  const std::array<double, 3> settings[] = {{120, 700, 3000}, {20, 20, 20},       {22050, 22050, 22050},
                                            {20, 640, 22050}, {3000, 700, 120},   {900, 1000, 1100},
                                            {1000, 20, 5000}, {150, 20000, 19000}};
  for (const double rate : {8000.0, 44100.0, 384000.0}) {
    for (const auto& crossovers : settings) {
      EffectBench bench("mcmp", {.sampleRate = rate, .inputs = 1, .outputs = 1});
      splitOnly(bench, crossovers);
      bench.reset();
      Samples impulse(1, std::vector<float>(static_cast<size_t>(0.4 * rate)));
      impulse[0][0] = 0.5f;
      const auto response = bench.render(impulse, 512)[0];
      for (double f = 20; f <= std::min(20000.0, 0.49 * rate); f *= 1.33) {
        std::complex<double> sum;
        const auto turn = std::polar(1.0, -2 * std::numbers::pi * f / rate);
        for (size_t i = response.size(); i-- > 0;) sum = sum * turn + double{response[i]};
        EXPECT_NEAR(20 * std::log10(2 * std::abs(sum)), 0, 0.02) << rate << " " << crossovers[1] << " " << f;
      }
    }
  }
}

TEST(MultibandCompressor, SplitsWhereItSaysAndRaisesOneBand) {
  for (UInt32 band = 0; band < 4; ++band) {
    EffectBench bench("mcmp");
    splitOnly(bench, {200, 1000, 5000});
    bench.set(15 + band, 20);
    const double centres[] = {50, 450, 2240, 15000};
    for (UInt32 b = 0; b < 4; ++b) {
      bench.reset();
      const double out = level(bench.render(sine(centres[b], -20, 44100), 512)[0]);
      EXPECT_NEAR(out, b == band ? 0 : -20, 3) << band << b;
    }
    const double edge = band == 0 ? 200 : band == 1 ? 1000 : 5000;  // half of it raised: 5 + 0.5
    bench.reset();
    EXPECT_NEAR(level(bench.render(sine(edge, -20, 44100), 512)[0]), -20 + 20 * std::log10(5.5), 0.3) << band;
  }
}

TEST(MultibandCompressor, TakesCrossoversOutOfOrderAsEqual) {
  EffectBench crossed("mcmp");
  EffectBench equal("mcmp");
  crossed.set({{2, 500}, {3, 100}, {4, 300}});
  equal.set({{2, 500}, {3, 500}, {4, 500}});
  const auto input = noise(2, 10000, 0.5f);
  crossed.reset();
  equal.reset();
  EXPECT_EQ(crossed.render(input, 512), equal.render(input, 512));
}

TEST(Dynamics, ChangeWithoutAClick) {
  struct Change {
    const char* code;
    AudioUnitParameterID id;
    Float32 value;
  };
  for (const Change& change : {Change{"dcmp", 0, -40},
                               {"dcmp", 1, 0.1f},
                               {"dcmp", 3, 0},
                               {"dcmp", 6, 6},
                               {"mcmp", 0, 6},
                               {"mcmp", 1, 6},
                               {"mcmp", 2, 2000},
                               {"mcmp", 3, 20000},
                               {"mcmp", 4, 20},
                               {"mcmp", 5, -60},
                               {"mcmp", 15, 6},
                               {"lmtr", 0, 0.001f},
                               {"lmtr", 1, 0.001f},
                               {"lmtr", 2, 20}}) {
    EffectBench bench(change.code);
    const size_t crest = 22160;  // where a step of the gain shows at its largest
    const auto output =
        bench.renderAround(sine(100, -12, 44100), crest, [&] { bench.set(change.id, change.value); })[0];
    // A limiter that is driven by 20 dB more reduces at its attack's pace, which bends a little more.
    EXPECT_LT(largestBend(output, 20000), 0.004) << change.code << " " << change.id;
  }
}
