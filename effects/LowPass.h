#pragma once

#include "FilterEffect.h"

/// Resonant lowpass of 12 dB an octave. The resonance is the level at the cutoff.
class LowPass : public FilterEffect<1> {
 public:
  LowPass();

 private:
  Sections design(const Values& values, double sampleRate) const override;
};
