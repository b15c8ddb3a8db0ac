#include "DynamicsProcessor.h"

#include <algorithm>
#include <cmath>

#include "StaticCurve.h"

namespace {

enum : AudioUnitParameterID {
  threshold,
  headroom,
  expansionRatio,
  expansionThreshold,
  attackTime,
  releaseTime,
  masterGain,
  amount = 1000
};

constexpr UInt32 dB = kAudioUnitParameterUnit_Decibels;
constexpr UInt32 seconds = kAudioUnitParameterUnit_Seconds;
constexpr AUParameterRow parameters[] = {
    {threshold, "compression threshold", dB, -40, 20, -20},
    {headroom, "headroom", dB, 0.1f, 40, 5, kAUParameterLogarithmic},
    {expansionRatio, "expansion ratio", kAudioUnitParameterUnit_Rate, 1, 50, 2, kAUParameterLogarithmic},
    {expansionThreshold, "expansion threshold", dB, -120, 0, -60},
    {attackTime, "attack time", seconds, 0.0001f, 0.2f, 0.001f, kAUParameterLogarithmic},
    {releaseTime, "release time", seconds, 0.01f, 3, 0.05f, kAUParameterLogarithmic},
    {masterGain, "master gain", dB, -40, 40, 0},
    {amount, "compression amount", dB, 0, 40, 0, kAUParameterMeter},
};
constexpr AUPresetRow presets[] = {
    {"Fast and Smooth",
     {{{threshold, -22}, {headroom, 8}, {expansionRatio, 1}, {attackTime, 0.003f}, {releaseTime, 0.15f}}}},
    {"Speech",
     {{{threshold, -26},
       {headroom, 10},
       {expansionRatio, 2},
       {expansionThreshold, -50},
       {attackTime, 0.005f},
       {releaseTime, 0.2f},
       {masterGain, 8}}}},
    {"Hard Knock",
     {{{threshold, -30}, {headroom, 4}, {expansionRatio, 1}, {attackTime, 0.02f}, {releaseTime, 0.08f}}}},
    {"Noise Gate",
     {{{threshold, 0},
       {headroom, 40},
       {expansionRatio, 20},
       {expansionThreshold, -42},
       {releaseTime, 0.1f}}}},
};
constexpr StaticCurve curve{.top = 30};

}  // namespace

DynamicsProcessor::DynamicsProcessor() : AUEffectBase({.parameters = parameters, .presets = presets}) {}

void DynamicsProcessor::prepare() {
  detector_.prepare(sampleRate());
}

void DynamicsProcessor::clear() {
  detector_.clear();
  compression_.clear();
  expansion_.clear();
  setMeter(amount, 0);
}

void DynamicsProcessor::process(std::span<float* const> channels, UInt32 frames) {
  AUSmoothedValue& above = smoothed(threshold);
  AUSmoothedValue& room = smoothed(headroom);
  AUSmoothedValue& below = smoothed(expansionThreshold);
  AUSmoothedValue& ratio = smoothed(expansionRatio);
  AUSmoothedValue& master = smoothed(masterGain);
  compression_.setTimes(value(attackTime), value(releaseTime), sampleRate());
  expansion_.setTimes(value(releaseTime), value(attackTime), sampleRate());

  for (UInt32 i = 0; i < frames; ++i) {
    float magnitude = 0;
    for (const float* channel : channels) magnitude = std::max(magnitude, std::fabs(channel[i]));
    const double level = detector_.level(magnitude);
    const double limit = above.next();
    const double attenuation =
        compression_.next(curve.compression(level, limit, room.next())) +
        expansion_.next(StaticCurve::expansion(level, limit, below.next(), ratio.next()));
    const double factor = gain_.of(master.next() - attenuation);
    for (float* channel : channels) channel[i] = static_cast<float>(channel[i] * factor);
  }
  setMeter(amount, static_cast<Float32>(std::min(40.0, compression_.amount())));
}
