#include "SlidingMaximum.h"

#include <bit>

void SlidingMaximum::setCapacity(UInt32 values) {
  entries_.resize(std::bit_ceil(UInt64{values} + 1));
  mask_ = entries_.size() - 1;
  clear();
}

void SlidingMaximum::clear() {
  first_ = end_ = pushed_ = 0;
}

void SlidingMaximum::push(double value) {
  while (end_ != first_ && entries_[(end_ - 1) & mask_].value <= value) --end_;
  entries_[end_++ & mask_] = {pushed_++, value};
}

void SlidingMaximum::keep(UInt32 values) {
  while (first_ != end_ && entries_[first_ & mask_].number + values < pushed_) ++first_;
}
