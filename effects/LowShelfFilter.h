#pragma once

#include "FilterEffect.h"

/// Raises or lowers what lies below the cutoff; at the cutoff itself half of the gain is reached.
class LowShelfFilter : public FilterEffect<1> {
 public:
  LowShelfFilter();

 private:
  Sections design(const Values& values, double sampleRate) const override;
};
