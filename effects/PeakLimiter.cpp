#include "PeakLimiter.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

enum : AudioUnitParameterID { attackTime, decayTime, preGain, amount = 1000 };

constexpr UInt32 dB = kAudioUnitParameterUnit_Decibels;
constexpr UInt32 seconds = kAudioUnitParameterUnit_Seconds;
constexpr AUParameterRow parameters[] = {
    {attackTime, "attack time", seconds, 0.001f, 0.03f, 0.012f},
    {decayTime, "decay time", seconds, 0.001f, 0.06f, 0.024f},
    {preGain, "pre-gain", dB, -40, 40, 0},
    {amount, "limiting amount", dB, 0, 40, 0, kAUParameterMeter},
};
constexpr AUPresetRow presets[] = {
    {"Safety Net"},
    {"Louder", {{{preGain, 6}}}},
    {"Smooth and Loud", {{{attackTime, 0.03f}, {decayTime, 0.06f}, {preGain, 9}}}},
    {"Brick Wall", {{{attackTime, 0.001f}, {decayTime, 0.005f}, {preGain, 3}}}},
};

}  // namespace

PeakLimiter::PeakLimiter() : AUEffectBase({.parameters = parameters, .presets = presets}) {
  setLatency(lookAheadSeconds);
}

UInt32 PeakLimiter::wantedAttack() const {
  const long frames = std::lround(value(attackTime) * sampleRate());
  return static_cast<UInt32>(std::clamp<long>(frames, 1, lookAhead_));
}

void PeakLimiter::prepare() {
  lookAhead_ = static_cast<UInt32>(std::lround(lookAheadSeconds * sampleRate()));
  setLatency(lookAhead_ / sampleRate());
  const UInt32 length = std::bit_ceil(lookAhead_ + 1);
  mask_ = length - 1;
  for (UInt32 c = 0; c < outputChannels(); ++c) lines_[c].resize(length);
  envelope_.setLookAhead(lookAhead_);
}

void PeakLimiter::clear() {
  for (auto& line : lines_) std::fill(line.begin(), line.end(), 0.0f);
  position_ = 0;
  envelope_.clear(wantedAttack());
  setMeter(amount, 0);
}

void PeakLimiter::process(std::span<float* const> channels, UInt32 frames) {
  AUSmoothedValue& before = smoothed(preGain);
  envelope_.setAttack(wantedAttack());
  envelope_.setDecay(std::exp(-1 / (value(decayTime) * sampleRate())));

  double attenuation = 0;
  for (UInt32 i = 0; i < frames; ++i) {
    const double input = preGain_.of(before.next());
    float magnitude = 0;
    for (size_t c = 0; c < channels.size(); ++c) {
      const auto sample = static_cast<float>(channels[c][i] * input);
      lines_[c][position_] = sample;
      magnitude = std::max(magnitude, std::fabs(sample));
    }
    attenuation = envelope_.next(magnitude > 1 ? decibelsOfFactor(magnitude) : 0);
    const double factor = gain_.of(-attenuation);
    // The clamp takes no more than what rounding may have left above.
    for (size_t c = 0; c < channels.size(); ++c)
      channels[c][i] =
          std::clamp(static_cast<float>(lines_[c][(position_ - lookAhead_) & mask_] * factor), -1.0f, 1.0f);
    position_ = (position_ + 1) & mask_;
  }
  setMeter(amount, static_cast<Float32>(std::min(40.0, attenuation)));
}
