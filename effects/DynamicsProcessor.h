#pragma once

#include "AUEffectBase.h"
#include "Ballistics.h"
#include "Decibels.h"
#include "PeakDetector.h"

/// Compressor above one threshold and expander below another. The louder channel decides, and both get the
/// same gain, so that the stereo picture stands still. Attack is the time constant in which compression sets
/// in and expansion lets go, release that of the opposite. The amount is what the compression alone takes
/// away at the end of each block: under an expander silence would read as the strongest of reductions.
class DynamicsProcessor : public AUEffectBase {
 public:
  DynamicsProcessor();

 private:
  void prepare() override;
  void clear() override;
  void process(std::span<float* const> channels, UInt32 frames) override;

  PeakDetector detector_;
  Ballistics compression_;
  Ballistics expansion_;
  DecibelFactor gain_;
};
