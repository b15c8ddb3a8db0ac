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
  for (UInt32 i = 0; i < frames; ++i) {
    if (fadeLeft_ == 0 && wanted != delay_) {
      oldDelay_ = delay_;
      delay_ = wanted;
      fadeLeft_ = fadeFrames_;
    }
    const float old = static_cast<float>(fadeLeft_) / static_cast<float>(fadeFrames_);
    for (size_t c = 0; c < channels.size(); ++c) {
      std::vector<float>& line = lines_[c];
      line[position_] = channels[c][i];
      const float heard = line[(position_ - delay_) & lineMask];
      channels[c][i] =
          fadeLeft_ == 0 ? heard : heard + old * (line[(position_ - oldDelay_) & lineMask] - heard);
    }
    position_ = (position_ + 1) & lineMask;
    if (fadeLeft_ > 0) --fadeLeft_;
  }
}

Float64 SampleDelay::tailTime() const {
  return wantedDelay() / sampleRate();
}
