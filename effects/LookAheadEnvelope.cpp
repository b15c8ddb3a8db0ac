#include "LookAheadEnvelope.h"

#include <algorithm>
#include <bit>
#include <cmath>

void LookAheadEnvelope::setLookAhead(UInt32 frames) {
  lookAhead_ = frames;
  const UInt64 length = std::bit_ceil(UInt64{frames} + 2);
  mask_ = length - 1;
  demands_.resize(length);
  envelope_.resize(length);
  span_.setCapacity(frames + 1);
}

void LookAheadEnvelope::clear(UInt32 attack) {
  std::fill(demands_.begin(), demands_.end(), 0.0);
  std::fill(envelope_.begin(), envelope_.end(), 0.0);
  span_.clear();
  wanted_ = spanned_ = averaged_ = attack;
  sinceGrowth_ = lookAhead_;
  frame_ = demands_.size();  // silence of that length lies before the first frame
  nextDemand_ = frame_ - lookAhead_ + spanned_;
  oldest_ = frame_ - averaged_ - 1;
  decaying_ = sum_ = 0;
}

void LookAheadEnvelope::moveTowardsAttack() {
  if (averaged_ > wanted_) {
    --averaged_;
  } else if (spanned_ > wanted_) {
    --spanned_;
  } else if (spanned_ < wanted_) {
    ++spanned_;
    sinceGrowth_ = 0;
  } else if (sinceGrowth_ < lookAhead_) {
    ++sinceGrowth_;
  } else if (averaged_ < wanted_) {
    ++averaged_;
  }
}

double LookAheadEnvelope::next(double demand) {
  moveTowardsAttack();
  demands_[frame_ & mask_] = demand;
  while (nextDemand_ <= frame_ - lookAhead_ + spanned_) span_.push(demands_[nextDemand_++ & mask_]);
  span_.keep(spanned_ + 1);
  decaying_ = std::max(span_.maximum(), decaying_ * decay_);

  // Multiples of 2^-24 dB: sums of these are exact, so the running sum never drifts.
  constexpr double steps = 1 << 24;
  const double rounded = std::floor(decaying_ * steps + 0.5) / steps;
  envelope_[frame_ & mask_] = rounded;
  sum_ += rounded;
  while (oldest_ < frame_ - averaged_) sum_ -= envelope_[oldest_++ & mask_];
  ++frame_;
  return sum_ / (averaged_ + 1);
}
