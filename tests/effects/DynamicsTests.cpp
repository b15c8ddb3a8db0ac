// Compressors: levels against the curve, times and bands; and what holds for all that ride the gain.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

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
struct Curve {
  double top, threshold, headroom, expansionThreshold = -200, ratio = 1, gain = 0;

  double level(double in) const {
    const double t = threshold, e = std::min(expansionThreshold, t);
    if (in < e) return e - (e - in) * ratio;
    if (in < t) return in;
    return t + (in - t) * (std::min(top, t + headroom) - t) / (top - t);
  }
};

/// That tones of 1 kHz come out on the curve, and that this meter alone shows the compression.
void expectCurve(EffectBench& bench, const Curve& curve, AudioUnitParameterID meter) {
  for (double in = -60; in <= 0; in += 5) {
    bench.reset();
    const double wanted = curve.level(in), amount = in > curve.threshold ? in - wanted : 0;
    EXPECT_NEAR(level(bench.render(sine(1000, in, 88200))[1]), wanted + curve.gain, 0.1) << in;
    for (const EffectParameter& p : bench.parameters()) {
      if (p.isWritable()) continue;
      EXPECT_NEAR(bench.value(p.id), p.id == meter ? amount : 0, 0.1) << p.id << " " << in;
    }
  }
}

/// No band compresses, and these crossovers.
void splitOnly(EffectBench& bench, std::array<double, 3> crossovers) {
  for (UInt32 b = 0; b < 4; ++b) bench.set({{5 + b, 0}, {9 + b, 40}});
  for (UInt32 i = 0; i < 3; ++i) bench.set(2 + i, crossovers[i]);
  bench.reset();
}

constexpr double rates[] = {8000, 11025, 44100, 96000, 384000};

}  // namespace

TEST(DynamicsProcessor, FollowsItsCurveAndShowsTheAmount) {
  for (const Curve& c :
       {Curve{30, -20, 5, -60, 2, 0}, Curve{30, -40, 0.1, -45, 4, 0}, Curve{30, -30, 40, -10, 1.5, 6},
        Curve{30, 0, 40, 0, 1, -12}, Curve{30, -10, 12, -30, 3, 20}}) {
    SCOPED_TRACE(c.threshold);
    EffectBench bench("dcmp");
    bench.set({{0, c.threshold}, {1, c.headroom}, {2, c.ratio}, {3, c.expansionThreshold}, {6, c.gain}});
    expectCurve(bench, c, 1000);
  }
}

TEST(MultibandCompressor, FollowsItsCurveInEachBandAndShowsTheAmount) {
  constexpr std::array<double, 3> aloneIn[] = {
      {22050, 22050, 22050}, {20, 22050, 22050}, {20, 20, 22050}, {20, 20, 20}};
  for (UInt32 band = 0; band < 4; ++band) {
    SCOPED_TRACE(band);
    EffectBench bench("mcmp");
    const Curve curve{10, bench.value(5 + band), bench.value(9 + band)};
    splitOnly(bench, aloneIn[band]);
    bench.set({{5 + band, curve.threshold}, {9 + band, curve.headroom}});
    expectCurve(bench, curve, 1000 * (band + 1));
  }
}

TEST(Compressors, MeasureTonesOfEveryPitchAndRate) {
  for (const double rate : rates) {
    for (const double frequency : {50.0, 300.0, 0.18 * rate}) {
      EffectBench bench("dcmp", {.sampleRate = rate});
      const auto output = bench.render(sine(frequency, -6, static_cast<size_t>(2 * rate), rate));
      EXPECT_NEAR(level(output[0]), Curve(30, -20, 5).level(-6), 0.5) << rate << " " << frequency;
    }
  }
}

TEST(DynamicsProcessor, ReachesItsGainsInAttackAndReleaseAndHoldsThem) {
  struct Case {
    double threshold, expansionThreshold, quiet, loud;  // dBFS
    double whenQuiet, whenLoud;                         // dB of reduction
  };
  for (const double rate : rates) {
    for (const Case& c :
         {Case{-20, -60, -40, 0, 0, -Curve(30, -20, 5).level(0)}, Case{20, -20, -40, -20, 20, 0}}) {
      EffectBench bench("dcmp", {.sampleRate = rate, .inputs = 1, .outputs = 1});
      bench.set({{0, c.threshold}, {2, 2}, {3, c.expansionThreshold}, {4, 0.02}, {5, 0.1}});
      const auto half = static_cast<std::ptrdiff_t>(rate / 2);  // a second
      Samples input(1, std::vector<float>(4 * half, static_cast<float>(std::pow(10, c.quiet / 20))));
      std::fill_n(input[0].begin() + 2 * half, half, static_cast<float>(std::pow(10, c.loud / 20)));
      const auto output = bench.render(input)[0];
      const auto at = [&](double seconds) {
        const auto i = static_cast<size_t>(seconds * rate);
        return 20 * std::log10(input[0][i] / output[i]);
      };
      const double step = c.whenLoud - c.whenQuiet, near = 0.02 * std::fabs(step);
      EXPECT_NEAR(at(0.99), c.whenQuiet, near / 2) << rate;
      EXPECT_NEAR(at(1.02), c.whenLoud - step * std::exp(-1), near) << rate;
      EXPECT_NEAR(at(1.49), c.whenLoud, 0.01) << rate;
      EXPECT_NEAR(at(1.505), c.whenLoud, 0.01) << "held " << rate;
      EXPECT_NEAR(at(1.61), c.whenQuiet + step * std::exp(-1), near) << rate;
    }
  }
}

TEST(Compressors, GiveBothChannelsTheSameGain) {
  for (const char* code : {"dcmp", "mcmp", "lmtr"}) {
    EffectBench bench(code);
    auto input = sine(1000, 12, 44100);
    for (float& sample : input[1]) sample *= 0.01f;
    const auto output = bench.render(input);
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
      const auto response = bench.render(impulse(1, static_cast<size_t>(0.4 * rate)))[0];
      for (double f = 20; f <= std::min(20000.0, 0.49 * rate); f *= 1.33)
        EXPECT_NEAR(20 * std::log10(magnitude(response, f, rate)), 0, 0.02)
            << rate << " " << crossovers[1] << " " << f;
    }
  }
}

TEST(MultibandCompressor, SplitsWhereItSaysAndRaisesOneBand) {
  for (UInt32 band = 0; band < 4; ++band) {
    EffectBench bench("mcmp");
    splitOnly(bench, {200, 1000, 5000});
    bench.set(15 + band, 20);
    const auto levelAt = [&](double frequency) {
      bench.reset();
      return level(bench.render(sine(frequency, -20, 44100))[0]);
    };
    const double centres[] = {50, 450, 2240, 15000};
    for (UInt32 b = 0; b < 4; ++b) EXPECT_NEAR(levelAt(centres[b]), b == band ? 0 : -20, 3) << band << b;
    const double edge = band == 0 ? 200 : band == 1 ? 1000 : 5000;  // half of it raised: 5 + 0.5
    EXPECT_NEAR(levelAt(edge), -20 + 20 * std::log10(5.5), 0.3) << band;
  }
}

TEST(MultibandCompressor, TakesCrossoversOutOfOrderAsEqual) {
  Samples outputs[2];
  for (const bool crossed : {false, true}) {
    EffectBench bench("mcmp");
    bench.set({{2, 500}, {3, crossed ? 100 : 500}, {4, crossed ? 300 : 500}});
    bench.reset();
    outputs[crossed] = bench.render(noise(2, 10000, 0.5f));
  }
  EXPECT_EQ(outputs[0], outputs[1]);
}
