#pragma once

#include <vector>

#include "AUEffectBase.h"

/// Delays by a whole number of sample frames, exactly. A change of the delay while it plays is a crossfade
/// of 5 milliseconds between the old and the new tap; another change waits until that is over.
class SampleDelay : public AUEffectBase {
 public:
  SampleDelay();

 private:
  void prepare() override;
  void clear() override;
  void process(std::span<float* const> channels, UInt32 frames) override;
  Float64 tailTime() const override;

  UInt32 wantedDelay() const;
  // As far as no tap reaches the end of a line, nor a fade its own; how many frames that were.
  UInt32 passRun(std::span<float* const> channels, UInt32 start, UInt32 frames);
  void addOld(const float* old, float* samples, UInt32 frames) const;

  std::vector<float> lines_[kAudioMaximumChannels];
  UInt32 position_ = 0;  // next frame to write
  UInt32 delay_ = 0;     // frames, the tap that is heard, or faded in
  UInt32 oldDelay_ = 0;  // the tap that is faded out
  UInt32 fadeFrames_ = 1;
  UInt32 fadeLeft_ = 0;
};
