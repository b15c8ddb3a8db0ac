#include "SampleDelay.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr UInt32 longestDelay = 44100;  // frames
constexpr AUParameterRow parameters[] = {
    {0, "in-to-out delay", kAudioUnitParameterUnit_SampleFrames, 0, longestDelay, 0},
};
constexpr AUPresetRow presets[] = {
    {"No Delay"},
    {"One Block (512)", {{{0, 512}}}},
    {"Doubling (1000)", {{{0, 1000}}}},
    {"Echo (22050)", {{{0, 22050}}}},
};

constexpr UInt32 lineLength = 1u << 16;  // a power of two above the longest delay
constexpr UInt32 lineMask = lineLength - 1;
// Of frames written at once, which never reach what is still to be heard.
constexpr UInt32 longestRun = lineLength - longestDelay;
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
    i += passRun(channels, i, frames - i);
  }
}

UInt32 SampleDelay::passRun(std::span<float* const> channels, UInt32 start, UInt32 frames) {
  const UInt32 heard = (position_ - delay_) & lineMask;
  const UInt32 old = (position_ - oldDelay_) & lineMask;
  UInt32 run = std::min({frames, lineLength - position_, lineLength - heard, longestRun});
  if (fadeLeft_ > 0) run = std::min({run, lineLength - old, fadeLeft_});
  for (size_t c = 0; c < channels.size(); ++c) {
    float* const line = lines_[c].data();
    float* const samples = channels[c] + start;
    std::copy_n(samples, run, line + position_);
    std::copy_n(line + heard, run, samples);
    if (fadeLeft_ > 0) addOld(line + old, samples, run);
  }
  position_ = (position_ + run) & lineMask;
  if (fadeLeft_ > 0) fadeLeft_ -= run;
  return run;
}

void SampleDelay::addOld(const float* old, float* samples, UInt32 frames) const {
  const float step = 1 / static_cast<float>(fadeFrames_);
  const float first = static_cast<float>(fadeLeft_) * step;
  for (UInt32 i = 0; i < frames; ++i)
    samples[i] += (first - static_cast<float>(i) * step) * (old[i] - samples[i]);
}

Float64 SampleDelay::tailTime() const {
  return wantedDelay() / sampleRate();
}
