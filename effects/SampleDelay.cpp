#include "SampleDelay.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr AUParameterRow parameters[] = {
    {0, "in-to-out delay", kAudioUnitParameterUnit_SampleFrames, 0, 44100, 0},
};
constexpr AUPresetRow presets[] = {
    {"No Delay"},
    {"One Block (512)", {{{0, 512}}}},
    {"Doubling (1000)", {{{0, 1000}}}},
    {"Echo (22050)", {{{0, 22050}}}},
};

constexpr UInt32 lineLength = 1u << 16;  // a power of two above the longest delay
constexpr UInt32 lineMask = lineLength - 1;
constexpr UInt32 longestRun = lineLength - 44100;  // what is written never reaches what is still to be heard
constexpr double fadeSeconds = 0.005;

}  // namespace

SampleDelay::SampleDelay() : AUEffectBase({.parameters = parameters, .presets = presets}) {}

UInt32 SampleDelay::wantedDelay() const {
  return static_cast<UInt32>(std::lround(value(0)));
}

void SampleDelay::prepare() {
  for (UInt32 c = 0; c < outputChannels(); ++c) lines_[c].resize(lineLength);
  fadeFrames_ = std::max(1u, static_cast<UInt32>(std::lround(fadeSeconds * sampleRate())));
}

void SampleDelay::clear() {
  for (auto& line : lines_) std::fill(line.begin(), line.end(), 0.0f);
  position_ = 0;
  delay_ = wantedDelay();
  fadeLeft_ = 0;
}

void SampleDelay::process(std::span<float* const> channels, UInt32 frames) {
  const UInt32 wanted = wantedDelay();
  for (UInt32 i = 0; i < frames;) {
    if (fadeLeft_ == 0 && wanted != delay_) {
      oldDelay_ = delay_;
      delay_ = wanted;
      fadeLeft_ = fadeFrames_;
    }
    i += fadeLeft_ > 0 ? fadeOne(channels, i) : passRun(channels, i, frames - i);
  }
}

UInt32 SampleDelay::fadeOne(std::span<float* const> channels, UInt32 frame) {
  const float old = static_cast<float>(fadeLeft_) / static_cast<float>(fadeFrames_);
  for (size_t c = 0; c < channels.size(); ++c) {
    std::vector<float>& line = lines_[c];
    float& sample = channels[c][frame];
    line[position_] = sample;
    const float heard = line[(position_ - delay_) & lineMask];
    sample = heard + old * (line[(position_ - oldDelay_) & lineMask] - heard);
  }
  position_ = (position_ + 1) & lineMask;
  --fadeLeft_;
  return 1;
}

UInt32 SampleDelay::passRun(std::span<float* const> channels, UInt32 start, UInt32 frames) {
  const UInt32 heard = (position_ - delay_) & lineMask;
  const UInt32 run = std::min({frames, lineLength - position_, lineLength - heard, longestRun});
  for (size_t c = 0; c < channels.size(); ++c) {
    float* const line = lines_[c].data();
    std::copy_n(channels[c] + start, run, line + position_);
    std::copy_n(line + heard, run, channels[c] + start);
  }
  position_ = (position_ + run) & lineMask;
  return run;
}

Float64 SampleDelay::tailTime() const {
  return wantedDelay() / sampleRate();
}
