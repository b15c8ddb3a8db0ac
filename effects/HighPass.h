#pragma once

#include "FilterEffect.h"

/// Resonant highpass of 12 dB an octave. The resonance is the level at the cutoff.
class HighPass : public FilterEffect<1> {
 public:
  HighPass();

 private:
  Sections design(const Values& values, double sampleRate) const override;
};
