#pragma once

#include <cmath>

#include "AUSmoothedValue.h"

/// Factors of a dry/wet mix whose powers add up to one: wet = sqrt(mix / 100), dry = sqrt(1 - mix / 100). The
/// factors glide, not the mix, whose root would jump near its ends.
class EqualPowerMix {
 public:
  void setSampleRate(double sampleRate) {
    wet_.setSampleRate(sampleRate);
    dry_.setSampleRate(sampleRate);
  }
  /// Per cent; at once, or from the next frame on.
  void snap(float mix) {
    wet_.snap(std::sqrt(mix / 100));
    dry_.snap(std::sqrt(1 - mix / 100));
  }
  void follow(float mix) {
    wet_.follow(std::sqrt(mix / 100));
    dry_.follow(std::sqrt(1 - mix / 100));
  }

  /// One frame further.
  void next() {
    wet_.next();
    dry_.next();
  }
  float of(float dry, float wet) const { return dry_.value() * dry + wet_.value() * wet; }

 private:
  AUSmoothedValue wet_, dry_;
};
