// What every effect owes to whoever renders it, tried on all that are registered.

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "EffectBench.h"

namespace {

const std::set<std::string> worksFrom500Hz = {"bpas", "filt", "hpas", "hshf", "lpas",
                                              "lshf", "mrev", "pmeq", "Qmrv"};

class EveryEffect : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Registered, EveryEffect, testing::ValuesIn(effectCodes()));

}  // namespace

TEST_P(EveryEffect, DescribesItselfConsistently) {
  EffectBench bench(GetParam());
  const auto& parameters = bench.parameters();
  ASSERT_FALSE(parameters.empty());
  for (size_t i = 0; i < parameters.size(); ++i) {
    const EffectParameter& p = parameters[i];
    SCOPED_TRACE(p.name);
    EXPECT_TRUE(i == 0 || p.id > parameters[i - 1].id);
    EXPECT_LT(p.minValue, p.maxValue);
    EXPECT_GE(p.defaultValue, p.minValue);
    EXPECT_LE(p.defaultValue, p.maxValue);
    EXPECT_TRUE(p.minValue > 0 || !(p.flags & kAudioUnitParameterFlag_DisplayLogarithmic));
    EXPECT_NE(p.name, "");
  }
  const auto presets = bench.presets();
  EXPECT_GE(presets.size(), 3u);
  EXPECT_EQ(std::set(presets.begin(), presets.end()).size(), presets.size());
}

TEST_P(EveryEffect, WorksAtEveryRateAndChannelCountItPromises) {
  const Float64 lowest = worksFrom500Hz.contains(GetParam()) ? 500 : 8000;
  EXPECT_THROW(EffectBench(GetParam(), {lowest - 1, 2, 2, 64}), std::runtime_error);
  for (const Float64 rate : {lowest, 44100.0, 384000.0}) {
    for (const UInt32 channels : {1u, 2u}) {
      EffectBench bench(GetParam(), {rate, channels, channels, 64});
      bench.setAll(1);
      for (const auto& channel : bench.render(noise(channels, 3000, 0.1f), 64))
        for (const float sample : channel) ASSERT_TRUE(std::isfinite(sample));
    }
    EXPECT_THROW(EffectBench(GetParam(), {rate, 2, 1, 64}), std::runtime_error);
  }
}

TEST_P(EveryEffect, FallsSilentWithinItsLatencyAndTail) {
  EffectBench bench(GetParam());
  EXPECT_GE(bench.latency(), 0);
  EXPECT_GE(bench.tailTime(), 0);
  auto input = noise(2, 10000, 0.5f);
  const auto silent = static_cast<size_t>(10001 + (bench.latency() + bench.tailTime()) * 44100);
  for (auto& channel : input) channel.resize(silent + 5000);
  for (const auto& channel : bench.render(input, 512))
    for (size_t i = silent; i < channel.size(); ++i) ASSERT_LT(std::fabs(channel[i]), 0.0005f) << i;
}
