#include "DelayTap.h"

#include <algorithm>
#include <cmath>
#include <limits>

DelayTap::DelayTap(double delay) : weights_{} {
  const double nearest = std::round(delay);
  if (std::fabs(delay - nearest) <= nearest * std::numeric_limits<float>::epsilon()) {
    first_ = static_cast<uint32_t>(nearest);
    points_ = 1;
    weights_[0] = 1;
    return;
  }
  // A feedback loop cannot hear what it has not written yet: no point before the frame itself, nor, from one
  // frame on, that frame.
  const double whole = std::floor(delay);
  const double before = std::clamp(whole - 1, 0.0, 2.0);
  first_ = static_cast<uint32_t>(whole - before);
  points_ = static_cast<uint32_t>(2 * before) + 2;
  const double position = delay - first_;
  for (uint32_t i = 0; i < points_; ++i) {
    double weight = 1;
    for (uint32_t j = 0; j < points_; ++j)
      if (j != i) weight *= (position - j) / (double{static_cast<double>(i)} - j);
    weights_[i] = static_cast<float>(weight);
  }
}
