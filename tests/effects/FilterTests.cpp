// Filters: what an impulse finds against the cookbook's own numbers, where the handles stand, changes.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <numbers>
#include <random>

#include "EffectBench.h"

namespace {

using std::numbers::pi;

/// Of one channel's response to an impulse, at a frequency.
double magnitude(const std::vector<float>& response, double frequency, double rate = 44100) {
  std::complex<double> sum;
  const auto turn = std::polar(1.0, -2 * pi * frequency / rate);
  for (size_t i = response.size(); i-- > 0;) sum = sum * turn + double{response[i]};
  return std::abs(sum);
}

std::vector<float> impulseResponse(EffectBench& bench, double rate = 44100) {
  EffectBench::Samples impulse(2, std::vector<float>(static_cast<size_t>(bench.tailTime() * rate) + 64));
  impulse[0][0] = impulse[1][0] = 1;
  bench.reset();
  return bench.render(impulse, 512)[1];
}

double decibels(double factor) {
  return 20 * std::log10(factor);
}

/// Sets every parameter somewhere on its scale; no frequency below 40 Hz, so that responses stay short.
std::vector<double> seededValues(EffectBench& bench, std::mt19937& random) {
  std::vector<double> values;
  for (const EffectParameter& p : bench.parameters()) {
    const double part = static_cast<double>(random()) / 4294967296.0;
    const double least = p.unit == "Hz" ? std::max(p.minValue, 40.0f) : p.minValue;
    double value = least + part * (p.maxValue - least);
    if (p.flags & kAudioUnitParameterFlag_DisplayLogarithmic)
      value = least * std::pow(p.maxValue / least, part);
    if (!p.valueNames.empty()) value = std::round(value);
    bench.set(p.id, value);
    values.push_back(static_cast<Float32>(value));
  }
  return values;
}

/// The cookbook's section as a polynomial each above and below, for one frequency and alpha.
struct Section {
  Section(double frequency, double quality, double gain = 0)
      : w(2 * pi * std::min(frequency / 44100, 0.49)),
        c(std::cos(w)),
        alpha(std::sin(w) / (2 * quality)),
        a(std::pow(10, gain / 40)),
        beta(2 * std::sqrt(a) * alpha) {}
  using Row = std::array<double, 3>;
  static double ratio(const Row& b, const Row& a, double f) {
    const auto z = std::polar(1.0, -2 * pi * f / 44100);
    return std::abs((b[0] + z * (b[1] + z * b[2])) / (a[0] + z * (a[1] + z * a[2])));
  }
  Row plain() const { return {1 + alpha, -2 * c, 1 - alpha}; }
  double lowPass(double f) const { return ratio({(1 - c) / 2, 1 - c, (1 - c) / 2}, plain(), f); }
  double highPass(double f) const { return ratio({(1 + c) / 2, -1 - c, (1 + c) / 2}, plain(), f); }
  double bandPass(double f) const { return ratio({alpha, 0, -alpha}, plain(), f); }
  double peak(double f) const {
    return ratio({1 + alpha * a, -2 * c, 1 - alpha * a}, {1 + alpha / a, -2 * c, 1 - alpha / a}, f);
  }
  double lowShelf(double f) const {
    return ratio(
        {a * (a + 1 - (a - 1) * c + beta), 2 * a * (a - 1 - (a + 1) * c), a * (a + 1 - (a - 1) * c - beta)},
        {a + 1 + (a - 1) * c + beta, -2 * (a - 1 + (a + 1) * c), a + 1 + (a - 1) * c - beta}, f);
  }
  double highShelf(double f) const {
    return ratio(
        {a * (a + 1 + (a - 1) * c + beta), -2 * a * (a - 1 + (a + 1) * c), a * (a + 1 + (a - 1) * c - beta)},
        {a + 1 - (a - 1) * c + beta, 2 * (a - 1 - (a + 1) * c), a + 1 - (a - 1) * c - beta}, f);
  }

