#pragma once

#include <vector>

#include "SlidingMaximum.h"

/// Attenuation in dB for a signal that is heard `lookAhead` frames late, so that at each frame it is at least
/// what that frame demands. It grows in a straight line over the attack before a peak, however short that is
/// against the look-ahead, and shrinks exponentially in dB after it.
///
/// The demands of the attack's span are replaced by their maximum, which then dies away slowly, and that is
/// averaged over the same span: each value of the average has seen the frame that is heard. A new attack
/// moves both spans by one frame per frame, and the averaged one lags behind, so that this stays true.
class LookAheadEnvelope {
 public:
  /// Takes memory. Frames, above 0.
  void setLookAhead(UInt32 frames);
  /// Forgets all, and takes this attack at once.
  void clear(UInt32 attack);
  /// 1 … look-ahead frames.
  void setAttack(UInt32 frames) { wanted_ = frames; }
  /// What is left of an attenuation after one frame, below 1.
  void setDecay(double factor) { decay_ = factor; }

  /// Takes the attenuation that the frame now entering demands, at least 0, and gives the one for the frame
  /// that is heard now. Exactly 0 when nothing was demanded for long enough.
  double next(double demand);

 private:
  void moveTowardsAttack();

  SlidingMaximum span_;
  std::vector<double> demands_;  // rings by frame number
  std::vector<double> envelope_;
  UInt64 mask_ = 0;
  UInt32 lookAhead_ = 1;
  UInt32 wanted_ = 1;
  UInt32 spanned_ = 1;      // frames that the maximum sees beyond the one that is heard
  UInt32 averaged_ = 1;     // frames before the present one that are averaged with it
  UInt32 sinceGrowth_ = 0;  // at most lookAhead_: frames that the maximum's span has not been shorter
  UInt64 frame_ = 0;
  UInt64 nextDemand_ = 0;  // first that the maximum has not seen
  UInt64 oldest_ = 0;      // first of the sum
  double decay_ = 0;
  double decaying_ = 0;
  double sum_ = 0;
};
