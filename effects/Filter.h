#pragma once

#include "FilterEffect.h"

/// Equaliser of five bands in series. The outer ones are shelves, or a highpass and a lowpass whose level at
/// their frequency is the band's gain; a change of type is a glide like every other. A centre band's width in
/// octaves is where it has at least half of its gain. Without gain the bands leave every sample as it is.
class Filter : public FilterEffect<5> {
 public:
  Filter();

 protected:
  Sections design(const Values& values, double sampleRate) const override;
};
