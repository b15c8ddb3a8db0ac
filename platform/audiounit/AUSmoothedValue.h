#pragma once

#include <algorithm>
#include <cmath>

/// A value that follows its target in a straight line of 20 milliseconds, so that a change does not click.
/// Audio thread.
class AUSmoothedValue {
 public:
  static constexpr double rampSeconds = 0.02;

  void setSampleRate(double sampleRate) {
    rampFrames_ = std::max(1, static_cast<int>(std::lround(rampSeconds * sampleRate)));
  }

  /// At the target at once.
  void snap(float target) {
    value_ = target_ = target;
    remaining_ = 0;
  }

  /// A new target begins a new ramp from the present value; the same one changes nothing.
  void follow(float target) {
    if (target == target_) return;
    target_ = target;
    remaining_ = rampFrames_;
    step_ = (target - value_) / static_cast<float>(remaining_);
  }

  /// One frame, or several, further.
  float next() { return advance(1); }
  float advance(int frames) {
    if (remaining_ == 0) return value_;
    if (frames >= remaining_) {
      snap(target_);
    } else {
      value_ += step_ * static_cast<float>(frames);
      remaining_ -= frames;
    }
    return value_;
  }

  float value() const { return value_; }
  bool isSettled() const { return remaining_ == 0; }

 private:
  float value_ = 0;
  float target_ = 0;
  float step_ = 0;
  int remaining_ = 0;
  int rampFrames_ = 1;
};