  double w, c, alpha, a, beta;
};

constexpr double slopeOne = 1 / std::numbers::sqrt2;

/// The quality for a width in octaves, found by halving: the edges share their product on the warped scale.
double qualityOf(double frequency, double octaves) {
  const auto warped = [](double f) { return std::tan(pi * f / 44100); };
  const double center = warped(std::min(frequency, 0.49 * 44100));
  double low = 0, high = 22050 / std::exp2(octaves);
  for (int i = 0; i < 100; ++i) {
    const double edge = (low + high) / 2;
    (warped(edge) * warped(edge * std::exp2(octaves)) < center * center ? low : high) = edge;
  }
  return center / (warped(low * std::exp2(octaves)) - warped(low));
}

struct Kind {
  const char* code;
  std::function<double(const std::vector<double>& p, double f)> closedForm;
};

const Kind kinds[] = {
    {"lpas", [](auto& p, double f) { return Section(p[0], std::pow(10, p[1] / 20)).lowPass(f); }},
    {"hpas", [](auto& p, double f) { return Section(p[0], std::pow(10, p[1] / 20)).highPass(f); }},
    {"lshf", [](auto& p, double f) { return Section(p[0], slopeOne, p[1]).lowShelf(f); }},
    {"hshf", [](auto& p, double f) { return Section(p[0], slopeOne, p[1]).highShelf(f); }},
    {"bpas", [](auto& p, double f) { return Section(p[0], qualityOf(p[0], p[1] / 1200)).bandPass(f); }},
    {"pmeq", [](auto& p, double f) { return Section(p[0], p[1], p[2]).peak(f); }},
    {"filt",
     [](auto& p, double f) {
       const double low = std::pow(10, p[2] / 20), high = std::pow(10, p[14] / 20);
       double product = p[0] > 0 ? Section(p[1], low).highPass(f) : Section(p[1], slopeOne, p[2]).lowShelf(f);
       for (size_t b = 3; b < 12; b += 3)
         product *= Section(p[b], qualityOf(p[b], p[b + 2]), p[b + 1]).peak(f);
       return product *
              (p[12] > 0 ? Section(p[13], high).lowPass(f) : Section(p[13], slopeOne, p[14]).highShelf(f));
     }},
};

}  // namespace

TEST(Filters, HaveTheCookbooksResponse) {
  std::mt19937 random(11);
  for (const Kind& kind : kinds) {
    EffectBench bench(kind.code);
    for (int setting = 0; setting < 30; ++setting) {
      const auto values = seededValues(bench, random);
      const auto response = impulseResponse(bench);
      double noise = 0;  // of the rounding to float
      for (const float sample : response) noise += 1e-13 * sample * sample;
      for (double f = 15; f < 22050; f *= 1.55) {
        const double wanted = kind.closedForm(values, f);
        if (wanted < 1e-5) continue;
        EXPECT_NEAR(magnitude(response, f), wanted, 0.00115 * wanted + std::sqrt(noise))
            << kind.code << " " << setting << " " << f;
      }
    }
  }
}

TEST(Filters, StandUnderTheirHandles) {
  struct Point {
    const char* code;
    std::initializer_list<std::pair<AudioUnitParameterID, double>> values;
    double frequency, level;  // Hz, dB
  };
  for (const Point& point : {Point{"lpas", {{0, 900}, {1, 13}}, 900, 13},
                             {"lpas", {{0, 15000}, {1, -20}}, 15000, -20},
                             {"hpas", {{0, 300}, {1, 40}}, 300, 40},
                             {"lshf", {{0, 500}, {1, -31}}, 500, -15.5},
                             {"lshf", {{0, 500}, {1, -31}}, 1, -31},
                             {"hshf", {{0, 3000}, {1, 22}}, 3000, 11},
                             {"hshf", {{0, 3000}, {1, 22}}, 22040, 22},
                             {"bpas", {{0, 3000}, {1, 2400}}, 3000, 0},
                             {"pmeq", {{0, 7000}, {1, 8}, {2, -17}}, 7000, -17},
                             {"filt", {{0, 1}, {1, 200}, {2, 9}}, 200, 9},
                             {"filt", {{12, 1}, {13, 7000}, {14, -12}}, 7000, -12},
                             {"filt", {{9, 5000}, {10, 12}, {11, 0.5}}, 5000, 12}}) {
    EffectBench bench(point.code);
    bench.set(point.values);
    EXPECT_NEAR(decibels(magnitude(impulseResponse(bench), point.frequency)), point.level, 0.01)
        << point.code << " " << point.frequency;
  }
}

