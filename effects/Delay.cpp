#include "Delay.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace {

enum : AudioUnitParameterID { mix, delayTime, feedback, cutoff };

constexpr float longestTime = 3;
constexpr float openCutoff = 22050;
constexpr AUParameterRow parameters[] = {
    {mix, "dry/wet mix", kAudioUnitParameterUnit_EqualPowerCrossfade, 0, 100, 50},
    {delayTime, "delay time", kAudioUnitParameterUnit_Seconds, 0, longestTime, 1},
    {feedback, "feedback", kAudioUnitParameterUnit_Percent, -100, 100, 50},
    {cutoff, "lowpass cutoff frequency", kAudioUnitParameterUnit_Hertz, 10, openCutoff, 15000,
     kAUParameterLogarithmic},
};
constexpr AUPresetRow presets[] = {
    {"Long Echo"},
    {"Slapback", {{{mix, 30}, {delayTime, 0.09f}, {feedback, 0}}}},
    {"Tape", {{{mix, 35}, {delayTime, 0.375f}, {feedback, 45}, {cutoff, 2500}}}},
    {"Quarters at 120", {{{mix, 30}, {delayTime, 0.5f}, {feedback, 40}, {cutoff, 8000}}}},
    {"Hollow", {{{mix, 50}, {delayTime, 0.004f}, {feedback, -80}, {cutoff, 6000}}}},
};
constexpr double fadeSeconds = 0.04;
constexpr double highestFraction = 0.49;  // of the sample rate
constexpr double silence = 0.0005;        // -66 dB
constexpr double endlessTail = 30;        // seconds

}  // namespace

Delay::Delay() : AUEffectBase({.parameters = parameters, .presets = presets}) {}

void Delay::prepare() {
  const auto longest = static_cast<UInt32>(std::ceil(longestTime * sampleRate()));
  for (UInt32 c = 0; c < outputChannels(); ++c)
    channels_[c].ring.resize(std::bit_ceil(longest + DelayTap::margin + 1));
  fadeFrames_ = std::max(1u, static_cast<UInt32>(std::lround(fadeSeconds * sampleRate())));
  mix_.setSampleRate(sampleRate());
  openness_.setSampleRate(sampleRate());
}

void Delay::clear() {
  for (Channel& channel : channels_) {
    std::fill(channel.ring.begin(), channel.ring.end(), 0.0f);
    channel.lowpass = 0;
  }
  position_ = 0;
  time_ = value(delayTime);
  taps_ = tapsOf(time_);
  fadeLeft_ = 0;
  mix_.snap(value(mix));
  cutoff_ = value(cutoff);
  openness_.snap(openness());
}

Delay::Taps Delay::tapsOf(float seconds) const {
  const double frames = seconds * sampleRate();
  return {DelayTap(frames), DelayTap(std::max(1.0, frames))};
}

float Delay::openness() const {
  if (cutoff_ >= openCutoff) return 1;
  const double turn = 2 * std::numbers::pi * std::min(cutoff_ / sampleRate(), highestFraction);
  const double c = 2 * std::pow(std::sin(turn / 2), 2);
  return static_cast<float>(std::sqrt(c * (c + 2)) - c);  // -3 dB at the cutoff
}

void Delay::process(std::span<float* const> channels, UInt32 frames) {
  AUSmoothedValue& percent = smoothed(feedback);
  mix_.follow(value(mix));
  if (const float wanted = value(cutoff); wanted != cutoff_) {
    cutoff_ = wanted;
    openness_.follow(openness());
  }

  const float wantedTime = value(delayTime);
  for (UInt32 i = 0; i < frames; ++i) {
    if (fadeLeft_ == 0 && wantedTime != time_) {
      time_ = wantedTime;
      oldTaps_ = taps_;
      taps_ = tapsOf(time_);
      fadeLeft_ = fadeFrames_;
    }
    const float part = static_cast<float>(fadeLeft_) / static_cast<float>(fadeFrames_);
    const float old = part * part * (3 - 2 * part);
    const float back = percent.next() / 100;
    const double open = openness_.next();
    mix_.next();
    for (size_t c = 0; c < channels.size(); ++c) {
      Channel& channel = channels_[c];
      const auto read = [&](DelayTap Taps::*tap) {
        const float now = (taps_.*tap).read(channel.ring, position_);
        return fadeLeft_ == 0 ? now : now + old * ((oldTaps_.*tap).read(channel.ring, position_) - now);
      };
      channel.lowpass += open * (read(&Taps::loop) - channel.lowpass);
      const float input = channels[c][i];
      channel.ring[position_ & (channel.ring.size() - 1)] =
          input + back * static_cast<float>(channel.lowpass);
      channels[c][i] = mix_.of(input, read(&Taps::heard));
    }
    ++position_;
    if (fadeLeft_ > 0) --fadeLeft_;
  }
}

Float64 Delay::tailTime() const {
  const double back = std::fabs(value(feedback)) / 100;
  if (back == 1) return endlessTail;
  const double repeats = back > 0 ? std::log(silence) / std::log(back) : 0;
  const double lowpass = 1 / (2 * std::numbers::pi * value(cutoff));
  return value(delayTime) + repeats * (std::max<double>(value(delayTime), 1 / sampleRate()) + lowpass);
}
