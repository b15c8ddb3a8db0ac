#pragma once

#include "SlidingMaximum.h"

/// Peak level of a signal in dBFS, that is, the level at which a sine with these peaks stands. It rises at
/// once and keeps every peak for 10 milliseconds, so that the level of a steady tone from 50 Hz upwards does
/// not ripple and smoothing it takes nothing away. It looks at samples, not at the curve between them.
class PeakDetector {
 public:
  static constexpr double holdSeconds = 0.01;
  static constexpr double lowestLevel = -300;  // of silence

  void prepare(Float64 sampleRate);
  void clear();

  /// One frame further; `magnitude` is the largest of all linked channels.
  double level(double magnitude);

 private:
  SlidingMaximum peaks_;
  UInt32 holdFrames_ = 1;
  double peak_ = 0;
  double level_ = lowestLevel;
};
