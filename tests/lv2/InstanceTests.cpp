// One instance between its ports: the component's sound, whatever it is given and in whatever portions.

#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <thread>

#include "EffectBench.h"
#include "LoadedPlugin.h"

namespace {

using Samples = LoadedPlugin::Samples;

template <class Predicate>
bool allOf(const Samples& samples, Predicate holds) {
  return std::all_of(samples[0].begin(), samples[0].end(), holds) &&
         std::all_of(samples[1].begin(), samples[1].end(), holds);
}

/// Noise that breaks for a hundred frames: numbers that are none on the left, infinity on the right.
Samples brokenNoise(size_t frames) {
  Samples samples = noise(2, frames, 0.7f);
  std::fill_n(samples[0].begin() + 40, 100, std::numeric_limits<float>::quiet_NaN());
  for (size_t i = 40; i < 140; ++i) samples[1][i] = std::copysign(HUGE_VALF, samples[1][i]);
  return samples;
}

class Instance : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Registered, Instance, testing::ValuesIn(effectCodes()));

}  // namespace

TEST_P(Instance, SoundsLikeTheComponentWithThePortsValuesFromTheFirstRun) {
  LoadedPlugin plugin(GetParam());
  EffectBench bench(GetParam());
  float place = 0;
  for (const EffectParameter& p : bench.writableParameters()) {
    place = std::fmod(place + 0.61f, 1.0f);
    plugin.control(symbolOf(p.name)) = partOf(p, place);
    bench.set(p.id, partOf(p, place));
  }
  if (plugin.has("render_quality")) {
    plugin.control("render_quality") = 64;
    bench.setQuality(64);
  }
  bench.reset();
  const Samples input = noise(2, 30000, 0.8f);
  const Samples first = plugin.render(input, {0, 512}), wanted = bench.render(input);
  // The first run of one must not allocate; its change is over before it is heard.
  EXPECT_TRUE(first == wanted || GetParam() == "tmpt");
  plugin.clear();
  bench.reset();
  EXPECT_EQ(plugin.render(input, {5000}), bench.render(input));
  for (const EffectParameter& p : bench.parameters()) {
    if (p.isWritable()) continue;
    EXPECT_NEAR(plugin.control(symbolOf(p.name)), bench.value(p.id), 0.5f);  // blocks of another length
    EXPECT_GT(bench.value(p.id), 0);
  }
}

TEST_P(Instance, IsFiniteAndTheSameInAnyBlocksAndInPlaceAndKeepsNoDenormals) {
  for (const double rate : {8000.0, 44100.0, 384000.0}) {
    LoadedPlugin plugin(GetParam(), rate);
    for (const std::string& symbol : plugin.inputs())  // everything on, nothing flat
      plugin.control(symbol) = std::lerp(plugin.port(symbol).minimum, plugin.port(symbol).maximum, 0.35f);
    if (plugin.has("delay_time")) plugin.control("delay_time") = 0.001f;
    const size_t frames = plugin.latency() + 4500;
    for (const Samples& input : {impulse(2, frames), noise(2, frames, 1e-40f), brokenNoise(frames)}) {
      plugin.clear();
      const Samples whole = plugin.render(input, {4096});
      ASSERT_TRUE(allOf(whole, [](float sample) { return std::isfinite(sample); }));
      // The sample delay only copies.
      EXPECT_TRUE(GetParam() == "sdly" ||
                  allOf(whole, [](float sample) { return std::fpclassify(sample) != FP_SUBNORMAL; }));
      for (const auto& lengths : {std::vector<uint32_t>{0, 64}, {1, 17}, {2027}}) {
        plugin.clear();
        EXPECT_TRUE(plugin.render(input, lengths, true) == whole) << rate << " Hz, " << lengths.back();
      }
    }
  }
}

TEST_P(Instance, RecoversFromNumbersThatAreNone) {
  const EffectBench component(GetParam());
  LoadedPlugin plugin(GetParam());
  const auto silent =
      1001 + static_cast<std::ptrdiff_t>((component.latency() + component.tailTime()) * 44100);
  Samples input = brokenNoise(1000);
  for (auto& channel : input) channel.resize(silent + 1000);
  Samples output = plugin.render(input, {256});
  for (auto& channel : output) channel.erase(channel.begin(), channel.begin() + silent);
  EXPECT_TRUE(allOf(output, [](float sample) { return std::fabs(sample) < 0.0005f; }));
}

TEST_P(Instance, IsBypassedWithoutAClickAndInTime) {
  constexpr size_t turn = 70 * 441, fade = 882;  // frames; whole periods of the tone
  LoadedPlugin plugin(GetParam());
  const uint32_t latency = plugin.latency();
  EXPECT_EQ(latency, std::lround(EffectBench(GetParam()).latency() * 44100));
  const Samples tone = sine(100, -6, turn);
  std::vector<float> output;
  for (const bool enabled : {true, false, true}) {
    plugin.control("enabled") = enabled;
    const auto more = plugin.render(tone, {256}, true)[0];
    output.insert(output.end(), more.begin(), more.end());
  }
  for (size_t i = turn + fade; i < 2 * turn; ++i) ASSERT_EQ(output[i], tone[0][(i - latency) % turn]) << i;
  const auto bend = [&](size_t from, size_t to) {
    return largestBend({output.begin() + from, output.begin() + to});
  };
  const double ordinary = std::max(bend(turn / 2, turn), bend(turn + fade, 2 * turn));
  for (const size_t change : {turn, 2 * turn})
    EXPECT_LT(bend(change - 10, change + fade), 2 * ordinary + 1e-4);
}

TEST(Tempo, GoesFromTheHostsTimeLineToItsPortAndStaysUntilItIsToldAnother) {
  LoadedPlugin plugin("dely");
  for (const float tempo : {0.0f, 87.5f, 120.0f}) {
    if (tempo > 0) plugin.tellTempo(tempo);
    for (int run = 0; run < 2; ++run) {
      plugin.latency();
      EXPECT_EQ(plugin.control("tempo"), tempo);
    }
  }
}

// As JACK does with its clients' threads.
TEST_P(Instance, SurvivesAnAudioThreadThatIsCancelled) {
  LoadedPlugin plugin(GetParam());
  std::vector<float> samples(1024);
  float* const channels[] = {samples.data(), samples.data()};
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
