#include "PitchStretcher.h"

#include <rubberband/RubberBandStretcher.h>

#include <algorithm>
#include <cmath>

namespace {

using RubberBand::RubberBandStretcher;

constexpr double highestRate = 192000;  // of Rubber Band; above, its windows are shorter in time
constexpr double fadeSeconds = 0.01;

struct Silent : RubberBandStretcher::Logger {
  void log(const char*) override {}
  void log(const char*, double) override {}
  void log(const char*, double, double) override {}
};

RubberBandStretcher::Options optionsOf(const PitchStretcher::Kind& kind) {
  constexpr RubberBandStretcher::Options engines[] = {
      RubberBandStretcher::OptionEngineFaster | RubberBandStretcher::OptionPhaseIndependent,
      RubberBandStretcher::OptionEngineFaster | RubberBandStretcher::OptionPhaseLaminar,
      RubberBandStretcher::OptionEngineFiner};
  constexpr RubberBandStretcher::Options windows[] = {RubberBandStretcher::OptionWindowShort,
                                                      RubberBandStretcher::OptionWindowStandard,
                                                      RubberBandStretcher::OptionWindowLong};
  // The one pitch method that goes through 1 without a break.
  return RubberBandStretcher::OptionProcessRealTime | RubberBandStretcher::OptionThreadingNever |
         RubberBandStretcher::OptionPitchHighConsistency | engines[kind.engine] | windows[kind.window];
}

std::unique_ptr<RubberBandStretcher> build(const PitchStretcher::Kind& kind, double sampleRate,
                                           uint32_t channels, double pitch) {
  const double rate = std::min(sampleRate, highestRate);
  auto stretcher =
      std::make_unique<RubberBandStretcher>(static_cast<size_t>(std::lround(rate)), channels,
                                            std::make_shared<Silent>(), optionsOf(kind), 1.0, pitch);
  stretcher->setMaxProcessSize(PitchStretcher::chunkFrames);
  return stretcher;
}

}  // namespace

uint32_t PitchStretcher::delayFor(double sampleRate) {
  size_t half = 0;
  for (const Kind& kind : {Kind{Kind::best, Kind::longer}, Kind{Kind::good, Kind::longer}})
    half = std::max(half, build(kind, sampleRate, 1, 1)->getPreferredStartPad());
  return static_cast<uint32_t>(4 * half);
}

PitchStretcher::PitchStretcher(const Kind& kind, double sampleRate, uint32_t channels, uint32_t delay,
                               double pitch)
    : kind_(kind),
      channels_(channels),
      delay_(delay),
      fadeFrames_(std::max(1u, static_cast<uint32_t>(std::lround(fadeSeconds * sampleRate)))),
      pitch_(pitch),
      stretcher_(build(kind, sampleRate, channels, pitch)) {
  const size_t length = std::bit_ceil(size_t{8} * delay);
  for (uint32_t c = 0; c < channels; ++c) rings_[c].resize(length);
  mask_ = length - 1;
  offset_ = wantedOffset();
  const Chunk silence = {};
  const float* const input[] = {silence, silence};
  for (size_t left = stretcher_->getPreferredStartPad(); left > 0;) {
    const size_t run = std::min<size_t>(left, chunkFrames);
    stretcher_->process(input, run, false);
    drain();
    left -= run;
  }
}

PitchStretcher::~PitchStretcher() = default;

void PitchStretcher::setPitch(double pitch) {
  if (pitch == pitch_) return;
  pitch_ = pitch;
  stretcher_->setPitchScale(pitch);
  steadyFrames_ = 0;
}

void PitchStretcher::setTransients(Transients transients) {
  if (transients == transients_) return;
  transients_ = transients;
  constexpr RubberBandStretcher::Options options[] = {RubberBandStretcher::OptionTransientsSmooth,
                                                      RubberBandStretcher::OptionTransientsMixed,
                                                      RubberBandStretcher::OptionTransientsCrisp};
  stretcher_->setTransientsOption(options[static_cast<size_t>(transients)]);
}

// Input frame i lies at i plus the start delay, but how far behind the input the stretcher is when it works
// on that is not told. Measured over engines, windows, rates and pitches it is never more than this.
int64_t PitchStretcher::wantedOffset() const {
  const auto half = static_cast<double>(stretcher_->getPreferredStartPad());
  const double halves = kind_.engine == Kind::best ? 1.1 : 0.55 + 0.55 / std::min(pitch_, 1.0);
  const auto behind = static_cast<int64_t>(half * halves);
  const int64_t latest = delay_ - behind - 2 * fadeFrames_ - 2 * chunkFrames;
  return std::min<int64_t>(static_cast<int64_t>(stretcher_->getStartDelay()), latest) - slip_;
}

void PitchStretcher::drain() {
  for (int ready; (ready = stretcher_->available()) > 0;) {
    const size_t start = static_cast<size_t>(made_) & mask_;
    float* const places[] = {rings_[0].data() + start, channels_ > 1 ? rings_[1].data() + start : nullptr};
    const size_t got = stretcher_->retrieve(places, std::min<size_t>(ready, mask_ + 1 - start));
    if (got == 0) return;
    made_ += static_cast<int64_t>(got);
  }
}

void PitchStretcher::choosePlace() {
  if (fadeLeft_ > 0) return;
  const int64_t needed = taken_ - delay_ + offset_ + fadeFrames_;
  int64_t wanted = wantedOffset();
  if (needed > made_ && needed > fadeFrames_) {
    // Many changes of the pitch have made it shorter than it should be, and what is in it earlier.
    slip_ += 2 * fadeFrames_;
    wanted -= 2 * fadeFrames_;
  } else if (wanted > offset_ && steadyFrames_ < delay_) {
    return;  // not made yet
  }
  if (wanted == offset_) return;
  oldOffset_ = offset_;
  offset_ = wanted;
  fadeLeft_ = fadeFrames_;
}

void PitchStretcher::process(const Chunk* input, Chunk* output) {
  const float* const places[] = {input[0], channels_ > 1 ? input[1] : nullptr};
  stretcher_->process(places, chunkFrames, false);
  drain();
  const int64_t start = taken_ - delay_;
  taken_ += chunkFrames;
  steadyFrames_ += chunkFrames;
  choosePlace();
  for (uint32_t i = 0; i < chunkFrames; ++i) {
    const float old = static_cast<float>(fadeLeft_) / static_cast<float>(fadeFrames_);
    for (uint32_t c = 0; c < channels_; ++c) {
      const float now = at(c, start + i + offset_);
      output[c][i] = fadeLeft_ == 0 ? now : now + old * (at(c, start + i + oldOffset_) - now);
    }
    if (fadeLeft_ > 0) --fadeLeft_;
  }
}
