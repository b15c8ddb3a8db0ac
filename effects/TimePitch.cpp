#include "TimePitch.h"

#include <algorithm>
#include <cmath>

namespace {

enum : AudioUnitParameterID { pitch = 1, blend, smoothness, tightness };

constexpr UInt32 generic = kAudioUnitParameterUnit_Generic;
constexpr AUParameterRow parameters[] = {
    {pitch, "pitch", kAudioUnitParameterUnit_Cents, -2400, 2400, 0},
    {blend, "effect blend", kAudioUnitParameterUnit_EqualPowerCrossfade, 0, 100, 100},
    {smoothness, "smoothness", generic, 0, 1, 0.5f},
    {tightness, "tightness", generic, 0, 1, 0.5f},
};
constexpr AUPresetRow presets[] = {
    {"As It Is"},
    {"Octave Below", {{{pitch, -1200}, {smoothness, 0.8f}}}},
    {"Fifth Above", {{{pitch, 700}, {blend, 50}}}},
    {"Detune", {{{pitch, 12}, {blend, 50}}}},
    {"Tight Drums Lower", {{{pitch, -300}, {smoothness, 0.1f}, {tightness, 1}}}},
};
constexpr double fadeSeconds = 0.03;
constexpr UInt32 chunksToCatchUp = 4;  // at most, for each one that is rendered

using Kind = PitchStretcher::Kind;

UInt32 thirdOf(float value) {
  return std::min(2u, static_cast<UInt32>(value * 3));
}

}  // namespace

TimePitch::TimePitch()
    : AUEffectBase({.parameters = parameters, .presets = presets, .hasRenderQuality = true}) {}

TimePitch::~TimePitch() = default;

PitchStretcher::Kind TimePitch::wantedKind() const {
  const UInt32 quality = renderQuality();
  const auto engine = quality >= kRenderQuality_High     ? Kind::best
                      : quality >= kRenderQuality_Medium ? Kind::good
                                                         : Kind::fast;
  const bool shortened =
      quality < kRenderQuality_Low || (quality >= kRenderQuality_High && quality < kRenderQuality_Max);
  const UInt32 window = thirdOf(value(smoothness));
  return {engine, static_cast<Kind::Window>(shortened && window > 0 ? window - 1 : window)};
}

PitchStretcher::Transients TimePitch::wantedTransients() const {
  return static_cast<PitchStretcher::Transients>(thirdOf(value(tightness)));
}

void TimePitch::prepare() {
  workshop_.stop();
  delay_ = PitchStretcher::delayFor(sampleRate());
  setLatency(delay_ / sampleRate());
  history_.prepare(outputChannels(), 4 * delay_ + static_cast<UInt32>(2 * sampleRate()));
  fadeChunks_ = std::max(1u, static_cast<UInt32>(std::lround(fadeSeconds * sampleRate() / chunkFrames)));
  mix_.setSampleRate(sampleRate());
  workshop_.start(sampleRate(), delay_ - chunkFrames);
}

void TimePitch::clear() {
  ++era_;
  history_.clear();
  for (UInt32 c = 0; c < kAudioMaximumChannels; ++c) {
    std::fill_n(input_[c], chunkFrames, 0.0f);
    std::fill_n(output_[c], chunkFrames, 0.0f);
  }
  filled_ = 0;
  mix_.snap(value(blend));
  cents_ = value(pitch);
  pitch_ = std::exp2(cents_ / 1200);
  present_ = std::make_unique<PitchStretcher>(wantedKind(), sampleRate(), outputChannels(),
                                              delay_ - chunkFrames, pitch_);
  present_->setTransients(wantedTransients());
  next_ = {};
  former_.reset();
  fadeLeft_ = 0;
}

void TimePitch::process(std::span<float* const> channels, UInt32 frames) {
  mix_.follow(value(blend));
  for (UInt32 i = 0; i < frames; ++i) {
    mix_.next();
    const UInt64 now = history_.written() + filled_;
    for (UInt32 c = 0; c < channels.size(); ++c) {
      input_[c][filled_] = channels[c][i];
      const float dry = now < delay_ ? 0 : history_.sample(c, now - delay_);
      channels[c][i] = mix_.of(dry, output_[c][filled_]);
    }
    if (++filled_ == chunkFrames) {
      history_.write(input_);
      processChunk();
      filled_ = 0;
    }
  }
}

void TimePitch::processChunk() {
  AUSmoothedValue& cents = smoothed(pitch);
  if (cents.advance(chunkFrames) != cents_) {
    cents_ = cents.value();
    pitch_ = std::exp2(cents_ / 1200);
  }
  prepareNext();
  for (PitchStretcher* stretcher : {present_.get(), next_.stretcher.get(), former_.get()})
    if (stretcher) {
      stretcher->setPitch(pitch_);
      stretcher->setTransients(wantedTransients());
    }
  present_->process(input_, output_);
  if (fadeLeft_ == 0) return;

  Chunks old;
  former_->process(input_, old);
  const auto length = static_cast<float>(fadeChunks_ * chunkFrames);
  for (UInt32 i = 0; i < chunkFrames; ++i) {
    const float part = static_cast<float>(fadeLeft_ * chunkFrames - i) / length;
    for (UInt32 c = 0; c < outputChannels(); ++c) output_[c][i] += part * (old[c][i] - output_[c][i]);
  }
  --fadeLeft_;
}

void TimePitch::prepareNext() {
  if (fadeLeft_ > 0 || (former_ && !workshop_.discard(former_))) return;
  if (!next_.stretcher) {
    if (workshop_.collect(next_)) {
      if (next_.era != era_ || next_.taken < history_.oldest()) former_ = std::move(next_.stretcher);
    } else if (wantedKind() != present_->kind()) {
      workshop_.place({wantedKind(), pitch_, wantedTransients(), era_});
    }
  }
  if (!next_.stretcher) return;
  const UInt64 before = history_.written() - chunkFrames;
  Chunks past, unheard;
  for (UInt32 i = 0; i < chunksToCatchUp && next_.taken < before; ++i) {
    history_.read(next_.taken, past);
    next_.stretcher->process(past, unheard);
    next_.taken += chunkFrames;
  }
  if (next_.taken < before) return;
  former_ = std::move(present_);
  present_ = std::move(next_.stretcher);
  fadeLeft_ = fadeChunks_;
}

Float64 TimePitch::tailTime() const {
  return delay_ / sampleRate();  // the windows' tails, and how much later the lowest pitches are
}
