#pragma once

#include "FilterEffect.h"

/// Raises or lowers a band round the centre frequency, which gets all of the gain.
class ParametricEQ : public FilterEffect<1> {
 public:
  ParametricEQ();

 private:
  Sections design(const Values& values, double sampleRate) const override;
};
