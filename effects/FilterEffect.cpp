#include "FilterEffect.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

bool isLogarithmic(const AUParameterRow& row) {
  return row.flags & kAudioUnitParameterFlag_DisplayLogarithmic;
}

}  // namespace

template <size_t sectionCount>
FilterEffect<sectionCount>::FilterEffect(std::span<const AUParameterRow> parameters,
                                         std::span<const AUPresetRow> presets)
    : AUEffectBase({.parameters = parameters, .presets = presets, .minimumSampleRate = 500}),
      rows_(parameters) {}

template <size_t sectionCount>
Float32 FilterEffect<sectionCount>::target(const AUParameterRow& row) const {
  return row.unit == kAudioUnitParameterUnit_Indexed ? std::round(value(row.id)) : value(row.id);
}

template <size_t sectionCount>
auto FilterEffect<sectionCount>::targets() const -> Values {
  Values values{};
  for (const AUParameterRow& row : rows_) values[row.id] = target(row);
  return values;
}

template <size_t sectionCount>
void FilterEffect<sectionCount>::clear() {
  followParameters();
  for (const AUParameterRow& row : rows_) {
    ramps_[row.id].setSampleRate(sampleRate());
    ramps_[row.id].advance(std::numeric_limits<int>::max());
  }
  moving_ = false;
  sections_ = design(targets(), sampleRate());
  gliders_ = {};
  settle();
}

template <size_t sectionCount>
void FilterEffect<sectionCount>::followParameters() {
  for (const AUParameterRow& row : rows_) {
    const Float32 wanted = target(row);
    if (wanted == followed_[row.id]) continue;
    followed_[row.id] = wanted;
    ramps_[row.id].follow(isLogarithmic(row) ? std::log(wanted) : wanted);
    moving_ = true;
  }
}

template <size_t sectionCount>
void FilterEffect<sectionCount>::settle() {
  for (size_t s = 0; s < sectionCount; ++s) {
    coefficients_[s] = sections_[s].coefficients();
    biquads_[s] = gliders_[s].biquad(sections_[s]);
  }
  gliding_ = false;
  glideLeft_ = 0;
}

template <size_t sectionCount>
void FilterEffect<sectionCount>::glideOn() {
  Values values{};
  moving_ = false;
  for (const AUParameterRow& row : rows_) {
    AUSmoothedValue& ramp = ramps_[row.id];
    const double now = ramp.advance(glideFrames);
    values[row.id] = ramp.isSettled() ? followed_[row.id] : isLogarithmic(row) ? std::exp(now) : now;
    moving_ |= !ramp.isSettled();
  }
  next_ = design(values, sampleRate());
  for (size_t s = 0; s < sectionCount; ++s) {
    if (!gliding_) gliders_[s] = GlidingFilter(biquads_[s], sections_[s]);
    glides_[s] = GlidingSection(sections_[s]);
    steps_[s] = glides_[s].step(GlidingSection(next_[s]), 1.0 / glideFrames);
  }
  gliding_ = true;
  glideLeft_ = glideFrames;
}

template <size_t sectionCount>
void FilterEffect<sectionCount>::process(std::span<float* const> channels, UInt32 frames) {
  followParameters();
  float* left = channels.front();
  float* right = channels.back();
  while (frames > 0) {
    if (glideLeft_ == 0 && moving_) glideOn();
    const UInt32 part = gliding_ ? std::min(frames, glideLeft_) : frames;
    if (gliding_)
      runGliding(left, right, part);
    else
      runSettled(left, right, part);
    left += part;
    right += part;
    frames -= part;
  }
}

template <size_t sectionCount>
void FilterEffect<sectionCount>::runSettled(float* left, float* right, UInt32 frames) {
  auto biquads = biquads_;  // copies, which no store to the channels can touch
  const auto coefficients = coefficients_;
  for (UInt32 i = 0; i < frames; ++i) {
    StereoSample sample = {left[i], right[i]};
    for (size_t s = 0; s < sectionCount; ++s) sample = biquads[s].next(sample, coefficients[s]);
    left[i] = static_cast<float>(sample[0]);
    right[i] = static_cast<float>(sample[1]);  // where there is one channel only, the same again
  }
  biquads_ = biquads;
}

template <size_t sectionCount>
void FilterEffect<sectionCount>::runGliding(float* left, float* right, UInt32 frames) {
  auto gliders = gliders_;
  auto glides = glides_;
  const auto steps = steps_;
  for (UInt32 i = 0; i < frames; ++i) {
    StereoSample sample = {left[i], right[i]};
    for (size_t s = 0; s < sectionCount; ++s) {
      glides[s] += steps[s];
      sample = gliders[s].next(sample, glides[s]);
    }
    left[i] = static_cast<float>(sample[0]);
    right[i] = static_cast<float>(sample[1]);
  }
  gliders_ = gliders;
  glides_ = glides;
  glideLeft_ -= frames;
  if (glideLeft_ > 0) return;
  sections_ = next_;
  if (!moving_) settle();
}

template <size_t sectionCount>
Float64 FilterEffect<sectionCount>::tailTime() const {
  double decay = 0;
  for (const FilterSection& section : design(targets(), sampleRate()))
    decay += section.coefficients().decayFrames();
  return 14 * decay / sampleRate();  // a double pole has lost 100 dB by then
}

template class FilterEffect<1>;
template class FilterEffect<5>;
