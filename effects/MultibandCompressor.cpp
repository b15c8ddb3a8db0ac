#include "MultibandCompressor.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "StaticCurve.h"

namespace {

enum : AudioUnitParameterID {
  preGain,
  postGain,
  crossover,  // these and the ones of the bands: the first of a row of identifiers
  threshold = 5,
  headroom = 9,
  attackTime = 13,
  releaseTime,
  equalizer,
  firstAmount = 1000,
  amountStep = 1000
};

constexpr UInt32 dB = kAudioUnitParameterUnit_Decibels;
constexpr UInt32 hertz = kAudioUnitParameterUnit_Hertz;
constexpr UInt32 seconds = kAudioUnitParameterUnit_Seconds;
constexpr UInt32 logarithmic = kAUParameterLogarithmic;
constexpr AUParameterRow parameters[] = {
    {preGain, "pre-gain", dB, -40, 40, 0},
    {postGain, "post-gain", dB, -40, 40, 0},
    {crossover, "crossover 1", hertz, 20, 22050, 120, logarithmic},
    {crossover + 1, "crossover 2", hertz, 20, 22050, 700, logarithmic},
    {crossover + 2, "crossover 3", hertz, 20, 22050, 3000, logarithmic},
    {threshold, "threshold 1", dB, -100, 0, -22},
    {threshold + 1, "threshold 2", dB, -100, 0, -32},
    {threshold + 2, "threshold 3", dB, -100, 0, -33},
    {threshold + 3, "threshold 4", dB, -100, 0, -36},
    {headroom, "headroom 1", dB, 0.1f, 40, 5, logarithmic},
    {headroom + 1, "headroom 2", dB, 0.1f, 40, 12, logarithmic},
    {headroom + 2, "headroom 3", dB, 0.1f, 40, 5, logarithmic},
    {headroom + 3, "headroom 4", dB, 0.1f, 40, 7.5f, logarithmic},
    {attackTime, "attack time", seconds, 0.001f, 0.2f, 0.08f, logarithmic},
    {releaseTime, "release time", seconds, 0.01f, 3, 0.12f, logarithmic},
    {equalizer, "EQ 1", dB, -20, 20, 0},
    {equalizer + 1, "EQ 2", dB, -20, 20, 0},
    {equalizer + 2, "EQ 3", dB, -20, 20, 0},
    {equalizer + 3, "EQ 4", dB, -20, 20, 0},
    {firstAmount, "compression amount 1", dB, 0, 40, 0, kAUParameterMeter},
    {firstAmount + amountStep, "compression amount 2", dB, 0, 40, 0, kAUParameterMeter},
    {firstAmount + 2 * amountStep, "compression amount 3", dB, 0, 40, 0, kAUParameterMeter},
    {firstAmount + 3 * amountStep, "compression amount 4", dB, 0, 40, 0, kAUParameterMeter},
};
constexpr AUPresetRow presets[] = {
    {"Even Mix", {{{postGain, 8}}}},
    {"Gentle Glue",
     {{{threshold, -24},
       {threshold + 1, -26},
       {threshold + 2, -28},
       {threshold + 3, -30},
       {headroom, 18},
       {headroom + 1, 20},
       {headroom + 2, 22},
       {headroom + 3, 24},
       {attackTime, 0.03f},
       {releaseTime, 0.3f},
       {postGain, 4}}}},
    {"Tight Bass",
     {{{crossover, 90},
       {crossover + 1, 250},
       {threshold, -34},
       {threshold + 1, -30},
       {headroom, 4},
       {headroom + 1, 8},
       {threshold + 2, 0},
       {headroom + 2, 40},
       {threshold + 3, 0},
       {headroom + 3, 40},
       {attackTime, 0.02f},
       {equalizer, 5},
       {equalizer + 1, 2}}}},
    {"Tame Sibilance",
     {{{crossover + 1, 1800},
       {crossover + 2, 5500},
       {threshold, 0},
       {headroom, 40},
       {threshold + 1, 0},
       {headroom + 1, 40},
       {threshold + 2, 0},
       {headroom + 2, 40},
       {threshold + 3, -40},
       {headroom + 3, 6},
       {attackTime, 0.001f},
       {releaseTime, 0.05f}}}},
    {"Split Only",
     {{{threshold, 0},
       {threshold + 1, 0},
       {threshold + 2, 0},
       {threshold + 3, 0},
       {headroom, 40},
       {headroom + 1, 40},
       {headroom + 2, 40},
       {headroom + 3, 40}}}},
};
constexpr StaticCurve curve{.top = 10};
constexpr double highestFraction = 0.49;  // of the sample rate

}  // namespace

