// The plug-ins' sound, whatever they are given and in whatever portions.

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <limits>

#include "EffectBench.h"
#include "LoadedPlugin.h"

namespace {

using Samples = LoadedPlugin::Samples;

constexpr double rates[] = {8000,  11025, 16000, 22050, 24000,  32000, 44100,
                            48000, 64000, 88200, 96000, 192000, 384000};
constexpr uint32_t wholeBlock = 4096;
struct Blocks {
  std::vector<uint32_t> lengths;
  uint32_t frames;  // rendered; fewer in small blocks, which take longer
};
const Blocks portions[] = {{{0, 64}, 3000}, {{1}, 700},    {{17}, 2000},
                           {{64}, 3000},    {{256}, 4500}, {{2027}, 4500}};
constexpr uint32_t longestRender = 4500;

float valueOf(const std::string& signal, size_t i, float noise) {
  const bool isBurst = i >= 40 && i < 140;
  if (signal == "impulse") return i == 0 ? 1.0f : 0.0f;
  if (signal == "noise") return noise;
  if (signal == "constant") return 0.9f;
  if (signal == "denormals") return 1e-40f * noise;
  if (signal == "not a number") return isBurst ? std::numeric_limits<float>::quiet_NaN() : noise;
  if (signal == "infinity")
    return isBurst ? std::copysign(std::numeric_limits<float>::infinity(), noise) : noise;
  if (signal == "square") return i / 50 % 2 ? 1.0f : -1.0f;
  return 0;
}
const std::vector<std::string> signals = {"silence",   "impulse",      "noise",    "constant",
                                          "denormals", "not a number", "infinity", "square"};

Samples makeSignal(const std::string& signal, uint32_t frames) {
  Samples samples = noise(2, frames, 0.7f);
  for (auto& channel : samples)
    for (size_t i = 0; i < frames; ++i) channel[i] = valueOf(signal, i, channel[i]);
  return samples;
}

bool isFinite(const Samples& samples) {
  for (const auto& channel : samples)
    for (const float sample : channel)
      if (!std::isfinite(sample)) return false;
  return true;
}

/// Of both channels the first frame that differs in any bit; the number of frames when none does.
size_t firstDifference(const Samples& a, const Samples& b, size_t frames) {
  size_t first = frames;
  for (size_t c = 0; c < 2; ++c)
    first = std::min(
        first,
        static_cast<size_t>(
            std::mismatch(
                a[c].begin(), a[c].begin() + static_cast<std::ptrdiff_t>(first), b[c].begin(),
                [](float x, float y) { return std::bit_cast<uint32_t>(x) == std::bit_cast<uint32_t>(y); })
                .first -
            a[c].begin()));
  return first;
}

/// Everything on, nothing flat, and echoes early enough to be rendered.
void turnAllKnobs(LoadedPlugin& plugin) {
  for (size_t i = 0; i < plugin.symbols().size(); ++i) {
    const std::string& symbol = plugin.symbols()[i];
    if (!plugin.isControlInput(i) || symbol == "enabled" || symbol == "render_quality") continue;
    plugin.control(i) = plugin.minimum(i) + 0.35f * (plugin.maximum(i) - plugin.minimum(i));
    if (symbol == "delay_time") plugin.control(i) = 0.001f;
    if (symbol == "in_to_out_delay") plugin.control(i) = 333;
  }
}

class EveryPlugin : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Listed, EveryPlugin, testing::ValuesIn(PluginFolder::shared().codes()));

}  // namespace

TEST_P(EveryPlugin, IsFiniteAndTheSameInAnyBlocksAndInPlace) {
  // Its window takes longer than all others together; its blocks are chunked whatever the rate.
  const bool isSlow = GetParam() == "tmpt";
  for (const double rate : rates) {
    if (isSlow && rate != 8000 && rate != 44100 && rate != 384000) continue;
    LoadedPlugin plugin(GetParam(), rate);
    ASSERT_TRUE(plugin.isOpen()) << rate;
    turnAllKnobs(plugin);
    plugin.activate();
    plugin.render(makeSignal("silence", 1), {1});
    const auto latency = plugin.has("latency") ? static_cast<uint32_t>(plugin.control("latency")) : 0;
    for (const std::string& signal : signals) {
      if (isSlow && signal != "noise" && signal != "not a number") continue;
      SCOPED_TRACE(std::to_string(rate) + " Hz, " + signal);
      const Samples input = makeSignal(signal, latency + longestRender);
      plugin.activate();
      const Samples whole = plugin.render(input, {wholeBlock});
      ASSERT_TRUE(isFinite(whole));
      for (const Blocks& blocks : portions) {
        Samples start = input;
        for (auto& channel : start) channel.resize(latency + blocks.frames);
        plugin.activate();
        const Samples cut = plugin.render(start, blocks.lengths, true);
        ASSERT_EQ(firstDifference(whole, cut, cut[0].size()), cut[0].size()) << blocks.lengths.back();
      }
    }
  }
}

TEST_P(EveryPlugin, RecoversFromNumbersThatAreNone) {
  for (const double rate : {8000.0, 44100.0, 192000.0}) {
    EffectBench component(GetParam(), {rate, 2, 2, 512});
    LoadedPlugin plugin(GetParam(), rate);
    ASSERT_TRUE(plugin.isOpen());
    plugin.activate();
    constexpr size_t given = 1000;
    const auto silent = given + 1 + static_cast<size_t>((component.latency() + component.tailTime()) * rate);
    Samples input = makeSignal("not a number", given);
    input[1] = makeSignal("infinity", given)[1];
    for (auto& channel : input) channel.resize(silent + 1000);
    const Samples output = plugin.render(input, {256}, true);
    EXPECT_TRUE(isFinite(output));
    for (const auto& channel : output)
      for (size_t i = silent; i < channel.size(); ++i) ASSERT_LT(std::fabs(channel[i]), 0.0005f) << i;
    plugin.control("enabled") = 0;
    EXPECT_TRUE(isFinite(plugin.render(makeSignal("infinity", given), {64})));
  }
}

TEST_P(EveryPlugin, TakesNoLongerOverDenormals) {
  LoadedPlugin plugin(GetParam());
  plugin.activate();
  // Where they cost nothing, it still shows that they are taken for 0. The sample delay only copies.
  for (const auto& channel : plugin.render(makeSignal("denormals", 20000), {512}))
    EXPECT_TRUE(GetParam() == "sdly" || std::all_of(channel.begin(), channel.end(), [](float sample) {
                  return std::fpclassify(sample) != FP_SUBNORMAL;
                }));
  const auto secondsOf = [&](const std::string& signal) {
    Samples samples = makeSignal(signal, 8192);
    const auto start = std::chrono::steady_clock::now();
    plugin.render(samples, {512});
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  double plain = 1, denormal = 1, silent = 1;
  for (int i = 0; i < 7; ++i) {
    plain = std::min(plain, secondsOf("noise"));
    denormal = std::min(denormal, secondsOf("denormals"));
    silent = std::min(silent, secondsOf("silence"));
  }
  EXPECT_LT(denormal, 2 * plain);
  EXPECT_LT(silent, 2 * plain);
}
