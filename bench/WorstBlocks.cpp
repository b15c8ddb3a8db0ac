#include <limits>

#include "Automation.h"
#include "EffectBench.h"
#include "Figures.h"
#include "WorkTime.h"

namespace {

constexpr double sampleRate = 44100;
constexpr UInt32 frames = 256;
constexpr int blocks = 10'000;
constexpr int passes = 5;
constexpr int blocksPerStep = 9;                         // of the automation: 20 a second
constexpr size_t soundBlocks = 172, silentBlocks = 344;  // a second and two

struct Signal {
  Signal() : channels(2) {
    uint32_t random = 1;
    for (auto& channel : channels)
      for (size_t i = 0; i < (soundBlocks + silentBlocks) * frames; ++i) {
        random = random * 1664525 + 1013904223;
        channel.push_back(i < soundBlocks * frames ? static_cast<float>(random >> 8) / 16777216.0f - 0.5f
                                                   : 0);
      }
  }
  std::vector<std::vector<float>> channels;
};

/// The time-pitch's smoothness has another thread build another stretcher: no two passes would be alike.
bool isAutomated(const std::string& code, const EffectParameter& parameter) {
  constexpr AudioUnitParameterID smoothness = 3;
  return code != "tmpt" || parameter.id != smoothness;
}

/// The same each time: noise and silence, in which tails fade away, while every parameter is automated.
std::vector<double> pass(const std::string& code, const Signal& signal) {
  EffectBench effect(code, {sampleRate, 2, 2, frames});
  const auto parameters = effect.writableParameters();
  std::vector<double> seconds;
  for (int block = 0; block < blocks; ++block) {
    for (size_t i = 0; block % blocksPerStep == 0 && i < parameters.size(); ++i)
      if (isAutomated(code, parameters[i]))
        effect.set(parameters[i].id, automated(parameters[i], i, block / blocksPerStep));
    const size_t from = static_cast<size_t>(block) % (soundBlocks + silentBlocks) * frames;
    const float* const input[] = {signal.channels[0].data() + from, signal.channels[1].data() + from};
    seconds.push_back(secondsOf([&] { effect.renderBlock(input, frames); }));
  }
  return seconds;
}

void worstBlock(benchmark::State& state, const std::string& code) {
  static const Signal signal;
  std::vector<double> least(blocks, std::numeric_limits<double>::infinity());
  for (auto _ : state) {
    for (int i = 0; i < passes; ++i) {
      const std::vector<double> seconds = pass(code, signal);
      std::transform(seconds.begin(), seconds.end(), least.begin(), least.begin(),
                     [](double a, double b) { return std::min(a, b); });
    }
    state.SetIterationTime(1);
  }
  std::sort(least.begin(), least.end());
  state.counters["figure"] = least.back();
  state.counters["floor"] = least[blocks / 2];
}

}  // namespace

void addWorstBlocks(RatioTable& table) {
  for (const std::string& code : effectCodes()) {
    const char* note = code == "tmpt" ? "but for its smoothness" : "";
    table.add(
        {{code, "worst block / median", 0, 5, note}},
        [code](benchmark::State& state) { worstBlock(state, code); }, RatioTable::Runs::once);
  }
}
