#pragma once

#include <array>
#include <cstdint>
#include <span>

/// One position in a ring of samples, between two of them as well: by Lagrange's polynomial through six
/// samples, which never makes anything louder. Near the front of the ring through fewer.
class DelayTap {
 public:
  /// Samples that must be in the ring beyond the longest delay.
  static constexpr uint32_t margin = 3;

  DelayTap() : DelayTap(0) {}
  /// Frames. A whole number, and what a float of seconds cannot tell from one, is met exactly.
  explicit DelayTap(double delay);

  /// What was written `delay` frames before the frame at `position`. The ring's length is a power of two.
  float read(std::span<const float> ring, uint32_t position) const {
    const size_t mask = ring.size() - 1;
    float sum = 0;
    for (uint32_t i = 0; i < points_; ++i) sum += weights_[i] * ring[(position - first_ - i) & mask];
    return sum;
  }

 private:
  uint32_t first_;
  uint32_t points_;
  std::array<float, 6> weights_;
};
