#pragma once

#include <memory>
#include <vector>

#include "InputHistory.h"

namespace RubberBand {
class RubberBandStretcher;
}

/// Rubber Band in real-time mode at a time ratio of 1, brought to a fixed delay. Its own delay depends on the
/// engine, the window and the pitch; here every sound comes out as late as every other. Only below an octave
/// down, where the delay is too short for that, sound comes later. A change of the pitch moves the place
/// where its output is read in a short crossfade.
///
/// Building takes memory and milliseconds, processing neither, but for what Rubber Band 3.1 takes when the
/// pitch changes: its resampler and, in the faster engine, its windows are now and then allocated anew.
class PitchStretcher {
 public:
  static constexpr uint32_t chunkFrames = InputHistory::chunkFrames;
  using Chunk = InputHistory::Chunk;

  /// What cannot be changed later.
  struct Kind {
    enum Engine : uint8_t { fast, good, best } engine = best;
    enum Window : uint8_t { shorter, standard, longer } window = standard;
    friend bool operator==(const Kind&, const Kind&) = default;
  };
  enum class Transients { smooth, mixed, crisp };

  /// Frames of the delay that suits all kinds at a sample rate: twice the largest window.
  static uint32_t delayFor(double sampleRate);
  /// A factor as the pitch; delay in frames.
  PitchStretcher(const Kind& kind, double sampleRate, uint32_t channels, uint32_t delay, double pitch);
  ~PitchStretcher();

  const Kind& kind() const { return kind_; }
  void setPitch(double pitch);
  /// The best engine finds transients by itself.
  void setTransients(Transients transients);
  /// Takes a chunk, and gives what belongs to the one that was taken `delay` frames earlier.
  void process(const Chunk* input, Chunk* output);

 private:
  int64_t wantedOffset() const;
  void drain();
  void choosePlace();
  float at(uint32_t channel, int64_t frame) const {
    return frame < 0 || frame >= made_ ? 0 : rings_[channel][static_cast<size_t>(frame) & mask_];
  }

  const Kind kind_;
  const uint32_t channels_;
  const int64_t delay_;
  const uint32_t fadeFrames_;
  double pitch_;
  Transients transients_ = Transients::crisp;
  std::unique_ptr<RubberBand::RubberBandStretcher> stretcher_;

  std::vector<float> rings_[2];  // what the stretcher made
  size_t mask_;
  int64_t taken_ = 0;  // frames, without the silence before the beginning
  int64_t made_ = 0;
  // Input frame i is heard from the ring at i plus this.
  int64_t offset_;
  int64_t oldOffset_ = 0;  // faded out
  int64_t slip_ = 0;       // by which the stretcher has fallen behind
  uint32_t fadeLeft_ = 0;
  int64_t steadyFrames_ = 0;  // since the last change of the pitch
};
