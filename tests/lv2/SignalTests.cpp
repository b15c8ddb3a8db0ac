// The plug-ins' sound, whatever they are given and in whatever portions.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "EffectBench.h"
#include "LoadedPlugin.h"

namespace {

using Samples = LoadedPlugin::Samples;

constexpr double rates[] = {8000,  11025, 16000, 22050, 24000,  32000, 44100,
                            48000, 64000, 88200, 96000, 192000, 384000};
struct Blocks {
  std::vector<uint32_t> lengths;
  uint32_t frames;  // rendered; fewer in small blocks, which take longer
};
const Blocks portions[] = {{{0, 64}, 3000}, {{1}, 700},    {{17}, 2000},
                           {{64}, 3000},    {{256}, 4500}, {{2027}, 4500}};
constexpr uint32_t longestRender = 4500;

float valueOf(const std::string& signal, size_t i, float noise) {
  constexpr auto infinity = std::numeric_limits<float>::infinity();
  const bool isBurst = i >= 40 && i < 140;
  if (signal == "impulse") return i == 0 ? 1.0f : 0.0f;
  if (signal == "noise") return noise;
  if (signal == "constant") return 0.9f;
  if (signal == "denormals") return 1e-40f * noise;
  if (signal == "not a number") return isBurst ? std::numeric_limits<float>::quiet_NaN() : noise;
  if (signal == "infinity") return isBurst ? std::copysign(infinity, noise) : noise;
  if (signal == "square") return i / 50 % 2 ? 1.0f : -1.0f;
  return 0;
}

Samples makeSignal(const std::string& signal, uint32_t frames) {
  Samples samples = noise(2, frames, 0.7f);
  for (auto& channel : samples)
    for (size_t i = 0; i < frames; ++i) channel[i] = valueOf(signal, i, channel[i]);
  return samples;
}

template <class Predicate>
bool allOf(const Samples& samples, Predicate holds) {
  return std::all_of(samples.begin(), samples.end(),
                     [&](const auto& channel) { return std::all_of(channel.begin(), channel.end(), holds); });
}

bool isFinite(const Samples& samples) {
  return allOf(samples, [](float sample) { return std::isfinite(sample); });
}

/// Everything on, nothing flat, and echoes early enough to be rendered.
void turnAllKnobs(LoadedPlugin& plugin) {
  for (const std::string& symbol : plugin.parameters()) {
    plugin.control(symbol) = std::lerp(plugin.minimum(symbol), plugin.maximum(symbol), 0.35f);
    if (symbol == "delay_time") plugin.control(symbol) = 0.001f;
    if (symbol == "in_to_out_delay") plugin.control(symbol) = 333;
  }
}

class EveryPlugin : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Listed, EveryPlugin, testing::ValuesIn(PluginFolder::shared().codes()));

}  // namespace

TEST_P(EveryPlugin, IsFiniteAndTheSameInAnyBlocksAndInPlaceAndKeepsNoDenormals) {
  // Its window takes longer than all others together; its blocks are chunked whatever the rate.
  const bool isSlow = GetParam() == "tmpt";
  for (const double rate : rates) {
    if (isSlow && rate != 8000 && rate != 44100 && rate != 384000) continue;
    LoadedPlugin plugin(GetParam(), rate);
    ASSERT_TRUE(plugin.isOpen()) << rate;
    turnAllKnobs(plugin);
    plugin.activate();
    const uint32_t latency = plugin.latency();
    for (const char* signal :
         {"silence", "impulse", "noise", "constant", "denormals", "not a number", "infinity", "square"}) {
      if (isSlow && signal != std::string("noise") && signal != std::string("not a number")) continue;
      SCOPED_TRACE(std::to_string(rate) + " Hz, " + signal);
      const Samples input = makeSignal(signal, latency + longestRender);
      plugin.activate();
      const Samples whole = plugin.render(input, {4096});
      ASSERT_TRUE(isFinite(whole));
      // The sample delay only copies.
      EXPECT_TRUE(GetParam() == "sdly" ||
                  allOf(whole, [](float sample) { return std::fpclassify(sample) != FP_SUBNORMAL; }));
      for (const Blocks& blocks : portions) {
        Samples start = input;
        for (auto& channel : start) channel.resize(latency + blocks.frames);
        plugin.activate();
        const Samples cut = plugin.render(start, blocks.lengths, true);
        for (size_t c = 0; c < 2; ++c)
          ASSERT_EQ(std::memcmp(cut[c].data(), whole[c].data(), cut[c].size() * sizeof(float)), 0)
              << blocks.lengths.back();
      }
    }
  }
}

TEST_P(EveryPlugin, RecoversFromNumbersThatAreNone) {
  for (const double rate : {8000.0, 44100.0, 192000.0}) {
    EffectBench component(GetParam(), {.sampleRate = rate});
    LoadedPlugin plugin(GetParam(), rate);
    ASSERT_TRUE(plugin.isOpen());
    plugin.activate();
    constexpr size_t given = 1000;
    const auto silent = given + 1 + static_cast<size_t>((component.latency() + component.tailTime()) * rate);
    Samples input{makeSignal("not a number", given)[0], makeSignal("infinity", given)[1]};
    for (auto& channel : input) channel.resize(silent + 1000);
    Samples output = plugin.render(input, {256}, true);
    EXPECT_TRUE(isFinite(output));
    for (auto& channel : output)
      channel.erase(channel.begin(), channel.begin() + static_cast<std::ptrdiff_t>(silent));
    EXPECT_TRUE(allOf(output, [](float sample) { return std::fabs(sample) < 0.0005f; }));
    plugin.control("enabled") = 0;
    EXPECT_TRUE(isFinite(plugin.render(makeSignal("infinity", given), {64})));
  }
}
