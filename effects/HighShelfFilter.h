#pragma once

#include "FilterEffect.h"

/// Raises or lowers what lies above the cutoff; at the cutoff itself half of the gain is reached.
class HighShelfFilter : public FilterEffect<1> {
 public:
  HighShelfFilter();

 private:
  Sections design(const Values& values, double sampleRate) const override;
};