MultibandCompressor::MultibandCompressor() : AUEffectBase({.parameters = parameters, .presets = presets}) {}

void MultibandCompressor::prepare() {
  for (Band& band : bands_) band.detector.prepare(sampleRate());
}

void MultibandCompressor::clear() {
  for (FourBandSplit& split : splits_) split.clear();
  for (size_t b = 0; b < bandCount; ++b) {
    bands_[b].detector.clear();
    bands_[b].compression.clear();
    setMeter(firstAmount + amountStep * static_cast<UInt32>(b), 0);
  }
  tune(crossovers());
}

MultibandCompressor::Crossovers MultibandCompressor::crossovers() {
  return {&smoothed(crossover), &smoothed(crossover + 1), &smoothed(crossover + 2)};
}

void MultibandCompressor::tune(const Crossovers& crossovers) {
  double lowest = 0;
  for (size_t i = 0; i < tunings_.size(); ++i) {
    lowest = std::max<double>(lowest, crossovers[i]->next());
    tunings_[i] = ButterworthSection::Tuning(std::min(lowest / sampleRate(), highestFraction));
  }
}

void MultibandCompressor::process(std::span<float* const> channels, UInt32 frames) {
  AUSmoothedValue& before = smoothed(preGain);
  AUSmoothedValue& after = smoothed(postGain);
  const Crossovers splitting = crossovers();
  struct {
    AUSmoothedValue *threshold, *headroom, *equalizer;
  } values[bandCount];
  for (UInt32 b = 0; b < bandCount; ++b) {
    values[b] = {&smoothed(threshold + b), &smoothed(headroom + b), &smoothed(equalizer + b)};
    bands_[b].compression.setTimes(value(attackTime), value(releaseTime), sampleRate());
  }

  for (UInt32 i = 0; i < frames; ++i) {
    if (!std::ranges::all_of(splitting, &AUSmoothedValue::isSettled)) tune(splitting);
    const double input = preGain_.of(before.next());
    const double output = postGain_.of(after.next());
    std::array<double, bandCount> parts[kAudioMaximumChannels];
    for (size_t c = 0; c < channels.size(); ++c) parts[c] = splits_[c].next(channels[c][i] * input, tunings_);
    double sums[kAudioMaximumChannels] = {};
    for (size_t b = 0; b < bandCount; ++b) {
      Band& band = bands_[b];
      double magnitude = 0;
      for (size_t c = 0; c < channels.size(); ++c) magnitude = std::max(magnitude, std::fabs(parts[c][b]));
      const double level = band.detector.level(magnitude);
      const double attenuation = band.compression.next(
          curve.compression(level, values[b].threshold->next(), values[b].headroom->next()));
      const double factor = band.gain.of(values[b].equalizer->next() - attenuation);
      for (size_t c = 0; c < channels.size(); ++c) sums[c] += parts[c][b] * factor;
    }
    for (size_t c = 0; c < channels.size(); ++c) channels[c][i] = static_cast<float>(sums[c] * output);
  }
  for (UInt32 b = 0; b < bandCount; ++b)
    setMeter(firstAmount + amountStep * b,
             static_cast<Float32>(std::min(40.0, bands_[b].compression.amount())));
}

Float64 MultibandCompressor::tailTime() const {
  // Up to five sections in series at one frequency: t^4 e^(-t / tau) has lost 60 dB by 25 tau.
  const double lowest = std::min<double>(value(crossover), highestFraction * sampleRate());
  return 25 / (std::numbers::sqrt2 * std::numbers::pi * lowest);
}
