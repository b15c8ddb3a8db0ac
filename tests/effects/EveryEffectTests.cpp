// What every effect owes to whoever renders it, tried on all that are registered.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "EffectBench.h"

namespace {

constexpr AudioUnitParameterID renderQuality = ~0u;

/// Settings in which a tone of 100 Hz at -12 dBFS is touched by many parameters.
struct AtWork {
  std::string code;
  std::vector<std::pair<AudioUnitParameterID, double>> values;
  /// Where not a parameter's whole range.
  std::map<AudioUnitParameterID, std::pair<double, double>> ranges = {};
  /// What sounds otherwise than from the start for longer than is waited here, or for ever.
  std::set<AudioUnitParameterID> lasting = {};
};
const AtWork settings[] = {
    {"bpas", {{0, 100}, {1, 2400}}},
    {"dcmp", {{4, 0.0001}, {5, 0.01}}, {{6, {-20, 20}}}, {5}},
    {"dcmp", {{0, 0}, {3, 0}, {4, 0.0001}, {5, 0.01}}, {{6, {-20, 20}}}, {5}},
    {"dely", {{1, 0.0123}}, {{1, {0.0001, 0.0123}}, {2, {-80, 80}}}},
    {"filt", {{1, 100}, {2, 6}, {3, 100}, {4, 6}, {6, 100}, {7, 6}, {9, 100}, {10, 6}, {13, 1000}, {14, 6}}},
    {"hpas", {{0, 100}}},
    {"hshf", {{0, 10}, {1, 6}}},
    {"lmtr", {{1, 0.001}, {2, 20}}, {{2, {-20, 20}}}},
    {"lpas", {{0, 100}}},
    {"lshf", {{0, 100}, {1, 6}}, {{1, {-40, 20}}}},
    {"mcmp", {}, {{0, {-20, 0}}, {1, {-20, 20}}}, {14}},
    {"mcmp", {{2, 20}, {3, 20}, {4, 100}}, {{0, {-20, 0}}, {1, {-20, 20}}}, {14}},
    {"mrev", {{0, 50}, {3, 0.03}}, {{renderQuality, {0, 127}}}, {3, 12}},
    {"pmeq", {{0, 100}, {2, 6}}},
    {"Qmrv", {{0, 50}, {3, 0.03}}, {}, {3, 12}},
    {"sdly", {{0, 220}}, {{0, {0, 220}}}},  // 220 frames later the tone stands against itself
    {"tmpt", {{renderQuality, 32}, {1, 300}}, {}, {1, 3, 4}},
};

void setOne(EffectBench& bench, AudioUnitParameterID id, double value) {
  if (id == renderQuality)
    bench.setQuality(static_cast<UInt32>(value));
  else
    bench.set(id, value);
}

float peak(const std::vector<float>& samples, size_t from, size_t to) {
  float highest = 0;
  for (size_t i = from; i < to; ++i) highest = std::max(highest, std::fabs(samples[i]));
  return highest;
}

/// A parameter is changed while a tone sounds: no click, no thump, and then it is as if it had been so
/// always. Whether the change can be heard at all.
bool expectSmoothChange(const AtWork& setting, AudioUnitParameterID id, double from, double to) {
  const bool isLasting = setting.lasting.contains(id);
  constexpr size_t period = 441, crest = 22160;  // frames; on a crest a step of the gain is largest
  const size_t end = isLasting ? 66150 : 110250;
  EffectBench bench(setting.code);
  for (const auto& [other, value] : setting.values) setOne(bench, other, value);
  setOne(bench, id, from);
  bench.reset();
  auto tone = sine(100, -12, end);
  for (size_t i = 0; i < 10 * period; ++i) tone[1][i] *= 3;  // so that there is something to recover from
  const auto output = bench.render(tone, crest, [&] { setOne(bench, id, to); })[1];
  bench.reset();
  const auto wanted = bench.render(tone)[1];
  const double level =
      std::max({0.25f, peak(output, crest - period, crest), peak(wanted, end - period, end)});
  double difference = 0;
  for (size_t i = end - period; i < end; ++i)
    difference = std::max<double>(difference, std::fabs(output[i] - wanted[i]));
  EXPECT_LT(largestBend(output, crest - 100), 0.015 * level);
  EXPECT_LT(peak(output, crest, end), 2.5 * level);
  EXPECT_TRUE(difference < 0.003 * level || isLasting) << difference;
  return !std::equal(output.begin(), output.begin() + crest, wanted.begin());
}

class EveryEffect : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Registered, EveryEffect, testing::ValuesIn(effectCodes()));

}  // namespace

TEST_P(EveryEffect, ChangesWithoutAClickAndBecomesWhatItWasTold) {
  std::map<AudioUnitParameterID, bool> isHeard;
  for (const AtWork& setting : settings) {
    if (setting.code != GetParam()) continue;
    auto ranges = setting.ranges;
    for (const EffectParameter& p : EffectBench(GetParam()).writableParameters())
      ranges.try_emplace(p.id, p.minValue, p.maxValue);
    for (const auto& [id, range] : ranges) {
      SCOPED_TRACE(id);
      isHeard[id] |= expectSmoothChange(setting, id, range.first, range.second);
      isHeard[id] |= expectSmoothChange(setting, id, range.second, range.first);
    }
  }
  EXPECT_FALSE(isHeard.empty()) << "a setting is missing";
  for (const auto& [id, heard] : isHeard) EXPECT_TRUE(heard) << id;
}
