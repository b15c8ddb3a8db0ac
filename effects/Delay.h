#pragma once

#include <vector>

#include "AUEffectBase.h"
#include "DelayTap.h"
#include "EqualPowerMix.h"

/// Echoes. What comes back goes through a one-pole lowpass, except at the cutoff's maximum, and the feedback,
/// so that the first echo has all of its treble. A negative feedback turns every second echo over; at 100 per
/// cent either way they go on for ever. A change of the time is a crossfade of 40 milliseconds to the new
/// one, which does not bend the pitch of what sounds; another change waits until that is over. Without any
/// delay the feedback still takes one frame.
class Delay : public AUEffectBase {
 public:
  Delay();

 private:
  void prepare() override;
  void clear() override;
  void process(std::span<float* const> channels, UInt32 frames) override;
  Float64 tailTime() const override;

  float openness() const;

  struct Taps {
    DelayTap heard, loop;
  };
  Taps tapsOf(float seconds) const;

  struct Channel {
    std::vector<float> ring;
    double lowpass = 0;  // its history
  };
  Channel channels_[kAudioMaximumChannels];
  UInt32 position_ = 0;  // next frame to write
  float time_ = 0;       // seconds, of the taps that are heard, or faded in
  Taps taps_;
  Taps oldTaps_;  // faded out
  UInt32 fadeFrames_ = 1;
  UInt32 fadeLeft_ = 0;
  EqualPowerMix mix_;
  AUSmoothedValue openness_;  // of the lowpass: 1 lets all pass
  float cutoff_ = 0;          // from which that was computed
};
