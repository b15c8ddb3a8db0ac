#pragma once

#include <vector>

struct StereoSamples {
  std::vector<float> left;
  std::vector<float> right;
};

/// Two bars of kick, snare and hi-hat at 120 beats per minute: 4 seconds that loop without a seam, since
/// what rings beyond the end is heard at the beginning. Peak -3 dBFS.
StereoSamples drumLoop(double sampleRate);
