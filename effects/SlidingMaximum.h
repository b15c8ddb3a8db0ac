#pragma once

#include <vector>

#include "CoreAudioTypes.h"

/// The largest of a moving window of values that are at least 0, in a constant time per value on average.
/// Both ends of the window are the caller's: push() moves the new one, keep() the old one.
class SlidingMaximum {
 public:
  /// Takes the memory for windows of up to `values` values and empties the window.
  void setCapacity(UInt32 values);
  void clear();

  void push(double value);
  /// Only the last `values` of all that were pushed count from now on, at least one.
  void keep(UInt32 values);
  /// 0 of an empty window.
  double maximum() const { return first_ == end_ ? 0 : entries_[first_ & mask_].value; }

 private:
  struct Entry {
    UInt64 number;
    double value;
  };

  std::vector<Entry> entries_;  // ring of the values that no younger one exceeds, so in falling order
  UInt64 mask_ = 0;
  UInt64 first_ = 0;  // in the ring, oldest and largest
  UInt64 end_ = 0;
  UInt64 pushed_ = 0;  // number of the next value
};
