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

class Instance : public testing::TestWithParam<std::string> {
 protected:
  LoadedPlugin plugin{GetParam()};
  EffectBench bench{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Registered, Instance, testing::ValuesIn(effectCodes()));

/// Every parameter at another place of its range; the component gets the same.
void setBoth(LoadedPlugin& plugin, EffectBench& bench) {
  float place = 0;
  for (const EffectParameter& p : bench.writableParameters()) {
    place = std::fmod(place + 0.61f, 1.0f);
    plugin.control(symbolOf(p.name)) = partOf(p, place);
    bench.set(p.id, partOf(p, place));
  }
  if (!plugin.has("render_quality")) return;
  plugin.control("render_quality") = 64;
  bench.setQuality(64);
}

}  // namespace

TEST_P(Instance, SoundsLikeTheComponentWithThePortsValuesFromTheFirstRun) {
  plugin.activate();
  setBoth(plugin, bench);
  bench.reset();
  const Samples input = noise(2, 30000, 0.8f);
  const Samples first = plugin.render(input, {0, 512}), wanted = bench.render(input);
  // The first run of one must not allocate; its change is over before it is heard.
  EXPECT_TRUE(first == wanted || GetParam() == "tmpt");
  for (const uint32_t block : {512u, 5000u}) {
    plugin.activate();
    bench.reset();
    EXPECT_EQ(plugin.render(input, {block}), bench.render(input));
  }
  for (const EffectParameter& p : bench.parameters()) {
    if (p.isWritable()) continue;
    EXPECT_NEAR(plugin.control(symbolOf(p.name)), bench.value(p.id), 0.5f);  // blocks of another length
    EXPECT_GT(bench.value(p.id), 0);
  }
}

TEST_P(Instance, IsBypassedWithoutAClickAndInTime) {
  constexpr size_t turn = 70 * 441, fade = 882;  // frames; whole periods of the tone
  const uint32_t latency = plugin.latency();
  EXPECT_EQ(latency, std::lround(bench.latency() * 44100));
  const Samples tone = sine(100, -6, turn);
  std::vector<float> output;
  const auto go = [&](bool enabled) {
    plugin.control("enabled") = enabled;
    const auto more = plugin.render(tone, {256}, true)[0];
    output.insert(output.end(), more.begin(), more.end());
  };
  const auto expectDry = [&](size_t from, size_t to) {
    for (size_t i = from; i < to; ++i) ASSERT_EQ(output[i], tone[0][(i - latency) % turn]) << i;
  };
  plugin.control("enabled") = 0;
  plugin.activate();
  go(false);
  expectDry(latency, turn);
  output.clear();
  plugin.control("enabled") = 1;
  plugin.activate();
  for (const bool enabled : {true, false, true}) go(enabled);
  expectDry(turn + fade, 2 * turn);
  const auto bend = [&](size_t from, size_t to) {
    return largestBend({output.begin() + from, output.begin() + to});
  };
  const double ordinary = std::max(bend(turn / 2, turn), bend(turn + fade, 2 * turn));
  for (const size_t change : {turn, 2 * turn})
    EXPECT_LT(bend(change - 10, change + fade), 2 * ordinary + 1e-4);
}

TEST(Tempo, GoesFromTheHostsTimeLineToItsPortAndStaysUntilItIsToldAnother) {
  LoadedPlugin plugin("dely");
  plugin.activate();
  for (const float tempo : {0.0f, 87.5f, 87.5f, 120.0f}) {
    if (tempo != plugin.control("tempo") && tempo > 0) plugin.tellTempo(tempo);
    plugin.render(noise(2, 64, 0.5f), {64});
    EXPECT_EQ(plugin.control("tempo"), tempo);
  }
}

TEST_P(Instance, SurvivesAnAudioThreadThatIsCancelled) {
  Samples samples(2, std::vector<float>(1024));
  float* const channels[] = {samples[0].data(), samples[1].data()};
  plugin.activate();
  for (int i = 0; i < 20; ++i) {
    std::thread audio([&]() {
      pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
      for (;;) plugin.run(channels, channels, 1024);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    pthread_cancel(audio.native_handle());
    audio.join();
  }
  plugin.run(channels, channels, 1024);
}

TEST(Instances, AreRefusedWhereTheEffectCannotWork) {
  EXPECT_FALSE(LoadedPlugin("lmtr", 7999).isOpen());
  EXPECT_FALSE(LoadedPlugin("mrev", 400000).isOpen());
}
