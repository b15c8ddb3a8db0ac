#pragma once

#include <cstdint>
#include <vector>

#include "AUSmoothedValue.h"

/// Switches between an effect and its input without a click: a crossfade of 20 milliseconds to the input as
/// late as the effect makes it, so that what is heard stays where it is in time. The effect goes on
/// meanwhile. Stereo, any block up to the longest. Audio thread, except for prepare.
class BypassFade {
 public:
  /// Takes its memory. `latency` and `longestBlock` in frames.
  void prepare(double sampleRate, uint32_t latency, uint32_t longestBlock);
  /// Empties the history; there is no fade to what `enabled` says.
  void clear(bool enabled);

  /// First with the input, before the effect overwrites it in place, then with the effect's output.
  void takeInput(const float* const* input, uint32_t frames, bool enabled);
  void finish(float* const* output, uint32_t frames);

 private:
  bool isIdle() const { return effect_.isSettled() && effect_.value() == 1; }

  std::vector<float> lines_[2];
  uint32_t mask_ = 0;
  uint32_t latency_ = 0;
  uint32_t position_ = 0;   // of the block that was taken
  AUSmoothedValue effect_;  // its part in what is heard
};
