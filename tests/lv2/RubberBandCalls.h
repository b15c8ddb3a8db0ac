#pragma once

#include "RealTimeWatch.h"

/// While it lives, this thread is inside a call of Rubber Band.
class RubberBandCall {
 public:
  RubberBandCall();
  ~RubberBandCall();
  RubberBandCall(const RubberBandCall&) = delete;
  RubberBandCall& operator=(const RubberBandCall&) = delete;

 private:
  RealTimeFaults start_;
};
