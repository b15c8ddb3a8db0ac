#pragma once

#include <array>
#include <numbers>

/// Second-order Butterworth section as a state-variable filter by trapezoidal integration, which gives
/// lowpass, highpass and allpass at once and may be retuned at every frame. (V. Zavalishin, The Art of VA
/// Filter Design, chapter 4.)
class ButterworthSection {
 public:
  /// Shared by all sections with one frequency.
  struct Tuning {
    Tuning() : Tuning(0) {}
    /// Frequency as a fraction of the sample rate, below a half.
    explicit Tuning(double frequency);
    double a1, a2, a3;
  };
  struct Outputs {
    double low, high, all;
  };

  void clear() { state1_ = state2_ = 0; }
  Outputs next(double input, const Tuning& tuning) {
    const double difference = input - state2_;
    const double band = tuning.a1 * state1_ + tuning.a2 * difference;
    const double low = state2_ + tuning.a2 * state1_ + tuning.a3 * difference;
    state1_ = 2 * band - state1_;
    state2_ = 2 * low - state2_;
    const double damped = std::numbers::sqrt2 * band;
    return {low, input - damped - low, input - 2 * damped};
  }

 private:
  double state1_ = 0;
  double state2_ = 0;
};

/// Fourth-order crossover of two Butterworth sections each way. Both bands are in phase everywhere and add
/// up to the input through the allpass of one section with the same tuning. (S. Linkwitz and R. Riley,
/// Active Crossover Networks for Noncoincident Drivers, 1976.)
class LinkwitzRileySplit {
 public:
  struct Bands {
    double low, high;
  };

  void clear();
  Bands next(double input, const ButterworthSection::Tuning& tuning) {
    const auto first = both_.next(input, tuning);
    return {low_.next(first.low, tuning).low, high_.next(first.high, tuning).high};
  }

 private:
  ButterworthSection both_, low_, high_;
};

/// One channel in four bands, lowest first, whose sum has the input's level at every frequency. It splits at
/// the middle crossover first; each half then passes the allpass of the crossover that only the other half
/// has, so that all bands have turned their phase alike when they meet.
class FourBandSplit {
 public:
  using Tunings = std::array<ButterworthSection::Tuning, 3>;  // ascending frequencies

  void clear();
  std::array<double, 4> next(double input, const Tunings& tunings);

 private:
  LinkwitzRileySplit lower_, middle_, upper_;
  ButterworthSection lowerPhase_, upperPhase_;
};
