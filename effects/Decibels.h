#pragma once

#include <cmath>
#include <numbers>

inline double factorOfDecibels(double decibels) {
  return std::exp(decibels * (std::numbers::ln10 / 20));
}
inline double decibelsOfFactor(double factor) {
  return 20 * std::log10(factor);
}

/// The same for a level that mostly stands still: the exponential is taken only when it moved.
class DecibelFactor {
 public:
  double of(double decibels) {
    if (decibels != decibels_) {
      decibels_ = decibels;
      factor_ = factorOfDecibels(decibels);
    }
    return factor_;
  }

 private:
  double decibels_ = 0;
  double factor_ = 1;
};
