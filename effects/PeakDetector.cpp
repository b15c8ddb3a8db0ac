#include "PeakDetector.h"

#include <algorithm>
#include <cmath>

#include "Decibels.h"

void PeakDetector::prepare(Float64 sampleRate) {
  holdFrames_ = static_cast<UInt32>(std::lround(holdSeconds * sampleRate)) + 1;
  peaks_.setCapacity(holdFrames_);
}

void PeakDetector::clear() {
  peaks_.clear();
  peak_ = 0;
  level_ = lowestLevel;
}

double PeakDetector::level(double magnitude) {
  peaks_.push(magnitude);
  peaks_.keep(holdFrames_);
  if (peaks_.maximum() != peak_) {
    peak_ = peaks_.maximum();
    level_ = peak_ > 0 ? std::max(lowestLevel, decibelsOfFactor(peak_)) : lowestLevel;
  }
  return level_;
}
