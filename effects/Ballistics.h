#pragma once

#include <cmath>

/// Follows a gain change in dB exponentially, with one time constant while it grows and another while it
/// shrinks: after that time 63 per cent of a step are done.
class Ballistics {
 public:
  /// Seconds, above 0.
  void setTimes(double growing, double shrinking, double sampleRate) {
    growing_ = -std::expm1(-1 / (growing * sampleRate));
    shrinking_ = -std::expm1(-1 / (shrinking * sampleRate));
  }
  void clear() { amount_ = 0; }

  double next(double target) {
    amount_ += (target > amount_ ? growing_ : shrinking_) * (target - amount_);
    return amount_;
  }
  double amount() const { return amount_; }

 private:
  double growing_ = 1;
  double shrinking_ = 1;
  double amount_ = 0;  // double: a step of the longest time at the highest rate is lost in a float
};
