// What every effect owes to whoever renders it, tried on all that are registered.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

#include "CoreFoundation.h"
#include "EffectBench.h"
#include "RegisterEffects.h"

namespace {

/// Every parameter that can be set somewhere between its limits.
void setAll(EffectBench& bench, float position) {
  for (const auto& [id, info] : bench.parameters())
    if (info.flags & kAudioUnitParameterFlag_IsWritable)
      bench.set(id, info.minValue + position * (info.maxValue - info.minValue));
}

const std::set<std::string> worksFrom500Hz = {"bpas", "filt", "hpas", "hshf", "lpas",
                                              "lshf", "mrev", "pmeq", "Qmrv"};

class EveryEffect : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Registered, EveryEffect, testing::ValuesIn(effectCodes()));

}  // namespace

TEST_P(EveryEffect, DescribesItselfConsistently) {
  EffectBench bench(GetParam());
  ASSERT_NE(bench.unit(), nullptr);
  const auto parameters = bench.parameters();
  ASSERT_FALSE(parameters.empty());
  for (size_t i = 0; i < parameters.size(); ++i) {
    const auto& [id, info] = parameters[i];
    SCOPED_TRACE(info.name);
    EXPECT_TRUE(i == 0 || id > parameters[i - 1].first);
    EXPECT_LT(info.minValue, info.maxValue);
    EXPECT_GE(info.defaultValue, info.minValue);
    EXPECT_LE(info.defaultValue, info.maxValue);
    EXPECT_TRUE(info.minValue > 0 || !(info.flags & kAudioUnitParameterFlag_DisplayLogarithmic));
    EXPECT_STRNE(info.name, "");
  }
  CFArrayRef presets = nullptr;
  UInt32 size = sizeof presets;
  ASSERT_EQ(AudioUnitGetProperty(bench.unit(), kAudioUnitProperty_FactoryPresets, 0, 0, &presets, &size),
            noErr);
  EXPECT_GE(CFArrayGetCount(presets), 3u);
  std::set<std::string> names;
  for (size_t i = 0; i < CFArrayGetCount(presets); ++i)
    EXPECT_TRUE(names.insert(CFStringGetText(CFArrayGetStringAtIndex(presets, i))).second);
  CFRelease(presets);
}

TEST_P(EveryEffect, WorksAtEveryRateAndChannelCountItPromises) {
  const Float64 lowest = worksFrom500Hz.contains(GetParam()) ? 500 : 8000;
  EXPECT_EQ(EffectBench(GetParam(), {lowest - 1, 2, 2, 64}).unit(), nullptr);
  for (const Float64 rate : {lowest, 44100.0, 384000.0}) {
    for (const UInt32 channels : {1u, 2u}) {
      EffectBench bench(GetParam(), {rate, channels, channels, 64});
      ASSERT_NE(bench.unit(), nullptr) << rate << " " << channels;
      setAll(bench, 1);
      for (const auto& channel : bench.render(noise(channels, 3000, 0.1f), 64))
        for (const float sample : channel) ASSERT_TRUE(std::isfinite(sample));
    }
    EXPECT_EQ(EffectBench(GetParam(), {rate, 2, 1, 64}).unit(), nullptr);
  }
}

TEST_P(EveryEffect, FallsSilentWithinItsLatencyAndTail) {
  EffectBench bench(GetParam());
  ASSERT_NE(bench.unit(), nullptr);
  EXPECT_GE(bench.latency(), 0);
  EXPECT_GE(bench.tailTime(), 0);
  auto input = noise(2, 10000, 0.5f);
  const auto silent = static_cast<size_t>(10001 + (bench.latency() + bench.tailTime()) * 44100);
  for (auto& channel : input) channel.resize(silent + 5000);
  for (const auto& channel : bench.render(input, 512))
    for (size_t i = silent; i < channel.size(); ++i) ASSERT_LT(std::fabs(channel[i]), 0.0005f) << i;
}
