#pragma once

#include "FilterEffect.h"

/// Leaves the centre frequency as it is; the bandwidth, in cents, is where it has not yet lost 3 dB.
class BandPass : public FilterEffect<1> {
 public:
  BandPass();

 private:
  Sections design(const Values& values, double sampleRate) const override;
};