TEST(Filters, AreAsWideAsTheySayAndThatUpToTheTop) {
  for (const double center : {100.0, 3000.0, 16000.0, 20000.0}) {
    for (const double octaves : {0.25, 1.0, 3.0}) {
      for (const bool band : {true, false}) {
        EffectBench bench(band ? "bpas" : "filt");
        if (band)
          bench.set({{0, center}, {1, octaves * 1200}});
        else
          bench.set({{3, center}, {4, 12}, {5, octaves}});
        const auto response = impulseResponse(bench);
        const double level = band ? -10 * std::log10(2.0) : 6;
        const auto edge = [&](double inside, double outside) {
          for (int i = 0; i < 24; ++i) {
            const double middle = (inside + outside) / 2;
            (decibels(magnitude(response, middle)) > level ? inside : outside) = middle;
          }
          return inside;
        };
        EXPECT_NEAR(std::log2(edge(center, 22050) / edge(center, 1)), octaves, 0.01) << center << " " << band;
      }
    }
  }
}

TEST(Filters, TakeFrequenciesAboveTheLimitAsTheLimit) {
  for (const double rate : {500.0, 8000.0}) {
    for (const char* code : {"lpas", "hpas", "bpas", "pmeq"}) {
      std::vector<float> responses[2];
      for (const bool above : {false, true}) {
        EffectBench bench(code, {.sampleRate = rate});
        bench.set({{0, above ? 22050 : 0.49 * rate}, {code[0] == 'p' ? 2u : 1u, 12}});
        responses[above] = impulseResponse(bench, rate);
      }
      for (size_t i = 0; i < responses[0].size(); ++i)
        ASSERT_NEAR(responses[1][i], responses[0][i], 1e-4) << code << " " << i;
    }
  }
}

TEST(Filters, WithoutGainLeaveEverySampleAsItIs) {
  const auto input = noise(2, 20000, 1.0f);
  for (const char* code : {"filt", "lshf", "hshf", "pmeq"}) {
    EffectBench bench(code);
    EXPECT_EQ(bench.render(input, 512), input) << code;
  }
}

TEST(Filters, ChangeWithoutAClickOrAThump) {
  struct Change {
    const char* code;
    std::initializer_list<std::pair<AudioUnitParameterID, double>> before;
    AudioUnitParameterID id;
    double value;
  };
  for (const Change& change : {Change{"lpas", {{0, 22050}}, 0, 10},
                               {"lpas", {{0, 10}}, 0, 22050},
                               {"lpas", {{0, 100}, {1, -20}}, 1, 6},
                               {"hpas", {{0, 22050}}, 0, 10},
                               {"hpas", {{0, 100}, {1, -20}}, 1, 6},
                               {"lshf", {{1, -40}}, 1, 6},
                               {"hshf", {{1, -40}}, 1, 40},
                               {"bpas", {{0, 100}, {1, 100}}, 1, 12000},
                               {"bpas", {{0, 20}, {1, 2400}}, 0, 22050},
                               {"pmeq", {{0, 100}, {2, -20}}, 2, 6},
                               {"pmeq", {{0, 20}, {2, 6}}, 0, 22050},
                               {"filt", {{2, 6}}, 0, 1},
                               {"filt", {{0, 1}, {2, 6}}, 0, 0},
                               {"filt", {{14, 6}}, 12, 1},
                               {"filt", {{3, 20}, {4, 6}}, 3, 20000},
                               {"filt", {{3, 100}, {4, 6}, {5, 0.05}}, 5, 3}}) {
    EffectBench bench(change.code);
    bench.set(change.before);
    bench.reset();
    const auto output =
        bench.renderAround(sine(100, -12, 44100), 22160, [&] { bench.set(change.id, change.value); })[0];
    EXPECT_LT(largestBend(output, 20000), 0.0025) << change.code << " " << change.id;
    const auto [low, high] = std::minmax_element(output.begin() + 20000, output.end());
    EXPECT_LT(std::max(-*low, *high), 0.6) << change.code << " " << change.id;
    bench.reset();
    const auto steady = bench.render(sine(100, -12, 44100), 512)[0];
    for (size_t i = 43000; i < 44100; ++i)
      ASSERT_NEAR(output[i], steady[i], 0.002) << change.code << change.id;
  }
}
