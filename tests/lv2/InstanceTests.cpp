// One instance between its ports, against the component that it stands for.

#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <cmath>
#include <thread>

#include "EffectBench.h"
#include "LoadedPlugin.h"

namespace {

using Samples = LoadedPlugin::Samples;

class Instance : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Registered, Instance, testing::ValuesIn(effectCodes()));

std::vector<float> part(const std::vector<float>& samples, size_t from, size_t to) {
  return {samples.begin() + static_cast<std::ptrdiff_t>(from),
          samples.begin() + static_cast<std::ptrdiff_t>(to)};
}

/// Every input at another place between its limits; the component gets the same.
void setBoth(LoadedPlugin& plugin, EffectBench& bench) {
  float place = 0;
  size_t input = 0;
  std::vector<size_t> inputs;
  for (size_t i = 0; i < plugin.symbols().size(); ++i)
    if (plugin.isControlInput(i) && plugin.symbols()[i] != "enabled" &&
        plugin.symbols()[i] != "render_quality")
      inputs.push_back(i);
  for (const EffectParameter& p : bench.parameters()) {
    if (!p.isWritable()) continue;
    place = std::fmod(place + 0.61f, 1.0f);
    const float value = p.minValue + place * (p.maxValue - p.minValue);
    plugin.control(inputs.at(input++)) = value;
    bench.set(p.id, value);
  }
  if (plugin.has("render_quality")) {
    plugin.control("render_quality") = 64;
    bench.setQuality(64);
  }
}

}  // namespace

TEST_P(Instance, SoundsLikeTheComponentWithThePortsValues) {
  LoadedPlugin plugin(GetParam());
  EffectBench bench(GetParam());
  ASSERT_TRUE(plugin.isOpen());
  setBoth(plugin, bench);
  const Samples input = noise(2, 30000, 0.8f);
  plugin.activate();
  plugin.render(input, {512});  // leaves a history behind
  for (const uint32_t block : {512u, 5000u}) {
    plugin.activate();
    bench.reset();
    EXPECT_EQ(plugin.render(input, {block}), bench.render(input, 512));
  }
  for (const EffectParameter& p : bench.parameters()) {
    if (p.isWritable()) continue;
    const Float32 amount = bench.value(p.id);
    std::string symbol = p.name;
    std::replace(symbol.begin(), symbol.end(), ' ', '_');
    EXPECT_NEAR(plugin.control(symbol), amount, 0.5f);  // blocks of another length
    EXPECT_GT(amount, 0);
  }
}

TEST_P(Instance, IsBypassedWithoutAClickAndInTime) {
  constexpr size_t third = 30000;  // frames
  LoadedPlugin plugin(GetParam());
  EffectBench bench(GetParam());
  ASSERT_TRUE(plugin.isOpen());
  plugin.activate();
  const float* noInput[] = {nullptr, nullptr};
  float* noOutput[] = {nullptr, nullptr};
  plugin.run(noInput, noOutput, 0);
  const auto latency = plugin.has("latency") ? static_cast<size_t>(plugin.control("latency")) : 0;
  EXPECT_EQ(latency, static_cast<size_t>(std::lround(bench.latency() * 44100)));

  const Samples input = sine(100, -6, 3 * third, 44100);
  Samples output(2);
  for (size_t turn = 0; turn < 3; ++turn) {
    plugin.control("enabled") = turn == 1 ? 0 : 1;
    Samples block(2);
    for (size_t c = 0; c < 2; ++c) block[c] = part(input[c], turn * third, (turn + 1) * third);
    block = plugin.render(block, {256}, true);
    for (size_t c = 0; c < 2; ++c) output[c].insert(output[c].end(), block[c].begin(), block[c].end());
  }
  constexpr size_t fade = 44100 / 50;
  constexpr size_t bypassed = third + fade;
  EXPECT_EQ(part(output[0], bypassed, 2 * third), part(input[0], bypassed - latency, 2 * third - latency));
  const auto steps = [&](size_t from, size_t to) { return largestBend(part(output[0], from, to), 0); };
  const double ordinary = std::max(steps(third / 2, third), steps(bypassed, 2 * third));
  EXPECT_LT(steps(third - 10, bypassed), 2 * ordinary + 1e-4);
  EXPECT_LT(steps(2 * third - 10, 2 * third + fade), 2 * ordinary + 1e-4);
}

TEST(Tempo, GoesFromTheHostsTimeLineToItsPort) {
  LoadedPlugin plugin("dely");
  plugin.activate();
  const Samples input = noise(2, 64, 0.5f);
  plugin.render(input, {64});
  EXPECT_EQ(plugin.control("tempo"), 0);
  plugin.tellTempo(87.5f);
  plugin.render(input, {64});
  EXPECT_EQ(plugin.control("tempo"), 87.5f);
  plugin.render(input, {64});
  EXPECT_EQ(plugin.control("tempo"), 87.5f) << "the host says it once";
}

TEST(Instances, TakeTheValuesOfTheirFirstRunAtOnce) {
  for (const std::string& code : effectCodes()) {
    if (code == "tmpt") continue;  // its first run must not allocate; the change is over before it is heard
    SCOPED_TRACE(code);
    LoadedPlugin plugin(code);
    EffectBench bench(code);
    plugin.activate();
    setBoth(plugin, bench);
    bench.reset();
    const Samples input = noise(2, 3000, 0.8f);
    EXPECT_EQ(plugin.render(input, {0, 512}), bench.render(input, 512));
  }
}

TEST(Instances, SurviveAnAudioThreadThatIsCancelled) {
  const Samples silence(2, std::vector<float>(1024));
  for (const std::string& code : effectCodes()) {
    SCOPED_TRACE(code);
    LoadedPlugin plugin(code);
    Samples output = silence;
    const float* const from[] = {silence[0].data(), silence[1].data()};
    float* const to[] = {output[0].data(), output[1].data()};
    plugin.activate();
    for (int i = 0; i < 20; ++i) {
      std::thread audio([&]() {
        pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
        for (;;) plugin.run(from, to, 1024);
      });
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      pthread_cancel(audio.native_handle());
      audio.join();
    }
    plugin.run(from, to, 1024);
  }
}

TEST(Instances, AreRefusedWhereTheEffectCannotWork) {
  EXPECT_FALSE(LoadedPlugin("lmtr", 7999).isOpen());
  EXPECT_FALSE(LoadedPlugin("mrev", 400000).isOpen());
}
