// Filters: what an impulse finds, against the formulas of R. Bristow-Johnson's cookbook.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>

#include "EffectBench.h"

namespace {

/// How a filter of the cookbook answers a frequency f, through the bilinear transform.
struct Analogue {
  Analogue(double f, double frequency, double rate) : s(0, warped(f, rate) / center(frequency, rate)) {}

  static double warped(double f, double rate) { return std::tan(std::numbers::pi * f / rate); }
  static double center(double frequency, double rate) {
    return warped(std::min(frequency, 0.49 * rate), rate);
  }
  double lowPass(double q) const { return std::abs(1.0 / (s * s + s / q + 1.0)); }
  double highPass(double q) const { return std::abs(s * s) * lowPass(q); }
  double bandPass(double q) const { return std::abs(s / q) * lowPass(q); }
  double peak(double q, double gain) const {
    const double a = std::pow(10, gain / 40);
    return std::abs((s * s + s * a / q + 1.0) / (s * s + s / a / q + 1.0));
  }
  double shelf(double gain, bool isHigh) const {
    const double a = std::pow(10, gain / 40), slope = std::sqrt(2 * a);
    const auto low = s * s + slope * s + a, high = a * s * s + slope * s + 1.0;
    return std::abs(a * (isHigh ? high / low : low / high));
  }

  std::complex<double> s;
};

/// The quality for a width in octaves, found by halving: the edges share their product on the warped scale.
double qualityOf(double frequency, double octaves, double rate) {
  const auto warped = [rate](double f) { return Analogue::warped(f, rate); };
  const double center = Analogue::center(frequency, rate), ratio = std::exp2(octaves);
  double low = 0, high = rate / 2 / ratio;
  for (int i = 0; i < 100; ++i) {
    const double edge = (low + high) / 2;
    (warped(edge) * warped(edge * ratio) < center * center ? low : high) = edge;
  }
  return center / (warped(low * ratio) - warped(low));
}

double resonance(double decibels) {
  return std::pow(10, decibels / 20);
}

/// Its response at a frequency f with the parameters p, which are numbered from 0.
double cookbook(const std::string& code, const std::vector<double>& p, double f, double rate) {
  const Analogue at(f, p[0], rate);
  if (code == "lpas") return at.lowPass(resonance(p[1]));
  if (code == "hpas") return at.highPass(resonance(p[1]));
  if (code == "lshf") return at.shelf(p[1], false);
  if (code == "hshf") return at.shelf(p[1], true);
  if (code == "bpas") return at.bandPass(qualityOf(p[0], p[1] / 1200, rate));
  if (code == "pmeq") return at.peak(p[1], p[2]);
  const Analogue low(f, p[1], rate), high(f, p[13], rate);
  double product = p[0] > 0 ? low.highPass(resonance(p[2])) : low.shelf(p[2], false);
  for (size_t b = 3; b < 12; b += 3)
    product *= Analogue(f, p[b], rate).peak(qualityOf(p[b], p[b + 2], rate), p[b + 1]);
  return product * (p[12] > 0 ? high.lowPass(resonance(p[14])) : high.shelf(p[14], true));
}

}  // namespace

// At 8 kHz most frequencies lie above what the rate allows, and are taken as 0.49 of it.
TEST(Filters, HaveTheCookbooksResponseAtEveryRate) {
  std::mt19937 random(11);
  for (const double rate : {44100.0, 8000.0}) {
    for (const char* code : {"lpas", "hpas", "lshf", "hshf", "bpas", "pmeq", "filt"}) {
      EffectBench bench(code, {.sampleRate = rate});
      for (int setting = 0; setting < 30; ++setting) {
        std::vector<double> values;
        for (const EffectParameter& p : bench.parameters()) {
          const float part = static_cast<float>(random() >> 8) / 16777216.0f;
          // None below 40 Hz, so that responses stay short.
          const bool isFrequency = p.unit == "Hz";
          bench.set(p.id, isFrequency ? std::max(40.0f, partOf(p, std::pow(part, 4.0f))) : partOf(p, part));
          values.push_back(bench.value(p.id));
        }
        bench.reset();
        auto input = impulse(2, static_cast<size_t>(bench.tailTime() * rate) + 64);
        input[0][0] = 0;
        const auto output = bench.render(input);
        EXPECT_EQ(output[0], input[0]);
        double noise = 0;  // of the rounding to float
        for (const float sample : output[1]) noise += 1e-13 * sample * sample;
        for (double f = 15; f < rate / 2; f *= 1.55) {
          const double wanted = cookbook(code, values, f, rate);
          if (wanted < 1e-5) continue;
          EXPECT_NEAR(magnitude(output[1], f, rate), wanted, 0.00115 * wanted + std::sqrt(noise))
              << code << " " << setting << " " << f;
        }
      }
    }
  }
}

TEST(Filters, WithoutGainLeaveEverySampleAsItIs) {
  for (const char* code : {"filt", "lshf", "hshf", "pmeq"})
    EXPECT_EQ(EffectBench(code).render(noise(2, 20000, 1.0f)), noise(2, 20000, 1.0f)) << code;
}

// At this rate a ramp from -6 to 6 dB is at none exactly where a glide ends.
TEST(Filters, GoOnRingingWhileTheGainPassesThroughNone) {
  constexpr double rate = 12800;
  std::vector<float> outputs[2];
  for (const bool beside : {false, true}) {
    EffectBench bench("pmeq", {.sampleRate = rate});
    bench.set({{0, 100}, {1, 20}, {2, -6}});
    bench.reset();
    const auto change = [&] { bench.set(2, beside ? 6.001 : 6); };
    outputs[beside] = bench.render(sine(102, 0, 12800, rate), 6400, change)[0];
  }
  for (size_t i = 0; i < 12800; ++i) ASSERT_NEAR(outputs[0][i], outputs[1][i], 0.001) << i;
}
