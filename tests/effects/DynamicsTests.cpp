// Compressors and the limiter: levels against the curve, full scale, times, latency and bands.

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

/// That tones of 1 kHz come out on the curve, the quieter right like the left, and that this meter alone
/// shows the compression.
void expectCurve(EffectBench& bench, const Curve& curve, AudioUnitParameterID meter) {
  for (double in = -60; in <= 0; in += 5) {
    bench.reset();
    auto input = sine(1000, in, 88200);
    for (float& sample : input[1]) sample *= 0.1f;
    const auto output = bench.render(input);
    const double wanted = curve.level(in), amount = in > curve.threshold ? in - wanted : 0;
    for (const UInt32 c : {0, 1}) EXPECT_NEAR(level(output[c]), wanted + curve.gain - 20 * c, 0.1) << in;
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

constexpr double rates[] = {8000, 44100, 384000};

}  // namespace

TEST(DynamicsProcessor, FollowsItsCurveAndShowsTheAmount) {
  for (const Curve& c :
       {Curve{30, -20, 5, -60, 2, 0}, {30, -40, 0.1, -45, 4, 6}, {30, -30, 40, -10, 1.5, -12}}) {
    SCOPED_TRACE(c.threshold);
    EffectBench bench("dcmp");
    bench.set({{0, c.threshold}, {1, c.headroom}, {2, c.ratio}, {3, c.expansionThreshold}, {6, c.gain}});
    expectCurve(bench, c, 1000);
  }
}

TEST(MultibandCompressor, FollowsItsCurveInEachBandAndShowsTheAmount) {
  constexpr std::array<double, 3> aloneIn[] = {// those out of order are taken as equal
                                               {22050, 20, 20},
                                               {20, 22050, 20},
                                               {20, 20, 22050},
                                               {20, 20, 20}};
  for (UInt32 band = 0; band < 4; ++band) {
    SCOPED_TRACE(band);
    EffectBench bench("mcmp");
    const Curve curve{10, bench.value(5 + band), bench.value(9 + band)};
    splitOnly(bench, aloneIn[band]);
    bench.set({{5 + band, curve.threshold}, {9 + band, curve.headroom}});
    expectCurve(bench, curve, 1000 * (band + 1));
  }
}

TEST(DynamicsProcessor, ReachesItsGainInAttackAndReleaseAndHoldsIt) {
  const double full = -Curve(30, -20, 5).level(0);
  for (const double rate : rates) {
    EffectBench bench("dcmp", {.sampleRate = rate, .inputs = 1, .outputs = 1});
    bench.set({{0, -20}, {4, 0.02}, {5, 0.1}});
    const auto half = static_cast<std::ptrdiff_t>(rate / 2);  // a second
    Samples input(1, std::vector<float>(4 * half, 0.01f));
    std::fill_n(input[0].begin() + 2 * half, half, 1.0f);
    const auto output = bench.render(input)[0];
    for (const auto& [seconds, part] :
         {std::pair(0.99, 0.0), {1.02, 1 - std::exp(-1)}, {1.49, 1}, {1.505, 1}, {1.61, std::exp(-1)}}) {
      const auto i = static_cast<size_t>(seconds * rate);
      EXPECT_NEAR(20 * std::log10(input[0][i] / output[i]), part * full, 0.02 * full)
          << rate << " " << seconds;
    }
  }
}

TEST(MultibandCompressor, AddsUpFlatWhateverTheCrossovers) {
  const std::array<double, 3> settings[] = {{120, 700, 3000}, {20, 640, 22050}, {900, 1000, 1100}};
  for (const double rate : rates) {
    for (const auto& crossovers : settings) {
      EffectBench bench("mcmp", {.sampleRate = rate, .inputs = 1, .outputs = 1});
      splitOnly(bench, crossovers);
      const auto response = bench.render(impulse(1, static_cast<size_t>(0.4 * rate)))[0];
      for (double f = 20; f <= std::min(20000.0, 0.49 * rate); f *= 1.33)
        EXPECT_NEAR(magnitude(response, f, rate), 1, 0.002) << rate << " " << crossovers[1] << " " << f;
    }
  }
}

TEST(MultibandCompressor, SplitsWhereItSaysAndRaisesOneBand) {
  for (UInt32 band = 0; band < 4; ++band) {
    EffectBench bench("mcmp");
    splitOnly(bench, {200, 1000, 5000});
    bench.set(15 + band, 20);
    bench.reset();
    const auto response = bench.render(impulse(2, 44100))[0];
    const auto expectGain = [&](double frequency, double gain, double near) {
      EXPECT_NEAR(20 * std::log10(magnitude(response, frequency)), gain, near) << band << " " << frequency;
    };
    const double centres[] = {50, 450, 2240, 15000}, edges[] = {200, 1000, 5000, 5000};
    for (UInt32 b = 0; b < 4; ++b) expectGain(centres[b], b == band ? 20 : 0, 3);
    expectGain(edges[band], 20 * std::log10(5.5), 0.3);  // half of it raised: 5 + 0.5
  }
}

// Also while the attack is changed.
TEST(PeakLimiter, NeverExceedsFullScale) {
  constexpr size_t frames = 60000;
  Samples impulses(2, std::vector<float>(frames, 0.001f));
  for (size_t i = 97; i < frames; i += i / 4) impulses[i % 2][i] = i % 3 ? 1.0f : -0.7f;
  for (const double rate : {8000.0, 384000.0}) {
    for (const Samples& input : {noise(2, frames, 1.0f), impulses, sine(30, 0, frames, rate)}) {
      EffectBench bench("lmtr", {.sampleRate = rate});
      bench.set({{0, 0.03}, {1, 0.001}, {2, 40}});
      bench.reset();
      float peak = 0;
      for (const auto& channel : bench.render(input, frames / 2, [&] { bench.set(0, 0.001); }))
        for (const float sample : channel) peak = std::max(peak, std::fabs(sample));
      EXPECT_LE(peak, 1.0f) << rate;
      EXPECT_GT(peak, 0.99f) << rate;
    }
  }
}

// Both channels alike: the peak is on the left, what it does is read on the right.
TEST(PeakLimiter, ReducesOverTheAttackAndRecoversInTheDecay) {
  for (const double attack : {0.002, 0.03}) {
    EffectBench bench("lmtr");
    bench.set({{0, attack}, {1, 0.05}});
    bench.reset();
    Samples input(2, std::vector<float>(44100, 0.1f));
    input[0][20000] = 10;
    const auto output = bench.render(input)[1];
    const auto reduction = [&](double seconds) {  // after the peak is heard
      return 20 * std::log10(0.1 / output[21323 + std::lround(seconds * 44100)]);
    };
    EXPECT_NEAR(reduction(-attack - 0.0001), 0, 1e-4) << attack;
    EXPECT_NEAR(reduction(-attack / 2), 10, 0.3) << attack;
    EXPECT_NEAR(reduction(0), 20, 1e-4) << attack;
    EXPECT_NEAR(reduction(attack + 0.1) / reduction(attack + 0.05), std::exp(-1), 0.01) << attack;
  }
}
