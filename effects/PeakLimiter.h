#pragma once

#include "AUEffectBase.h"
#include "Decibels.h"
#include "LookAheadEnvelope.h"

/// Never lets a sample out above 0 dBFS, and what stays below that after the pre-gain untouched. It hears
/// all 30 milliseconds late, whatever the attack, and says so as its latency: before a peak the gain
/// sinks in a straight line in dB over the attack time, after it the attenuation dies away with the decay
/// time as time constant. The louder channel decides, and both get the same gain, so that the stereo
/// picture stands still. The amount is the attenuation at the end of each block.
class PeakLimiter : public AUEffectBase {
 public:
  static constexpr double lookAheadSeconds = 0.03;

  PeakLimiter();

 private:
  void prepare() override;
  void clear() override;
  void process(std::span<float* const> channels, UInt32 frames) override;

  UInt32 wantedAttack() const;

  std::vector<float> lines_[kAudioMaximumChannels];
  UInt32 lookAhead_ = 1;  // frames
  UInt32 position_ = 0;   // next frame to write
  UInt32 mask_ = 0;
  LookAheadEnvelope envelope_;
  DecibelFactor preGain_;
  DecibelFactor gain_;
};
