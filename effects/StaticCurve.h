#pragma once

#include <algorithm>

/// The steady-state curve of a compressor with expander, as the attenuation in dB that it asks for at an
/// input level. All levels in dB.
struct StaticCurve {
  /// Input level at which the upper line reaches threshold + headroom, above every threshold.
  double top;

  /// Up to the threshold nothing; above, the output follows the straight line from (threshold, threshold)
  /// through (top, min(top, threshold + headroom)) without end.
  double compression(double level, double threshold, double headroom) const {
    if (level <= threshold) return 0;
    const double slope = std::min(1.0, headroom / (top - threshold));
    return (level - threshold) * (1 - slope);
  }

  /// Below the lower of both thresholds the output falls `ratio` times as fast as the input, down to an
  /// attenuation of 240 dB.
  static double expansion(double level, double threshold, double expansionThreshold, double ratio) {
    const double edge = std::min(expansionThreshold, threshold);
    return level < edge ? std::min(240.0, (edge - level) * (ratio - 1)) : 0;
  }
};
